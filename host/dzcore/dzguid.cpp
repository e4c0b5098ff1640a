#include "dzguid.h"

#include <QByteArray>

#include <cstring>

DzGuid::DzGuid()
{
    std::memset(m_bytes, 0, sizeof m_bytes);
}

static bool isDashPlace(int i) // in the text without braces
{
    return i == 8 || i == 13 || i == 18 || i == 23;
}

static int hexDigit(ushort c) // -1: none
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

DzGuid DzGuid::fromString(const QString& given)
{
    QString text = given.trimmed();
    if (text.startsWith(QLatin1Char('{')) && text.endsWith(QLatin1Char('}')))
        text = text.mid(1, text.size() - 2);
    if (text.size() != 36)
        return DzGuid();
    DzGuid guid;
    int digits = 0;
    for (int i = 0; i < text.size(); ++i) {
        const ushort c = text.at(i).unicode();
        if (isDashPlace(i)) {
            if (c != '-')
                return DzGuid();
            continue;
        }
        const int digit = hexDigit(c);
        if (digit < 0)
            return DzGuid();
        unsigned char& byte = guid.m_bytes[digits++ / 2];
        byte = static_cast<unsigned char>(byte << 4 | digit);
    }
    return guid;
}

QString DzGuid::toString() const
{
    const QByteArray hex
        = QByteArray(reinterpret_cast<const char*>(m_bytes), int(sizeof m_bytes)).toHex();
    QString text = QString::fromLatin1(hex.constData());
    for (int place : {8, 13, 18, 23})
        text.insert(place, QLatin1Char('-'));
    return text;
}

bool DzGuid::isNull() const
{
    return *this == DzGuid();
}

bool DzGuid::operator==(const DzGuid& g) const
{
    return std::memcmp(m_bytes, g.m_bytes, sizeof m_bytes) == 0;
}

bool DzGuid::operator<(const DzGuid& g) const
{
    return std::memcmp(m_bytes, g.m_bytes, sizeof m_bytes) < 0;
}
