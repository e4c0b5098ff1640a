// pose_apply.h - puts an indexed pose onto the figure, the way that browsing does: the figure keeps
// its place and faces as it did, locked parts keep the reference pose, the settings' limits hold.
// Each call is one undo step, or part of the caller's. The figure has a hip.
#pragma once

#include "ground/host_types.h"

class DzSkeleton;

namespace quillon {

struct BrowseSession;

// What a call did to the scene, and what it found there.
struct SceneOutcome {
    bool changed = false; // the figure: there is something to undo
    bool moved = false; // the user had moved the figure, so that tables were made anew
};

// Before a pose is applied: sets up for the category when that has not been done since it was
// opened, and follows a figure that the user has moved meanwhile.
SceneOutcome prepareFigure(BrowseSession*, DzSkeleton* figure, DzTime time);

// The pose at the current position, or the reference pose while that is to be shown in its stead;
// the position's rank becomes the current one. A pose that cannot be read leaves the index for
// good, and the reference pose takes its place. The position is then that of the next entry or,
// after a search forwards, of the one before, so that the next step in the same direction skips
// nothing. The figure is prepared.
enum SearchDirection { SearchBackwards = -1, SearchHere = 0, SearchForwards = 1 };
void applyCurrentPose(BrowseSession*, DzSkeleton* figure, DzTime time, SearchDirection direction);

// The very same pose again, without a search. True when the scene was changed: when there is one.
bool reapplyCurrentPose(BrowseSession*, DzSkeleton* figure, DzTime time);

// Mirrors what the figure shows, locked parts excepted. False: it could not, and nothing changed.
bool mirrorCurrentPose(BrowseSession*, DzSkeleton* figure, DzTime time);

// Both of them; when it cannot be mirrored, it is not applied again either.
bool reapplyCurrentPoseMirrored(BrowseSession*, DzSkeleton* figure, DzTime time);

} // namespace quillon
