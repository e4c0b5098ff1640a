// bake_pose.h - moves a pose from the figure's controls into the bones' own channels.
// The controls go to 0 and the bones keep their place in the world, also where a limit holds them:
// it is the look that is baked, not what limits hide. Read and written at the scene's current time.
// No undo step is opened: the caller holds. Limits are lifted meanwhile and come back as they were.
#pragma once

class DzNode;

namespace quillon {

enum BakePart { BakeBody = 1, BakeFace = 2 };

// part is a BakePart; with any other, or on a figure without a head bone, nothing happens.
// A control goes to 0 when the link table says that it drives a bone of the part; the others keep
// their value.
void bakePose(DzNode* figure, int part);

} // namespace quillon
