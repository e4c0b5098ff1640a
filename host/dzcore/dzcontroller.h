// dzcontroller.h - one link of a property's value chain.
#pragma once

#include "dzbase.h"
#include "dztime.h"

class DzProperty;

class DZCORE_EXPORT DzController : public DzBase {
    Q_OBJECT
public:
    DzController();
    ~DzController() override;

    DzProperty* getOwner() const; // the property it moves

protected:
    void readFrom(DzProperty* driver); // registers for the driver's changes; null: none
    virtual void driverRemoved() = 0;  // the driver is going away

private:
    friend class DzProperty;
    friend class DzElement;
    DzProperty* m_owner;
    DzProperty* m_driver;
};

class DZCORE_EXPORT DzNumericController : public DzController {
    Q_OBJECT
public:
    DzNumericController();

    // Both with the value so far; t ignored when defaults is set.
    virtual double apply(double value, DzTime t, bool defaults) const = 0;
    // The value so far that apply() would turn into result; false when there is none.
    virtual bool invert(double result, DzTime t, double* value) const = 0;
};
