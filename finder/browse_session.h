// browse_session.h - everything that the Pose Finder knows while a category is browsed.
// Owns: the one record; as made, nothing is browsed. The position of the applied pose and its rank
// are no part of it: they outlive the session in the settings.
#pragma once

#include "finder/browse_tables.h"
#include "finder/category_table.h"
#include "finder/figure_facing.h"
#include "finder/figure_place.h"

#include <vector>

namespace quillon {

const int kOrdinalUnknown = -1;

// How far place, facing and tables can be trusted. Each includes the one before.
enum TablesState {
    NotMade, // not since the category was opened
    Made, // for the category and a figure
    Applied // and a pose was applied with them, after the last change of the settings
};

struct BrowseSession {
    int type = kNotBrowsing; // the category browsed
    bool mirrored = false; // the applied pose is shown mirrored
    bool referenceOverlay = false; // the reference pose is shown in the found pose's stead

    FigureFacing facing;
    FigurePlace place;
    BrowseTables tables;
    TablesState tablesState = NotMade;

    std::vector<int> matches; // entries that pass all filters, ascending
    std::vector<int> ordinals; // by entry: that of the first match at or after it
    int matchCount = 0;
    int matchOrdinal = kOrdinalUnknown; // of the applied pose among them, counted from 1; that of
                                        // the next match when the applied pose is none
    bool isCountDue = false; // a count found no figure
};

BrowseSession& browseSession();

void forgetMatches(BrowseSession*); // those of another category say nothing

// After the settings or the index changed: the tables are good for the next pose, but what was
// applied is no match of theirs any more.
void forgetApplied(BrowseSession*);

} // namespace quillon
