// docking.h - puts the pane where it has room when it is shown for the first time.
// Owns: the docked flag, kept in the host's own settings and not in the plug-in's file.
#pragma once

class DzPane;

namespace quillon {

// The size in pixels that a group needs for the pane to be usable.
const int kRoomyWidthPx = 400;
const int kRoomyHeightPx = 800;

void readDockedFlag();
void writeDockedFlag();
bool isDocked();

// Called on every show. First time ever: unless the pane's group is large enough, the pane moves
// into the host's first group. Later: a group that is too small and not the first one grows.
// A pane that is in no group is taken as having too little room.
void dockPane(DzPane* pane);

} // namespace quillon
