// command_dispatch.h - what a mouse press on the pane does. All commands of the plug-in start here.
// The button's row names its requirement, its operation per click kind, whether the operation is
// bracketed as one undo step, and the status text for success.
// Owns: nothing between presses. GUI thread only.
#pragma once

#include <QPoint>
#include <QSize>
#include <Qt>

namespace quillon {

enum ClickKind { OtherClick = 0, LeftClick = 1, RightClick = 2, MiddleClick = 3 };

ClickKind clickKind(Qt::MouseButton button);

// Runs the command under the position, then hover and links, and repaints. Does nothing while a
// scan or a patch is running.
void dispatchPress(const QSize& pane, const QPoint& position, ClickKind kind);

} // namespace quillon
