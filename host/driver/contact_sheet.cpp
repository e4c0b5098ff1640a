#include "host/driver/contact_sheet.h"

#include <QFontMetrics>
#include <QPainter>

namespace quillon {
namespace {

const int kMarginPx = 16; // around everything, and between pictures
const int kTitlePx = 30; // height of a row's title
const int kCaptionPx = 22;
const QColor kGround(34, 36, 40);
const QColor kTitleColor(230, 230, 230);
const QColor kCaptionColor(180, 180, 180);

QSize pictureSize(const QList<SheetRow>& rows)
{
    for (const SheetRow& row : rows)
        for (const SheetPicture& picture : row.pictures)
            return picture.image.size();
    return QSize();
}

int longestRow(const QList<SheetRow>& rows)
{
    int longest = 0;
    for (const SheetRow& row : rows)
        longest = qMax(longest, row.pictures.size());
    return longest;
}

void setFontPx(QPainter* painter, int px, bool bold)
{
    QFont font = painter->font();
    font.setPixelSize(px);
    font.setBold(bold);
    painter->setFont(font);
}

void drawText(QPainter* painter, const QRect& box, const QString& text)
{
    const QString fitting = painter->fontMetrics().elidedText(text, Qt::ElideRight, box.width());
    painter->drawText(box, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, fitting);
}

void drawRow(QPainter* painter, const SheetRow& row, const QSize& picture, int top)
{
    setFontPx(painter, 17, true);
    painter->setPen(kTitleColor);
    drawText(painter, QRect(kMarginPx, top, painter->device()->width() - 2 * kMarginPx, kTitlePx),
        row.title);
    setFontPx(painter, 13, false);
    painter->setPen(kCaptionColor);
    for (int i = 0; i < row.pictures.size(); ++i) {
        const QRect cell(
            QPoint(kMarginPx + i * (picture.width() + kMarginPx), top + kTitlePx), picture);
        painter->drawImage(cell.topLeft(), row.pictures.at(i).image);
        const QRect below(cell.left(), cell.bottom() + 1, cell.width(), kCaptionPx);
        drawText(painter, below, row.pictures.at(i).caption);
    }
}

int rowHeight(const SheetRow& row, const QSize& picture)
{
    return kTitlePx + (row.pictures.isEmpty() ? 0 : picture.height() + kCaptionPx);
}

} // namespace

QImage contactSheet(const QList<SheetRow>& rows)
{
    const QSize picture = pictureSize(rows);
    if (picture.isEmpty())
        return QImage();
    int height = kMarginPx;
    for (const SheetRow& row : rows)
        height += rowHeight(row, picture) + kMarginPx;
    QImage sheet(
        kMarginPx + longestRow(rows) * (picture.width() + kMarginPx), height, QImage::Format_RGB32);
    sheet.fill(kGround);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::Antialiasing);
    int top = kMarginPx;
    for (const SheetRow& row : rows) {
        drawRow(&painter, row, picture, top);
        top += rowHeight(row, picture) + kMarginPx;
    }
    return sheet;
}

} // namespace quillon
