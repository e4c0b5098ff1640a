// Reading a pose from text in memory: the pass over a 164 KB preset with the values added up
// instead of set ("own"), and the same by literal searches ("reference"). Limits: 1 ms for a pose,
// 0.25 ms for key bones, each at least 5 times faster than the reference. Counters: how many values
// were read and their sum, the same for own and reference.
#include "posefile/pose_reader.h"

#include "figure/figure_kind.h"
#include "host/figures/figure_loader.h"
#include "posefile/pose_text.h"
#include "reference/pose_reader_reference.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <cmath>

using namespace quillon;

static const int kPresetBytes = 164 * 1024;

static DzFigure* g_figure;
static QByteArray g_preset;
static double g_sum;
static int g_values;

static void sumUp(DzFloatProperty*, DzTime, float value)
{
    g_sum += value;
    ++g_values;
}

// ---- a whole-body preset in the host's layout: bones leaf to root, ten entries each, then
// controls

static QByteArray entryOf(const QString& url, float value)
{
    return "\t\t\t{\n\t\t\t\t\"url\" : \"name://@selection" + url.toLatin1()
        + "/value\",\n\t\t\t\t\"keys\" : [ [ 0, " + QByteArray::number(double(value), 'g', 7)
        + " ] ]\n\t\t\t},\n";
}

static void appendBone(const DzNode* bone, unsigned* seed, QByteArray* out)
{
    static const char* const kChannels[] = {"translation/x", "translation/y", "translation/z",
        "rotation/x", "rotation/y", "rotation/z", "scale/general", "scale/x", "scale/y", "scale/z"};
    for (const char* channel : kChannels) {
        *seed = *seed * 1664525u + 1013904223u;
        const bool turn = channel[0] == 'r';
        const float value = turn ? float(*seed >> 8) / (1 << 24) * 80 - 40 : channel[0] == 's';
        out->append(entryOf("/" + bone->getName() + ":?" + channel, value));
    }
}

static QByteArray makePreset(const DzFigure* figure)
{
    QByteArray text = "{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"scene\" : {\n"
                      "\t\t\"animations\" : [\n";
    unsigned seed = 1;
    DzBoneList bones;
    figure->getAllBones(bones);
    for (int i = bones.size() - 1; i >= 0; --i)
        appendBone(bones.at(i), &seed, &text);
    for (int i = 0; i < figure->getNumProperties(); ++i) {
        const QString name = figure->getProperty(i)->getName();
        if (name.contains(QLatin1String("CTRL")))
            text += entryOf("#" + name + ":?value", 0.25f);
    }
    return text;
}

// Cut at the front, so that hip and body come last as in a whole file.
static QByteArray presetOfLength(int bytes)
{
    const QByteArray all = makePreset(g_figure);
    const QByteArray tail = "\t\t]\n\t}\n}\n";
    const int from = all.lastIndexOf("\t\t\t{\n", all.size() - bytes);
    return from > 0 ? all.mid(from) + tail : all + tail;
}

// ---- cases

static void report(benchmark::State& state)
{
    state.counters["values"] = g_values;
    state.counters["sum"] = std::round(g_sum * 1000) / 1000;
    state.SetLabel(std::to_string(g_preset.size()) + " bytes");
}

template <typename Read> static void runOwn(benchmark::State& state, Read read)
{
    for (auto _ : state) {
        g_sum = 0;
        g_values = 0;
        setPoseText(g_preset.constData(), g_preset.size());
        read();
    }
    report(state);
}

template <typename Read> static void runReference(benchmark::State& state, Read read)
{
    for (auto _ : state) {
        g_sum = 0;
        g_values = 0;
        reference::setPoseText(g_preset);
        read();
    }
    report(state);
}

static void apply_pose_own(benchmark::State& state)
{
    runOwn(state, [] { applyPoseText(g_figure, 0, sumUp); });
}
BENCHMARK(apply_pose_own)->Unit(benchmark::kMillisecond);

static void apply_pose_reference(benchmark::State& state)
{
    runReference(state, [] { reference::applyPoseText(g_figure, 0, sumUp); });
}
BENCHMARK(apply_pose_reference)->Unit(benchmark::kMillisecond);

static void read_key_bones_own(benchmark::State& state)
{
    runOwn(state, [] { applyKeyBoneText(g_figure, 0, sumUp); });
}
BENCHMARK(read_key_bones_own)->Unit(benchmark::kMillisecond);

static void read_key_bones_reference(benchmark::State& state)
{
    runReference(state, [] { reference::applyKeyBoneText(g_figure, 0, sumUp); });
}
BENCHMARK(read_key_bones_reference)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    DzUndoStack undo;
    DzScene scene;
    QString why;
    g_figure = loadFigure(QLatin1String("Genesis8Female"), &why);
    if (!g_figure)
        qFatal("%s", qPrintable(why));
    scene.addNode(g_figure);
    isSupportedFigure(g_figure);
    g_preset = presetOfLength(kPresetBytes);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
