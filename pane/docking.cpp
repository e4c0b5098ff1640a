#include "pane/docking.h"

#include "dzapp.h"
#include "dzappsettings.h"
#include "dzmainwindow.h"
#include "dzpane.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"

namespace quillon {

static const char kSettingsGroup[] = "QUILLON_settings";
static const char kDockedKey[] = "docked";

static bool g_docked = false;

void readDockedFlag()
{
    DzAppSettings settings((QLatin1String(kSettingsGroup)));
    g_docked = settings.getBoolValue(QLatin1String(kDockedKey), false);
}

void writeDockedFlag()
{
    DzAppSettings settings((QLatin1String(kSettingsGroup)));
    settings.setBoolValue(QLatin1String(kDockedKey), g_docked);
}

bool isDocked()
{
    return g_docked;
}

static DzPaneGroup* firstGroup()
{
    DzMainWindow* window = dzApp ? dzApp->getInterface() : nullptr;
    DzPaneMgr* manager = window ? window->getPaneMgr() : nullptr;
    return manager && manager->getNumPaneGroups() > 0 ? manager->getPaneGroup(0) : nullptr;
}

static bool isRoomy(const DzPaneGroup* group)
{
    return group && group->width() >= kRoomyWidthPx && group->height() >= kRoomyHeightPx;
}

static void moveToFirstGroup(DzPane* pane)
{
    DzPaneGroup* group = firstGroup();
    if (!group)
        return;
    pane->moveToGroup(group);
    if (group->isMinimized())
        group->restore();
}

void dockPane(DzPane* pane)
{
    DzPaneGroup* group = pane->getPaneGroup();
    const bool wasDocked = g_docked;
    g_docked = true; // before the pane moves: re-parenting shows it once more
    if (isRoomy(group))
        return;
    if (!wasDocked)
        moveToFirstGroup(pane);
    else if (group && group != firstGroup())
        group->resize(kRoomyWidthPx, kRoomyHeightPx);
}

} // namespace quillon
