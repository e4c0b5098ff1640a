#include "figure/figure_kind.h"

#include "dzskeleton.h"

#include <QString>

namespace quillon {

static const struct FigureName {
    const char* name;
    FigureKind kind;
} kFigureNames[] = {
    {"Genesis8Female", FigureKind::Genesis8},
    {"Genesis8Male", FigureKind::Genesis8},
    {"Genesis8_1Female", FigureKind::Genesis8_1},
    {"Genesis8_1Male", FigureKind::Genesis8_1},
};

static FigureKind g_figureKind = FigureKind::Genesis8;

FigureKind figureKind()
{
    return g_figureKind;
}

bool isGenesis81()
{
    return g_figureKind == FigureKind::Genesis8_1;
}

void resetFigureKind()
{
    g_figureKind = FigureKind::Genesis8;
}

bool isSupportedFigure(const DzNode* node)
{
    if (!node)
        return false;
    const QString name = node->getName();
    for (const FigureName& row : kFigureNames) {
        if (name == QLatin1String(row.name)) {
            g_figureKind = row.kind;
            return true;
        }
    }
    return false;
}

bool isFigureNode(const DzNode* node)
{
    if (node && node->inherits("DzBone"))
        node = node->getSkeleton();
    return node && node->inherits("DzSkeleton"); // a loaded figure is a class derived from it
}

DzSkeleton* figureOf(const DzNode* node)
{
    return isFigureNode(node) ? node->getSkeleton() : nullptr;
}

} // namespace quillon
