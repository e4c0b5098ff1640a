#include "dzfigure.h"

DzFigure::DzFigure(const QString& name)
    : DzSkeleton(name)
{
}
