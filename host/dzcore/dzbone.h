// dzbone.h - a joint of a skeleton. Rigs let the first bone inherit the figure's scale and switch
// inheritance off below other bones.
#pragma once

#include "dznode.h"

class DZCORE_EXPORT DzBone : public DzNode {
    Q_OBJECT
public:
    explicit DzBone(const QString& name = QString());
};
