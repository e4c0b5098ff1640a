// The passes of a scan that hold every pose against all earlier ones, the search of the best yaw
// for every pose, and telling from a file's text whether it is a pose. Signatures are unlike each
// other in half of the entries and close to an earlier one in the others.
#include "finder/pose_identify.h"
#include "finder/pose_index.h"
#include "finder/browse_session.h"
#include "finder/finder_calls.h"
#include "finder/scan_phases.h"

#include <benchmark/benchmark.h>

#include <random>

using namespace quillon;

static DzQuat randomRotation(std::minstd_rand* random)
{
    std::normal_distribution<double> normal;
    return DzQuat(normal(*random), normal(*random), normal(*random), normal(*random));
}

static void fillIndex(int count)
{
    createPoseIndex();
    std::minstd_rand random(7);
    for (int n = 0; n < count; ++n) {
        const int entry = appendPose(QString::fromLatin1("/content/%1.duf").arg(n));
        PoseIndexEntry& e = *entryToChange(entry);
        const int other = int(random() % unsigned(n + 1));
        for (int slot = 0; slot < kSignatureSlots; ++slot) {
            const double turnRad = double(random() % 1000) / 1000 * 0.6;
            e.signature[slot] = n % 2 && n > other
                ? poseEntry(other)->signature[slot] * DzQuat(DzVec3(1, 1, 0), turnRad)
                : randomRotation(&random);
        }
        e.contentHash = quint32(n % 5 ? n + 1 : other + 1);
        e.figureCode = kFemaleCode;
        e.hasSignature = true;
    }
}

static void restoreHashes(int count)
{
    for (int entry = 0; entry < count; ++entry)
        entryToChange(entry)->contentHash = quint32(entry + 1);
}

static ScanWatch quietWatch()
{
    ScanWatch watch;
    watch.show = [](int, int) {};
    watch.isCancelled = [] { return false; };
    return watch;
}

static void runPass(benchmark::State& state, bool (*pass)(const ScanWatch&), bool uniqueHashes)
{
    const int count = int(state.range(0));
    fillIndex(count);
    const ScanWatch watch = quietWatch();
    int marked = 0;
    for (auto _ : state) {
        state.PauseTiming();
        if (uniqueHashes)
            restoreHashes(count);
        state.ResumeTiming();
        pass(watch);
    }
    for (int entry = 0; entry < count; ++entry)
        marked += poseEntry(entry)->contentHash == 0;
    state.counters["checksum"] = marked;
    freePoseIndex();
}

static void mark_duplicates(benchmark::State& state)
{
    runPass(state, markDuplicates, false);
}
BENCHMARK(mark_duplicates)->Arg(4096)->Arg(65536)->Unit(benchmark::kMillisecond);

static void mark_mirrored(benchmark::State& state)
{
    runPass(state, markMirrored, true);
}
BENCHMARK(mark_mirrored)->Arg(4096)->Arg(65536)->Unit(benchmark::kMillisecond);

static void mark_similar(benchmark::State& state)
{
    runPass(state, markSimilar, true);
}
BENCHMARK(mark_similar)->Arg(4096)->Arg(65536)->Unit(benchmark::kMillisecond);

static void score_poses(benchmark::State& state)
{
    const int count = int(state.range(0));
    fillIndex(count);
    buildYawTable(Sitting, nullptr, 0);
    setPartReferences(&browseSession().tables, Sitting, nullptr, 0);
    setSimilarityFilters(&browseSession().tables, Sitting);
    int matches = 0;
    for (auto _ : state) {
        matches = 0;
        for (int entry = 0; entry < count; ++entry)
            matches += browseScore(entry) > 0;
    }
    state.counters["checksum"] = matches;
    freePoseIndex();
}
BENCHMARK(score_poses)->Arg(4096)->Arg(65536)->Unit(benchmark::kMillisecond);

static void identify_text(benchmark::State& state)
{
    QByteArray text;
    while (text.size() < int(state.range(0)))
        text += "\"url\" : \"name://@selection/lShldrBend:?rotation/x/value\", [ [ 0, 1.25 ] ]\n";
    text += "lBigToe lPinky1 head";
    quint32 code = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            code = figureCodeOf(text.constData(), text.size(), QLatin1String("/a.duf")));
    state.counters["checksum"] = code;
}
BENCHMARK(identify_text)->Arg(524288)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
