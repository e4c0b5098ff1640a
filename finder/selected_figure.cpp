#include "finder/selected_figure.h"

#include "figure/figure_kind.h"

#include "dzbone.h"
#include "dzscene.h"
#include "dzskeleton.h"

namespace quillon {

DzSkeleton* selectedFigure()
{
    DzSkeleton* figure = dzScene ? figureOf(dzScene->getPrimarySelection()) : nullptr;
    return figure && figure->isRootNode() && isSupportedFigure(figure) ? figure : nullptr;
}

DzBone* hipOf(const DzSkeleton* figure)
{
    return figure ? figure->findBone(QLatin1String("hip")) : nullptr;
}

} // namespace quillon
