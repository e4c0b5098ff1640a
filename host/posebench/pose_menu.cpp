#include "host/posebench/pose_menu.h"

#include "host/posebench/pane_buttons.h"
#include "host/posebench/posebench_window.h"
#include "host/posebench/status_line.h"
#include "host/posebench/time_panel.h"

#include <QAction>
#include <QMenu>

using namespace quillon;

namespace {

struct EntryRow {
    const char* label;
    const char* keys;
    const char* button; // the beginning of its name in the pane
    PaneClick click;
};

const EntryRow kEntries[] = {
    {"&Next Pose", "Ctrl+Right", "Apply Next Pose", PaneClick::Left},
    {"&Previous Pose", "Ctrl+Left", "Apply Previous Pose", PaneClick::Left},
    {"&First Pose", "Ctrl+Shift+Left", "Apply Previous Pose", PaneClick::Middle},
    {"&Last Pose", "Ctrl+Shift+Right", "Apply Next Pose", PaneClick::Middle},
};

// A press of the rank's button goes on to the next one: Unranked, Favorite, Hidden.
const char kRankButton[] = "Current Pose Rank";
const char kUnranked[] = "Current Pose Rank Unranked";
const int kPressesFromUnranked = 1;
const int kPressesFromOthers = 2;

} // namespace

PoseMenu::PoseMenu(QMenu* menu, PoseBenchWindow* window)
    : QObject(menu)
    , m_window(window)
{
    for (const EntryRow& row : kEntries) {
        QAction* action = menu->addAction(tr(row.label), this, SLOT(press()));
        action->setShortcut(QKeySequence(QLatin1String(row.keys)));
        action->setData(int(&row - kEntries));
    }
    menu->addSeparator();
    menu->addAction(tr("Fa&vorite"), this, SLOT(favorite()), QKeySequence(tr("Ctrl+Shift+F")));
    menu->addSeparator();
    menu->addAction(tr("Pl&ay the Timeline"), this, SLOT(togglePlay()), QKeySequence(tr("Ctrl+P")));
}

void PoseMenu::press()
{
    const EntryRow& row = kEntries[static_cast<QAction*>(sender())->data().toInt()];
    if (!clickPaneButton(row.button, row.click))
        m_window->statusLine()->say(
            tr("No poses are being browsed: open the Pose Finder and one of its categories."));
}

void PoseMenu::favorite()
{
    const QString name = paneButtonName(kRankButton);
    if (name.isEmpty())
        m_window->statusLine()->say(tr("There is no current pose whose rank could change."));
    const int presses
        = name.startsWith(QLatin1String(kUnranked)) ? kPressesFromUnranked : kPressesFromOthers;
    for (int i = 0; !name.isEmpty() && i < presses; ++i)
        clickPaneButton(kRankButton);
}

void PoseMenu::togglePlay()
{
    if (auto* timeline = m_window->findChild<DzTimelinePane*>())
        timeline->togglePlay();
}
