// bake_pose.h - moves a pose from the figure's controls into the bones' own channels.
// The controls go to 0 and the bones keep their place in the world, also where a limit holds them:
// it is the look that is baked, not what limits hide. Read and written at one time, in ticks.
// No undo step is opened: the caller holds. Limits are lifted meanwhile and come back as they were.
#pragma once

#include "ground/host_types.h"

class DzNode;

namespace quillon {

enum BakePart { BakeBody = 1, BakeFace = 2 };

// figure: the figure node or a bone of it; with null, another node or a figure without a head bone
// nothing happens. A control goes to 0 when the link table says that it drives a bone of the part;
// the others keep their value.
void bakePose(DzNode* figure, BakePart part, DzTime time);

} // namespace quillon
