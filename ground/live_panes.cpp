#include "ground/live_panes.h"

#include "dzapp.h"
#include "dzmainwindow.h"

#include <QList>
#include <QWidget>

namespace quillon {

static QList<QWidget*> g_panes; // oldest first
static PaneTimers g_timers;
static HostManagers g_managers;

int enterPane(QWidget* pane)
{
    g_panes.append(pane);
    return g_panes.size();
}

int leavePane(QWidget* pane)
{
    g_panes.removeAll(pane);
    return g_panes.size();
}

QWidget* currentPane()
{
    return g_panes.isEmpty() ? nullptr : g_panes.last();
}

void repaintPanes()
{
    for (int i = 0; i < g_panes.size(); ++i)
        g_panes.at(i)->update();
}

PaneTimers& paneTimers()
{
    return g_timers;
}

const HostManagers& hostManagers()
{
    return g_managers;
}

void cacheHostManagers()
{
    DzMainWindow* window = dzApp ? dzApp->getInterface() : nullptr;
    g_managers.content = dzApp ? dzApp->getContentMgr() : nullptr;
    g_managers.actions = window ? window->getActionMgr() : nullptr;
}

void forgetHostManagers()
{
    g_managers = HostManagers();
}

} // namespace quillon
