#include "pane/hover.h"

#include "pane/page_layout.h"
#include "ground/status_message.h"
#include "pane/tool_tips.h"

namespace quillon {

static const QPoint kNowhere(-100000, -100000);

static QPoint g_position = kNowhere;
static QString g_tip;
static const ButtonRow* g_enlarged = nullptr;

const QPoint& hoverPosition()
{
    return g_position;
}

const QString& hoverTip()
{
    return g_tip;
}

// Plain rectangles of different buttons never overlap.
static const ButtonRow* enlargedButton(const QSize& pane, Page page, const QPoint& position)
{
    for (const ButtonRow* row : pageButtons(page))
        if (isEnlarged(pane, *row, position))
            return row;
    return nullptr;
}

bool updateHover(const QSize& pane, const QPoint& position)
{
    const Page page = currentPage();
    const ButtonRow* under = buttonAt(pane, page, position, position);
    if (!under)
        under = linkAt(pane, page, position, position);
    const QString tip = toolTip(under);
    const ButtonRow* enlarged = enlargedButton(pane, page, position);
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
