#include "posefile/pose_reader.h"

#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "figure/reset_pose.h"
#include "figure/selected_figure.h"
#include "posefile/pose_targets.h"
#include "posefile/pose_text.h"

#include "dzbone.h"
#include "dzskeleton.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace quillon {

// ---- the whole pose

void applyPoseText(DzSkeleton* figure, DzTime time, SetChannel set)
{
    PoseTargets targets(figure);
    TextSpan entry;
    for (int n = 0; n < kMaxEntries && nextEntry(&entry); ++n) {
        const int code = channelOf(entry);
        if (code == NoChannel)
            continue;
        if (DzFloatProperty* channel = targets.channel(nodeNameOf(entry), code))
            set(channel, time, valueOf(entry));
    }
}

bool readAndApplyPoseFile(const QString& path, DzNode* figure, DzTime time)
{
    DzSkeleton* skeleton = figureOf(figure);
    if (!skeleton || !loadPoseText(path))
        return false;
    applyPoseText(skeleton, time);
    return true;
}

bool applyPose(
    DzSkeleton* figure, DzTime time, const QString& path, bool resetFirst, SetChannel set)
{
    if (!hipOf(figure)
        || !loadPoseText(path)) // before the reset: an unreadable file changes nothing
        return false;
    if (resetFirst)
        resetPose(figure, ResetWholeFigure, time);
    applyPoseText(figure, time, set);
    return true;
}

// ---- key bones

// clang-format off
const char* const kKeyBones[] = {
    "lShin", "rShin", "lThighBend", "rThighBend", "pelvis", "lForearmBend", "rForearmBend",
    "lShldrBend", "rShldrBend", "lCollar", "rCollar", "chestUpper", "chestLower",
    "abdomenUpper", "abdomenLower", "hip"};
// clang-format on
static_assert(std::size(kKeyBones) == kKeyBoneCount, "none is missing");

namespace {

const int kMaxKeyBoneLength = 12;
const int kAxisCount = 3;

struct KeyRotations {
    float deg[kKeyBoneCount][kAxisCount];
    bool found[kKeyBoneCount][kAxisCount];
    int missing;
};

} // namespace

static bool endsWith(const TextSpan& text, const char* word, int length)
{
    return text.end - text.begin >= length
        && std::memcmp(text.end - length, word, size_t(length)) == 0;
}

// The key bone whose "selection/<bone>" ends the text; -1: none.
static int keyBoneAtEndOf(const TextSpan& text)
{
    static const char kSelection[] = "selection/";
    static const int kSelectionLength = sizeof kSelection - 1;
    const char* limit = text.end - std::min<ptrdiff_t>(kMaxKeyBoneLength, text.end - text.begin);
    const char* name = text.end;
    while (name > limit && name[-1] != '/')
        --name;
    if (!endsWith(TextSpan {text.begin, name}, kSelection, kSelectionLength))
        return -1;
    const size_t length = size_t(text.end - name);
    for (int i = 0; i < kKeyBoneCount; ++i) {
        if (std::strlen(kKeyBones[i]) == length && std::memcmp(kKeyBones[i], name, length) == 0)
            return i;
    }
    return -1;
}

// The axis of "?rotation/x/value" at this place as 0, 1, 2; -1: other text.
static int rotationAxisAt(const char* at, const char* end)
{
    static const char kBefore[] = "?rotation/";
    static const char kBehind[] = "/value";
    static const int kBeforeLength = sizeof kBefore - 1, kBehindLength = sizeof kBehind - 1;
    if (end - at < kBeforeLength + 1 + kBehindLength || std::memcmp(at, kBefore, kBeforeLength) != 0
        || std::memcmp(at + kBeforeLength + 1, kBehind, kBehindLength) != 0)
        return -1;
    const char axis = at[kBeforeLength];
    return axis >= 'x' && axis <= 'z' ? axis - 'x' : -1;
}

// Takes the value of the key around this "?" if it is the first of its kind.
static void takeKey(const TextSpan& text, const char* at, KeyRotations* keys)
{
    const int axis = rotationAxisAt(at, text.end);
    if (axis < 0 || at == text.begin || at[-1] != ':')
        return;
    const int bone = keyBoneAtEndOf(TextSpan {text.begin, at - 1});
    if (bone < 0 || keys->found[bone][axis])
        return;
    keys->found[bone][axis] = true;
    keys->deg[bone][axis] = numberAfterTwoCommas(at, text.end);
    --keys->missing;
}

static KeyRotations keyRotationsIn(const TextSpan& text)
{
    KeyRotations keys = {};
    keys.missing = kKeyBoneCount * kAxisCount;
    for (const char* from = text.begin; from < text.end && keys.missing > 0;) {
        const void* query = std::memchr(from, '?', size_t(text.end - from));
        if (!query)
            break;
        takeKey(text, static_cast<const char*>(query), &keys);
        from = static_cast<const char*>(query) + 1;
    }
    return keys;
}

void applyKeyBoneText(DzSkeleton* figure, DzTime time, SetChannel set)
{
    const KeyRotations keys = keyRotationsIn(poseText());
    for (int i = 0; i < kKeyBoneCount; ++i) {
        const DzBone* bone = figure->findBone(QLatin1String(kKeyBones[i]));
        if (!bone)
            continue;
        set(bone->getXRotControl(), time, keys.deg[i][0]);
        set(bone->getYRotControl(), time, keys.deg[i][1]);
        set(bone->getZRotControl(), time, keys.deg[i][2]);
    }
}

bool readKeyBoneRotations(const QString& path, DzNode* figure, DzTime time)
{
    DzSkeleton* skeleton = figureOf(figure);
    if (!skeleton || !loadPoseText(path))
        return false;
    applyKeyBoneText(skeleton, time);
    return true;
}

} // namespace quillon
