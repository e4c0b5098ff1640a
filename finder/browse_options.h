// browse_options.h - what the user's settings ask for round every pose that is browsed: parts to
// keep when the pose is cleared, limits, bone translations.
// No undo step is opened: the caller holds, and undo takes back the flags with the pose. No status
// text.
#pragma once

#include "ground/host_types.h"

class DzSkeleton;

namespace quillon {

// The whole figure but the parts that the part locks keep.
void clearUnlockedParts(DzSkeleton* figure, DzTime time);

// Before a pose: lifts the limits of the body's bones and controls, and of face and expressions, as
// far as a pose may violate them. They stay lifted.
void releaseBrowsingLimits(DzSkeleton* figure, DzTime time);

// After a pose: sets the other limits, with values pulled into range, and zeroes the translations
// of the main bones unless they are allowed; those of locked parts stay.
void enforceBrowsingLimits(DzSkeleton* figure, DzTime time);

} // namespace quillon
