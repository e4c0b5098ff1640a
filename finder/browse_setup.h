// browse_setup.h - fits the Pose Finder's tables to a pose type and a figure: its place, the way it
// lies and faces, the yaw table, part references and similarity filters.
// Owns: for which type and figure the tables were made.
#pragma once

#include "dztime.h"

class DzSkeleton;

namespace quillon {

bool isSetUpFor(int type); // whichever figure it was
void forgetSetUp(); // the figure's place is remembered on

// Clears the figure's pose and takes all tables from it. For the type that looks for the reference
// pose that pose is shown then, and yaw table and part references are taken from it; when none is
// memorized, all is taken from the figure as it stands. The figure keeps its place and faces as it
// did. True when the figure was changed; that is one undo step.
bool setUpFor(int type, DzSkeleton* figure, DzTime time);

// When the user has moved the figure since, or chosen another: takes type, facing, yaw table and
// place again from the figure as it is. True then.
bool followFigure(DzSkeleton* figure, DzTime time);

} // namespace quillon
