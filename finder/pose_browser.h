// pose_browser.h - which of the indexed poses match the chosen type and filters, and which one is
// applied. The position of the applied pose is a setting (PluginSettings::currentPose).
// All on the selected figure, at the scene's time; without one a search shows a box and does
// nothing. A category of kNotBrowsing means that nothing is browsed.
// Owns: the browse state, the filtered list and its companion table.
#pragma once

namespace quillon {

const int kOrdinalUnknown = -1;

struct BrowseState {
    int matchCount = 0; // poses that pass all filters
    int matchOrdinal = kOrdinalUnknown; // of the applied pose among them, counted from 1; that of
                                        // the next match when the applied pose is none
};

BrowseState& browseState();

// The filtered list holds the matching entries in ascending order, the companion table the ordinal
// of the first match at or after an entry; both have room for every entry of the pose index.
void createFilteredList();
void freeFilteredList();

// Forgets an applied pose that the index, once read, does not hold. The current rank becomes that
// of the position, unless the settings tell of no applied pose at all.
void dropStalePosition();

// Opens the category. With an empty index it asks whether to scan; otherwise, when it comes from
// the picker page with a figure selected, the figure is cleared and the tables set up. Left out,
// that is made up for by the first search.
void selectPoseType(int type);

// The similarity filters of the category, after a change of the settings.
void refreshFilters();

// After the entry left the index and the position is right again: count and ordinal follow, without
// a look at filters that may have changed since the last count.
void forgetMatch(int removed);

// countOnly: counts the matches and finds the ordinal of the current position; nothing is applied.
// Without a figure the counts stay as they were and a count is due.
// Else searches from the current position and applies the first match. step: +1 forwards and -1
// backwards from its neighbour, both ending with the pose itself; 0 forwards from itself; -2
// forwards from the first pose, +2 backwards from the last one. Without a match the position
// becomes -1 and the figure is left alone.
// productSkip (steps of 1): forwards to the first match of another product, backwards to the first
// match of the run of the product before. When all matches are of one product nothing happens.
// True when the user had moved the figure, so that the tables were made anew: count again.
bool findPose(int step, bool productSkip, bool countOnly);

// Makes up for a count that found no figure, once there is one that the tables are set up for.
void countIfDue();

} // namespace quillon
