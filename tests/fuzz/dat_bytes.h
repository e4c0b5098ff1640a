// dat_bytes.h - the .dat files as the targets read them to know what the product should: a number
// after the other, from bytes in memory.
#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstring>

namespace fuzz {

struct DatBytes {
    QByteArray left;

    int size() const
    {
        return left.size();
    }
    QByteArray take(int count)
    {
        const QByteArray taken = left.left(count);
        left.remove(0, count);
        return taken;
    }
    // What the bytes lack of the number stays as in otherwise.
    template <typename T> T number(T otherwise = T())
    {
        const QByteArray bytes = take(int(sizeof(T)));
        std::memcpy(&otherwise, bytes.constData(), size_t(bytes.size()));
        return otherwise;
    }
};

} // namespace fuzz
