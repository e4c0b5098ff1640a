#include "pane/text_fit.h"

#include "ground/qt_compat.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cstring>

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

// Where a line is best broken: behind a blank or punctuation, as near to its middle as can be; in
// the middle when there is none.
static int breakOf(const QString& line)
{
    static const char kBreaks[] = " _-./";
    const int middle = line.size() / 2;
    for (int off = 0; off <= line.size() / 3; ++off)
        for (int at : {middle + off, middle - off})
            if (at > 0 && at < line.size() && std::strchr(kBreaks, line.at(at - 1).toLatin1())
                && line.at(at - 1).toLatin1())
                return at;
    return middle;
}

// Breaks the widest line as long as there are free lines and it is what keeps the font small.
static QStringList wrapped(
    const QFont& base, const QRect& place, QStringList lines, const TextFit& fit)
{
    QFont font = base;
    font.setPixelSize(std::max(kSmallestPx, int(place.height() / (fit.lines * kLineHeight))));
    const QFontMetrics metrics(font);
    while (lines.size() < fit.lines) {
        int widest = 0;
        for (int i = 1; i < lines.size(); ++i)
            if (textWidth(metrics, lines.at(i)) > textWidth(metrics, lines.at(widest)))
                widest = i;
        const QString line = lines.at(widest);
        if (textWidth(metrics, line) <= place.width() || line.size() < 2)
            break;
        const int at = breakOf(line);
        lines[widest] = line.left(at).trimmed();
        lines.insert(widest + 1, line.mid(at).trimmed());
    }
    return lines;
}

void drawTextLines(QPainter* painter, const QRect& place, const QStringList& text,
    const QColor& colour, const TextFit& fit)
{
    if (text.isEmpty() || place.isEmpty())
        return;
    const QStringList lines = fit.wrap ? wrapped(painter->font(), place, text, fit) : text;
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
