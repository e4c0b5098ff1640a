// The phases that work on the index, and telling the progress window of them.
#include "bench/scanning_rows.h"

#include "bench/scanned_texts.h"
#include "finder/pose_identify.h"
#include "finder/pose_index.h"
#include "finder/scan_phases.h"
#include "ground/hash.h"
#include "reference/finder_reference.h"
#include "reference/hash_reference.h"

#include "dzprogress.h"

#include <cstring>
#include <random>

namespace quillon {
namespace scanning {

static const int kDigits = 8; // of a preset's number in its text
static const int kReferencePresets = 16;

// ---- the phases that pose no figure

static DzQuat randomRotation(std::minstd_rand* random)
{
    std::normal_distribution<double> normal;
    return DzQuat(normal(*random), normal(*random), normal(*random), normal(*random));
}

// As if each preset was a file of its own: its number stands in its text.
static void numberPreset(QByteArray* text, int number)
{
    static const char kBefore[] = "\"id\" : \"/";
    const int at = text->indexOf(kBefore) + int(std::strlen(kBefore));
    const QByteArray digits = QByteArray::number(number).rightJustified(kDigits, '0');
    std::memcpy(text->data() + at, digits.constData(), kDigits);
}

static ScanWatch quietWatch()
{
    ScanWatch watch;
    watch.missFile = [](const QString&) {};
    watch.show = [](int, int) {};
    watch.isCancelled = [] { return false; };
    return watch;
}

static bool looksLikePose(const QByteArray& text)
{
    return containsWord(text.constData(), 1024, "preset_pose");
}

static void identifyNumbered(QByteArray* text, int entry)
{
    numberPreset(text, entry);
    PoseIndexEntry* e = entryToChange(entry);
    e->figureCode = figureCodeOf(text->constData(), text->size(), malePath());
    e->contentHash = djb2Hash(text->constData(), text->size());
}

static std::uint32_t checksumOfIndex()
{
    std::uint32_t sum = 0;
    for (int entry = 0; entry < poseCount(); ++entry)
        sum = sum * 33 + poseEntry(entry)->contentHash + poseEntry(entry)->figureCode;
    return sum;
}

static void giveSignatures(const std::vector<DzQuat>& rotations)
{
    std::size_t next = 0;
    for (int entry = 0; entry < poseCount(); ++entry) {
        for (DzQuat& each : entryToChange(entry)->signature)
            each = rotations[next++];
    }
}

namespace {

struct PhaseTimes {
    double findMs, identifyMs, indexMs;
    std::uint32_t checksum; // of codes and hashes
};

} // namespace

static PhaseTimes runPhases(QByteArray* text, int count, const std::vector<DzQuat>& rotations)
{
    PhaseTimes times = {};
    const ScanWatch watch = quietWatch();
    double start = processorMs();
    resetPoseIndex();
    for (int n = 0; n < count && looksLikePose(*text); ++n)
        appendPose(malePath());
    times.findMs = processorMs() - start;
    start = processorMs();
    for (int entry = 0; entry < count; ++entry)
        identifyNumbered(text, entry);
    times.identifyMs = processorMs() - start;
    times.checksum = checksumOfIndex();
    giveSignatures(rotations);
    start = processorMs();
    for (const auto phase :
        {keepIdentified, dropMakerVariants, markDuplicates, markMirrored, markSimilar, dropMarked})
        phase(watch);
    times.indexMs = processorMs() - start;
    return times;
}

// Codes and hashes of the first presets by the literal forms.
static std::uint32_t literalPhases(QByteArray* text, int count)
{
    resetPoseIndex();
    for (int entry = 0; entry < count; ++entry) {
        appendPose(malePath());
        numberPreset(text, entry);
        entryToChange(entry)->figureCode = reference::figureCodeOf(*text, malePath());
        entryToChange(entry)->contentHash = reference::djb2Hash(text->constData(), text->size());
    }
    return checksumOfIndex();
}

void timePhases(const DzFigure* figure)
{
    QByteArray text = endingAsWholeBody(presetText(figure, kPresetBytes));
    std::minstd_rand random(7);
    std::vector<DzQuat> rotations;
    while (rotations.size() < std::size_t(counts().back()) * kSignatureSlots)
        rotations.push_back(randomRotation(&random));
    createPoseIndex();
    const std::uint32_t few = runPhases(&text, kReferencePresets, rotations).checksum;
    CommonRow before;
    for (const int count : counts()) {
        const PhaseTimes times = runPhases(&text, count, rotations);
        CommonRow row;
        row.name = "phases_but_pose";
        row.n = count;
        row.ms = times.findMs + times.identifyMs + times.indexMs;
        row.isExtrapolated = true;
        row.checksum = few;
        const double start = processorMs();
        const std::uint32_t literal = literalPhases(&text, kReferencePresets);
        row.referenceMs = (processorMs() - start) / kReferencePresets * count;
        row.note = eachUs(row.ms, count) + ": find " + eachUs(times.findMs, count) + ", identify "
            + eachUs(times.identifyMs, count) + ", index phases " + eachUs(times.indexMs, count);
        if (before.n > 0)
            row.exponent = exponentOf(row.ms, row.n, before.ms, before.n);
        finish(row, literal);
        before = row;
    }
    freePoseIndex();
}

// ---- telling the progress window

// The texts and positions of one phase, as a window without a screen takes them. The sum of the
// positions that it came to.
template <typename IsDue> static std::uint32_t tellPhase(int count, IsDue isDue)
{
    DzProgress progress(QLatin1String("Scanning..."), 100, true);
    std::uint32_t sum = 0;
    int before = -1;
    for (int entry = 0; entry < count && !progress.isCancelled(); ++entry) {
        if (!isDue(entry))
            continue;
        progress.setInfo(QString::fromLatin1("Identifying pose files... %1 of %2")
                             .arg(entry, 0, 10, QLatin1Char(' '))
                             .arg(count, 0, 10, QLatin1Char(' ')));
        progress.update(scanPosition(entry, count));
        const int position = entry * 100 / count;
        sum += position != before ? std::uint32_t(position) : 0;
        before = position;
    }
    return sum;
}

static std::uint32_t tellDueEntries(int count)
{
    EntriesToTell toTell(count, count - 1);
    return tellPhase(count, [&toTell](int entry) { return toTell.isDue(entry); });
}

void timeTelling()
{
    for (const int count : counts()) {
        CommonRow row;
        row.name = "tell_one_phase";
        row.n = count;
        row.ms = timed([&] { row.checksum = tellDueEntries(count); });
        std::uint32_t literal = 0;
        row.referenceMs = timed([&] { literal = tellPhase(count, [](int) { return true; }); });
        row.note = eachUs(row.ms, count);
        finish(row, literal);
    }
}

// What comes before the first entry of the two passes, in which no cancel is seen.
void timePassBegins()
{
    createPoseIndex();
    std::minstd_rand random(8);
    for (int n = 0; n < counts().back(); ++n) {
        PoseIndexEntry& e = *entryToChange(appendPose(malePath()));
        for (DzQuat& each : e.signature)
            each = randomRotation(&random);
        e.contentHash = quint32(n + 1);
        e.figureCode = kMaleCode;
    }
    ScanWatch watch = quietWatch();
    watch.isCancelled = [] { return true; };
    for (const auto& pass : {std::make_pair("mirrored_begins", markMirrored),
             std::make_pair("similar_begins", markSimilar)}) {
        CommonRow row;
        row.name = pass.first;
        row.n = poseCount();
        row.ms = timed([&] { pass.second(watch); });
        finish(row, 0);
    }
    freePoseIndex();
}

} // namespace scanning
} // namespace quillon
