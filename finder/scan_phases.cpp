#include "finder/scan_phases.h"

#include "finder/pose_identify.h"
#include "finder/pose_index.h"
#include "finder/pose_similarity.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
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

// ---- verdicts

static void tell(const ScanWatch& watch, const PoseIndexEntry& dropped, Verdict verdict)
{
    if (watch.tell)
        watch.tell(dropped.path, verdict, QString());
}

// Marks the entry as one to go, since the partner is kept.
static void mark(const ScanWatch& watch, int entry, Verdict verdict, int partner)
{
    PoseIndexEntry* e = entryToChange(entry);
    e->contentHash = 0;
    if (watch.tell)
        watch.tell(e->path, verdict, poseEntry(partner)->path);
}

// ---- entries by themselves

bool identifyPoses(const ScanWatch& watch)
{
    return forEachEntry(watch, [&watch](int entry) {
        quint32 code = 0;
        const PoseIndexEntry& each = *poseEntry(entry);
        if (!identifyPose(entry, &code)) {
            watch.missFile(each.path);
            tell(watch, each, Verdict::Unreadable);
        } else if (each.contentHash == 0) {
            tell(watch, each, code == 0 ? Verdict::NotWholeBody : Verdict::OtherFigure);
        }
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
    return compact(watch, [&watch](const PoseIndexEntry& each) {
        const bool isVariant = isMakerVariant(each.path);
        if (isVariant)
            tell(watch, each, Verdict::MakerVariant);
        return !isVariant;
    });
}

bool dropMarked(const ScanWatch& watch)
{
    return compact(watch, [](const PoseIndexEntry& each) { return each.contentHash != 0; });
}

// ---- later entries against earlier ones

bool markDuplicates(const ScanWatch& watch)
{
    std::unordered_map<quint32, int> firstOf; // by hash
    return forEachEntry(watch, [&](int entry) {
        const PoseIndexEntry* e = entryToChange(entry);
        if (e->contentHash == 0 || e->isCustom)
            return;
        const auto first = firstOf.emplace(e->contentHash, entry);
        if (!first.second)
            mark(watch, entry, Verdict::SameContent, first.first->second);
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
        const int partner = pass.firstMirrored(entry);
        if (partner != kNoMirror)
            mark(watch, entry, Verdict::MirrorOf, partner);
    });
}

bool markSimilar(const ScanWatch& watch)
{
    SimilarPass pass(rowsOf(similarRowOf));
    return forEachEntry(watch, [&](int entry) {
        const int partner = pass.firstRepeated(entry);
        if (partner != kNoRepeat)
            mark(watch, entry, Verdict::SimilarTo, partner);
    });
}

} // namespace quillon
