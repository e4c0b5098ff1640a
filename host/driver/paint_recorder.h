// paint_recorder.h - a paint device that keeps what is drawn on it instead of drawing it.
// Positions are in pixels of the widget, after every transformation of the painter.
#pragma once

#include <QColor>
#include <QList>
#include <QRectF>
#include <QString>

class QWidget;

namespace quillon {

struct DrawRecord {
    // "text", "pixmap", "image", "rect", "ellipse", "line", "point", "polygon", "path"
    const char* kind;
    QRectF rect; // bounds; of a text: its width, from ascent to descent
    QColor colour; // of the filling, else of the pen; invalid for pictures. The painter's opacity
                   // is part of its alpha
    QColor pen; // invalid: no outline
    QString text; // of "text"; the pieces of one line make one record
};

// Repaints the widget with its children and tells every draw call, in order. The repaint is none
// for the counts of paint_counter.h.
QList<DrawRecord> recordRepaint(QWidget*);

} // namespace quillon
