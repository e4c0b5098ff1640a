// part_locks.h - holds parts of a figure fast while another pose is applied.
// Which parts is the six lock settings. A bone belongs to a part by its list, a control by its own
// name. Controls that are pure shapes, of the expression and of Genesis 8's muscles and breasts,
// are never locked: they go with the other pose. The hip is of the upper and of the lower body; its
// translation is never locked. Owns: what is locked now, from a call with on to the next one
// without. No undo step is opened.
#pragma once

#include "ground/host_types.h"

class DzNode;

namespace quillon {

bool anyPartLockOn();

// on: locks the channels and controls of the parts to keep, and remembers which of them it locked.
// off: releases those and no others, whatever the settings say by now. A locked bone is still moved
// by the controls of other parts: its channels are then put back to the values that they had.
void setPartLocks(DzNode* figure, bool on, DzTime time);

} // namespace quillon
