// figure_picture.h - a picture of one figure in whatever pose it has, filling the frame.
#pragma once

#include <QImage>

class DzSkeleton;

namespace quillon {

// Drawn as the viewport draws the scene, from the given side, without the mark of a selection.
QImage figurePicture(const DzSkeleton*, float yawDeg, float pitchDeg, const QSize&);

} // namespace quillon
