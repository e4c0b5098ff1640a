#include "figure/figure_kind.h"

#include "dzskeleton.h"

#include <QString>

#include <algorithm>

namespace quillon {

static FigureKind g_figureKind = FigureKind::Genesis8;

static bool isOneOf(const QString& name, const NameList& names)
{
    return std::any_of(names.begin(), names.end(),
        [&name](const char* each) { return name == QLatin1String(each); });
}

FigureKind generationOf(const DzNode* node)
{
    const QString name = node ? node->getName() : QString();
    for (int kind = 0; kind < kFigureKindCount; ++kind) {
        if (isOneOf(name, modelFor(FigureKind(kind)).figureNames))
            return FigureKind(kind);
    }
    return FigureKind::None;
}

const FigureModel& modelOf(const DzNode* node)
{
    const FigureKind kind = generationOf(node ? node->getSkeleton() : nullptr);
    return kind != FigureKind::None ? modelFor(kind) : activeModel();
}

bool isGenesis81()
{
    return g_figureKind == FigureKind::Genesis8_1;
}

const FigureModel& activeModel()
{
    return modelFor(g_figureKind);
}

void resetFigureKind()
{
    g_figureKind = FigureKind::Genesis8;
}

bool isSupportedFigure(const DzNode* node)
{
    const FigureKind kind = generationOf(node);
    if (kind != FigureKind::None)
        g_figureKind = kind;
    return kind != FigureKind::None;
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
