// hip_centre.h - moves the figure node below a figure that stays where it is.
// Both at one time, through the channels of the figure node and the hip alone. Nothing else that
// hangs on the figure node is held in its place. Times in ticks.
#pragma once

#include "dztime.h"

class DzNode;

namespace quillon {

// Gives the hip's translation to the figure node, so that the figure is turned about its hip.
// Nothing changes when the hip has no translation, or when a translation channel of either is
// locked: the body would move.
void hipAsCentre(DzNode* figure, DzNode* hip, DzTime time);

// Gives the figure node's place to the hip: the node goes to the world's origin, unturned, and the
// figure is turned about that. The node keeps its scale. Nothing changes when a translation or
// rotation channel of either is locked.
void rootAsCentre(DzNode* figure, DzNode* hip, DzTime time);

} // namespace quillon
