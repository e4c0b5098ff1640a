// Loading a figure: the first time, with its files read, and again from the rows kept since then.
// Limit: 100 ms for the first. Counters "bones" and "links" show that nothing was left out.
#include "host/figures/figure_loader.h"

#include "dzfigure.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <memory>

using namespace quillon;

static int linkCount(const FigureData& data)
{
    int links = 0;
    for (const ControlRow& control : data.controls)
        links += int(control.links.size());
    return links;
}

static void loadInto(benchmark::State& state, bool filesCached)
{
    const QString name = figureNames().at(int(state.range(0)));
    QString why;
    for (auto _ : state) {
        if (!filesCached)
            setFigureFolder(QString());
        std::unique_ptr<DzFigure> figure(loadFigure(name, &why));
        if (!figure)
            return state.SkipWithError(qPrintable(why));
        benchmark::DoNotOptimize(figure.get());
        state.PauseTiming(); // the figure's end is not part of loading it
        figure.reset();
        state.ResumeTiming();
    }
    const FigureData* data = figureData(name, &why);
    state.counters["bones"] = double(data->bones.size());
    state.counters["links"] = linkCount(*data);
    state.SetLabel(qPrintable(name));
}

static void load_first_figure(benchmark::State& state)
{
    loadInto(state, false);
}
BENCHMARK(load_first_figure)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

static void load_figure_again(benchmark::State& state)
{
    loadInto(state, true);
}
BENCHMARK(load_figure_again)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    DzUndoStack undo;
    DzScene scene;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
