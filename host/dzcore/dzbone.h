// dzbone.h - a joint of a skeleton. Does not inherit scale from a parent bone by default.
#pragma once

#include "dznode.h"

class DZCORE_EXPORT DzBone : public DzNode {
    Q_OBJECT
public:
    explicit DzBone(const QString& name = QString());
};
