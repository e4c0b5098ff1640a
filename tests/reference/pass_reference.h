// pass_reference.h - the scanner's passes over mirrored and over similar poses in their literal
// form: each entry is held against each earlier one that is still kept, number for number. Slow and
// plain; what finder/ answers faster is held against it. Without Qt.
#pragma once

#include "finder/mirror_pass.h"
#include "finder/similar_pass.h"

#include <vector>

namespace quillon {
namespace reference {

// Per entry the first kept entry that it repeats, -1: none.
std::vector<int> mirroredPass(const std::vector<MirrorRow>& rows);
std::vector<int> similarPass(const std::vector<SimilarRow>& rows);

} // namespace reference
} // namespace quillon
