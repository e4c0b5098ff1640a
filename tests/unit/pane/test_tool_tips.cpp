// What the pane says about its buttons, against a table of its own.
#include "button_numbers.h"
#include "room_tests.h"

#include "finder/browse_session.h"
#include "ground/plugin_settings.h"
#include "pane/button_state.h"
#include "pane/hover.h"
#include "pane/page_layout.h"
#include "pane/page_state.h"
#include "pane/tool_tips.h"

#include <QtTest>

using namespace quillon;

struct Row {
    int page; // 1 main, 2 picker, 4 browsing
    int button; // 300 and up: area squares
    const char* text;
};

// clang-format off
static const Row kRows[] = {
    {1, 0, "REFERENCE POSE\r\n\r\nClick to memorize figure pose\r\n(will be used as a reference by some\r\nfunctions of the Pose Finder tool).\r\nRight-click to view current ref pose"},
    {1, 1, "Pose Finder\r\nBrowse all poses installed on your\r\ncomputer by directly applying them\r\nto the figure. Also find by pose type,\r\napply partial poses and much more!"},
    {1, 2, "Reset Figure Pose\r\n\r\nSelect the figure parts to reset.\r\nRight-click to reset face/hands/feet.\r\nMid-click to reset non-recursively"},
    {1, 3, "Optimize Editing\r\nMakes placing the figure in\r\nthe scene easier with the hip\r\nas center for figure rotations.\r\nRight-click to use root instead"},
    {1, 4, "Swap Pose\r\n\r\nSelect the figure parts to swap,\r\nSelect root for the entire figure.\r\nMid-click swaps non-recursively"},
    {1, 5, "Symmetrize Pose\r\n\r\nSelect the figure parts to\r\nmake like the opposite parts.\r\nMid-click works non-recursively"},
    {1, 6, "Pose Limits\r\n\r\nClamp bone rotations within\r\nthe default range. Right-click to\r\nclamp face. Mid-click unclamps"},
    {1, 7, "Bone Translations\r\n\r\nLimit figure bone translations\r\nwithin a small range. Right-\r\nclick resets to zero translation"},
    {1, 8, "Bake Current Pose\r\n\r\nReset all pose controls to zero\r\nwithout altering the pose. Right-\r\nclick to reset face pose controls"},
    {1, 12, "Brannoc Products Updates\r\n\r\nUpdate all installed products\r\nby Brannoc Ltd\r\nto the latest version"},
    {1, 13, "Save Current Pose\r\nSaves the pose to the plug-in's\r\ncustom library. The custom pose\r\nthen becomes available when\r\nusing the Pose Finder"},
    {1, 14, "Re-initialize Pose Finder\r\nScan or re-scan all installed\r\nposes. Use this feature the\r\nfirst time you use the plug-in or\r\nafter installing new products"},
    {1, 15, "\r\n\r\nPlugin Settings\r\n\r\n"},
    {2, 100, "\r\n\r\nBrowse All Poses\r\n\r\n"},
    {2, 101, "\r\nBrowse all poses similar\r\nto a sitting pose\r\n\r\n"},
    {2, 102, "\r\nBrowse all poses similar\r\nto a standing pose\r\n\r\n"},
    {2, 103, "\r\nBrowse all poses similar\r\nto a laying-belly-up pose\r\n\r\n"},
    {2, 104, "\r\nBrowse all poses similar\r\nto a laying-belly-down pose\r\n\r\n"},
    {2, 105, "\r\nBrowse all poses similar to\r\na laying-on-left-side pose\r\n\r\n"},
    {2, 106, "\r\nBrowse all poses similar to\r\na laying-on-right-side pose\r\n\r\n"},
    {2, 107, "\r\nBrowse all poses similar\r\nto an upside-down pose\r\n\r\n"},
    {2, 108, "Browse all poses similar\r\nto the REFERENCE POSE\r\n(see the first icon on the\r\nPlug-in's main screen)\r\n"},
    {4, 200, "Apply Previous Pose\r\nRight-click to skip to previous\r\nproduct. Mid-click for first"},
    {4, 201, "Apply Next Pose\r\nRight-click to skip to next\r\nproduct. Mid-click for last"},
    {4, 202, "\r\nBack To Pose Finder Picker\r\n"},
    {2, 202, "\r\n\r\nBack To Main Page\r\n\r\n"},
    {4, 210, "\r\nInclude Genesis 8 Female poses\r\n"},
    {4, 211, "\r\nInclude Genesis 8 Male poses\r\n"},
    {4, 212, "\r\nToggle Mirrored Pose\r\n"},
    {4, 214, "Preserve (lock) REFERENCE\r\nPOSE's upper body\r\nwhile browsing for poses"},
    {4, 215, "Preserve (lock) REFERENCE\r\nPOSE's lower body\r\nwhile browsing for poses"},
    {4, 216, "Preserve (lock) REFERENCE\r\nPOSE's feet\r\nwhile browsing for poses"},
    {4, 217, "Preserve (lock) REFERENCE\r\nPOSE's expression\r\nwhile browsing for poses"},
    {4, 218, "Preserve (lock) REFERENCE\r\nPOSE's left hand\r\nwhile browsing for poses"},
    {4, 219, "Preserve (lock) REFERENCE\r\nPOSE's right hand\r\nwhile browsing for poses"},
    {4, 223, "\r\nToggle REFERENCE POSE\r\n"},
    {4, 224, "\r\nInclude Unranked Poses\r\n"},
    {4, 225, "\r\nInclude Favorite Poses\r\n"},
    {4, 226, "\r\nInclude Hidden Poses\r\n"},
    {4, 227, "\r\nInclude Custom Library Poses\r\n"},
    {1, 401, "Click here to visit the plugin\r\nwebpage with more information,\r\nlatest updates and more!"},
    {2, 401, "Click here to visit the plugin\r\nwebpage with more information,\r\nlatest updates and more!"},
    {4, 401, "\r\nClick here to visit the plugin\r\nwebpage with more information,\r\nlatest updates and more!\r\n"},
    {4, 300, "Only show a pose if it has\r\na torso pose similar to the\r\nreference pose's TORSO"},
    {4, 301, "Only show a pose if it has\r\na left shin pose similar to the\r\nreference pose's LEFT SHIN"},
    {4, 302, "Only show a pose if it has\r\na right shin pose similar to the\r\nreference pose's RIGHT SHIN"},
    {4, 303, "Only show a pose if it has\r\na left thigh pose similar to the\r\nreference pose's LEFT THIGH"},
    {4, 304, "Only show a pose if it has\r\na right thigh pose similar to the\r\nreference pose's RIGHT THIGH"},
    {4, 305, "Only show a pose if it has\r\na left arm pose similar to the\r\nreference pose's LEFT ARM"},
    {4, 306, "Only show a pose if it has\r\na right arm pose similar to the\r\nreference pose's RIGHT ARM"},
    {4, 307, "Only show a pose if it has\r\na left forearm pose similar to the\r\nreference pose's LEFT FOREARM"},
    {4, 308, "Only show a pose if it has\r\na right forearm pose similar to the\r\nreference pose's RIGHT FOREARM"},
    {4, 309, "Only show a pose if it has\r\na hip orientation similar to the\r\nreference pose's HIP"},
};

static const char* const kRankTexts[] = {
    "Current Pose Rank\r\nUnranked\r\n(click to change)",
    "Current Pose Rank\r\nFavorite\r\n(click to change)",
    "Current Pose Rank\r\nHidden\r\n(click to change)",
    "\r\nThis is a Custom Library Pose\r\n",
};
// clang-format on

class TestToolTips : public QObject {
    Q_OBJECT
private slots:
    void init();
    void everyButtonHasItsText();
    void otherButtonsHaveNone();
    void rankTextFollowsTheRank();
    void folderTextFollowsTheKindOfPose();
    void accessibleNamesAreTheTipsInOneLine();
    void hoverShowsTheTipAndTellsChanges();
};

void TestToolTips::init()
{
    pageState() = PageState();
    browseSession() = BrowseSession();
    pluginSettings() = PluginSettings();
    leaveHover(QSize(512, 1024));
}

void TestToolTips::everyButtonHasItsText()
{
    for (const Row& row : kRows)
        QCOMPARE(tipOf(Page(row.page), row.button), QString(row.text));
}

void TestToolTips::otherButtonsHaveNone()
{
    for (int page : {1, 2, 4})
        for (int button = -1; button < 500; ++button) {
            bool known = page == 4 && (button == RankButton || button == FolderButton);
            for (const Row& row : kRows)
                known |= row.page == page && row.button == button;
            if (!known && button != RankButton && button != FolderButton)
                QCOMPARE(tipOf(Page(page), button), QString());
        }
}

void TestToolTips::rankTextFollowsTheRank()
{
    for (int rank = 0; rank < 4; ++rank) {
        pluginSettings().currentRank = rank;
        QCOMPARE(tipOf(BrowsingPage, RankButton), QString(kRankTexts[rank]));
    }
    pluginSettings().currentRank = 77; // a settings file may hold anything
    QVERIFY(!tipOf(BrowsingPage, RankButton).isEmpty());
}

void TestToolTips::folderTextFollowsTheKindOfPose()
{
    QCOMPARE(tipOf(BrowsingPage, FolderButton), QString("Browse to the product's folder\r\n\r\n"));
    pluginSettings().currentRank = 3;
    QCOMPARE(tipOf(BrowsingPage, FolderButton), QString("\r\nDelete current custom pose\r\n"));
}

void TestToolTips::accessibleNamesAreTheTipsInOneLine()
{
    pageState().picker = true;
    const std::vector<ButtonDescription> buttons = describeButtons(QSize(512, 1024));
    QCOMPARE(buttons.front().name, QString("Browse All Poses"));
    QCOMPARE(buttons.size(), size_t(9 + 1 + 1)); // categories, back, link
    pageState().picker = false;
    QCOMPARE(describeButtons(QSize(512, 1024)).size(), size_t(13 + 1)); // the wells have no command
    QCOMPARE(describeButtons(QSize(512, 1024))[4].name,
        QString("Swap Pose Select the figure parts to swap, Select root for the entire figure. "
                "Mid-click swaps non-recursively"));
    browseSession().type = 8;
    pluginSettings().partLocks[5] = true;
    bool locked = false;
    for (const ButtonDescription& d : describeButtons(QSize(512, 1024)))
        if (d.row->number == 219)
            locked = d.checkable && d.checked;
    QVERIFY(locked);
}

void TestToolTips::hoverShowsTheTipAndTellsChanges()
{
    const QSize pane(512, 1024);
    QVERIFY(updateHover(pane, QPoint(50, 300)));
    QCOMPARE(hoverTip(), tipOf(MainPage, 0));
    QVERIFY(!updateHover(pane, QPoint(51, 301))); // the same button
    QVERIFY(updateHover(pane, QPoint(140, 300))); // between buttons
    QVERIFY(hoverTip().isEmpty());
    QVERIFY(!updateHover(pane, QPoint(141, 300)));
    updateHover(pane, QPoint(50, 300));
    QVERIFY(leaveHover(pane));
    QVERIFY(hoverTip().isEmpty());
}

QUILLON_TEST(TestToolTips)
#include "test_tool_tips.moc"
