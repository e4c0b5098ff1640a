#include "pane/button_state.h"

#include "finder/pose_ranks.h"
#include "pane/hover.h"
#include "pane/page_state.h"
#include "ground/plugin_settings.h"
#include "pane/tool_tips.h"

#include <QStringList>

namespace quillon {

static bool isPartLock(int button)
{
    return button >= FirstLockButton && button < FirstLockButton + kPartLockCount;
}

static bool isRankFilter(int button)
{
    return button >= FirstRankFilterButton && button < FirstRankFilterButton + 4;
}

static bool isArea(int button)
{
    return button >= FirstAreaButton && button < FirstAreaButton + kBodyAreaCount;
}

int buttonState(int button)
{
    const PluginSettings& s = pluginSettings();
    if (isPartLock(button))
        return s.partLocks[button - FirstLockButton];
    if (isRankFilter(button))
        return s.rankFilter >> (button - FirstRankFilterButton) & 1;
    if (isArea(button))
        return s.similarity[button - FirstAreaButton];
    switch (button) {
    case BackButton:
        return currentPage() == BrowsingPage;
    case IncludeFemaleButton:
        return s.includeFemale;
    case IncludeMaleButton:
        return s.includeMale;
    case MirrorButton:
        return pageState().mirrored;
    case ReferenceButton:
        return pageState().referenceOverlay;
    case RankButton:
        return qBound(int(Unranked), int(s.currentRank), int(CustomLibraryPose));
    case FolderButton:
        return s.currentRank == CustomLibraryPose;
    case LinkButton:
        return currentPage() == BrowsingPage;
    default:
        return 0;
    }
}

bool isSwitch(int button)
{
    return isPartLock(button) || isRankFilter(button) || isArea(button)
        || button == IncludeFemaleButton || button == IncludeMaleButton || button == MirrorButton
        || button == ReferenceButton;
}

static QString nameFromTip(const QString& tip)
{
    QString text = tip;
    return text.replace(QLatin1String("\r\n"), QLatin1String(" ")).simplified();
}

static void append(std::vector<ButtonDescription>* list, Page page, int button, const QRect& rect)
{
    const QString name = nameFromTip(toolTip(page, button));
    if (!name.isEmpty()) // wells without a command have no tip
        list->push_back(
            {button, name, rect, isSwitch(button), isSwitch(button) && buttonState(button) == 1});
}

std::vector<ButtonDescription> describeButtons(const QSize& pane)
{
    const Page page = currentPage();
    const QPoint pointer = hoverPosition();
    std::vector<ButtonDescription> list;
    for (const ButtonRow& row : pageButtons(page))
        append(&list, page, row.number, buttonRect(pane, row, pointer));
    for (int area = 0; areasShown() && page == BrowsingPage && area < kBodyAreaCount; ++area)
        append(&list, page, FirstAreaButton + area, areaRect(pane, area, AreaSquare::Hit));
    append(&list, page, LinkButton, buttonRect(pane, linkRow(page), pointer));
    return list;
}

} // namespace quillon
