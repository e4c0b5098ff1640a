// hip_centre.h - moves the figure node below a figure that stays where it is.
// Both at one time, through the channels of the figure node and the hip alone. Nothing else that
// hangs on the figure node is held in its place. The caller holds: what cannot be done is taken
// back through the undo stack. Times in ticks. Neither node is null; the hip hangs below the figure
// node, at whatever depth.
#pragma once

#include "ground/host_types.h"

class DzNode;

namespace quillon {

// Gives the hip's translation to the figure node, so that the figure is turned about its hip.
// False, with nothing changed: a channel that would have to change is locked, or limited so that it
// cannot take the value, or the hip keeps some of its translation. A hip whose local position is
// (0, 0, 0), as same_place.h has it, is a success that writes nothing.
bool hipAsCentre(DzNode* figure, DzNode* hip, DzTime time);

// Gives the figure node's place to the hip: the node goes to the world's origin, its three dials to
// 0, and the figure is turned about that. The node keeps its scale. Below a parent that is turned
// the dials are what makes the node unturned in the world. False as above.
bool rootAsCentre(DzNode* figure, DzNode* hip, DzTime time);

} // namespace quillon
