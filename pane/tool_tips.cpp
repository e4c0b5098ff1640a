#include "pane/tool_tips.h"

#include "finder/pose_index.h"
#include "finder/pose_pair_products.h"
#include "finder/pose_ranks.h"
#include "ground/plugin_settings.h"

#include <iterator>

namespace quillon {

namespace {

struct TipRow {
    int button;
    int pages;
    const char* text;
};

// clang-format off
const TipRow kTips[] = {
    {0, MainPage, "REFERENCE POSE\r\n\r\nClick to memorize figure pose\r\n(will be used as a reference by some\r\nfunctions of the Pose Finder tool).\r\nRight-click to view current ref pose"},
    {1, MainPage, "Pose Finder\r\nBrowse all poses installed on your\r\ncomputer by directly applying them\r\nto the figure. Also find by pose type,\r\napply partial poses and much more!"},
    {2, MainPage, "Reset Figure Pose\r\n\r\nSelect the figure parts to reset.\r\nRight-click to reset face/hands/feet.\r\nMid-click to reset non-recursively"},
    {3, MainPage, "Optimize Editing\r\nMakes placing the figure in\r\nthe scene easier with the hip\r\nas center for figure rotations.\r\nRight-click to use root instead"},
    {4, MainPage, "Swap Pose\r\n\r\nSelect the figure parts to swap,\r\nSelect root for the entire figure.\r\nMid-click swaps non-recursively"},
    {5, MainPage, "Symmetrize Pose\r\n\r\nSelect the figure parts to\r\nmake like the opposite parts.\r\nMid-click works non-recursively"},
    {6, MainPage, "Pose Limits\r\n\r\nClamp bone rotations within\r\nthe default range. Right-click to\r\nclamp face. Mid-click unclamps"},
    {7, MainPage, "Bone Translations\r\n\r\nLimit figure bone translations\r\nwithin a small range. Right-\r\nclick resets to zero translation"},
    {8, MainPage, "Bake Current Pose\r\n\r\nReset all pose controls to zero\r\nwithout altering the pose. Right-\r\nclick to reset face pose controls"},
    {12, MainPage, "Brannoc Products Updates\r\n\r\nUpdate all installed products\r\nby Brannoc Ltd\r\nto the latest version"},
    {13, MainPage, "Save Current Pose\r\nSaves the pose to the plug-in's\r\ncustom library. The custom pose\r\nthen becomes available when\r\nusing the Pose Finder"},
    {14, MainPage, "Re-initialize Pose Finder\r\nScan or re-scan all installed\r\nposes. Use this feature the\r\nfirst time you use the plug-in or\r\nafter installing new products"},
    {15, MainPage, "\r\n\r\nPlugin Settings\r\n\r\n"},
    {100, PickerPage, "\r\n\r\nBrowse All Poses\r\n\r\n"},
    {101, PickerPage, "\r\nBrowse all poses similar\r\nto a sitting pose\r\n\r\n"},
    {102, PickerPage, "\r\nBrowse all poses similar\r\nto a standing pose\r\n\r\n"},
    {103, PickerPage, "\r\nBrowse all poses similar\r\nto a laying-belly-up pose\r\n\r\n"},
    {104, PickerPage, "\r\nBrowse all poses similar\r\nto a laying-belly-down pose\r\n\r\n"},
    {105, PickerPage, "\r\nBrowse all poses similar to\r\na laying-on-left-side pose\r\n\r\n"},
    {106, PickerPage, "\r\nBrowse all poses similar to\r\na laying-on-right-side pose\r\n\r\n"},
    {107, PickerPage, "\r\nBrowse all poses similar\r\nto an upside-down pose\r\n\r\n"},
    {108, PickerPage, "Browse all poses similar\r\nto the REFERENCE POSE\r\n(see the first icon on the\r\nPlug-in's main screen)\r\n"},
    {PreviousButton, BrowsingPage, "Apply Previous Pose\r\nRight-click to skip to previous\r\nproduct. Mid-click for first"},
    {NextButton, BrowsingPage, "Apply Next Pose\r\nRight-click to skip to next\r\nproduct. Mid-click for last"},
    {BackButton, PickerPage, "\r\n\r\nBack To Main Page\r\n\r\n"},
    {BackButton, BrowsingPage, "\r\nBack To Pose Finder Picker\r\n"},
    {IncludeFemaleButton, BrowsingPage, "\r\nInclude Genesis 8 Female poses\r\n"},
    {IncludeMaleButton, BrowsingPage, "\r\nInclude Genesis 8 Male poses\r\n"},
    {MirrorButton, BrowsingPage, "\r\nToggle Mirrored Pose\r\n"},
    {214, BrowsingPage, "Preserve (lock) REFERENCE\r\nPOSE's upper body\r\nwhile browsing for poses"},
    {215, BrowsingPage, "Preserve (lock) REFERENCE\r\nPOSE's lower body\r\nwhile browsing for poses"},
    {216, BrowsingPage, "Preserve (lock) REFERENCE\r\nPOSE's feet\r\nwhile browsing for poses"},
    {217, BrowsingPage, "Preserve (lock) REFERENCE\r\nPOSE's expression\r\nwhile browsing for poses"},
    {218, BrowsingPage, "Preserve (lock) REFERENCE\r\nPOSE's left hand\r\nwhile browsing for poses"},
    {219, BrowsingPage, "Preserve (lock) REFERENCE\r\nPOSE's right hand\r\nwhile browsing for poses"},
    {ReferenceButton, BrowsingPage, "\r\nToggle REFERENCE POSE\r\n"},
    {224, BrowsingPage, "\r\nInclude Unranked Poses\r\n"},
    {225, BrowsingPage, "\r\nInclude Favorite Poses\r\n"},
    {226, BrowsingPage, "\r\nInclude Hidden Poses\r\n"},
    {227, BrowsingPage, "\r\nInclude Custom Library Poses\r\n"},
    {300, BrowsingPage, "Only show a pose if it has\r\na torso pose similar to the\r\nreference pose's TORSO"},
    {301, BrowsingPage, "Only show a pose if it has\r\na left shin pose similar to the\r\nreference pose's LEFT SHIN"},
    {302, BrowsingPage, "Only show a pose if it has\r\na right shin pose similar to the\r\nreference pose's RIGHT SHIN"},
    {303, BrowsingPage, "Only show a pose if it has\r\na left thigh pose similar to the\r\nreference pose's LEFT THIGH"},
    {304, BrowsingPage, "Only show a pose if it has\r\na right thigh pose similar to the\r\nreference pose's RIGHT THIGH"},
    {305, BrowsingPage, "Only show a pose if it has\r\na left arm pose similar to the\r\nreference pose's LEFT ARM"},
    {306, BrowsingPage, "Only show a pose if it has\r\na right arm pose similar to the\r\nreference pose's RIGHT ARM"},
    {307, BrowsingPage, "Only show a pose if it has\r\na left forearm pose similar to the\r\nreference pose's LEFT FOREARM"},
    {308, BrowsingPage, "Only show a pose if it has\r\na right forearm pose similar to the\r\nreference pose's RIGHT FOREARM"},
    {309, BrowsingPage, "Only show a pose if it has\r\na hip orientation similar to the\r\nreference pose's HIP"},
    {LinkButton, MainPage | PickerPage, "Click here to visit the plugin\r\nwebpage with more information,\r\nlatest updates and more!"},
    {LinkButton, BrowsingPage, "\r\nClick here to visit the plugin\r\nwebpage with more information,\r\nlatest updates and more!\r\n"},
};

const char* const kRankTips[] = { // by rank
    "Current Pose Rank\r\nUnranked\r\n(click to change)",
    "Current Pose Rank\r\nFavorite\r\n(click to change)",
    "Current Pose Rank\r\nHidden\r\n(click to change)",
    "\r\nThis is a Custom Library Pose\r\n",
};

const char kFolderTip[] = "Browse to the product's folder\r\n\r\n";
const char kDeleteTip[] = "\r\nDelete current custom pose\r\n";
// clang-format on

// Names the folder where the current pose is one of the maker's products.
QString folderTip()
{
    const PoseIndexEntry* entry = poseEntry(pluginSettings().currentPose);
    return QLatin1String(kFolderTip) + (entry ? productFolder(entry->path) : QString());
}

} // namespace

QString toolTip(Page page, int button)
{
    const int rank = pluginSettings().currentRank;
    if (button == RankButton)
        return QLatin1String(kRankTips[qBound(0, rank, int(std::size(kRankTips)) - 1)]);
    if (button == FolderButton)
        return rank == CustomLibraryPose ? QString(QLatin1String(kDeleteTip)) : folderTip();
    for (const TipRow& row : kTips)
        if (row.button == button && (row.pages & page))
            return QLatin1String(row.text);
    return QString();
}

} // namespace quillon
