#include "dznumericproperty.h"

DzNumericProperty::DzNumericProperty(const QString& name, bool canAnimate, bool isUser)
    : DzProperty(name, canAnimate, isUser)
{
}
