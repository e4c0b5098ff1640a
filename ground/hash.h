// hash.h - the hash of names and of the content of pose files.
#pragma once

#include <qglobal.h>

namespace quillon {

// D. J. Bernstein's: h = h * 33 + byte, from 5381; bytes count as signed, h wraps at 32 bits.
// bytes may be null when count is 0.
quint32 djb2Hash(const char* bytes, qint64 count);

} // namespace quillon
