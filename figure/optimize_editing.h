// optimize_editing.h - makes a figure or a prop easier to place in the scene.
//
// A figure gets its hip or the world's origin as the centre of its turns (hip_centre.h). For any
// other node the rotation-order dialog is shown; the node then gets the chosen rotation order,
// origin and nudge step (prop_origin.h). Nothing moves in the world either way.
// No undo step is opened: the caller holds.
#pragma once

#include "ground/host_types.h"

class DzNode;
class DzSkeleton;

namespace quillon {

enum CentreChoice { NoCentre = 0, HipAsCentre = 1, RootAsCentre = 2 };

// node: the primary selection, may be null. figure: what it belongs to; null: it is a prop, and
// centre and time, in ticks, have no meaning.
// False, with nothing changed: no node, unsupported figure, no hip, NoCentre, a cancelled dialog, a
// node that is gone when the dialog closes, a channel that cannot follow. In the last two cases the
// settings keep what the dialog was told.
bool optimizeEditing(DzNode* node, DzSkeleton* figure, CentreChoice centre, DzTime time);

} // namespace quillon
