#include "figure/selected_figure.h"

#include "figure/figure_kind.h"

#include "dzbone.h"
#include "dzscene.h"
#include "dzskeleton.h"

namespace quillon {

DzNode* selectedNode()
{
    return dzScene ? dzScene->getPrimarySelection() : nullptr;
}

DzSkeleton* supportedFigureAnywhereOf(const DzNode* node)
{
    DzSkeleton* figure = figureOf(node);
    return figure && isSupportedFigure(figure) ? figure : nullptr;
}

DzSkeleton* supportedFigureOf(const DzNode* node)
{
    DzSkeleton* figure = figureOf(node);
    return figure && figure->isRootNode() && isSupportedFigure(figure) ? figure : nullptr;
}

DzSkeleton* selectedFigure()
{
    return supportedFigureOf(selectedNode());
}

DzBone* hipOf(const DzSkeleton* figure)
{
    return figure ? figure->findBone(QLatin1String("hip")) : nullptr;
}

// ---- still there

// Of thousands of nodes a few are skeletons, and a scan asks after every pose.
static bool isSkeletonInScene(const DzNode* node)
{
    for (int i = 0; i < dzScene->getNumSkeletons(); ++i) {
        if (dzScene->getSkeleton(i) == node)
            return true;
    }
    return false;
}

bool isInScene(const DzNode* node)
{
    if (!node || !dzScene)
        return false;
    if (node->inherits("DzSkeleton"))
        return isSkeletonInScene(node);
    for (int i = 0; i < dzScene->getNumNodes(); ++i) {
        if (dzScene->getNode(i) == node)
            return true;
    }
    return false;
}

HeldNode::HeldNode(DzNode* node)
    : m_isAny(node)
    , m_node(node)
{
}

bool HeldNode::isGone() const
{
    return m_isAny && !isInScene(m_node);
}

} // namespace quillon
