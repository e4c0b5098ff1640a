#include "finder/browse_setup.h"

#include "figure/figure_walks.h"
#include "finder/browse_options.h"
#include "finder/figure_facing.h"
#include "finder/figure_place.h"
#include "finder/pose_similarity.h"
#include "pane/page_state.h"
#include "posefile/pose_reader.h"
#include "posefile/reference_pose.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <QFileInfo>

#include <vector>

namespace quillon {

static int g_type = kNotBrowsing; // that the tables were made for

bool isSetUpFor(int type)
{
    return g_type == type;
}

void forgetSetUp()
{
    g_type = kNotBrowsing;
}

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

// Over the cleared figure, whose place and facing it takes.
static void showReference(DzSkeleton* figure, DzTime time)
{
    releaseBrowsingLimits(figure);
    const bool resetFirst = true;
    applyPoseFile(referencePosePath(), resetFirst);
    putBackRotationUnderHip(time);
    putBackPlace(time);
    turnToStoredFacing(figure, time);
    enforceBrowsingLimits(figure);
    buildYawTable(ReferencePose, figure, time);
}

static void takeTables(int type, DzSkeleton* figure, DzTime time)
{
    hipChanged(figure, StoreHip, time);
    setPartReferences(type, figure, time);
    setSimilarityFilters(type);
    notePlaceLeft(time);
    g_type = type;
}

static bool hasMoved(DzSkeleton* figure, DzTime time)
{
    return !isPlaceOf(figure) || hipChanged(figure, CompareHip, time);
}

// While the figure stands as the last pose left it, its place is the one before that pose turned
// it; else it would face another way after every change of the type.
static void findPlace(DzSkeleton* figure, DzTime time)
{
    if (!isPlaceAsLeft(figure, time))
        rememberPlace(figure, time);
    putBackRotation(time);
    putBackPlace(time);
}

static void takeStartPose(int type, DzSkeleton* figure, DzTime time)
{
    findPlace(figure, time);
    clearUnlockedParts(figure);
    putBackRotationUnderHip(time);
    putBackPlace(time);
    deriveFigureFacing(figure, type, time);
    if (type == ReferencePose)
        showReference(figure, time);
}

bool setUpFor(int type, DzSkeleton* figure, DzTime time)
{
    if (type == ReferencePose && !isReferenceMemorized()) { // the figure as it stands
        rememberPlace(figure, time);
        deriveFigureFacing(figure, type, time);
        takeTables(type, figure, time);
        return false;
    }
    const std::vector<ChannelState> before = stateOf(figure, time);
    DzUndoStackHold hold;
    takeStartPose(type, figure, time);
    takeTables(type, figure, time);
    const bool changed = !(stateOf(figure, time) == before);
    if (changed)
        hold.accept(QLatin1String("quillon_stack"));
    return changed;
}

bool followFigure(DzSkeleton* figure, DzTime time)
{
    if (!hasMoved(figure, time))
        return false;
    deriveFigureFacing(figure, g_type, time);
    hipChanged(figure, StoreHip, time);
    rememberPlace(figure, time);
    return true;
}

} // namespace quillon
