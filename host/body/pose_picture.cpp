#include "host/body/pose_picture.h"

#include "host/body/figure_picture.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzscene.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <cmath>

namespace quillon {

static const float kDegPerRad = 57.2957795f;
static const float kUpright = 0.75f; // below this much of its height a figure lies

// How far the eye stands from the figure's front, and how high.
static const float kStandingYawDeg = 28, kStandingPitchDeg = 10;
static const float kLyingYawDeg = 70, kLyingPitchDeg = 28; // from the head's direction

// ---- the pose

static void clearNumbers(DzNode* node, DzTime time)
{
    for (int i = 0; i < node->getNumProperties(); ++i) {
        DzFloatProperty* number = qobject_cast<DzFloatProperty*>(node->getProperty(i));
        if (!number)
            continue;
        const bool locked = number->isLocked();
        number->lock(false);
        number->setValue(time, number->getDefaultValue());
        number->lock(locked);
    }
}

void clearFigurePose(DzSkeleton* figure)
{
    const DzUndoStackLock unrecorded;
    const DzTime time = dzScene->getTime();
    clearNumbers(figure, time);
    DzBoneList bones;
    figure->getAllBones(bones);
    for (DzBone* bone : std::as_const(bones))
        clearNumbers(bone, time);
}

// ---- the eye

static float headingDeg(const DzVec3& direction_world)
{
    return std::atan2(direction_world.m_x, direction_world.m_z) * kDegPerRad;
}

static void lookAtHip(const DzNode* hip, float* yawDeg, float* pitchDeg)
{
    const DzQuat turn_world = hip ? hip->getWSRot() : DzQuat();
    const DzVec3 up_world = turn_world.multVec(DzVec3(0, 1, 0));
    const DzVec3 front_world = turn_world.multVec(DzVec3(0, 0, 1));
    const bool lies = std::fabs(up_world.m_y) < kUpright && std::fabs(front_world.m_y) > 0.5f;
    *yawDeg
        = lies ? headingDeg(up_world) + kLyingYawDeg : headingDeg(front_world) + kStandingYawDeg;
    *pitchDeg = lies ? kLyingPitchDeg : kStandingPitchDeg;
}

static void bringHome(DzSkeleton* figure, const DzNode* hip)
{
    if (!hip)
        return;
    const DzVec3 from_world = hip->getWSPos(), at_world = figure->getWSPos();
    figure->setWSPos(dzScene->getTime(),
        DzVec3(at_world.m_x - from_world.m_x, at_world.m_y, at_world.m_z - from_world.m_z));
}

QImage posePicture(DzSkeleton* figure, const QSize& size)
{
    const DzUndoStackLock unrecorded;
    const DzNode* hip = figure->findBone(QString("hip"));
    float yawDeg = 0, pitchDeg = 0;
    bringHome(figure, hip);
    lookAtHip(hip, &yawDeg, &pitchDeg);
    return figurePicture(figure, yawDeg, pitchDeg, size);
}

} // namespace quillon
