// control_tables.h - the pose and expression controls of the figures, one list per generation.
// A control's position in its list is its control number. Both lists hold the same 97 body
// controls, in different orders, and the two eye-closing controls.
#pragma once

namespace quillon {

static constexpr int kControlCountG8 = 250;
static constexpr int kControlCountG81 = 248;
static constexpr int kControlCountMax = 250; // room for either list

extern const char* const kBodyControlTableG8[kControlCountG8];
extern const char* const kBodyControlTableG81[kControlCountG81];

} // namespace quillon
