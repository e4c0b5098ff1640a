// dzmodifier.h - something that changes an object's geometry.
#pragma once

#include "dzelement.h"

class DzObject;

class DZCORE_EXPORT DzModifier : public DzElement {
    Q_OBJECT
public:
    explicit DzModifier(const QString& name = QString());

    bool isInScene() const override; // as its object

private:
    friend class DzObject;
    DzObject* m_object; // null until added to one
};
