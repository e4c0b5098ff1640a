#include "figure/hip_centre.h"

#include "dzfloatproperty.h"
#include "dznode.h"

namespace quillon {

static bool isMoveLocked(const DzNode* node)
{
    return node->getXPosControl()->isLocked() || node->getYPosControl()->isLocked()
        || node->getZPosControl()->isLocked();
}

static bool isTurnLocked(const DzNode* node)
{
    return node->getXRotControl()->isLocked() || node->getYRotControl()->isLocked()
        || node->getZRotControl()->isLocked();
}

void hipAsCentre(DzNode* figure, DzNode* hip, DzTime time)
{
    const DzVec3 none(0, 0, 0);
    if (hip->getLocalPos(time) == none || isMoveLocked(figure) || isMoveLocked(hip))
        return;
    const DzVec3 figureCm_world = figure->getWSPos(time);
    figure->setWSPos(time, none); // near the origin the difference is exact
    const DzVec3 beforeCm_world = hip->getWSPos(time);
    hip->setLocalPos(time, none);
    const DzVec3 afterCm_world = hip->getWSPos(time);
    figure->setWSPos(time, figureCm_world + (beforeCm_world - afterCm_world));
}

void rootAsCentre(DzNode* figure, DzNode* hip, DzTime time)
{
    if (isMoveLocked(figure) || isTurnLocked(figure) || isMoveLocked(hip) || isTurnLocked(hip))
        return;
    const DzQuat hip_world = hip->getWSRot(time);
    const DzVec3 hipCm_world = hip->getWSPos(time);
    figure->setWSRot(time, DzQuat());
    figure->setWSPos(time, DzVec3(0, 0, 0));
    hip->setWSRot(time, hip_world);
    hip->setWSPos(time, hipCm_world);
}

} // namespace quillon
