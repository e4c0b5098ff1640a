#include "ground/live_panes.h"

#include "dzapp.h"
#include "dzmainwindow.h"

#include <QList>
#include <QWidget>

namespace quillon {

struct LivePanes {
    QList<QWidget*> panes; // oldest first
    PaneTimers timers;
    HostManagers managers;
};
static LivePanes g_live;

int enterPane(QWidget* pane)
{
    g_live.panes.append(pane);
    return g_live.panes.size();
}

int leavePane(QWidget* pane)
{
    g_live.panes.removeAll(pane);
    return g_live.panes.size();
}

QWidget* currentPane()
{
    return g_live.panes.isEmpty() ? nullptr : g_live.panes.last();
}

void repaintPanes()
{
    for (int i = 0; i < g_live.panes.size(); ++i)
        g_live.panes.at(i)->update();
}

PaneTimers& paneTimers()
{
    return g_live.timers;
}

const HostManagers& hostManagers()
{
    return g_live.managers;
}

void cacheHostManagers()
{
    DzMainWindow* window = dzApp ? dzApp->getInterface() : nullptr;
    g_live.managers.content = dzApp ? dzApp->getContentMgr() : nullptr;
    g_live.managers.actions = window ? window->getActionMgr() : nullptr;
}

void forgetHostManagers()
{
    g_live.managers = HostManagers();
}

} // namespace quillon
