#include "finder/browse_options.h"

#include "figure/body_parts.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "figure/pose_limits.h"
#include "figure/reset_pose.h"
#include "ground/plugin_settings.h"
#include "posefile/part_locks.h"

#include "dzbone.h"
#include "dzskeleton.h"

namespace quillon {

void clearUnlockedParts(DzSkeleton* figure, DzTime time)
{
    setPartLocks(figure, true, time);
    resetPose(figure, ResetWholeFigure);
    setPartLocks(figure, false, time);
}

static void setBodyLimits(DzSkeleton* figure, bool clamp)
{
    const bool remember = false;
    setBodyBoneLimits(figure, clamp, remember);
    setBodyControlLimits(figure, clamp, remember);
}

void releaseBrowsingLimits(DzSkeleton* figure)
{
    if (pluginSettings().allowPoseViolation)
        setBodyLimits(figure, false);
    if (pluginSettings().allowFaceViolation)
        setFaceLimits(figure, false, false);
}

static bool isInLockedPart(const QString& boneName)
{
    for (int part = 0; part < kBodyPartCount; ++part) {
        if (pluginSettings().partLocks[part] && boneInPart(boneName, BodyPart(part)))
            return true;
    }
    return false;
}

static void zeroTranslations(DzSkeleton* figure)
{
    for (const FigureBone& each : bonesOf(figure)) {
        const QString& name = boneName(each.number);
        if (isTranslatableBone(name) && !isInLockedPart(name))
            limitFreedTranslation(each.bone, 0);
    }
}

void enforceBrowsingLimits(DzSkeleton* figure)
{
    if (!pluginSettings().allowPoseViolation)
        setBodyLimits(figure, true);
    if (!pluginSettings().allowFaceViolation)
        setFaceLimits(figure, true, false);
    if (!pluginSettings().allowTranslations)
        zeroTranslations(figure);
}

} // namespace quillon
