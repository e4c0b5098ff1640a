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
    resetPose(figure, ResetWholeFigure, time);
    setPartLocks(figure, false, time);
}

static void setBodyLimits(DzSkeleton* figure, bool clamp, DzTime time)
{
    const bool remember = false;
    setBodyBoneLimits(figure, clamp, remember, time);
    setBodyControlLimits(figure, clamp, remember, time);
}

void releaseBrowsingLimits(DzSkeleton* figure, DzTime time)
{
    if (pluginSettings().allowPoseViolation)
        setBodyLimits(figure, false, time);
    if (pluginSettings().allowFaceViolation)
        setFaceLimits(figure, false, false, time);
}

static bool isInLockedPart(const QString& boneName)
{
    for (int part = 0; part < kBodyPartCount; ++part) {
        if (pluginSettings().partLocks[part] && boneInPart(boneName, BodyPart(part)))
            return true;
    }
    return false;
}

static void zeroTranslations(DzSkeleton* figure, DzTime time)
{
    for (const FigureBone& each : bonesOf(figure)) {
        const QString& name = boneName(each.number);
        if (isTranslatableBone(name) && !isInLockedPart(name))
            limitFreedTranslation(each.bone, 0, time);
    }
}

void enforceBrowsingLimits(DzSkeleton* figure, DzTime time)
{
    if (!pluginSettings().allowPoseViolation)
        setBodyLimits(figure, true, time);
    if (!pluginSettings().allowFaceViolation)
        setFaceLimits(figure, true, false, time);
    if (!pluginSettings().allowTranslations)
        zeroTranslations(figure, time);
}

} // namespace quillon
