// reading_order.h - what the keyboard can reach in a window, in the order in which one reads it:
// its docked panels column by column and downwards, in each of them row by row.
// By geometry, so that it holds wherever the user moves the panels. Owns: nothing.
#pragma once

#include <QList>

class QMainWindow;
class QWidget;

namespace quillon {

// Visible, enabled and taking the focus by Tab; not null. A control made of several widgets is one.
QList<QWidget*> readingOrder(const QMainWindow*);

// The one after or before a widget, round and round; for one that is not in the list the first or
// the last. Null: the list is empty.
QWidget* neighbour(const QList<QWidget*>& order, const QWidget* of, bool next);

} // namespace quillon
