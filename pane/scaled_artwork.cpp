#include "pane/scaled_artwork.h"

#include "art/atlas_table.h"
#include "ground/qt_compat.h"
#include "pane/artwork.h"

#include <QHash>
#include <QImage>
#include <QPainter>
#include <QPair>

namespace quillon {

typedef QPair<int, QPair<int, int>> Key; // cell, width, height
typedef QHash<Key, QPixmap> Cache;

struct ScaledArtwork {
    QSize pane; // that the cells were scaled for
    Cache cells;
};

// Made when first used: pixmaps need an application.
static ScaledArtwork& scaled()
{
    static ScaledArtwork g_scaled;
    return g_scaled;
}

static Picture atlasPicture(AtlasImage image)
{
    switch (image) {
    case AtlasImage::Main:
        return Picture::MainPage;
    case AtlasImage::Picker:
        return Picture::PickerPage;
    case AtlasImage::Browsing:
        break;
    }
    return Picture::BrowsingPage;
}

static QPixmap scaledCell(const AtlasCell& cell, const QSize& size)
{
    const FlatPicture* page = flatPicture(atlasPicture(cell.image));
    if (!page)
        return QPixmap();
    return QPixmap::fromImage(scaledPiece(*page, QRect(cell.x, cell.y, cell.w, cell.h), size));
}

void drawArtwork(QPainter* painter, const QRect& rect, int button, int state)
{
    const AtlasCell* cell = atlasCell(button, state);
    if (!cell || rect.isEmpty())
        return;
    const QSize pixels = rect.size() * pixelRatio(painter->device()); // a picture in full detail
    const Key key(int(cell - kAtlasCells), qMakePair(pixels.width(), pixels.height()));
    Cache& cells = scaled().cells;
    Cache::const_iterator found = cells.constFind(key);
    if (found == cells.constEnd())
        found = cells.insert(key, scaledCell(*cell, pixels));
    if (pixels == rect.size())
        painter->drawPixmap(rect.topLeft(), *found);
    else
        painter->drawPixmap(rect, *found);
}

void keepArtworkFor(const QSize& pane)
{
    if (pane == scaled().pane)
        return;
    dropScaledArtwork();
    scaled().pane = pane;
}

void dropScaledArtwork()
{
    scaled() = ScaledArtwork();
}

} // namespace quillon
