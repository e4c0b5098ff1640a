#include "finder/scan_figure.h"

#include "figure/figure_walks.h"
#include "figure/pose_limits.h"
#include "figure/reset_pose.h"
#include "ground/host_types.h"
#include "posefile/pose_reader.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

namespace quillon {

ScanFigure beginScanPoses(DzSkeleton* figure, DzTime time)
{
    ScanFigure scan = {figure, time, figure->findBone(QLatin1String("hip")), {}};
    keepPoseChannels(figure, time, &scan.kept);
    for (const FigureBone& each : bonesOf(figure))
        keepPoseChannels(each.bone, time, &scan.kept);
    setBodyBoneLimits(figure, false, true, time);
    // Channels first: a turn of 360 degrees is no turn, but would stay in the sign of what follows.
    zeroBoneChannels(figure, time);
    figure->setWSRot(time, DzQuat());
    return scan;
}

bool tryPose(const ScanFigure& scan, const QString& path)
{
    const DzTime time = scan.time;
    if (!readKeyBoneRotations(path, scan.figure, time))
        return false;
    scan.figure->setWSPos(time, DzVec3());
    scan.hip->setWSPos(time, DzVec3());
    const DzQuat hipRot_world = scan.hip->getWSRot(time);
    scan.figure->setWSRot(time, DzQuat());
    scan.hip->setWSRot(time, hipRot_world);
    return true;
}

void endScanPoses(const ScanFigure& scan)
{
    setBodyBoneLimits(scan.figure, true, true, scan.time); // may pull the last pose into range
    for (const KeptValue& each : scan.kept)
        putBackStored(each, scan.time);
}

} // namespace quillon
