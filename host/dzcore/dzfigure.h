// dzfigure.h - a skeleton with a body.
#pragma once

#include "dzskeleton.h"

class DZCORE_EXPORT DzFigure : public DzSkeleton {
    Q_OBJECT
public:
    explicit DzFigure(const QString& name = QString());
};
