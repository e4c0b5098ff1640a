// dzeulerchoice.h - which of the equivalent angles a node's rotation setters take. Not part of the
// interface that plug-ins see: the real SDK has no such header, and which angles the real host
// takes is unknown. Tests alone switch it, to show that a plug-in depends on neither.
#pragma once

#include "dzcore_export.h"

// False, the choice of this host: the angles nearest to the present ones among those that the
// limits of clamped channels allow. True: the nearest of all, even where a limit then cuts them
// off.
extern DZCORE_EXPORT bool dzEulerIgnoresLimits;
