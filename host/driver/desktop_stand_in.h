// desktop_stand_in.h - what a desktop does for its windows and the offscreen platform does not: a
// window is active whenever one shows, and there is a pointer that can be asked for.
// GUI thread only.
#pragma once

class QPoint;

namespace quillon {

// From here on another window is made active when the active one goes: the present modal one, else
// the main window.
void startDesktopStandIn();
void stopDesktopStandIn();

// Where QCursor finds the pointer. Nobody gets an event from it. With a display the pointer is the
// user's, and nothing happens.
void setPointerPos(const QPoint& onScreen);

} // namespace quillon
