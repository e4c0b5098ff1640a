// figure_place.h - where the figure stood before the Pose Finder began, so that every pose is shown
// at the same place, in the same size and facing the same way.
// Kept as values of channels, not of the world: a place that was put back a hundred times is still
// the same to the bit. The figure is a root node, so its channels say where it is.
// Owns: the place of one figure. No undo step is opened. Only what differs is written.
#pragma once

#include "dztime.h"

class DzSkeleton;

namespace quillon {

// Rotation, position and scale of the figure node; position and scale of its hip.
void rememberPlace(DzSkeleton* figure, DzTime time);
void forgetPlace();
bool isPlaceOf(const DzSkeleton* figure); // and it still has the hip that it had

// What the Pose Finder itself leaves of the figure's place, and whether that is still there to the
// bit. False when nothing was noted, or for another figure.
void notePlaceLeft(DzTime time);
bool isPlaceAsLeft(const DzSkeleton* figure, DzTime time);

// The following do nothing when no place is remembered, or its figure is gone.

void putBackRotation(DzTime time);
// The same for a figure that has just taken a pose: its hip keeps its rotation in the world.
void putBackRotationUnderHip(DzTime time);
// The figure's position and scale, then the hip's. Needs the rotation to be back.
void putBackPlace(DzTime time);

// Turns the figure about the vertical through its hip until it faces the direction of
// figureFacing(). Whatever its pose says, the figure node turns and not the hip in it.
void turnToStoredFacing(DzSkeleton* figure, DzTime time);

} // namespace quillon
