// pose_apply.h - puts an indexed pose onto the figure, the way that browsing does: the figure keeps
// its place and faces as it did, locked parts keep the reference pose, the settings' limits hold.
// Each call is one undo step, or part of the caller's.
// The figure is the selected one, with a hip, and the tables are set up for it (prepareFigure).
// Owns: the count of applications.
#pragma once

#include "dztime.h"

class DzSkeleton;

namespace quillon {

// Grows by one with every change of the scene made here, and by countSceneChange().
unsigned appliedPoseCount();
void countSceneChange();

// Sets up for the category browsed when that has not been done since it was chosen.
void ensureSetUp(DzSkeleton* figure, DzTime time);
// The same before a pose is applied: follows a figure that the user has moved meanwhile. True then.
bool prepareFigure(DzSkeleton* figure, DzTime time);

// The pose at the current position, or the reference pose while that is to be shown in its stead;
// the position's rank becomes the current one. A pose that cannot be read leaves the index for
// good, and the reference pose takes its place. The position is then that of the next entry or,
// after a search forwards, of the one before, so that the next step in the same direction skips
// nothing.
enum SearchDirection { SearchBackwards = -1, SearchHere = 0, SearchForwards = 1 };
void applyCurrentPose(DzSkeleton* figure, DzTime time, SearchDirection direction);

// The very same pose again, without a search.
void reapplyCurrentPose(DzSkeleton* figure, DzTime time);

// Mirrors what the figure shows, locked parts excepted. False: it could not, and nothing changed.
bool mirrorCurrentPose(DzSkeleton* figure, DzTime time);

// Both of them; when it cannot be mirrored, it is not applied again either.
bool reapplyCurrentPoseMirrored(DzSkeleton* figure, DzTime time);

} // namespace quillon
