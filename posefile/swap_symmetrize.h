// swap_symmetrize.h - the commands that mirror a pose by way of two temporary preset files.
// The current pose is written to the first, mirrored into the second and that one applied.
// Only channels that the command gives another value are written; the others get no key.
// No undo step is opened: the caller holds. Errors: false, without a message, and nothing in the
// scene has changed: a figure without a hip, or a temporary folder that cannot be used.
#pragma once

#include "dztime.h"

class DzNode;

namespace quillon {

// Which bones take part beside the selected ones.
enum SwapReach { BonesBelowToo = 1, SelectedBonesOnly = 3 };

// The flags but useLocks are those of rewritePoseFile(); useLocks: the parts that the locks hold
// stay as they are. The files are deleted after success and stay otherwise. At the scene's time.
bool applyThroughTempFiles(DzNode* figure, bool withChildren, bool useLocks, bool symmetrize,
    bool includeFace, bool mirrorAll);

// Swap (symmetrize off): the selected bones, their partners and the controls that drive them
// exchange their values, mirrored; with the figure node selected the whole pose does.
// Symmetrize: the selected sided bones take their partners' values, mirrored.
// Bones below the selected ones take part unless reach is SelectedBonesOnly. All other bones keep
// their place, and so does the body: the hip's translation goes to the figure node.
bool swapOrSymmetrize(DzNode* figure, int reach, DzTime time, bool symmetrize);

// Mirrors the whole pose, locked parts excepted. The figure is not turned afterwards: which way a
// found pose is to face is for the Pose Finder.
bool mirrorWholePose(DzNode* figure, DzTime time);

} // namespace quillon
