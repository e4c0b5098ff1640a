// Resetting a posed figure: the whole of it, which the scanner does for every file, again when
// nothing is left to do, and the body from the selected root. Inside a hold, as in a command.
#include "posed_figure.h"

#include "figure/reset_pose.h"

#include <benchmark/benchmark.h>

using namespace quillon;

static void resetPosed(benchmark::State& state, ResetMode mode, bool posed)
{
    PosedFigure posedFigure(kBenchFigures[state.range(0)]);
    posedFigure.figure->select(true);
    for (auto _ : state) {
        if (posed) {
            state.PauseTiming();
            posedFigure.setPose();
            state.ResumeTiming();
        }
        DzUndoStackHold hold;
        resetPose(posedFigure.figure, mode, 0);
        hold.accept(QLatin1String("quillon_stack"));
    }
    state.counters["checksum"] = posedFigure.checksum();
    state.SetLabel(kBenchFigures[state.range(0)]);
}

static void reset_whole_figure(benchmark::State& state)
{
    resetPosed(state, ResetWholeFigure, true);
}
BENCHMARK(reset_whole_figure)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

static void reset_figure_at_zero(benchmark::State& state)
{
    resetPosed(state, ResetWholeFigure, false);
}
BENCHMARK(reset_figure_at_zero)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

static void reset_body_from_root(benchmark::State& state)
{
    resetPosed(state, ResetBody, true);
}
BENCHMARK(reset_body_from_root)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
