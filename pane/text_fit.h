// text_fit.h - text that fills a place: the largest font in which it fits.
// Owns: nothing. GUI thread only.
#pragma once

#include <QColor>
#include <QRect>
#include <QString>
#include <QStringList>

class QPainter;

namespace quillon {

struct TextFit {
    int lines = 1; // room is kept for as many, even when the text has fewer
    QString widest; // and for a line as long as this one
    bool wrap = false; // a line too long for the place may take lines that are free
    int align = Qt::AlignHCenter | Qt::AlignVCenter;
};

QStringList splitLines(const QString& text); // at "\r\n", "\n"; keeps empty lines

// One draw call a line. A line that is too long even for the smallest font is elided in its
// middle.
void drawTextLines(QPainter* painter, const QRect& place, const QStringList& text,
    const QColor& colour, const TextFit& fit);

} // namespace quillon
