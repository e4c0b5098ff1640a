// utf8_locale.h - file names are bytes; Qt turns them into text by the process's locale.
#pragma once

namespace quillon {

// Replaces a locale whose character set is not UTF-8 (as "C" on a bare machine) by C.UTF-8, for
// this process and its children. Call it before anything of Qt runs.
void useUtf8Locale();

} // namespace quillon
