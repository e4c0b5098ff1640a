// The tests on names over all names, beside their literal form in one run: counters "hits" of the
// two must agree, and the ratio of their times is the gain. Time is per whole sweep, "per_test" is
// the rate of single tests.
#include "figure/body_parts.h"
#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "tests/reference/figure_predicates_reference.h"

#include "dzfigure.h"

#include <benchmark/benchmark.h>

using namespace quillon;

static void setGeneration(bool genesis81)
{
    const DzFigure figure(QLatin1String(genesis81 ? "Genesis8_1Female" : "Genesis8Female"));
    isSupportedFigure(&figure);
    buildFigureTables();
}

static void report(benchmark::State& state, int hits, double tests)
{
    state.counters["hits"] = hits;
    state.counters["per_test"] = benchmark::Counter(tests * double(state.iterations()),
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.SetLabel(isGenesis81() ? "Genesis8_1" : "Genesis8");
}

// ---- control to bone, all pairs

template <typename Test> static void sweepPairs(benchmark::State& state, Test drives)
{
    setGeneration(state.range(0));
    int hits = 0;
    for (auto _ : state) {
        hits = 0;
        for (int bone = 0; bone < kBoneCount; ++bone) {
            for (int control = 0; control < controlCount(); ++control)
                hits += drives(controlName(control), bone);
        }
        benchmark::DoNotOptimize(hits);
    }
    report(state, hits, double(kBoneCount) * controlCount());
}

static void control_to_bone(benchmark::State& state)
{
    sweepPairs(state, [](const QString& name, int bone) { return controlDrivesBone(name, bone); });
}
BENCHMARK(control_to_bone)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

static void control_to_bone_literal(benchmark::State& state)
{
    sweepPairs(state, [](const QString& name, int bone) {
        return reference::controlDrivesBone(name, bone, isGenesis81());
    });
}
BENCHMARK(control_to_bone_literal)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

// ---- one name at a time

template <typename Test> static void sweepNames(benchmark::State& state, Test holds)
{
    setGeneration(state.range(0));
    int hits = 0;
    for (auto _ : state) {
        hits = 0;
        for (int id = 0; id < kNameCount; ++id)
            hits += holds(nameText(id));
        benchmark::DoNotOptimize(hits);
    }
    report(state, hits, kNameCount);
}

static void expression_control(benchmark::State& state)
{
    sweepNames(state, [](const QString& name) { return isExpressionControl(name); });
}
BENCHMARK(expression_control)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

static void expression_control_literal(benchmark::State& state)
{
    sweepNames(state,
        [](const QString& name) { return reference::isExpressionControl(name, isGenesis81()); });
}
BENCHMARK(expression_control_literal)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

static void face_bone(benchmark::State& state)
{
    sweepNames(state, [](const QString& name) { return isFaceBone(name); });
}
BENCHMARK(face_bone)->Arg(0)->Unit(benchmark::kMicrosecond);

static void face_bone_literal(benchmark::State& state)
{
    sweepNames(state, [](const QString& name) { return reference::isFaceBone(name); });
}
BENCHMARK(face_bone_literal)->Arg(0)->Unit(benchmark::kMicrosecond);

static void body_control(benchmark::State& state)
{
    sweepNames(state, [](const QString& name) { return isBodyControl(name); });
}
BENCHMARK(body_control)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

static void body_control_literal(benchmark::State& state)
{
    sweepNames(state,
        [](const QString& name) { return reference::controlIndex(name, isGenesis81()) >= 0; });
}
BENCHMARK(body_control_literal)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
