// name_index.h - numbers the names of all tables, so that a test on a name is one hashed lookup.
// Ids: 0..169 the bones, by bone number; 170..419 the Genesis 8 controls, by control number; then
// the controls that only Genesis 8.1 has, in the order of its list.
// Built at the first use, never changed afterwards. A lookup allocates nothing.
#pragma once

#include "figure/bone_table.h"
#include "figure/control_tables.h"

#include <QString>

namespace quillon {

static constexpr int kNameCount = 569; // distinct names

// -1 when no table holds the name (exact comparison).
int nameId(const QString& name);

// Text of id 0..kNameCount-1; shared, so that passing it on copies no characters.
const QString& nameText(int id);

// Id of a control by its number in a generation's list.
int controlId(bool genesis81, int controlNumber);

} // namespace quillon
