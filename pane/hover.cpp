#include "pane/hover.h"

#include "pane/page_layout.h"
#include "ground/status_message.h"
#include "pane/tool_tips.h"

namespace quillon {

static const QPoint kNowhere(-100000, -100000);

static QPoint g_position = kNowhere;
static QString g_tip;
static int g_enlarged = kNoButton; // number of the enlarged button

const QPoint& hoverPosition()
{
    return g_position;
}

const QString& hoverTip()
{
    return g_tip;
}

// Plain rectangles of different buttons never overlap.
static int enlargedButton(const QSize& pane, Page page, const QPoint& position)
{
    for (const ButtonRow& row : pageButtons(page))
        if (isEnlarged(pane, row, position))
            return row.number;
    for (const ButtonRow* row : {&bannerRow(), &linkRow(page)})
        if (isEnlarged(pane, *row, position))
            return row->number;
    return kNoButton;
}

bool updateHover(const QSize& pane, const QPoint& position)
{
    const Page page = currentPage();
    int under = buttonAt(pane, page, position, position);
    if (under == kNoButton)
        under = linkAt(pane, page, position, position);
    const QString tip = toolTip(page, under);
    const int enlarged = enlargedButton(pane, page, position);
    const bool tipHidden = isStatusMessageShown(); // the message stands in its place
    const bool changed = (tip != g_tip && !tipHidden) || enlarged != g_enlarged;
    g_position = position;
    g_tip = tip;
    g_enlarged = enlarged;
    return changed;
}

bool leaveHover(const QSize& pane)
{
    return updateHover(pane, kNowhere);
}

} // namespace quillon
