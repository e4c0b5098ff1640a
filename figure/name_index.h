// name_index.h - numbers the names of all tables, so that a test on a name is one hashed lookup.
// Ids: 0..169 the bones, by bone number; 170..419 the Genesis 8 controls, by control number; then
// the names that only a later row of the models has, in the order of its lists.
// Built at the first use, never changed afterwards. A lookup allocates nothing.
#pragma once

#include "figure/bone_table.h"
#include "figure/control_tables.h"
#include "figure/figure_model.h"

#include <QString>

namespace quillon {

static constexpr int kNameCount = 569; // distinct names

// -1 when no table holds the name (exact comparison).
int nameId(const QString& name);

// The same of Latin-1 bytes; line feeds among them do not count. -1 also when there are none.
int nameIdOfBytes(const char* begin, const char* end);

// Text of id 0..kNameCount-1; shared, so that passing it on copies no characters.
const QString& nameText(int id);

// Ids by the numbers in a generation's lists.
int boneId(const FigureModel& model, int boneNumber);
int controlId(const FigureModel& model, int controlNumber);

} // namespace quillon
