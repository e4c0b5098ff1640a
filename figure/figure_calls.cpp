#include "figure/figure_calls.h"

#include "figure/bake_pose.h"
#include "figure/optimize_editing.h"
#include "figure/pose_limits.h"
#include "figure/reset_pose.h"

#include "dzscene.h"

namespace quillon {

static DzTime sceneTime()
{
    return dzScene ? dzScene->getTime() : 0;
}

static bool isResetMode(int mode)
{
    return mode == ResetWholeFigure || (mode >= ResetBody && mode <= ResetSelected);
}

void resetPose(DzNode* figure, int mode)
{
    if (isResetMode(mode))
        resetPose(figure, ResetMode(mode), sceneTime());
}

bool inResetPart(const DzNode* bone, int mode)
{
    return isResetMode(mode) && inResetPart(bone, ResetMode(mode));
}

void bakePose(DzNode* figure, int part)
{
    if (part == BakeBody || part == BakeFace)
        bakePose(figure, BakePart(part), sceneTime());
}

void setBodyBoneLimits(DzNode* figure, bool clamp, bool remember)
{
    setBodyBoneLimits(figure, clamp, remember, sceneTime());
}

void setBodyControlLimits(DzNode* figure, bool clamp, bool remember)
{
    setBodyControlLimits(figure, clamp, remember, sceneTime());
}

void setFaceLimits(DzNode* figure, bool clamp, bool remember)
{
    setFaceLimits(figure, clamp, remember, sceneTime());
}

void setPoseLimits(DzNode* figure, bool clamp, int partMask)
{
    setPoseLimits(figure, clamp, LimitPart(partMask & AllLimits), sceneTime());
}

void limitTranslation(DzNode* bone, float rangeCm)
{
    limitTranslation(bone, rangeCm, sceneTime());
}

void limitBoneTranslations(DzNode* figure, float rangeCm)
{
    limitBoneTranslations(figure, rangeCm, sceneTime());
}

bool optimizeEditing(DzNode* node, DzSkeleton* figure, int centre)
{
    const bool known = centre == HipAsCentre || centre == RootAsCentre;
    return optimizeEditing(node, figure, known ? CentreChoice(centre) : NoCentre, sceneTime());
}

} // namespace quillon
