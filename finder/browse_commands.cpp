#include "finder/browse_commands.h"

#include "figure/selected_figure.h"
#include "finder/browse_session.h"
#include "finder/custom_pose_commands.h"
#include "finder/index_saves.h"
#include "finder/pose_browser.h"
#include "finder/pose_index.h"
#include "finder/pose_ranks.h"
#include "ground/plugin_settings.h"
#include "ground/undo_step.h"

#include "dzskeleton.h"

#include <algorithm>
#include <iterator>

namespace quillon {

static const int kRankCount = 3; // unranked, favourite, hidden: what the user can give
static const int kLastLockOfTheBody = 2; // upper body, lower body, feet

// ---- the category

void openCategory(int type, DzSkeleton* figure, DzTime time, bool fromPicker)
{
    const HeldNode held(figure);
    UndoStep undo;
    undo.note(chooseCategory(type, figure, time, fromPicker));
    undo.note(countMatches(held.isGone() ? nullptr : figure, time));
}

bool leaveCategory()
{
    browseSession().type = kNotBrowsing;
    browseSession().tablesState = NotMade;
    const bool settingsSaved = saveSettingsAndPosition();
    return writeRanks() && settingsSaved;
}

// ---- stepping

void stepPose(DzSkeleton* figure, DzTime time, int step, bool productSkip)
{
    UndoStep undo;
    undo.note(searchPose(figure, time, step, productSkip).changed);
    if (hipOf(figure)) // the search shows its own box when not, and one box is enough
        undo.note(countMatches(figure, time));
}

void stepToNeighbour(DzSkeleton* figure, DzTime time, int step)
{
    browseSession().mirrored = false;
    stepPose(figure, time, step, false);
}

// ---- filters

void rebuildMatches(DzSkeleton* figure, DzTime time)
{
    UndoStep undo;
    refreshFilters();
    undo.note(countMatches(figure, time));
    if (!hipOf(figure))
        return;
    if (browseSession().matchCount == 0)
        return dropPosition();
    undo.note(searchPose(figure, time, 0, false).changed);
    undo.note(countMatches(figure, time));
}

static void copySimilarityFlags()
{
    PluginSettings& s = pluginSettings();
    std::copy(std::begin(s.similarity), std::end(s.similarity), s.similarityCopy);
}

void toggleAreaFilter(int area, DzSkeleton* figure, DzTime time)
{
    bool& flag = pluginSettings().similarity[area];
    flag = !flag;
    copySimilarityFlags();
    rebuildMatches(figure, time);
}

void toggleFemaleFilter(DzSkeleton* figure, DzTime time)
{
    pluginSettings().includeFemale = !pluginSettings().includeFemale;
    rebuildMatches(figure, time);
}

void toggleMaleFilter(DzSkeleton* figure, DzTime time)
{
    pluginSettings().includeMale = !pluginSettings().includeMale;
    rebuildMatches(figure, time);
}

void toggleRankFilterBit(int rank, DzSkeleton* figure, DzTime time)
{
    pluginSettings().rankFilter ^= 1 << rank;
    rebuildMatches(figure, time);
}

// ---- how the current pose is shown

void toggleMirroredPose(DzSkeleton* figure, DzTime time)
{
    if (!hipOf(figure) || !poseEntry(pluginSettings().currentPose))
        return;
    UndoStep undo;
    BrowseSession& session = browseSession();
    if (session.mirrored) {
        undo.note(reapplyCurrentPose(&session, figure, time));
        session.mirrored = false;
    } else {
        session.mirrored = reapplyCurrentPoseMirrored(&session, figure, time);
        undo.note(session.mirrored);
    }
    undo.note(countMatches(figure, time));
}

void toggleReferenceOverlay(bool shown, DzSkeleton* figure, DzTime time)
{
    browseSession().referenceOverlay = !shown;
    stepPose(figure, time, 0, false);
}

void toggleLockOfPart(int part, DzSkeleton* figure, DzTime time)
{
    bool& lock = pluginSettings().partLocks[part];
    lock = !lock;
    browseSession().mirrored = false;
    if (part <= kLastLockOfTheBody)
        copySimilarityFlags();
    stepPose(figure, time, 0, false);
}

// ---- the current pose itself

bool advanceCurrentRank(const DzSkeleton* figure)
{
    const bool saved = setCurrentRank((rankOf(pluginSettings().currentPose) + 1) % kRankCount);
    countIfDue(figure);
    return saved;
}

void openFolderOrDeletePose(DzSkeleton* figure, DzTime time)
{
    const int current = pluginSettings().currentPose;
    const PoseIndexEntry* entry = poseEntry(current);
    if (!entry)
        return;
    const HeldNode held(figure);
    if (isCustomPose(current)) {
        if (deletePose(current, figure))
            rebuildMatches(figure, time);
        else
            countIfDue(held.isGone() ? nullptr : figure);
        return;
    }
    browseToPoseFolder(entry->path); // by a script, which may do anything
    countIfDue(held.isGone() ? nullptr : figure);
}

} // namespace quillon
