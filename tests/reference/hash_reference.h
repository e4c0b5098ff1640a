// hash_reference.h - the hash of pose files in its literal form, a byte at a time.
#pragma once

#include <qglobal.h>

namespace quillon {
namespace reference {

inline quint32 djb2Hash(const char* bytes, qint64 count)
{
    quint32 hash = 5381;
    for (qint64 i = 0; i < count; ++i)
        hash = hash * 33u + quint32(qint32(static_cast<signed char>(bytes[i])));
    return hash;
}

} // namespace reference
} // namespace quillon
