// dzmorph.h - a shape with a strength. Its one property, "Value", is the strength.
#pragma once

#include "dzmodifier.h"

class DzFloatProperty;

class DZCORE_EXPORT DzMorph : public DzModifier {
    Q_OBJECT
public:
    explicit DzMorph(const QString& name = QString());

    DzFloatProperty* getValueChannel() const; // never null

private:
    DzFloatProperty* m_value;
};
