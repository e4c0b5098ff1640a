// dzerclink.h - a property driven by another one. With v the value so far, c the driver's final
// value, m the scalar and a the addend:
//   ERCDeltaAdd0 v + c m + a    ERCDivideInto1 c / v + a   ERCDivideBy2 v / c + a
//   ERCMultiply3 c v + a        ERCSubtract4   v - c + a   ERCAdd5      v + c + a
//   ERCKeyed6    v + P(c), P piecewise linear through the link's keys, constant outside
// A division by 0 leaves v as it is.
#pragma once

#include "dzcontroller.h"

#include <utility>
#include <vector>

class DzFloatProperty;
class DzNumericProperty;

class DZCORE_EXPORT DzERCLink : public DzNumericController {
    Q_OBJECT
    Q_ENUMS(ERCType)
public:
    enum ERCType {
        ERCDeltaAdd0 = 0,
        ERCDivideInto1,
        ERCDivideBy2,
        ERCMultiply3,
        ERCSubtract4,
        ERCAdd5,
        ERCKeyed6
    };

    DzERCLink(DzFloatProperty* driver, ERCType type, double scalar = 1, double addend = 0);

    DzNumericProperty* getProperty() const; // the driver; null once it was removed
    const DzNumericProperty* getCurrentProperty() const;
    ERCType getType() const;
    double getScalar() const;
    double getAddend() const;
    void addKeyValue(double driverValue, double value); // of ERCKeyed6

    double apply(double value, DzTime t, bool defaults) const override;
    bool invert(double result, DzTime t, double* value) const override;

protected:
    void driverRemoved() override;

private:
    double keyedValue(double c) const;

    DzFloatProperty* m_property;
    ERCType m_type;
    double m_scalar, m_addend;
    std::vector<std::pair<double, double>> m_keys; // ascending driver values
};
