// dzmodifier.h - something that changes an object's geometry.
#pragma once

#include "dzelement.h"

class DZCORE_EXPORT DzModifier : public DzElement {
    Q_OBJECT
public:
    explicit DzModifier(const QString& name = QString());
};
