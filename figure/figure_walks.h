// figure_walks.h - the walks over a figure, written once for all tools.
// Bones in bone-number order, controls in control-number order of the figure's model; what the
// figure lacks is left out. The figure may be null or have no skeleton: the walk is empty then.
// The pointers are good as long as the figure's structure stays as it is.
#pragma once

#include <functional>
#include <vector>

class DzBone;
class DzFloatProperty;
class DzNode;

namespace quillon {

// Face: isFaceBone() or isExpressionControl() holds. Body: it does not.
enum class FigureScope { All, Body, Face };

struct FigureBone {
    DzBone* bone;
    int number;
};

struct FigureControl {
    DzFloatProperty* property; // a morph's channel is called "Value", whatever the control's name
    int number;
};

std::vector<FigureBone> bonesOf(const DzNode* figure, FigureScope scope = FigureScope::All);

// Properties of the figure node, and the value channels of the morphs among the controls.
std::vector<FigureControl> controlsOf(const DzNode* figure, FigureScope scope = FigureScope::All);

// Properties of the figure node only; pure shapes are left out.
std::vector<FigureControl> ownControlsOf(
    const DzNode* figure, FigureScope scope = FigureScope::All);

// The channels that make a bone's pose: rotation X, Y, Z in degrees, then translation X, Y, Z in
// centimetres. The node is not null, and so is none of the six: every node has them.
static constexpr int kPoseChannelCount = 6;
struct PoseChannels {
    DzFloatProperty* channel[kPoseChannelCount];
};
PoseChannels poseChannelsOf(const DzNode* bone);

// The property that drives this one through its controller of that number, 0 to
// getNumControllers() - 1; null for a controller that is no link.
DzFloatProperty* driverAt(const DzFloatProperty* property, int controller);

// What drives the property through controller links, each once and after its own drivers, and the
// property itself last. Values set in this order are final: setting works backwards through the
// links, and a driver that changes later would move the value again. Only drivers that follow()
// accepts are taken and looked behind; a circle of links is entered once. The property is not
// null, and it is always in the list, so that the list is never empty.
typedef std::function<bool(const DzFloatProperty* driver)> FollowDriver;
std::vector<DzFloatProperty*> driversFirst(DzFloatProperty* property, const FollowDriver& follow);

} // namespace quillon
