// figure_place.h - where a figure stood before the Pose Finder began, so that every pose is shown
// at the same place, in the same size and facing the same way. Kept as values of channels, not of
// the world: a place that was put back a hundred times is still the same to the bit. The figure is
// a root node, so its channels say where it is. No undo step is opened. Only what differs is
// written.
#pragma once

#include "finder/figure_facing.h"
#include "posefile/pose_channels.h"

#include <QPointer>

#include <vector>

class DzBone;

namespace quillon {

// As made: none is remembered.
struct FigurePlace {
    QPointer<DzSkeleton> figure;
    QPointer<DzBone> hip;
    std::vector<KeptValue> rotation; // of the figure
    std::vector<KeptValue> place; // position and scale of the figure, then of the hip
    std::vector<float> left; // stored values of all these channels after the last change of ours
};

// Rotation, position and scale of the figure node; position and scale of its hip. None without one.
FigurePlace placeOf(DzSkeleton* figure, DzTime time);
bool isPlaceOf(const FigurePlace&, const DzSkeleton* figure); // and it still has that hip

// What the Pose Finder itself leaves of the figure's place, and whether that is still there to the
// bit. False when nothing was noted, or for another figure.
void notePlaceLeft(FigurePlace*, DzTime time);
bool isPlaceAsLeft(const FigurePlace&, const DzSkeleton* figure, DzTime time);

// The following do nothing when no place is remembered, or its figure is gone.

void putBackRotation(const FigurePlace&, DzTime time);
// The same for a figure that has just taken a pose: its hip keeps its rotation in the world.
void putBackRotationUnderHip(const FigurePlace&, DzTime time);
// The figure's position and scale, then the hip's. Needs the rotation to be back.
void putBackPlace(const FigurePlace&, DzTime time);

// Turns the figure about the vertical through its hip until it faces the stored direction. Whatever
// its pose says, the figure node turns and not the hip in it.
void turnToFacing(const FigureFacing&, DzSkeleton* figure, DzTime time);

} // namespace quillon
