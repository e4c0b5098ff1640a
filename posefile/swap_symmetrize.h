// swap_symmetrize.h - the commands that mirror a pose by way of two temporary preset files.
// The current pose is written to the first, mirrored into the second and that one applied.
// Only channels that the command gives another value are written; the others get no key.
// No undo step is opened: the caller holds. Errors: false, without a message, and nothing in the
// scene has changed: a figure without a hip, or a temporary folder that cannot be used.
#pragma once

#include "ground/host_types.h"

class DzNode;

namespace quillon {

// Which bones take part beside the selected ones.
enum SwapReach { BonesBelowToo = 1, SelectedBonesOnly = 3 };

// How a pose goes through the files. The first four are those of rewritePoseFile().
struct Rewriting {
    bool withChildren = false;
    bool symmetrize = false;
    bool includeFace = false;
    bool mirrorAll = false;
    bool useLocks = false; // the parts that the locks hold stay as they are
    bool touchedBonesOnly = false; // a bone whose entries were copied unchanged is not written
};

// Writes the figure's pose, rewrites it and applies that. The files are deleted after success and
// stay otherwise, until the next command or the next start.
bool applyRewritten(DzNode* figure, DzTime time, const Rewriting& how);

void removePassingPoses(); // at a start: what an earlier failure or crash left

// Swap (symmetrize off): the selected bones, their partners and the controls that drive them
// exchange their values, mirrored; with the figure node selected the whole pose does.
// Symmetrize: the selected sided bones take their partners' values, mirrored.
// All other bones keep their place, and so does the body: the hip's translation goes to the figure
// node.
bool swapOrSymmetrize(DzNode* figure, SwapReach reach, DzTime time, bool symmetrize);

// Mirrors the whole pose, locked parts excepted. The figure is not turned afterwards: which way a
// found pose is to face is for the Pose Finder.
bool mirrorWholePose(DzNode* figure, DzTime time);

} // namespace quillon
