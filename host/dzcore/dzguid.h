// dzguid.h - 128-bit identity of a class or a file, never interpreted.
#pragma once

#include "dzcore_export.h"

#include <QString>

class DZCORE_EXPORT DzGuid {
public:
    DzGuid(); // null: all zero

    // 8-4-4-4-12 hexadecimal digits, either case, braces optional; null for any other text.
    static DzGuid fromString(const QString&);
    QString toString() const; // lower case, no braces
    bool isNull() const;

    bool operator==(const DzGuid&) const;
    bool operator!=(const DzGuid& g) const
    {
        return !(*this == g);
    }
    bool operator<(const DzGuid&) const; // byte order, for sorted containers

private:
    unsigned char m_bytes[16]; // as written, from left to right
};
