// browse_setup.h - fits the session's tables to its category and a figure: its place, the way it
// lies and faces, the yaw table, part references and similarity filters.
#pragma once

#include "ground/host_types.h"

class DzSkeleton;

namespace quillon {

struct BrowseSession;

// Unless that has been done since the category was opened: clears the figure's pose and takes all
// tables from it. For the category that looks for the reference pose that pose is shown then, and
// yaw table and part references are taken from it; when none is memorized, all is taken from the
// figure as it stands. The figure keeps its place and faces as it did.
// True when the figure was changed; that is one undo step.
bool ensureSetUp(BrowseSession*, DzSkeleton* figure, DzTime time);

// When the user has moved the figure since, or chosen another: takes type, facing, yaw table and
// place again from the figure as it is. True then.
bool followFigure(BrowseSession*, DzSkeleton* figure, DzTime time);

// Facing and yaw table from the figure, as for a pose of the type.
void deriveFigureFacing(BrowseSession*, int type, DzSkeleton* figure, DzTime time);

} // namespace quillon
