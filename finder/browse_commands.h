// browse_commands.h - what the buttons of the picker and browsing pages do with the one session.
// Each is at most one undo step, and none when the scene was not changed. figure: of the press, may
// be null; a command that needs one with a hip shows the box, unless it says otherwise.
#pragma once

#include "ground/host_types.h"

class DzSkeleton;

namespace quillon {

// Begins to browse; see chooseCategory(). The matches are counted.
void openCategory(int type, DzSkeleton* figure, DzTime time, bool fromPicker);
[[nodiscard]] bool leaveCategory(); // settings and ranks are saved; false when one cannot be

// See searchPose(). Where a search can be made, the matches are counted as well.
void stepPose(DzSkeleton* figure, DzTime time, int step, bool productSkip);
// By one, and what is applied is not mirrored.
void stepToNeighbour(DzSkeleton* figure, DzTime time, int step);

// After a change of filters: the current pose if it still matches, else the next match.
void rebuildMatches(DzSkeleton* figure, DzTime time);

// The filters: one of the settings changes, and what matches with it.
void toggleAreaFilter(int area, DzSkeleton* figure, DzTime time);
void toggleFemaleFilter(DzSkeleton* figure, DzTime time);
void toggleMaleFilter(DzSkeleton* figure, DzTime time);
void toggleRankFilterBit(int rank, DzSkeleton* figure, DzTime time);

// The applied pose again, as it is or mirrored. Nothing, without a box, when there is no figure
// with a hip or no applied pose.
void toggleMirroredPose(DzSkeleton* figure, DzTime time);
// The reference pose in place of the found one; shown: whether it was so before the press.
void toggleReferenceOverlay(bool shown, DzSkeleton* figure, DzTime time);
void toggleLockOfPart(int part, DzSkeleton* figure, DzTime time);

// Unranked, favourite, hidden and round again.
[[nodiscard]] bool advanceCurrentRank(const DzSkeleton* figure); // as setCurrentRank()

// Of a custom pose: deletes it, after a question; of another, shows where it comes from.
void openFolderOrDeletePose(DzSkeleton* figure, DzTime time);

} // namespace quillon
