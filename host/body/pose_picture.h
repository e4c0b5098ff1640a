// pose_picture.h - a small picture that tells one pose of a figure from another.
// dzScene holds the figure alone, or others are in the picture, too. Nothing is recorded for undo.
#pragma once

#include <QImage>

class DzSkeleton;

namespace quillon {

// Every number of the figure and its bones at its default, at the scene's time; so is what is
// locked.
void clearFigurePose(DzSkeleton*);

// The figure as it is posed now, from its own front whichever way it faces, a little from its left
// and from above; one that lies from its side. It is moved so that its hip is above the world's
// origin.
QImage posePicture(DzSkeleton*, const QSize&);

} // namespace quillon
