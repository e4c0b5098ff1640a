#include "pane/button_state.h"

#include "finder/browse_session.h"
#include "finder/pose_index.h"
#include "finder/pose_ranks.h"
#include "ground/plugin_settings.h"
#include "ground/status_message.h"
#include "pane/hover.h"
#include "pane/tool_tips.h"

#include <algorithm>

namespace quillon {

int buttonState(const ButtonRow& row)
{
    return row.state ? row.state(row.which) : 0;
}

bool isSwitch(const ButtonRow& row)
{
    return row.look == Look::Switch || row.look == Look::Square;
}

int alwaysOne(int)
{
    return 1;
}

int areaState(int area)
{
    return pluginSettings().similarity[area];
}

int femaleState(int)
{
    return pluginSettings().includeFemale;
}

int maleState(int)
{
    return pluginSettings().includeMale;
}

int mirroredState(int)
{
    return browseSession().mirrored;
}

int rankState(int)
{
    return qBound(int(Unranked), int(pluginSettings().currentRank), int(CustomLibraryPose));
}

int partLockState(int part)
{
    return pluginSettings().partLocks[part];
}

int folderState(int)
{
    return pluginSettings().currentRank == CustomLibraryPose;
}

int referenceState(int)
{
    return browseSession().referenceOverlay;
}

int rankFilterState(int rank)
{
    return pluginSettings().rankFilter >> rank & 1;
}

// ---- for those who do not see the picture

static QString nameFromTip(const QString& tip)
{
    QString text = tip;
    return text.replace(QLatin1String("\r\n"), QLatin1String(" ")).simplified();
}

// The squares are read out after the other buttons, and the link at the end.
static int readingOrder(const ButtonRow& row)
{
    return row.look == Look::Link ? 2 : row.look == Look::Square ? 1 : 0;
}

static bool isIdle(const ButtonRow& row)
{
    if (row.number == RankButton)
        return isBusy() || pluginSettings().currentRank == CustomLibraryPose;
    return isBusy() || (row.number == FolderButton && !poseEntry(pluginSettings().currentPose));
}

std::vector<ButtonDescription> describeButtons(const QSize& pane)
{
    const QPoint pointer = hoverPosition();
    std::vector<ButtonDescription> list;
    for (const ButtonRow* row : pageButtons(currentPage())) {
        const QString name = nameFromTip(toolTip(row));
        if (!name.isEmpty()) // wells without a command have no tip
            list.push_back({row, name, hitRect(pane, *row, pointer), isSwitch(*row),
                isSwitch(*row) && buttonState(*row) == 1, isIdle(*row)});
    }
    std::stable_sort(
        list.begin(), list.end(), [](const ButtonDescription& a, const ButtonDescription& b) {
            return readingOrder(*a.row) < readingOrder(*b.row);
        });
    return list;
}

} // namespace quillon
