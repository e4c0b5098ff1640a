// What a reader sets on a figure, in which order, against the literal reading. The first byte
// chooses the generation and whether the values reach the figure.
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

#include "posefile/pose_reader.h"
#include "reference/pose_reader_reference.h"

#include <cmath>

using namespace quillon;

enum Mode { Generation81 = 1, OntoFigure = 2 };

static const DzTime kTime = 160;

static bool sameCalls(const std::vector<SetCall>& a, const std::vector<SetCall>& b)
{
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(), [](const SetCall& x, const SetCall& y) {
            return x.channel == y.channel && x.time == y.time && fuzz::sameNumber(x.value, y.value);
        });
}

static void apply(DzSkeleton* figure)
{
    const DzUndoStackLock unrecorded;
    applyPoseText(figure, kTime);
    applyKeyBoneText(figure, kTime);
    for (const SetCall& each : setCalls())
        FUZZ_CHECK(std::isfinite(each.channel->getValue(kTime)));
}

QUILLON_FUZZ_TARGET(pose_apply)
{
    const int mode = input.takeByte();
    DzFigure* figure = fuzz::world().choose(mode & Generation81);
    reference::setPoseText(input.copy());
    std::vector<SetCall> literal;
    setCalls().clear();
    reference::applyPoseText(figure, kTime, recordCall);
    reference::applyKeyBoneText(figure, kTime, recordCall);
    literal.swap(setCalls());
    setPoseText(input.bytes, input.count);
    applyPoseText(figure, kTime, recordCall);
    applyKeyBoneText(figure, kTime, recordCall);
    FUZZ_CHECK(sameCalls(setCalls(), literal));
    setPoseText(input.bytes, input.count);
    if (mode & OntoFigure)
        apply(figure);
    setPoseText(nullptr, 0);
}
