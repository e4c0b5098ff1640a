// pose_browser.h - which of the indexed poses match the category and filters of the session, and
// which one is applied. The position of the applied pose is a setting
// (PluginSettings::currentPose). All in the one session (browse_session.h); while it has no
// category nothing happens.
#pragma once

#include "finder/pose_apply.h"

namespace quillon {

// Room in the session for every entry of the pose index; afterwards nothing is browsed.
void createFilteredList();
void freeFilteredList();

// Forgets an applied pose that the index, once read, does not hold. The current rank becomes that
// of the position, unless the settings tell of no applied pose at all.
void dropStalePosition();

// There is no applied pose any more.
void dropPosition();

// Makes it the session's category. With an empty index it asks whether to scan; a figure that is
// gone when the question is answered leaves nothing chosen. Otherwise, when it is chosen on the
// picker page and there is a figure with a hip, the figure is cleared and the tables set up. Left
// out, that is made up for by the first search. True when the scene was changed.
bool chooseCategory(int type, DzSkeleton* figure, DzTime time, bool fromPicker);

// The similarity filters of the category, after a change of the settings.
void refreshFilters();

// After the entry left the index and the position is right again: count and ordinal follow, without
// a look at filters that may have changed since the last count.
void forgetMatch(int removed);

// Counts the matches and finds the ordinal of the current position. Without a figure with a hip a
// box is shown, the counts stay as they were and a count is due. True when the scene was changed:
// the tables had to be set up first.
bool countMatches(DzSkeleton* figure, DzTime time);

// Searches from the current position and applies the first match. step: +1 forwards and -1
// backwards from its neighbour, both ending with the pose itself; 0 forwards from itself; -2
// forwards from the first pose, +2 backwards from the last one. Without a match the position
// becomes -1 and the figure is left alone; without a figure with a hip there is only a box.
// productSkip (steps of 1): forwards to the first match of another product, backwards to the first
// match of the run of the product before. When all matches are of one product nothing happens.
// When the user had moved the figure it is time to count again.
SceneOutcome searchPose(DzSkeleton* figure, DzTime time, int step, bool productSkip);

// Makes up for a count that found no figure, once there is one that the tables are set up for.
void countIfDue(const DzSkeleton* figure);

} // namespace quillon
