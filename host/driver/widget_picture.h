// widget_picture.h - pictures of widgets, and a viewport that costs nothing while nobody looks.
#pragma once

#include <QPixmap>

class QWidget;

namespace quillon {

// From now on the window's viewport paints for pictures only: drawing the scene takes longer than
// most of what a script does between two of them.
void pauseViewport(QWidget* window);

// As the widget would look now; no repaint for the counts of paint_counter.h.
QPixmap pictureOf(QWidget*);

} // namespace quillon
