#include "pane/button_table.h"

#include "pane/button_state.h"
#include "pane/finder_commands.h"
#include "pane/main_commands.h"
#include "pane/tool_tips.h"

#include <iterator>

namespace quillon {

// number, name, pages, x, y, w, h, look, which, needs, undo,
// left, right, middle, status,
// tip, tip text, state
// clang-format off
constexpr ButtonRow kButtons[] = {
    // ---- main page
    {0, "reference pose", MainPage, 30, 270, 94, 94, Look::Push, 0, Needs::Figure, Undo::None,
     memorizeReference, showReference, nullptr, nullptr,
     "REFERENCE POSE\r\n\r\nClick to memorize figure pose\r\n(will be used as a reference by some\r\nfunctions of the Pose Finder tool).\r\nRight-click to view current ref pose", nullptr, nullptr},
    {1, "Pose Finder", MainPage, 150, 270, 94, 94, Look::Push, 0, Needs::Nothing, Undo::None,
     openPicker, openPicker, openPicker, nullptr,
     "Pose Finder\r\nBrowse all poses installed on your\r\ncomputer by directly applying them\r\nto the figure. Also find by pose type,\r\napply partial poses and much more!", nullptr, nullptr},
    {2, "reset figure pose", MainPage, 270, 270, 94, 94, Look::Push, 0, Needs::NodeAndFigure, Undo::OneStep,
     resetBody, resetExtremities, resetSelected, "\r\n\r\nReset succeeded\r\n\r\n",
     "Reset Figure Pose\r\n\r\nSelect the figure parts to reset.\r\nRight-click to reset face/hands/feet.\r\nMid-click to reset non-recursively", nullptr, nullptr},
    {3, "optimize editing", MainPage, 390, 270, 94, 94, Look::Push, 0, Needs::Node, Undo::OneStep,
     optimizeForHip, optimizeForRoot, optimizeNode, "\r\n\r\nOptimization succeeded\r\n\r\n",
     "Optimize Editing\r\nMakes placing the figure in\r\nthe scene easier with the hip\r\nas center for figure rotations.\r\nRight-click to use root instead", nullptr, nullptr},
    {4, "swap pose", MainPage, 30, 372, 94, 94, Look::Push, 0, Needs::Node, Undo::OneStep,
     swapPose, nullptr, swapSelected, "\r\n\r\nSwapping succeeded\r\n\r\n",
     "Swap Pose\r\n\r\nSelect the figure parts to swap,\r\nSelect root for the entire figure.\r\nMid-click swaps non-recursively", nullptr, nullptr},
    {5, "symmetrize pose", MainPage, 150, 372, 94, 94, Look::Push, 0, Needs::NodeOfFigure, Undo::OneStep,
     symmetrizePose, nullptr, symmetrizeSelected, "\r\n\r\nSymmetrization succeeded\r\n\r\n",
     "Symmetrize Pose\r\n\r\nSelect the figure parts to\r\nmake like the opposite parts.\r\nMid-click works non-recursively", nullptr, nullptr},
    {6, "pose limits", MainPage, 270, 372, 94, 94, Look::Push, 0, Needs::FigureSelected, Undo::None,
     clampFaceLimits, clampBodyLimits, releaseLimits, nullptr,
     "Pose Limits\r\n\r\nClamp bone rotations within\r\nthe default range. Right-click to\r\nclamp face. Mid-click unclamps", nullptr, nullptr},
    {7, "bone translations", MainPage, 390, 372, 94, 94, Look::Push, 0, Needs::FigureSelected, Undo::OneStep,
     limitTranslations, zeroTranslations, zeroTranslations, nullptr,
     "Bone Translations\r\n\r\nLimit figure bone translations\r\nwithin a small range. Right-\r\nclick resets to zero translation", nullptr, nullptr},
    {8, "bake current pose", MainPage, 30, 474, 94, 94, Look::Push, 0, Needs::FigureSelected, Undo::OneStep,
     bakeBody, bakeFace, nullptr, "\r\n\r\nFigure pose baking succeeded\r\n\r\n",
     "Bake Current Pose\r\n\r\nReset all pose controls to zero\r\nwithout altering the pose. Right-\r\nclick to reset face pose controls", nullptr, nullptr},
    {9, "empty well", MainPage, 150, 474, 94, 94, Look::Push, 0, Needs::Nothing, Undo::None,
     nullptr, nullptr, nullptr, nullptr,
     nullptr, nullptr, nullptr},
    {10, "empty well", MainPage, 270, 474, 94, 94, Look::Push, 0, Needs::Nothing, Undo::None,
     nullptr, nullptr, nullptr, nullptr,
     nullptr, nullptr, nullptr},
    {11, "empty well", MainPage, 390, 474, 94, 94, Look::Push, 0, Needs::Nothing, Undo::None,
     nullptr, nullptr, nullptr, nullptr,
     nullptr, nullptr, nullptr},
    {12, "product updates", MainPage, 30, 576, 94, 94, Look::Push, 0, Needs::Nothing, Undo::None,
     patchInstalledProducts, patchInstalledProducts, patchInstalledProducts, nullptr,
     "Brannoc Products Updates\r\n\r\nUpdate all installed products\r\nby Brannoc Ltd\r\nto the latest version", nullptr, nullptr},
    {13, "save current pose", MainPage, 150, 576, 94, 94, Look::Push, 0, Needs::Nothing, Undo::None,
     saveToCustomLibrary, saveToCustomLibrary, saveToCustomLibrary, nullptr,
     "Save Current Pose\r\nSaves the pose to the plug-in's\r\ncustom library. The custom pose\r\nthen becomes available when\r\nusing the Pose Finder", nullptr, nullptr},
    {14, "re-initialize Pose Finder", MainPage, 270, 576, 94, 94, Look::Push, 0, Needs::ScannerFigure, Undo::None,
     scanAfterQuestion, scanAfterQuestion, scanAfterQuestion, nullptr,
     "Re-initialize Pose Finder\r\nScan or re-scan all installed\r\nposes. Use this feature the\r\nfirst time you use the plug-in or\r\nafter installing new products", nullptr, nullptr},
    {15, "plug-in settings", MainPage, 390, 576, 94, 94, Look::Push, 0, Needs::Nothing, Undo::None,
     openSettings, openSettings, openSettings, nullptr,
     "\r\n\r\nPlugin Settings\r\n\r\n", nullptr, nullptr},

    // ---- picker page
    {100, "all poses", PickerPage, 40, 280, 112, 112, Look::Push, 0, Needs::Nothing, Undo::None,
     browseCategory, browseCategory, browseCategory, nullptr,
     "\r\n\r\nBrowse All Poses\r\n\r\n", nullptr, nullptr},
    {101, "sitting", PickerPage, 198, 280, 112, 112, Look::Push, 1, Needs::Nothing, Undo::None,
     browseCategory, browseCategory, browseCategory, nullptr,
     "\r\nBrowse all poses similar\r\nto a sitting pose\r\n\r\n", nullptr, nullptr},
    {102, "standing", PickerPage, 356, 280, 112, 112, Look::Push, 2, Needs::Nothing, Undo::None,
     browseCategory, browseCategory, browseCategory, nullptr,
     "\r\nBrowse all poses similar\r\nto a standing pose\r\n\r\n", nullptr, nullptr},
    {103, "lying belly up", PickerPage, 40, 412, 112, 112, Look::Push, 3, Needs::Nothing, Undo::None,
     browseCategory, browseCategory, browseCategory, nullptr,
     "\r\nBrowse all poses similar\r\nto a laying-belly-up pose\r\n\r\n", nullptr, nullptr},
    {104, "lying belly down", PickerPage, 198, 412, 112, 112, Look::Push, 4, Needs::Nothing, Undo::None,
     browseCategory, browseCategory, browseCategory, nullptr,
     "\r\nBrowse all poses similar\r\nto a laying-belly-down pose\r\n\r\n", nullptr, nullptr},
    {105, "lying on the left side", PickerPage, 356, 412, 112, 112, Look::Push, 5, Needs::Nothing, Undo::None,
     browseCategory, browseCategory, browseCategory, nullptr,
     "\r\nBrowse all poses similar to\r\na laying-on-left-side pose\r\n\r\n", nullptr, nullptr},
    {106, "lying on the right side", PickerPage, 40, 544, 112, 112, Look::Push, 6, Needs::Nothing, Undo::None,
     browseCategory, browseCategory, browseCategory, nullptr,
     "\r\nBrowse all poses similar to\r\na laying-on-right-side pose\r\n\r\n", nullptr, nullptr},
    {107, "upside down", PickerPage, 198, 544, 112, 112, Look::Push, 7, Needs::Nothing, Undo::None,
     browseCategory, browseCategory, browseCategory, nullptr,
     "\r\nBrowse all poses similar\r\nto an upside-down pose\r\n\r\n", nullptr, nullptr},
    {108, "reference pose", PickerPage, 356, 544, 112, 112, Look::Push, 8, Needs::Nothing, Undo::None,
     browseCategory, browseCategory, browseCategory, nullptr,
     "Browse all poses similar\r\nto the REFERENCE POSE\r\n(see the first icon on the\r\nPlug-in's main screen)\r\n", nullptr, nullptr},
    {202, "back", PickerPage, 210, 958, 120, 60, Look::Push, 0, Needs::Nothing, Undo::None,
     backToMain, backToMain, backToMain, nullptr,
     "\r\n\r\nBack To Main Page\r\n\r\n", nullptr, nullptr},

    // ---- browsing page
    {200, "previous pose", BrowsingPage, 24, 350, 120, 240, Look::Push, 0, Needs::Nothing, Undo::None,
     previousPose, previousProduct, firstPose, nullptr,
     "Apply Previous Pose\r\nRight-click to skip to previous\r\nproduct. Mid-click for first", nullptr, nullptr},
    {201, "next pose", BrowsingPage, 370, 350, 120, 240, Look::Push, 0, Needs::Nothing, Undo::None,
     nextPose, nextProduct, lastPose, nullptr,
     "Apply Next Pose\r\nRight-click to skip to next\r\nproduct. Mid-click for last", nullptr, nullptr},
    {202, "back", BrowsingPage, 210, 958, 120, 60, Look::Push, 0, Needs::Nothing, Undo::None,
     backToPicker, backToPicker, backToPicker, nullptr,
     "\r\nBack To Pose Finder Picker\r\n", nullptr, alwaysOne},
    {300, "torso alike", BrowsingPage, 248, 440, 20, 20, Look::Square, 0, Needs::Nothing, Undo::None,
     toggleArea, toggleArea, toggleArea, nullptr,
     "Only show a pose if it has\r\na torso pose similar to the\r\nreference pose's TORSO", nullptr, areaState},
    {301, "left shin alike", BrowsingPage, 266, 545, 20, 20, Look::Square, 1, Needs::Nothing, Undo::None,
     toggleArea, toggleArea, toggleArea, nullptr,
     "Only show a pose if it has\r\na left shin pose similar to the\r\nreference pose's LEFT SHIN", nullptr, areaState},
    {302, "right shin alike", BrowsingPage, 230, 545, 20, 20, Look::Square, 2, Needs::Nothing, Undo::None,
     toggleArea, toggleArea, toggleArea, nullptr,
     "Only show a pose if it has\r\na right shin pose similar to the\r\nreference pose's RIGHT SHIN", nullptr, areaState},
    {303, "left thigh alike", BrowsingPage, 260, 499, 20, 20, Look::Square, 3, Needs::Nothing, Undo::None,
     toggleArea, toggleArea, toggleArea, nullptr,
     "Only show a pose if it has\r\na left thigh pose similar to the\r\nreference pose's LEFT THIGH", nullptr, areaState},
    {304, "right thigh alike", BrowsingPage, 236, 499, 20, 20, Look::Square, 4, Needs::Nothing, Undo::None,
     toggleArea, toggleArea, toggleArea, nullptr,
     "Only show a pose if it has\r\na right thigh pose similar to the\r\nreference pose's RIGHT THIGH", nullptr, areaState},
    {305, "left arm alike", BrowsingPage, 270, 444, 20, 20, Look::Square, 5, Needs::Nothing, Undo::None,
     toggleArea, toggleArea, toggleArea, nullptr,
     "Only show a pose if it has\r\na left arm pose similar to the\r\nreference pose's LEFT ARM", nullptr, areaState},
    {306, "right arm alike", BrowsingPage, 226, 444, 20, 20, Look::Square, 6, Needs::Nothing, Undo::None,
     toggleArea, toggleArea, toggleArea, nullptr,
     "Only show a pose if it has\r\na right arm pose similar to the\r\nreference pose's RIGHT ARM", nullptr, areaState},
    {307, "left forearm alike", BrowsingPage, 290, 464, 20, 20, Look::Square, 7, Needs::Nothing, Undo::None,
     toggleArea, toggleArea, toggleArea, nullptr,
     "Only show a pose if it has\r\na left forearm pose similar to the\r\nreference pose's LEFT FOREARM", nullptr, areaState},
    {308, "right forearm alike", BrowsingPage, 206, 464, 20, 20, Look::Square, 8, Needs::Nothing, Undo::None,
     toggleArea, toggleArea, toggleArea, nullptr,
     "Only show a pose if it has\r\na right forearm pose similar to the\r\nreference pose's RIGHT FOREARM", nullptr, areaState},
    {309, "hip alike", BrowsingPage, 248, 476, 20, 20, Look::Square, 9, Needs::Nothing, Undo::None,
     toggleArea, toggleArea, toggleArea, nullptr,
     "Only show a pose if it has\r\na hip orientation similar to the\r\nreference pose's HIP", nullptr, areaState},
    {210, "include female", BrowsingPage, 24, 255, 80, 80, Look::Switch, 0, Needs::Nothing, Undo::None,
     toggleFemale, toggleFemale, toggleFemale, nullptr,
     "\r\nInclude Genesis 8 Female poses\r\n", nullptr, femaleState},
    {211, "include male", BrowsingPage, 122, 255, 80, 80, Look::Switch, 0, Needs::Nothing, Undo::None,
     toggleMale, toggleMale, toggleMale, nullptr,
     "\r\nInclude Genesis 8 Male poses\r\n", nullptr, maleState},
    {212, "mirrored pose", BrowsingPage, 314, 255, 80, 80, Look::Switch, 0, Needs::Nothing, Undo::None,
     toggleMirrored, toggleMirrored, toggleMirrored, nullptr,
     "\r\nToggle Mirrored Pose\r\n", nullptr, mirroredState},
    {213, "current rank", BrowsingPage, 410, 255, 80, 80, Look::Push, 0, Needs::Nothing, Undo::None,
     advanceRank, advanceRank, advanceRank, nullptr,
     nullptr, rankTip, rankState},
    {214, "lock upper body", BrowsingPage, 24, 605, 80, 80, Look::Switch, 0, Needs::Nothing, Undo::None,
     togglePartLock, togglePartLock, togglePartLock, nullptr,
     "Preserve (lock) REFERENCE\r\nPOSE's upper body\r\nwhile browsing for poses", nullptr, partLockState},
    {215, "lock lower body", BrowsingPage, 122, 605, 80, 60, Look::Switch, 1, Needs::Nothing, Undo::None,
     togglePartLock, togglePartLock, togglePartLock, nullptr,
     "Preserve (lock) REFERENCE\r\nPOSE's lower body\r\nwhile browsing for poses", nullptr, partLockState},
    {216, "lock feet", BrowsingPage, 122, 665, 80, 20, Look::Switch, 2, Needs::Nothing, Undo::None,
     togglePartLock, togglePartLock, togglePartLock, nullptr,
     "Preserve (lock) REFERENCE\r\nPOSE's feet\r\nwhile browsing for poses", nullptr, partLockState},
    {217, "lock expression", BrowsingPage, 218, 605, 80, 80, Look::Switch, 3, Needs::Nothing, Undo::None,
     togglePartLock, togglePartLock, togglePartLock, nullptr,
     "Preserve (lock) REFERENCE\r\nPOSE's expression\r\nwhile browsing for poses", nullptr, partLockState},
    {218, "lock left hand", BrowsingPage, 314, 605, 80, 80, Look::Switch, 4, Needs::Nothing, Undo::None,
     togglePartLock, togglePartLock, togglePartLock, nullptr,
     "Preserve (lock) REFERENCE\r\nPOSE's left hand\r\nwhile browsing for poses", nullptr, partLockState},
    {219, "lock right hand", BrowsingPage, 410, 605, 80, 80, Look::Switch, 5, Needs::Nothing, Undo::None,
     togglePartLock, togglePartLock, togglePartLock, nullptr,
     "Preserve (lock) REFERENCE\r\nPOSE's right hand\r\nwhile browsing for poses", nullptr, partLockState},
    {220, "product folder or delete", BrowsingPage, 36, 710, 50, 50, Look::Push, 0, Needs::Nothing, Undo::None,
     openFolderOrDelete, openFolderOrDelete, openFolderOrDelete, nullptr,
     nullptr, folderTip, folderState},
    {223, "show reference", BrowsingPage, 218, 255, 80, 80, Look::Switch, 0, Needs::Nothing, Undo::None,
     toggleReference, toggleReference, toggleReference, nullptr,
     "\r\nToggle REFERENCE POSE\r\n", nullptr, referenceState},
    {224, "include unranked", BrowsingPage, 158, 352, 40, 40, Look::Switch, 0, Needs::Nothing, Undo::None,
     toggleRankFilter, toggleRankFilter, toggleRankFilter, nullptr,
     "\r\nInclude Unranked Poses\r\n", nullptr, rankFilterState},
    {225, "include favorite", BrowsingPage, 214, 352, 40, 40, Look::Switch, 1, Needs::Nothing, Undo::None,
     toggleRankFilter, toggleRankFilter, toggleRankFilter, nullptr,
     "\r\nInclude Favorite Poses\r\n", nullptr, rankFilterState},
    {226, "include hidden", BrowsingPage, 266, 352, 40, 40, Look::Switch, 2, Needs::Nothing, Undo::None,
     toggleRankFilter, toggleRankFilter, toggleRankFilter, nullptr,
     "\r\nInclude Hidden Poses\r\n", nullptr, rankFilterState},
    {227, "include custom library", BrowsingPage, 322, 352, 40, 40, Look::Switch, 3, Needs::Nothing, Undo::None,
     toggleRankFilter, toggleRankFilter, toggleRankFilter, nullptr,
     "\r\nInclude Custom Library Poses\r\n", nullptr, rankFilterState},

    // ---- every page, asked after its buttons
    {400, "banner", kAllPages, 0, 0, 512, 202, Look::Banner, 0, Needs::Nothing, Undo::None,
     nullptr, nullptr, nullptr, nullptr,
     nullptr, nullptr, nullptr},
    {401, "web page", MainPage | PickerPage, 25, 730, 462, 180, Look::Link, 0, Needs::Nothing, Undo::None,
     nullptr, nullptr, nullptr, nullptr,
     "Click here to visit the plugin\r\nwebpage with more information,\r\nlatest updates and more!", nullptr, nullptr},
    {401, "web page", BrowsingPage, 25, 810, 462, 100, Look::Link, 0, Needs::Nothing, Undo::None,
     nullptr, nullptr, nullptr, nullptr,
     "\r\nClick here to visit the plugin\r\nwebpage with more information,\r\nlatest updates and more!\r\n", nullptr, alwaysOne},
};
// clang-format on

const int kButtonCount = int(std::size(kButtons));

// ---- checks
// --------------------------------------------------------------------------------------

namespace {

struct NumberRange {
    Page page;
    int first, last;
};

constexpr NumberRange kNumberRanges[] = {
    {MainPage, 0, 15},
    {PickerPage, FirstCategoryButton, FirstCategoryButton + 8},
    {PickerPage, BackButton, BackButton},
    {BrowsingPage, 200, BackButton},
    {BrowsingPage, FirstAreaButton, FirstAreaButton + 9},
    {BrowsingPage, 210, FolderButton},
    {BrowsingPage, 223, 227},
};
constexpr int kEmptyWells[] = {9, 11};

constexpr int rowsWith(int number, int page)
{
    int count = 0;
    for (const ButtonRow& row : kButtons)
        count += row.number == number && (row.pages & page);
    return count;
}

constexpr bool hasEveryNumberOnce()
{
    for (const NumberRange& range : kNumberRanges)
        for (int number = range.first; number <= range.last; ++number)
            if (rowsWith(number, range.page) != 1)
                return false;
    for (int page : {MainPage, PickerPage, BrowsingPage})
        if (rowsWith(BannerButton, page) != 1 || rowsWith(LinkButton, page) != 1)
            return false;
    return true;
}

constexpr bool isNumberTwiceOnAPage()
{
    for (const ButtonRow& row : kButtons)
        for (int page : {MainPage, PickerPage, BrowsingPage})
            if ((row.pages & page) && rowsWith(row.number, page) > 1)
                return true;
    return false;
}

constexpr bool isMute(const ButtonRow& row)
{
    return row.number == BannerButton
        || (row.number >= kEmptyWells[0] && row.number <= kEmptyWells[1]);
}

constexpr bool hasEveryTip()
{
    for (const ButtonRow& row : kButtons)
        if ((row.tip || row.tipText) == isMute(row))
            return false;
    return true;
}

constexpr bool doesEveryButtonSomething()
{
    for (const ButtonRow& row : kButtons)
        if (row.look < Look::Link && !isMute(row) && !row.left)
            return false;
    return true;
}

#ifdef __SANITIZE_ADDRESS__ // GCC takes no address for a constant then
constexpr bool kAddressesAreConstant = false;
#else
constexpr bool kAddressesAreConstant = true;
#endif

static_assert(hasEveryNumberOnce(), "no button of the pages is missing");
static_assert(!isNumberTwiceOnAPage(), "a number is a button");
static_assert(
    !kAddressesAreConstant || hasEveryTip(), "a tip for all but the empty wells and the banner");
static_assert(!kAddressesAreConstant || doesEveryButtonSomething(),
    "an operation for all but the empty wells");

} // namespace

const ButtonRow* buttonOf(Page page, int number)
{
    for (const ButtonRow& row : kButtons)
        if (row.number == number && (row.pages & page))
            return &row;
    return nullptr;
}

} // namespace quillon
