#include "ground/hash.h"

namespace quillon {

quint32 djb2Hash(const char* bytes, qint64 count)
{
    quint32 hash = 5381;
    for (qint64 i = 0; i < count; ++i)
        hash = hash * 33u + quint32(qint32(static_cast<signed char>(bytes[i])));
    return hash;
}

} // namespace quillon
