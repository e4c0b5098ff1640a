// A pose rewritten with the selection's entries mirrored, against the literal form: the file and
// the bones that count as touched. The first three bytes choose what is asked, the generation and
// two selected bones.
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

#include "reference/pose_rewriter_reference.h"

using namespace quillon;

enum Mode { WithChildren = 1, Symmetrize = 2, IncludeFace = 4, MirrorAll = 8, Generation81 = 16 };

static void select(DzFigure* figure, int boneNumber)
{
    if (DzBone* bone = findBone(boneNumber % kBoneCount, figure))
        bone->select(true);
}

static std::set<int> touchedNumbers()
{
    std::set<int> numbers;
    for (int i = 0; i < kBoneCount; ++i) {
        if (isBoneTouched(i))
            numbers.insert(i);
    }
    return numbers;
}

QUILLON_FUZZ_TARGET(pose_rewriter)
{
    const int mode = input.takeByte();
    fuzz::World& world = fuzz::world();
    DzFigure* figure = world.choose(mode & Generation81);
    world.rig.scene.selectAllNodes(false);
    select(figure, input.takeByte());
    select(figure, input.takeByte());
    const reference::RewriteRules rules = {figure, (mode & WithChildren) != 0,
        (mode & Symmetrize) != 0, (mode & IncludeFace) != 0, (mode & MirrorAll) != 0};
    std::set<int> touched;
    const QByteArray literal = reference::rewritten(input.copy(), rules, &touched);

    clearTouchedBones();
    const QString out = world.file("rewritten");
    FUZZ_CHECK(rewritePoseFile(fuzz::fileOf(input.copy()), out, figure, rules.withChildren,
        rules.symmetrize, rules.includeFace, rules.mirrorAll));
    FUZZ_CHECK(fileBytes(out) == literal);
    FUZZ_CHECK(touchedNumbers() == touched);
}
