#include "finder/browse_setup.h"

#include "figure/figure_walks.h"
#include "finder/browse_options.h"
#include "finder/browse_session.h"
#include "ground/undo_step.h"
#include "posefile/pose_reader.h"
#include "posefile/reference_pose.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <QFileInfo>

#include <vector>

namespace quillon {

namespace {

// What a set-up can change of a channel.
struct ChannelState {
    float raw;
    int keyCount;
    bool clamped;

    bool operator==(const ChannelState& other) const
    {
        return raw == other.raw && keyCount == other.keyCount && clamped == other.clamped;
    }
};

} // namespace

static void addState(const DzFloatProperty* channel, DzTime time, std::vector<ChannelState>* out)
{
    out->push_back(
        ChannelState {channel->getRawValue(time), channel->getNumKeys(), channel->isClamped()});
}

static std::vector<ChannelState> stateOf(const DzSkeleton* figure, DzTime time)
{
    std::vector<ChannelState> state;
    for (const DzFloatProperty* channel : poseChannelsOf(figure).channel)
        addState(channel, time, &state);
    for (const FigureBone& each : bonesOf(figure)) {
        for (const DzFloatProperty* channel : poseChannelsOf(each.bone).channel)
            addState(channel, time, &state);
    }
    for (const FigureControl& each : controlsOf(figure))
        addState(each.property, time, &state);
    return state;
}

static bool isReferenceMemorized()
{
    return QFileInfo(referencePosePath()).isFile();
}

void deriveFigureFacing(BrowseSession* session, int type, DzSkeleton* figure, DzTime time)
{
    deriveFacing(&session->facing, figure, time);
    makeYawTable(&session->tables, type, figure, time);
}

// Over the cleared figure, whose place and facing it takes.
static void showReference(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    releaseBrowsingLimits(figure, time);
    const bool resetFirst = true;
    applyPose(figure, time, referencePosePath(), resetFirst);
    putBackRotationUnderHip(session->place, time);
    putBackPlace(session->place, time);
    turnToFacing(session->facing, figure, time);
    enforceBrowsingLimits(figure, time);
    makeYawTable(&session->tables, session->type, figure, time);
}

static void takeTables(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    storeHip(&session->facing, figure, time);
    setPartReferences(&session->tables, session->type, figure, time);
    setSimilarityFilters(&session->tables, session->type);
    notePlaceLeft(&session->place, time);
    session->tablesState = Made;
}

// While the figure stands as the last pose left it, its place is the one before that pose turned
// it; else it would face another way after every change of the type.
static void findPlace(FigurePlace* place, DzSkeleton* figure, DzTime time)
{
    if (!isPlaceAsLeft(*place, figure, time))
        *place = placeOf(figure, time);
    putBackRotation(*place, time);
    putBackPlace(*place, time);
}

static void takeStartPose(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    findPlace(&session->place, figure, time);
    clearUnlockedParts(figure, time);
    putBackRotationUnderHip(session->place, time);
    putBackPlace(session->place, time);
    deriveFigureFacing(session, session->type, figure, time);
    if (session->type == ReferencePose)
        showReference(session, figure, time);
}

static bool setUp(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    if (session->type == ReferencePose && !isReferenceMemorized()) { // the figure as it stands
        session->place = placeOf(figure, time);
        deriveFigureFacing(session, session->type, figure, time);
        takeTables(session, figure, time);
        return false;
    }
    const std::vector<ChannelState> before = stateOf(figure, time);
    UndoStep step;
    takeStartPose(session, figure, time);
    takeTables(session, figure, time);
    const bool changed = !(stateOf(figure, time) == before);
    step.note(changed);
    return changed;
}

bool ensureSetUp(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    return isCategory(session->type) && session->tablesState == NotMade
        && setUp(session, figure, time);
}

static bool hasMoved(const BrowseSession& session, DzSkeleton* figure, DzTime time)
{
    return !isPlaceOf(session.place, figure) || hasHipMoved(session.facing, figure, time);
}

bool followFigure(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    if (!hasMoved(*session, figure, time))
        return false;
    deriveFigureFacing(session, session->type, figure, time);
    storeHip(&session->facing, figure, time);
    session->place = placeOf(figure, time);
    return true;
}

} // namespace quillon
