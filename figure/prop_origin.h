// prop_origin.h - changes a prop's rotation order and origin without moving its geometry.
//
// The origin is one point for all times, the geometry's place is kept at every keyed frame of the
// animation range. Frames are counted from time 0, whatever the range starts with: a range of
// frames 30 to 60 visits frames 0 to 30. Keys elsewhere stay as they are.
// A prop without a keyed frame gets the rotation order only: its channels and its origin stay.
// Nothing changes when a channel that would have to change is locked, or limited so that it cannot
// take the value: the geometry would move.
// Lengths in centimetres, times in ticks.
#pragma once

#include "ground/host_types.h"

class DzNode;

namespace quillon {

enum class OriginChoice {
    Keep = 0,
    Imported = 1, // the point (0, 0, 0) of the geometry
    ObjectCentre = 2, // of the geometry's box; kept where there is no geometry
    WorldCentre = 3 // the point that is at the world's origin at the last keyed frame
};

// Of the scene's animation range, both its ends counted.
int frameCount();
// Frame i is the ticks i * step to (i + 1) * step - 1. A key of any numeric property of the node
// that can animate counts.
bool hasKeyInFrame(const DzNode* node, int frame);

// The node is not null; any but a figure or bone makes sense. The caller holds:
// what cannot be done is taken back through the undo stack, and order and origin by hand where that
// leaves them. True also when nothing had to change. False, with nothing changed: a channel cannot
// follow.
bool setPropOrigin(DzNode* node, DzRotationOrder order, OriginChoice choice);

// The step by which the three position sliders move; above 0. The node is not null. No value and no
// key changes.
void setTranslationNudge(DzNode* node, float stepCm);

} // namespace quillon
