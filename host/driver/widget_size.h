// widget_size.h - gives a widget the exact size that a script asks for, wherever it lives.
// Owns: the lists of widgets whose size is held and of windows that may be too small for what is in
// them.
#pragma once

class QSize;
class QWidget;

namespace quillon {

// A window takes the size, also when its layout wants more: what is in it then has less room than
// it asks for. Only a window that cannot be resized by the user either stays as it is.
// A widget in layouts is held at the size, and the layouts and windows around it (pane group, dock,
// main window) grow or shrink to suit.
void giveSize(QWidget*, const QSize&);

void giveWindowSize(QWidget* window, const QSize&); // the same without running the event loop

void releaseSizes(); // layouts decide again

} // namespace quillon
