#include "posefile/swap_symmetrize.h"

#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "figure/hip_centre.h"
#include "ground/file_lock.h"
#include "ground/system_files.h"
#include "posefile/part_locks.h"
#include "posefile/pose_channels.h"
#include "posefile/pose_reader.h"
#include "posefile/pose_rewriter.h"
#include "posefile/pose_writer.h"

#include "dzapp.h"
#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <QFile>

#include <vector>

namespace quillon {

// ---- the temporary files

namespace {

struct TempFiles {
    QString written; // the pose as it is
    QString rewritten; // the one to apply
};

} // namespace

static TempFiles tempFiles()
{
    const QString folder = dzApp ? dzApp->getTempPath() : QString();
    return TempFiles {folder + QLatin1String("/qlntemp_0DE54EF1.duf"),
        folder + QLatin1String("/qlntemp_0DE54EF2.duf")};
}

static void remove(const TempFiles& files)
{
    QFile::remove(files.written);
    QFile::remove(files.rewritten);
}

static QString lockOf(const TempFiles& files)
{
    return files.written + QLatin1String(".lock");
}

// The lock's own file goes, too. Another host that swaps just now keeps its poses.
void removePassingPoses()
{
    const TempFiles files = tempFiles();
    const FileLock lock(lockOf(files), 0);
    if (!lock.isOthers())
        remove(files);
}

// A value is set only where the channel's own, written into the file, would read otherwise: the
// rest of the pose gets no keys and does not lose the digits that the file has no room for.
static void setWhereOther(DzFloatProperty* channel, DzTime time, float value)
{
    if (valueAsWritten(storedValue(channel, time)) != value)
        setStoredValue(channel, time, value);
}

// A bone that is not touched is put back afterwards.
static void setWhereOtherAndTouched(DzFloatProperty* channel, DzTime time, float value)
{
    const DzBone* bone = qobject_cast<const DzBone*>(channel->getOwner());
    if (!bone || isBoneTouched(boneIndex(bone->getName())))
        setWhereOther(channel, time, value);
}

bool applyRewritten(DzNode* figure, DzTime time, const Rewriting& how)
{
    DzSkeleton* skeleton = figureOf(figure);
    const TempFiles files = tempFiles();
    const FileLock lock(lockOf(files), kPatienceMs);
    if (lock.isOthers()) // another host on the same folder, which would apply this pose
        return false;
    remove(files); // what an earlier failure left must not be taken for this pose
    const bool ready = writePassingPose(skeleton, time, files.written)
        && rewritePoseFile(files.written, files.rewritten, figure, how.withChildren, how.symmetrize,
            how.includeFace, how.mirrorAll);
    if (!ready)
        return false;
    if (how.useLocks)
        setPartLocks(figure, true, time);
    const SetChannel set = how.touchedBonesOnly ? setWhereOtherAndTouched : setWhereOther;
    const bool applied = applyPose(skeleton, time, files.rewritten, false, set);
    if (applied)
        remove(files);
    if (how.useLocks)
        setPartLocks(figure, false, time);
    return applied;
}

// ---- the commands

// Everything that makes a bone's local scale, rotation and position.
static void keepBone(const DzBone* bone, DzTime time, ChannelSnapshot* kept)
{
    DzFloatProperty* const scales[] = {bone->getScaleControl(), bone->getXScaleControl(),
        bone->getYScaleControl(), bone->getZScaleControl()};
    for (DzFloatProperty* channel : scales)
        kept->push_back(keepValue(channel, time));
    keepPoseChannels(bone, time, kept);
}

namespace {

struct KeptBone {
    int number;
    ChannelSnapshot channels;
};

} // namespace

static std::vector<KeptBone> keepBones(const DzNode* figure, DzTime time)
{
    std::vector<KeptBone> bones;
    for (const FigureBone& each : bonesOf(figure)) {
        bones.push_back(KeptBone {each.number, {}});
        keepBone(each.bone, time, &bones.back().channels);
    }
    return bones;
}

static void putBackUntouched(const std::vector<KeptBone>& bones, DzTime time)
{
    for (const KeptBone& bone : bones) {
        if (!isBoneTouched(bone.number))
            putBackValues(bone.channels, time);
    }
}

bool swapOrSymmetrize(DzNode* figure, SwapReach reach, DzTime time, bool symmetrize)
{
    DzBone* hip = findBone(QLatin1String("hip"), figure);
    if (!hip)
        return false;
    const bool wholeFigure = figure->isSelected();
    std::vector<KeptBone> kept;
    if (!wholeFigure)
        kept = keepBones(figure, time);
    clearTouchedBones();
    Rewriting how;
    how.withChildren = reach == BonesBelowToo;
    how.symmetrize = symmetrize;
    how.includeFace = !symmetrize;
    how.mirrorAll = wholeFigure;
    how.touchedBonesOnly = !wholeFigure;
    if (!applyRewritten(figure, time, how))
        return false;
    putBackUntouched(kept, time);
    hipAsCentre(figure, hip, time); // no entry sets the hip's place; a failure must not move it
    return true;
}

bool mirrorWholePose(DzNode* figure, DzTime time)
{
    DzBone* hip = findBone(QLatin1String("hip"), figure);
    if (!hip)
        return false;
    Rewriting how;
    how.withChildren = how.useLocks = how.includeFace = how.mirrorAll = true;
    if (!applyRewritten(figure, time, how))
        return false;
    hipAsCentre(figure, hip, time);
    return true;
}

} // namespace quillon
