#include "pane/text_fit.h"

#include "pane/qt_compat.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace quillon {

static const int kProbePx = 64; // widths grow in proportion to the font's size
static const int kSmallestPx = 8;
static const double kLineHeight = 1.22; // of the font's size
static const double kLargestShare = 0.72; // of a line's room, when it stands alone

QStringList splitLines(const QString& text)
{
    QString plain = text;
    plain.remove(QLatin1Char('\r'));
    return plain.split(QLatin1Char('\n'));
}

static int fittingPixelSize(
    const QFont& base, const QRect& place, const QStringList& lines, const TextFit& fit)
{
    QFont font = base;
    font.setPixelSize(kProbePx);
    const QFontMetrics metrics(font);
    int widest = textWidth(metrics, fit.widest);
    for (const QString& line : lines)
        widest = std::max(widest, textWidth(metrics, line));
    const int rows = std::max(fit.lines, int(lines.size()));
    const double byHeight
        = rows > 1 ? place.height() / (rows * kLineHeight) : place.height() * kLargestShare;
    const double byWidth = widest > 0 ? double(place.width()) * kProbePx / widest : byHeight;
    return std::max(kSmallestPx, int(std::min(byHeight, byWidth)));
}

void drawTextLines(QPainter* painter, const QRect& place, const QStringList& lines,
    const QColor& colour, const TextFit& fit)
{
    if (lines.isEmpty() || place.isEmpty())
        return;
    QFont font = painter->font();
    font.setPixelSize(fittingPixelSize(painter->font(), place, lines, fit));
    const QFontMetrics metrics(font);
    const int step = std::min(
        int(font.pixelSize() * kLineHeight + 0.5), std::max(1, place.height() / int(lines.size())));
    int top = place.top();
    if (fit.align & Qt::AlignVCenter)
        top += (place.height() - step * int(lines.size())) / 2;
    painter->save();
    painter->setFont(font);
    painter->setPen(colour);
    for (const QString& line : lines) {
        const QRect row(place.left(), top, place.width(), step);
        top += step;
        if (line.isEmpty())
            continue;
        painter->drawText(row,
            (fit.align & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter | Qt::TextSingleLine,
            metrics.elidedText(line, Qt::ElideMiddle, place.width()));
    }
    painter->restore();
}

} // namespace quillon
