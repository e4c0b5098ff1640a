// channel_snapshot.h - keeps what channels and nodes hold, compares it, and puts back what moved.
// The one place that reads and sets the value which a channel stores.
//
// The stored value is what lies in the keys, before controllers and limits; the look is what comes
// out at the end. All at one time, in ticks. Channels are compared exactly, places as
// same_place.h does, and only what differs is written: a round trip leaves keys and noise. Degrees,
// centimetres or fractions, as the property has it. Channels and nodes are not null; the pointers
// are good as long as the figure's structure stays as it is. Owns: nothing. No undo step is opened.
#pragma once

#include "ground/host_types.h"

#include <limits>
#include <vector>

class DzFloatProperty;
class DzNode;

namespace quillon {

// What counts as 0 for a reset or a bake: such a value is left unwritten. 1.1920929e-07.
static constexpr float kZeroThreshold = std::numeric_limits<float>::epsilon();

// ---- channels

float storedValue(const DzFloatProperty* channel, DzTime time);
// By setValue on a property without controllers, by setRawValue on one with controllers, since
// setValue works backwards through them. Nothing when locked.
void setStoredValue(DzFloatProperty* channel, DzTime time, float value);

// One channel at one time.
struct KeptValue {
    DzFloatProperty* channel;
    float stored;
    float value; // the look
    int keyCount; // of all times
    bool hasOwnKey; // at this time
};
typedef std::vector<KeptValue> ChannelSnapshot;

KeptValue keepValue(DzFloatProperty* channel, DzTime time);

// Appends the node's six channels of a pose.
void keepPoseChannels(const DzNode* node, DzTime time, ChannelSnapshot* kept);

// Makes the channel look as it did: stores what was stored and, where other drivers' shares have
// changed since, makes up for the difference. Nothing when locked.
void putBackValue(const KeptValue& kept, DzTime time);
void putBackValues(const ChannelSnapshot& kept, DzTime time); // in their order

// Makes the channel look as it did through the host's own setter, whatever it stores then.
void putBackLook(const KeptValue& kept, DzTime time);

// Makes the channel store what it stored, to the key: a key that was not there goes. What else
// drives the channel is not made up for.
void putBackStored(const KeptValue& kept, DzTime time);

// Whether the channels store what they stored, in as many keys.
bool isAsKept(const ChannelSnapshot& kept, DzTime time);

// ---- places of nodes

// In one space, the world's or the parent's.
struct NodePlace {
    DzMatrix3 scale;
    DzQuat rot;
    DzVec3 posCm;
};

NodePlace worldPlaceOf(const DzNode* node, DzTime time);
NodePlace localPlaceOf(const DzNode* node, DzTime time);

// Scale, rotation, position, in this order. The host may not get there (node_place.h).
void putBackLocalPlace(DzNode* node, DzTime time, const NodePlace& kept);

} // namespace quillon
