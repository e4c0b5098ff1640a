// dznumericproperty.h - a property whose value is a number.
#pragma once

#include "dzproperty.h"

class DZCORE_EXPORT DzNumericProperty : public DzProperty {
    Q_OBJECT
public:
    explicit DzNumericProperty(const QString& name, bool canAnimate, bool isUser = false);

    virtual bool isClamped() const = 0; // limits in force for the final value
    virtual void setIsClamped(bool) = 0;
    virtual double getDoubleValue() const = 0;
    virtual double getDoubleValue(DzTime) const = 0;
    virtual void setDoubleValue(double) = 0;
    virtual void setDoubleValue(DzTime, double) = 0;
    virtual double getDoubleDefaultValue() const = 0;
};
