// time_scanning [--quick] - what a scan does itself: telling from a file's bytes what it holds,
// their hash, the phases that work on the index, telling the progress window, and posing the
// figure for a signature. Bytes come from memory, as the host unpacks them.
//
// Rows are those of common_row.h. n is bytes for the texts, else presets of 164 KB. References are
// the literal forms of tests/reference/; where the whole would take minutes they are timed on the
// first of the presets and multiplied. Checksums of both must be the same.
// --quick: small sizes once; says only whether the checksums are the same.
#include "bench/common_row.h"
#include "bench/posed_figure.h"
#include "bench/scanned_texts.h"
#include "finder/pose_identify.h"
#include "finder/pose_index.h"
#include "finder/pose_signature.h"
#include "finder/scan_phases.h"
#include "ground/hash.h"
#include "posefile/pose_reader.h"
#include "posefile/pose_text.h"
#include "reference/finder_reference.h"
#include "reference/hash_reference.h"
#include "reference/pose_reader_reference.h"

#include "dzprogress.h"

#include <QCoreApplication>

#include <cstring>
#include <random>

using namespace quillon;

static const int kPresetBytes = 164 * 1024;
static const int kDigits = 8; // of a preset's number in its text
static const int kReferencePresets = 16;

static bool g_isQuick;
static bool g_areSame = true;

static void finish(CommonRow row, std::uint32_t referenceSum)
{
    const bool isSame = row.checksum == referenceSum;
    g_areSame = g_areSame && isSame;
    if (!isSame)
        row.note = "CHECKSUMS DIFFER";
    if (!g_isQuick || !isSame)
        printRow(row);
}

template <typename Work> static double timed(Work work)
{
    if (!g_isQuick)
        return medianMs(work);
    work();
    return 1;
}

static std::vector<int> textSizes()
{
    return g_isQuick ? std::vector<int> {1024, 8192}
                     : std::vector<int> {1024, 8192, 65536, kReadBufferBytes};
}

static std::vector<int> counts()
{
    return g_isQuick ? std::vector<int> {64} : std::vector<int> {1024, 8192, 65536};
}

// ---- texts

typedef std::uint32_t (*TextWork)(const QByteArray&);

static QString malePath()
{
    return QLatin1String("/content/People/Genesis 8 Male/Poses/sit.duf");
}

static std::uint32_t codeOf(const QByteArray& text)
{
    return figureCodeOf(text.constData(), text.size(), malePath());
}

static std::uint32_t literalCodeOf(const QByteArray& text)
{
    return reference::figureCodeOf(text, malePath());
}

static std::uint32_t hashOf(const QByteArray& text)
{
    return djb2Hash(text.constData(), text.size());
}

static std::uint32_t literalHashOf(const QByteArray& text)
{
    return reference::djb2Hash(text.constData(), text.size());
}

static std::uint32_t bothOf(const QByteArray& text)
{
    return codeOf(text) * 31 + hashOf(text);
}

static std::uint32_t literalBothOf(const QByteArray& text)
{
    return literalCodeOf(text) * 31 + literalHashOf(text);
}

static void timeTexts(
    const char* name, TextWork work, TextWork literal, const std::vector<QByteArray>& texts)
{
    CommonRow before;
    for (const QByteArray& text : texts) {
        CommonRow row;
        row.name = name;
        row.n = text.size();
        row.ms = timed([&] { row.checksum = work(text); });
        std::uint32_t literalSum = 0;
        row.referenceMs = timed([&] { literalSum = literal(text); });
        if (before.n > 0)
            row.exponent = exponentOf(row.ms, row.n, before.ms, before.n);
        row.note = QByteArray::number(double(row.n) / row.ms / 1e6, 'f', 1).toStdString() + " GB/s";
        finish(row, literalSum);
        before = row;
    }
}

static void timeAllTexts(const DzFigure* figure)
{
    std::vector<QByteArray> presets, letters, misses;
    for (const int size : textSizes()) {
        presets.push_back(endingAsWholeBody(presetText(figure, size)));
        letters.push_back(endingAsWholeBody(letterText(size)));
        misses.push_back(endingAsWholeBody(nearMissText(size)));
    }
    timeTexts("identify_preset", codeOf, literalCodeOf, presets);
    timeTexts("identify_letters", codeOf, literalCodeOf, letters);
    timeTexts("identify_near_misses", codeOf, literalCodeOf, misses);
    timeTexts("hash", hashOf, literalHashOf, presets);
    timeTexts("identify_and_hash", bothOf, literalBothOf, presets);
}

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
    PoseIndexEntry* e = poseEntry(entry);
    e->figureCode = codeOf(*text);
    e->contentHash = hashOf(*text);
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
        for (DzQuat& each : poseEntry(entry)->signature)
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
        poseEntry(entry)->figureCode = literalCodeOf(*text);
        poseEntry(entry)->contentHash = literalHashOf(*text);
    }
    return checksumOfIndex();
}

static std::string eachUs(double ms, int count)
{
    return QByteArray::number(ms * 1000 / count, 'f', 2).toStdString() + " us each";
}

static void timePhases(const DzFigure* figure)
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

static int g_toldPositions;

// The texts and positions of one phase, as a window without a screen takes them.
static std::uint32_t tellEveryEntry(int count)
{
    DzProgress progress(QLatin1String("Scanning..."), 100, true);
    g_toldPositions = 0;
    for (int entry = 0; entry < count; ++entry) {
        progress.setInfo(QString::fromLatin1("Identifying pose files... %1 of %2")
                             .arg(entry, 0, 10, QLatin1Char(' '))
                             .arg(count, 0, 10, QLatin1Char(' ')));
        progress.update(entry * 100 / count);
        g_toldPositions += progress.isCancelled() ? 0 : 1;
    }
    return std::uint32_t(count);
}

static void timeTelling()
{
    for (const int count : counts()) {
        CommonRow row;
        row.name = "tell_one_phase";
        row.n = count;
        row.ms = timed([&] { row.checksum = tellEveryEntry(count); });
        row.note = eachUs(row.ms, count);
        finish(row, row.checksum);
    }
}

// ---- posing the figure

static double g_sum;

static void sumUp(DzFloatProperty*, DzTime, float value)
{
    g_sum += double(value);
}

// As the phase does it, but for the file: values, hip at the world's origin, signature.
static void poseFromMemory(DzSkeleton* figure, const QByteArray& text, SetChannel set)
{
    setPoseText(text.constData(), text.size());
    applyKeyBoneText(figure, 0, set);
    DzBone* hip = figure->findBone(QLatin1String("hip"));
    figure->setWSPos(0, DzVec3());
    hip->setWSPos(0, DzVec3());
    const DzQuat hipRot_world = hip->getWSRot(0);
    figure->setWSRot(0, DzQuat());
    hip->setWSRot(0, hipRot_world);
    takeSignature(0, figure, 0);
}

// Every call of the host that this makes, and nothing else.
static void callHostOnly(DzSkeleton* figure, const std::vector<float>& values, SetChannel set)
{
    const float* value = values.data();
    for (const char* name : kKeyBones) {
        const DzBone* bone = figure->findBone(QLatin1String(name));
        set(bone->getXRotControl(), 0, *value++);
        set(bone->getYRotControl(), 0, *value++);
        set(bone->getZRotControl(), 0, *value++);
    }
    DzBone* hip = figure->findBone(QLatin1String("hip"));
    figure->setWSPos(0, DzVec3());
    hip->setWSPos(0, DzVec3());
    const DzQuat hipRot_world = hip->getWSRot(0);
    figure->setWSRot(0, DzQuat());
    hip->setWSRot(0, hipRot_world);
    DzQuat product = figure->findBone(QLatin1String("hip"))->getWSRot(0);
    for (int slot = 0; slot < kSignatureSlots; ++slot) {
        for (const char* name : modelOf(figure).signatureBones[slot].bones)
            product = name ? figure->findBone(QLatin1String(name))->getLocalRot(0) : product;
    }
    g_sum += product.m_w;
}

static std::vector<float> g_values;

static void keepValueOf(DzFloatProperty*, DzTime, float value)
{
    g_values.push_back(value);
}

static void timePoses(DzSkeleton* figure)
{
    const QByteArray text = presetText(static_cast<DzFigure*>(figure), kPresetBytes);
    const DzUndoStackLock unrecorded;
    createPoseIndex();
    appendPose(malePath());
    setPoseText(text.constData(), text.size());
    applyKeyBoneText(figure, 0, keepValueOf);
    const double wholeMs = timed([&] { poseFromMemory(figure, text, setStoredValue); });
    const double hostMs = timed([&] { callHostOnly(figure, g_values, setStoredValue); });
    CommonRow row;
    row.name = "pose_own";
    row.n = 1;
    row.ms = g_isQuick ? 1 : wholeMs - hostMs;
    row.note = eachUs(wholeMs, 1) + " with the host's calls, " + eachUs(hostMs, 1) + " those alone";
    double own = 0, literal = 0;
    timed([&] {
        g_sum = 0, setPoseText(text.constData(), text.size()), applyKeyBoneText(figure, 0, sumUp),
        own = g_sum;
    });
    row.referenceMs = timed([&] {
        g_sum = 0, reference::setPoseText(text), reference::applyKeyBoneText(figure, 0, sumUp),
        literal = g_sum;
    });
    row.checksum = std::uint32_t(std::int64_t(own * 1000));
    finish(row, std::uint32_t(std::int64_t(literal * 1000)));
    setPoseText(nullptr, 0);
    freePoseIndex();
}

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    g_isQuick = argc > 1 && std::strcmp(argv[argc - 1], "--quick") == 0;
    PosedFigure posed("Genesis8Male");
    if (!g_isQuick)
        printHeader();
    timeAllTexts(posed.figure);
    timePhases(posed.figure);
    timeTelling();
    timePoses(posed.figure);
    if (g_isQuick)
        std::printf("%s\n",
            g_areSame ? "all checksums are those of the literal forms" : "CHECKSUMS DIFFER");
    return g_areSame ? 0 : 1;
}
