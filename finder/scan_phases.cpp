#include "finder/scan_phases.h"

#include "finder/pose_identify.h"
#include "finder/pose_index.h"
#include "finder/pose_similarity.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <vector>

namespace quillon {

static const char kMakerPoses[] = "data/Brannoc/poses";
static const char* const kVariantWords[] = {"mirror", "noexpression"};

// ---- telling

static const int kPositions = 100;
static const int kMostTold = 1000; // beside those at a new position

int scanPosition(int entry, int count)
{
    return entry * kPositions / count;
}

EntriesToTell::EntriesToTell(int count, int last)
    : m_count(count)
    , m_last(last)
    , m_step(std::max(1, (count + kMostTold - 1) / kMostTold))
    , m_position(-1)
{
}

bool EntriesToTell::isDue(int entry)
{
    const int position = scanPosition(entry, m_count);
    const bool isDue = position != m_position || entry == m_last || entry % m_step == 0;
    m_position = position;
    return isDue;
}

// ---- the two kinds of pass

template <typename Work> static bool forEachEntry(const ScanWatch& watch, Work work)
{
    const int count = poseCount();
    EntriesToTell toTell(count, count - 1);
    for (int entry = 0; entry < count; ++entry) {
        if (toTell.isDue(entry))
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
    return forEachEntry(watch, [&watch](int entry) {
        if (!identifyPose(entry))
            watch.missFile(poseEntry(entry)->path);
    });
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
    return std::any_of(std::begin(kVariantWords), std::end(kVariantWords), [&](const char* word) {
        return bool(path.contains(QLatin1String(word), Qt::CaseInsensitive));
    });
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

bool markDuplicates(const ScanWatch& watch)
{
    std::unordered_set<quint32> seen;
    return forEachEntry(watch, [&](int entry) {
        PoseIndexEntry* e = entryToChange(entry);
        if (e->contentHash != 0 && !e->isCustom && !seen.insert(e->contentHash).second)
            e->contentHash = 0;
    });
}

// An entry that was marked is none of the earlier ones any more, so each is only held against
// survivors.

template <typename Row> static std::vector<Row> rowsOf(Row (*rowOf)(const PoseIndexEntry&))
{
    std::vector<Row> rows;
    rows.reserve(std::size_t(poseCount()));
    for (int entry = 0; entry < poseCount(); ++entry)
        rows.push_back(rowOf(*poseEntry(entry)));
    return rows;
}

bool markMirrored(const ScanWatch& watch)
{
    MirrorPass pass(rowsOf(mirrorRowOf));
    return forEachEntry(watch, [&](int entry) {
        if (pass.firstMirrored(entry) != kNoMirror)
            entryToChange(entry)->contentHash = 0;
    });
}

bool markSimilar(const ScanWatch& watch)
{
    SimilarPass pass(rowsOf(similarRowOf));
    return forEachEntry(watch, [&](int entry) {
        if (pass.firstRepeated(entry) != kNoRepeat)
            entryToChange(entry)->contentHash = 0;
    });
}

} // namespace quillon
