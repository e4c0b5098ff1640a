#include "pane/page_layout.h"

#include "finder/browse_session.h"
#include "finder/pose_ranks.h"
#include "ground/plugin_settings.h"
#include "pane/page_state.h"

namespace quillon {

static const double kEnlargement = 1.05;
static const int kSquareMargin = 2; // canvas units, hit beside what is drawn

Page currentPage()
{
    if (browseSession().type != kNotBrowsing)
        return BrowsingPage;
    return pageState().picker ? PickerPage : MainPage;
}

std::vector<const ButtonRow*> pageButtons(Page page)
{
    std::vector<const ButtonRow*> rows;
    for (int i = 0; i < kButtonCount; ++i) {
        const ButtonRow& row = kButtons[i];
        if ((row.pages & page) && (row.look != Look::Square || areasShown()))
            rows.push_back(&row);
    }
    return rows;
}

QRect canvasRect(const QSize& pane, const ArtPlace& place)
{
    const double sx = double(pane.width()) / kCanvasWidth;
    const double sy = double(pane.height()) / kCanvasHeight;
    return QRect(int(place.x * sx), int(place.y * sy), int(place.w * sx), int(place.h * sy));
}

QRect plainRect(const QSize& pane, const ButtonRow& row)
{
    // the fractions as whole numbers: no rounding error moves an edge
    return QRect(pane.width() * row.x / kCanvasWidth, pane.height() * row.y / kCanvasHeight,
        pane.width() * row.w / kCanvasWidth, pane.height() * row.h / kCanvasHeight);
}

QRect enlargedRect(const QRect& plain)
{
    const int w = int(plain.width() * kEnlargement), h = int(plain.height() * kEnlargement);
    return QRect(
        plain.left() - (w - plain.width()) / 2, plain.top() - (h - plain.height()) / 2, w, h);
}

bool isEnlarged(const QSize& pane, const ButtonRow& row, const QPoint& pointer)
{
    if (row.look == Look::Square)
        return false;
    if (row.number == RankButton && pluginSettings().currentRank == CustomLibraryPose)
        return false;
    return plainRect(pane, row).contains(pointer);
}

QRect drawnRect(const QSize& pane, const ButtonRow& row, const QPoint& pointer)
{
    const QRect plain = plainRect(pane, row);
    return isEnlarged(pane, row, pointer) ? enlargedRect(plain) : plain;
}

QRect hitRect(const QSize& pane, const ButtonRow& row, const QPoint& pointer)
{
    if (row.look != Look::Square)
        return drawnRect(pane, row, pointer);
    ButtonRow grown = row;
    grown.x -= kSquareMargin;
    grown.y -= kSquareMargin;
    grown.w += 2 * kSquareMargin;
    grown.h += 2 * kSquareMargin;
    return plainRect(pane, grown);
}

bool areasShown()
{
    return browseSession().type == ReferencePose;
}

static bool isLink(const ButtonRow& row)
{
    return row.look == Look::Link || row.look == Look::Banner;
}

static const ButtonRow* rowAt(
    const QSize& pane, Page page, const QPoint& position, const QPoint& pointer, bool links)
{
    for (const ButtonRow* row : pageButtons(page))
        if (isLink(*row) == links && hitRect(pane, *row, pointer).contains(position))
            return row;
    return nullptr;
}

const ButtonRow* buttonAt(
    const QSize& pane, Page page, const QPoint& position, const QPoint& pointer)
{
    return rowAt(pane, page, position, pointer, false);
}

const ButtonRow* linkAt(const QSize& pane, Page page, const QPoint& position, const QPoint& pointer)
{
    return rowAt(pane, page, position, pointer, true);
}

} // namespace quillon
