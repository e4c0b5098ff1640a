// widget_size.h - gives a widget the exact size that a script asks for, wherever it lives.
// Owns: the list of widgets whose size is held.
#pragma once

class QSize;
class QWidget;

namespace quillon {

// A window takes the size. A widget in layouts is held at the size, and the layouts and windows
// around it (pane group, dock, main window) grow or shrink to suit.
void giveSize(QWidget*, const QSize&);

void releaseSizes(); // layouts decide again

} // namespace quillon
