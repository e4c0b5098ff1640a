// dzcontroller.h - one link of a property's value chain.
#pragma once

#include "dzbase.h"
#include "dztime.h"

class DzProperty;

class DzNumericController;

class DZCORE_EXPORT DzController : public DzBase {
    Q_OBJECT
public:
    DzController();
    ~DzController() override;

    DzProperty* getOwner() const; // the property it moves; null until inserted
    DzProperty* getDriver() const; // the property it reads; null: none
    virtual const DzNumericController* numeric() const; // this, when it works on numbers

protected:
    void readFrom(DzProperty* driver); // registers for the driver's changes; null: none
    virtual void driverRemoved() = 0; // the driver is going away
    void ownerChanged(); // what this link does to its owner has changed

private:
    friend class DzProperty;
    friend class DzElement;
    friend class DzFloatProperty;
    DzProperty* m_owner;
    DzProperty* m_driver;
};

class DZCORE_EXPORT DzNumericController : public DzController {
    Q_OBJECT
public:
    DzNumericController();

    const DzNumericController* numeric() const override;
    // Both with the value so far; t ignored when defaults is set.
    virtual double apply(double value, DzTime t, bool defaults) const = 0;
    // The value so far that apply() would turn into result; false when there is none.
    virtual bool invert(double result, DzTime t, double* value) const = 0;
};
