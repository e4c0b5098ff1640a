// tool_tips.h - what the pane says about the button under the pointer.
// Texts bring their own line breaks ("\r\n"). Owns: nothing but const tables.
#pragma once

#include "pane/page_layout.h"

#include <QString>

namespace quillon {

// The text for a button of a page; kNoButton and buttons without a tip give an empty text. The
// rank button's text follows the current rank, the folder button's the kind of the current pose.
QString toolTip(Page page, int button);

} // namespace quillon
