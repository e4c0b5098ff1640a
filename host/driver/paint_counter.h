// paint_counter.h - counts the repaints of every widget, from the time it was started.
#pragma once

class QWidget;

namespace quillon {

void startPaintCounts();
void pausePaintCounts(bool onOff); // while a repaint is only recorded
int paintCount(const QWidget*); // repaints so far

} // namespace quillon
