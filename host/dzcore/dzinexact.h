// dzinexact.h - what this host does more exactly than others may. Not part of the interface that
// plug-ins see: the real SDK has no such header. Tests alone switch these, to show that a plug-in
// relies on neither.
#pragma once

#include "dzcore_export.h"

// True: each reading of a node's place, in the world or below its parent, is off by what single
// precision may leave, up to 2^-24 of its length, and by something else each time. Setters work
// exactly. The same run gives the same readings.
extern DZCORE_EXPORT bool dzPlaceReadingNoise;

// True: setOrigin and setRotationOrder are not recorded for undo.
extern DZCORE_EXPORT bool dzUndoForgetsOrigins;
