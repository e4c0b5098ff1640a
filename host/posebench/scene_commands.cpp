#include "host/posebench/scene_commands.h"

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

static DzBox3 boxOf(const DzNode* node)
{
    if (!qobject_cast<const DzBone*>(node))
        return node->getWSBoundingBox();
    const DzVec3 margin(kBoneMarginCm, kBoneMarginCm, kBoneMarginCm);
    const DzVec3 at = node->getWSPos();
    return DzBox3(at - margin, at + margin);
}

DzBox3 selectionBox()
{
    DzBox3 box;
    for (int i = 0; i < dzScene->getNumSelectedNodes(); ++i)
        box.include(boxOf(dzScene->getSelectedNode(i)));
    for (int i = 0; !box.isValid() && i < dzScene->getNumNodes(); ++i)
        if (dzScene->getNode(i)->isRootNode())
            box.include(boxOf(dzScene->getNode(i)));
    return box;
}

} // namespace quillon
