// node_place.h - brings a node to a place in the world and tells whether it got there.
// The host's setters stay silent about a channel that is locked, limited or driven, and of the
// angles that mean the same rotation they may take some that a limit then cuts off. Here the node
// is read back. Nothing is undone when it did not get there: the caller holds. Centimetres, ticks.
#pragma once

#include "ground/host_types.h"

class DzNode;
class DzUndoStackHold;

namespace quillon {

bool isTurnedTo(const DzNode* node, DzTime time, const DzQuat& rot_world);

// True when the node has the rotation afterwards. Where the host's choice of angles was cut off,
// the nearest ones that locks and limits allow are set instead, whole turns included.
bool turnTo(DzNode* node, DzTime time, const DzQuat& rot_world);

// True when the node is there afterwards.
bool moveTo(DzNode* node, DzTime time, const DzVec3& posCm_world);

// Ends a hold inside another one: its changes stay when keep is true, else they are taken back.
// Returns keep.
bool keepOrTakeBack(DzUndoStackHold* hold, bool keep);

} // namespace quillon
