// live_panes.h - the panes that exist, and what they share with each other and with lower rooms.
// The host builds one pane; a script may build more. All state of the plug-in is shared by them:
// made by the first, saved and freed with the last.
// Owns: the list of panes, the two timers (children of one of the panes), the host's managers.
#pragma once

class DzActionMgr;
class DzContentMgr;
class QTimer;
class QWidget;

namespace quillon {

// Both return how many panes there are afterwards.
int enterPane(QWidget* pane);
int leavePane(QWidget* pane);
QWidget* currentPane(); // the newest that still lives, or null
void repaintPanes();

struct PaneTimers {
    QTimer* status = nullptr; // how long a status message stays
    QTimer* banner = nullptr; // when the information banner comes and goes
};
PaneTimers& paneTimers(); // null while there is no pane

// Remembered for the life of the panes; null where the host has none.
struct HostManagers {
    DzContentMgr* content = nullptr;
    DzActionMgr* actions = nullptr;
};
const HostManagers& hostManagers();
void cacheHostManagers();
void forgetHostManagers();

} // namespace quillon
