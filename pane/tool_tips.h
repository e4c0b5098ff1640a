// tool_tips.h - what the pane says about the button under the pointer.
// Texts bring their own line breaks ("\r\n"); most stand in the button's row. Owns: nothing.
#pragma once

#include "pane/button_table.h"

#include <QString>

namespace quillon {

// Null and buttons without a tip give an empty text.
QString toolTip(const ButtonRow* row);

// ---- the tips that follow the current pose

QString rankTip();
QString folderTip();

} // namespace quillon
