// One pose through the host: 1,020 bone channels and every control of a figure are set, then ten
// world rotations are read. This is what browsing does per pose. One case has undo recording on,
// one has the stack locked as during a scan; the pair tells the price of recording.
#include "host/figures/figure_loader.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzquat.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <benchmark/benchmark.h>

#include <vector>

using namespace quillon;

namespace {

// Ten world rotations of bones at the ends of chains and between.
const char* const kReadBones[] = {"chestUpper", "lShin", "rShin", "lThighBend", "rThighBend",
    "lShldrBend", "rShldrBend", "lForearmBend", "rForearmBend", "hip"};

struct Channels {
    std::vector<DzFloatProperty*> bones, controls;
    std::vector<DzBone*> read;
};

Channels channelsOf(DzFigure* figure)
{
    Channels c;
    DzBoneList bones;
    figure->getAllBones(bones);
    for (DzBone* b : bones) {
        DzFloatProperty* const six[] = {b->getXRotControl(), b->getYRotControl(),
            b->getZRotControl(), b->getXPosControl(), b->getYPosControl(), b->getZPosControl()};
        c.bones.insert(c.bones.end(), six, six + 6);
    }
    for (DzFloatProperty* p : c.bones)
        p->lock(false);
    for (int i = 0; i < figure->getNumProperties(); ++i) {
        auto* p = qobject_cast<DzFloatProperty*>(figure->getProperty(i));
        if (p && p->getPath() != QLatin1String("Transforms") && !p->isHidden())
            c.controls.push_back(p);
    }
    for (int i = 0; i < figure->getObject()->getNumModifiers(); ++i)
        if (auto* morph = qobject_cast<DzMorph*>(figure->getObject()->getModifier(i)))
            c.controls.push_back(morph->getValueChannel());
    for (const char* name : kReadBones)
        c.read.push_back(figure->findBone(QLatin1String(name)));
    return c;
}

double applyAndRead(const Channels& c, int round)
{
    for (size_t i = 0; i < c.bones.size(); ++i)
        c.bones[i]->setValue(float(int(i + round) % 7) * 0.25f);
    for (size_t i = 0; i < c.controls.size(); ++i)
        c.controls[i]->setValue(float(int(i + round) % 5) * 0.1f);
    double sum = 0;
    for (DzBone* b : c.read)
        sum += b->getWSRot().m_w;
    return sum;
}

void setPoseReadTen(benchmark::State& state)
{
    DzUndoStack undoStack;
    DzScene scene;
    QString why;
    DzFigure* figure
        = loadFigure(QLatin1String(state.range(1) ? "Genesis8_1Female" : "Genesis8Female"), &why);
    if (!figure) {
        state.SkipWithError(qPrintable(why));
        return;
    }
    scene.addNode(figure);
    const Channels c = channelsOf(figure);
    if (state.range(0) == 0)
        undoStack.lock();
    double checksum = 0;
    int round = 0;
    for (auto _ : state) {
        DzUndoStackHold hold;
        checksum += applyAndRead(c, ++round & 15);
        hold.accept(QLatin1String("pose"));
    }
    benchmark::DoNotOptimize(checksum);
    state.counters["channels"] = double(c.bones.size());
    state.counters["controls"] = double(c.controls.size());
    state.SetLabel(state.range(0) ? "recorded" : "stack locked");
}
BENCHMARK(setPoseReadTen)
    ->Args({1, 0})
    ->Args({0, 0})
    ->Args({1, 1})
    ->Args({0, 1})
    ->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
