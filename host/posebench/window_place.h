// window_place.h - where the window lies on the screen, and from run to run where it lay.
// Host settings, group "window": geometry, layout.
#pragma once

#include <QRect>

class QMainWindow;

namespace quillon {

// The wanted size, or as much of it as the screen has room for beside a window's own frame, in the
// middle.
QRect fittedPlace(const QSize& wanted, const QRect& available);

// Where the window was at the end of the last run, as far as that is on a screen still; else false
// and nothing is changed.
bool restorePlace(QMainWindow*);
void rememberPlace(const QMainWindow*);

} // namespace quillon
