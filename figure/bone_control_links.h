// bone_control_links.h - which controls drive which bone, one table per generation.
// A row is a list of control names that begins and ends with a dot; "." when no control drives
// the bone. The body rows of both tables agree as sets; the face rows name the expression controls
// of their generation. The 8.1 table has no entry for rPectoral: its row is empty, no control
// matches it, and a bake leaves the right breast's own controls as they are.
#pragma once

#include "figure/bone_table.h"

namespace quillon {

extern const char* const kBoneControlLinksG8[kBoneCount];
extern const char* const kBoneControlLinksG81[kBoneCount];

} // namespace quillon
