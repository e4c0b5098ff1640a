// dzversion.h - a version of four parts, 16 bits each, in one comparable 64-bit number.
#pragma once

#include "dzcore_export.h"

#include <QString>

#define DZ_MAKE_VERSION(a, b, c, d)                                                                \
    ((quint64((a)&0xffff) << 48) | (quint64((b)&0xffff) << 32) | (quint64((c)&0xffff) << 16)       \
        | quint64((d)&0xffff))

// The newest interface that this library offers; a plug-in that asks for more is not loaded.
#define DZ_SDK_VERSION DZ_MAKE_VERSION(4, 5, 0, 100)

// Trivial to copy: plug-ins return it by value from a function with C linkage.
class DZCORE_EXPORT DzVersion {
public:
    DzVersion() // 0.0.0.0
        : m_value(0)
    {
    }
    DzVersion(quint64 value) // as DZ_MAKE_VERSION makes it
        : m_value(value)
    {
    }
    DzVersion(int majorPart, int minorPart, int revision, int build) // each taken modulo 65536
        : m_value(DZ_MAKE_VERSION(majorPart, minorPart, revision, build))
    {
    }

    quint64 getValue() const
    {
        return m_value;
    }
    int getMajorVersion() const
    {
        return int(m_value >> 48);
    }
    int getMinorVersion() const
    {
        return int((m_value >> 32) & 0xffff);
    }
    int getRevisionNumber() const
    {
        return int((m_value >> 16) & 0xffff);
    }
    int getBuildNumber() const
    {
        return int(m_value & 0xffff);
    }

    QString toString() const; // "4.5.0.100", always four parts
    // One to four decimal parts between dots, each 0..65535; parts left out are 0. 0.0.0.0 with
    // *ok false when the text is anything else.
    static DzVersion fromString(const QString&, bool* ok = nullptr);

    bool operator==(const DzVersion& v) const
    {
        return m_value == v.m_value;
    }
    bool operator!=(const DzVersion& v) const
    {
        return m_value != v.m_value;
    }
    bool operator<(const DzVersion& v) const
    {
        return m_value < v.m_value;
    }
    bool operator<=(const DzVersion& v) const
    {
        return m_value <= v.m_value;
    }
    bool operator>(const DzVersion& v) const
    {
        return m_value > v.m_value;
    }
    bool operator>=(const DzVersion& v) const
    {
        return m_value >= v.m_value;
    }

private:
    quint64 m_value;
};
