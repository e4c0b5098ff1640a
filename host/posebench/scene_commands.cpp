#include "host/posebench/scene_commands.h"

#include "host/body/scene_mesh.h"
#include "host/figures/figure_loader.h"
#include "host/figures/prop_maker.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzscene.h"
#include "dzundostack.h"

namespace quillon {

static const float kBoneMarginCm = 12; // shown around a bone that is framed

static DzNode* addNode(DzNode* node)
{
    DzUndoStackHold hold;
    dzScene->addNode(node);
    hold.accept(QString("Add %1").arg(node->getLabel()));
    selectOnly(node);
    return node;
}

DzNode* addFigureToScene(const QString& name, QString* why)
{
    DzFigure* figure = loadFigure(name, why);
    return figure ? addNode(figure) : nullptr;
}

DzNode* addPropToScene(const QString& name, const DzVec3& min, const DzVec3& max)
{
    return addNode(makeProp(name, min, max));
}

bool removeSelectedNodes()
{
    DzNodeList roots;
    for (int i = 0; i < dzScene->getNumSelectedNodes(); ++i)
        if (dzScene->getSelectedNode(i)->isRootNode())
            roots << dzScene->getSelectedNode(i);
    if (roots.isEmpty())
        return false;
    DzUndoStackHold hold;
    for (DzNode* node : roots)
        dzScene->removeNode(node);
    hold.accept(roots.size() == 1 ? QString("Delete %1").arg(roots[0]->getLabel())
                                  : QString("Delete %1 Nodes").arg(roots.size()));
    return true;
}

void newScene()
{
    dzScene->clear();
}

void selectOnly(DzNode* node)
{
    dzScene->selectAllNodes(false);
    if (!node)
        return;
    node->select(true);
    dzScene->setPrimarySelection(node);
}

DzSkeleton* figureToPose()
{
    DzNode* node = dzScene->getPrimarySelection();
    return node ? node->getSkeleton() : nullptr;
}

static void addCorners(const DzBox3& box, std::vector<DzVec3>* points)
{
    const DzVec3 end[2] = {box.getMin(), box.getMax()};
    for (int i = 0; box.isValid() && i < 8; ++i)
        points->push_back(DzVec3(end[i & 1].m_x, end[i >> 1 & 1].m_y, end[i >> 2].m_z));
}

static void addPoints(const DzNode* node, std::vector<DzVec3>* points)
{
    const DzVec3 margin(kBoneMarginCm, kBoneMarginCm, kBoneMarginCm);
    const DzVec3 at = node->getWSPos();
    if (qobject_cast<const DzBone*>(node))
        return addCorners(DzBox3(at - margin, at + margin), points);
    const std::vector<DzVec3> skin = skinPoints(node);
    points->insert(points->end(), skin.begin(), skin.end());
    if (skin.empty())
        addCorners(node->getWSBoundingBox(), points);
}

std::vector<DzVec3> selectionPoints()
{
    std::vector<DzVec3> points;
    for (int i = 0; i < dzScene->getNumSelectedNodes(); ++i)
        addPoints(dzScene->getSelectedNode(i), &points);
    const bool nothingSelected = points.empty();
    for (int i = 0; nothingSelected && i < dzScene->getNumNodes(); ++i)
        if (dzScene->getNode(i)->isRootNode())
            addPoints(dzScene->getNode(i), &points);
    return points;
}

} // namespace quillon
