// selected_figure.h - the figure that the Pose Finder works on: that of the primary selection.
#pragma once

class DzBone;
class DzSkeleton;

namespace quillon {

// Null unless a supported figure or a bone of one is selected, and the figure is a root node.
DzSkeleton* selectedFigure();

// The figure's bone "hip"; null without figure or bone.
DzBone* hipOf(const DzSkeleton* figure);

} // namespace quillon
