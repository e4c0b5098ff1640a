#include "finder/scan_phases.h"

#include "finder/pose_identify.h"
#include "finder/pose_index.h"
#include "finder/pose_similarity.h"
#include "posefile/custom_library.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace quillon {

static const char kMakerPoses[] = "data/Brannoc/poses";
static const char* const kVariantWords[] = {"mirror", "noexpression"};

// ---- the two kinds of pass

template <typename Work> static bool forEachEntry(const ScanWatch& watch, Work work)
{
    const int count = poseCount();
    for (int entry = 0; entry < count; ++entry) {
        watch.show(entry, count);
        work(entry);
        if (watch.isCancelled())
            return false;
    }
    return true;
}

template <typename Keep> static bool compact(const ScanWatch& watch, Keep keep)
{
    int kept = 0;
    const bool finished = forEachEntry(watch, [&](int entry) {
        if (keep(*poseEntry(entry)))
            copyEntry(entry, kept++);
    });
    if (finished)
        truncatePoseIndex(kept);
    return finished;
}

bool identifyPoses(const ScanWatch& watch)
{
    return forEachEntry(watch, identifyPose);
}

bool keepIdentified(const ScanWatch& watch)
{
    return compact(
        watch, [](const PoseIndexEntry& each) { return each.figureCode != kFigureNotIdentified; });
}

static bool isMakerVariant(const QString& path)
{
    if (!path.contains(QLatin1String(kMakerPoses), Qt::CaseInsensitive))
        return false;
    return std::any_of(std::begin(kVariantWords), std::end(kVariantWords),
        [&](const char* word) { return path.contains(QLatin1String(word), Qt::CaseInsensitive); });
}

bool dropMakerVariants(const ScanWatch& watch)
{
    return compact(watch, [](const PoseIndexEntry& each) { return !isMakerVariant(each.path); });
}

bool dropMarked(const ScanWatch& watch)
{
    return compact(watch, [](const PoseIndexEntry& each) { return each.contentHash != 0; });
}

// ---- later entries against earlier ones

// repeats: whether the entry repeats one of those that survived; if not it is to remember it as
// one of them. An entry that was marked is none of the earlier ones any more, so each is only held
// against survivors.
template <typename Repeats> static bool markRepeats(const ScanWatch& watch, Repeats repeats)
{
    return forEachEntry(watch, [&](int entry) {
        PoseIndexEntry* e = poseEntry(entry);
        if (e->contentHash != 0 && !isCustomLibraryPath(e->path) && repeats(*e))
            e->contentHash = 0;
    });
}

bool markDuplicates(const ScanWatch& watch)
{
    std::unordered_set<quint32> seen;
    return markRepeats(
        watch, [&](const PoseIndexEntry& each) { return !seen.insert(each.contentHash).second; });
}

bool markMirrored(const ScanWatch& watch)
{
    std::vector<MirrorMarks> earlier;
    return markRepeats(watch, [&](const PoseIndexEntry& each) {
        const MirrorMarks marks = mirrorMarksOf(each);
        const bool mirrored = std::any_of(earlier.begin(), earlier.end(),
            [&](const MirrorMarks& a) { return areMirrored(a, marks); });
        if (!mirrored)
            earlier.push_back(marks);
        return mirrored;
    });
}

bool markSimilar(const ScanWatch& watch)
{
    std::vector<PoseProbes> earlier;
    return markRepeats(watch, [&](const PoseIndexEntry& each) {
        const PoseProbes probes = probesOf(each);
        const bool similar = std::any_of(earlier.begin(), earlier.end(),
            [&](const PoseProbes& a) { return areSimilar(a, probes); });
        if (!similar)
            earlier.push_back(probes);
        return similar;
    });
}

} // namespace quillon
