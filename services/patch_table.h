// patch_table.h - which scripts of the maker's products are patched, and with which block.
// A row's scripts are numbered from 0. The products with poses for two come first, by number; six
// more targets follow, each with a name of its own.
#pragma once

#include "services/patch_scripts.h"

#include <QString>

namespace quillon {

struct PatchRow {
    const char* product; // number "001" to "011", see pose_pair_products.h; null: name says all
    const char* name; // below a content folder; %1 stands for the number; null: product
    int scripts; // > 0
    PatchScript own; // what the scripts hold in the end
};

static constexpr int kPatchRowCount = 17;
extern const PatchRow kPatchRows[kPatchRowCount];

// "Brannoc/First Dance/FD01 000.dse": what the path of the row's script i ends in.
QString scriptName(const PatchRow& row, int i);

} // namespace quillon
