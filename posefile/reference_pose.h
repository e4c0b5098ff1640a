// reference_pose.h - the one memorized pose of a figure, and the two commands for it.
// A preset file in the data folder: the Pose Finder keeps parts of it and looks for poses like it.
// Both commands report by their own status text.
#pragma once

#include "ground/host_types.h"

#include <QString>

class DzSkeleton;

namespace quillon {

QString referencePosePath(); // empty when there is no data folder; the file need not exist

// Asks before it replaces a memorized pose; a figure that is gone when the question is answered
// leaves everything as it was. False when the file cannot be written; the status text is the same.
[[nodiscard]] bool memorizeReferenceOf(DzSkeleton* figure, DzTime time);

// One undo step, an empty one when nothing is memorized. The hip stays where it is in the world.
// Nothing happens on a figure without a hip.
void showReferenceOn(DzSkeleton* figure, DzTime time);

} // namespace quillon
