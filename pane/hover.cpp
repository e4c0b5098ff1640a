#include "pane/hover.h"

#include "ground/status_message.h"
#include "pane/page_layout.h"
#include "pane/tool_tips.h"

namespace quillon {

static const QPoint kNowhere(-100000, -100000);

struct Hover {
    QPoint position = kNowhere; // where the pointer was last seen
    QString tip;
    const ButtonRow* enlarged = nullptr;
};
static Hover g_hover;

const QPoint& hoverPosition()
{
    return g_hover.position;
}

const QString& hoverTip()
{
    return g_hover.tip;
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
    const bool changed = (tip != g_hover.tip && !tipHidden) || enlarged != g_hover.enlarged;
    g_hover = Hover {position, tip, enlarged};
    return changed;
}

bool leaveHover(const QSize& pane)
{
    return updateHover(pane, kNowhere);
}

} // namespace quillon
