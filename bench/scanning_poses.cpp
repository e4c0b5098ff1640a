// Posing the figure for a signature.
#include "bench/scanning_rows.h"

#include "bench/scanned_texts.h"
#include "figure/figure_kind.h"
#include "finder/pose_index.h"
#include "finder/pose_signature.h"
#include "posefile/pose_reader.h"
#include "posefile/pose_text.h"
#include "reference/pose_reader_reference.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzundostack.h"

namespace quillon {
namespace scanning {

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

void timePoses(DzFigure* figure)
{
    const QByteArray text = presetText(figure, kPresetBytes);
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
    row.ms = isQuick() ? 1 : wholeMs - hostMs;
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

} // namespace scanning
} // namespace quillon
