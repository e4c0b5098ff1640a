// input_events.h - the pointer for scripts and for the built-in demo: mouse events as a window
// system would deliver them, through the application, with focus, hover and modality as ever.
// Positions are in pixels of the widget; a child that lies there gets the events.
// Owns: which widget the pointer is over, and the clock of the events. GUI thread only.
#pragma once

#include <QPoint>
#include <Qt>

class QEvent;
class QWidget;

namespace quillon {

struct PointerPress {
    Qt::MouseButton button = Qt::LeftButton;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    bool move = true; // the pointer goes there first
    bool twice = false; // a double click
    bool through = false; // also when a modal window keeps input from the widget
};

// A press and its release. Both calls return when everything that they brought about is done.
// False: a modal window keeps input from the widget, and nothing has happened.
bool pressPointer(QWidget*, const QPoint&, const PointerPress& = PointerPress());
bool movePointer(QWidget*, const QPoint&);

// A modal window keeps input from every window that is not its own.
bool isBlocked(const QWidget*);
void sendSpontaneous(QWidget*, QEvent*); // as from the window system
ulong nextInputMs(); // far enough from the last one that two presses are no double click

} // namespace quillon
