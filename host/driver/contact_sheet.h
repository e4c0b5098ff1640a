// contact_sheet.h - many small pictures on one, in titled rows with a caption below each picture.
#pragma once

#include <QImage>
#include <QList>
#include <QString>

namespace quillon {

struct SheetPicture {
    QImage image;
    QString caption;
};

struct SheetRow {
    QString title;
    QList<SheetPicture> pictures; // all of one size, over all rows; none: only the title is drawn
};

// Null without any picture. Captions that are too long for their picture end in an ellipsis.
QImage contactSheet(const QList<SheetRow>& rows);

} // namespace quillon
