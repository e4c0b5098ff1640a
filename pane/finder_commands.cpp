#include "pane/finder_commands.h"

#include "finder/custom_pose_commands.h"
#include "finder/pose_apply.h"
#include "finder/pose_browser.h"
#include "finder/pose_index.h"
#include "finder/pose_ranks.h"
#include "finder/selected_figure.h"
#include "pane/page_state.h"
#include "ground/plugin_settings.h"

#include "dzundostack.h"

#include <algorithm>
#include <iterator>

namespace quillon {

static const int kRankCount = 3; // unranked, favourite, hidden: what the user can give
static const int kLastLockOfTheBody = 2; // upper body, lower body, feet

namespace {

// Brackets several scene changes of one press; no step when no pose was applied.
class PressHold {
public:
    PressHold()
        : m_before(appliedPoseCount())
    {
    }
    ~PressHold()
    {
        if (appliedPoseCount() != m_before)
            m_hold.accept(QLatin1String("quillon_stack"));
    }

private:
    DzUndoStackHold m_hold;
    unsigned m_before;
};

} // namespace

// Whether a search can run; it shows its own box when not, and one box is enough.
static bool canSearch(const PressContext& press)
{
    return hipOf(press.figure);
}

static void countMatches()
{
    findPose(0, false, true);
}

static bool step(const PressContext& press, int offset, bool byProduct)
{
    const PressHold hold;
    findPose(offset, byProduct, false);
    if (canSearch(press))
        countMatches();
    return true;
}

// After a change of filters: the current pose if it still matches, else the next match.
static bool rebuild(const PressContext& press)
{
    const PressHold hold;
    refreshFilters();
    countMatches();
    if (!canSearch(press))
        return true;
    if (browseState().matchCount == 0) {
        pluginSettings().currentPose = -1;
        refreshCurrentRank();
        return true;
    }
    findPose(0, false, false);
    countMatches();
    return true;
}

static void copySimilarityFlags()
{
    PluginSettings& s = pluginSettings();
    std::copy(std::begin(s.similarity), std::end(s.similarity), s.similarityCopy);
}

// ---- pages -----------------------------------------------------------------------------------

bool browseCategory(const PressContext& press)
{
    const PressHold hold;
    selectPoseType(press.which);
    countMatches();
    return true;
}

bool backToMain(const PressContext&)
{
    pageState().picker = false;
    return true;
}

bool backToPicker(const PressContext&)
{
    pageState().browsingCategory = kNotBrowsing;
    pageState().tablesValid = false;
    saveSettings();
    writeRanks();
    return true;
}

// ---- stepping --------------------------------------------------------------------------------

bool previousPose(const PressContext& press)
{
    pageState().mirrored = false;
    return step(press, -1, false);
}

bool previousProduct(const PressContext& press)
{
    return step(press, -1, true);
}

bool firstPose(const PressContext& press)
{
    return step(press, -2, false);
}

bool nextPose(const PressContext& press)
{
    pageState().mirrored = false;
    return step(press, +1, false);
}

bool nextProduct(const PressContext& press)
{
    return step(press, +1, true);
}

bool lastPose(const PressContext& press)
{
    return step(press, +2, false);
}

// ---- filters, locks, the current pose ----------------------------------------------------------

bool toggleArea(const PressContext& press)
{
    bool& flag = pluginSettings().similarity[press.which];
    flag = !flag;
    copySimilarityFlags();
    return rebuild(press);
}

bool toggleFemale(const PressContext& press)
{
    pluginSettings().includeFemale = !pluginSettings().includeFemale;
    return rebuild(press);
}

bool toggleMale(const PressContext& press)
{
    pluginSettings().includeMale = !pluginSettings().includeMale;
    return rebuild(press);
}

bool toggleRankFilter(const PressContext& press)
{
    pluginSettings().rankFilter ^= 1 << (press.which);
    return rebuild(press);
}

bool toggleMirrored(const PressContext& press)
{
    if (!canSearch(press) || !poseEntry(pluginSettings().currentPose))
        return false;
    const PressHold hold;
    bool& mirrored = pageState().mirrored;
    if (mirrored)
        reapplyCurrentPose(press.figure, press.time);
    mirrored = !mirrored && reapplyCurrentPoseMirrored(press.figure, press.time);
    countMatches();
    return true;
}

bool advanceRank(const PressContext&)
{
    setCurrentRank((rankOf(pluginSettings().currentPose) + 1) % kRankCount);
    countIfDue();
    return true;
}

bool togglePartLock(const PressContext& press)
{
    bool& lock = pluginSettings().partLocks[press.which];
    lock = !lock;
    pageState().mirrored = false;
    if (press.which <= kLastLockOfTheBody)
        copySimilarityFlags();
    return step(press, 0, false);
}

bool openFolderOrDelete(const PressContext& press)
{
    const int current = pluginSettings().currentPose;
    const PoseIndexEntry* entry = poseEntry(current);
    if (!entry)
        return false;
    if (!isCustomPose(current)) {
        browseToPoseFolder(entry->path);
        countIfDue();
        return true;
    }
    return deleteCustomPose(current) && rebuild(press);
}

bool toggleReference(const PressContext& press)
{
    pageState().referenceOverlay = !press.overlayBefore;
    return step(press, 0, false);
}

} // namespace quillon
