// Baking a figure that is posed by all of its controls, inside a hold as in the command.
#include "posed_figure.h"

#include "figure/bake_pose.h"

#include <benchmark/benchmark.h>

using namespace quillon;

static void bakePosed(benchmark::State& state, BakePart part)
{
    PosedFigure posedFigure(kBenchFigures[state.range(0)]);
    for (auto _ : state) {
        state.PauseTiming();
        posedFigure.setPose();
        state.ResumeTiming();
        DzUndoStackHold hold;
        bakePose(posedFigure.figure, part, 0);
        hold.accept(QLatin1String("quillon_stack"));
    }
    state.counters["checksum"] = posedFigure.checksum();
    state.SetLabel(kBenchFigures[state.range(0)]);
}

static void bake_body(benchmark::State& state)
{
    bakePosed(state, BakeBody);
}
BENCHMARK(bake_body)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

static void bake_face(benchmark::State& state)
{
    bakePosed(state, BakeFace);
}
BENCHMARK(bake_face)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
