#include "dzversion.h"

#include <QStringList>

QString DzVersion::toString() const
{
    return QString::fromLatin1("%1.%2.%3.%4")
        .arg(getMajorVersion())
        .arg(getMinorVersion())
        .arg(getRevisionNumber())
        .arg(getBuildNumber());
}

// One part: decimal digits only, so that "+1" and " 1" are no versions.
static bool readPart(const QString& text, int* part)
{
    if (text.isEmpty() || text.size() > 5)
        return false;
    *part = 0;
    for (int i = 0; i < text.size(); ++i) {
        const int digit = text.at(i).unicode() - '0';
        if (digit < 0 || digit > 9)
            return false;
        *part = *part * 10 + digit;
    }
    return *part <= 0xffff;
}

DzVersion DzVersion::fromString(const QString& text, bool* ok)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    int value[4] = {0, 0, 0, 0};
    bool good = parts.size() <= 4;
    for (int i = 0; good && i < parts.size(); ++i)
        good = readPart(parts.at(i), &value[i]);
    if (ok)
        *ok = good;
    return good ? DzVersion(value[0], value[1], value[2], value[3]) : DzVersion();
}
