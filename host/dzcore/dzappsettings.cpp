#include "dzappsettings.h"
#include "dzapp.h"
#include "dzhostcalls.h"

#include <QScopedPointer>
#include <QSettings>

// Every value is stored as text, so that what is read now and what a later run reads are the same.

static QSettings* openSettings() // null: nothing is kept; the caller owns it
{
    if (!dzApp || dzApp->getSetup().settingsFile.isEmpty())
        return nullptr;
    QSettings* settings = new QSettings(dzApp->getSetup().settingsFile, QSettings::IniFormat);
    settings->setIniCodec("UTF-8");
    return settings;
}

template <class T> static T settle(bool good, const T& value, const T& def, bool* ok)
{
    if (ok)
        *ok = good;
    return good ? value : def;
}

DzAppSettings::DzAppSettings(const QString& group)
    : DzBase(group)
    , m_groupLevels(group.isEmpty() ? 0 : 1)
{
    if (!group.isEmpty())
        m_path.append(group);
}

DzAppSettings::~DzAppSettings()
{
}

QString DzAppSettings::keyPath(const QString& key) const
{
    return (m_path + QStringList(key)).join(QLatin1String("/"));
}

QVariant DzAppSettings::read(const QString& key) const
{
    QScopedPointer<QSettings> settings(openSettings());
    return settings && !key.isEmpty() ? settings->value(keyPath(key)) : QVariant();
}

void DzAppSettings::write(const QString& key, const QVariant& value)
{
    QScopedPointer<QSettings> settings(openSettings());
    if (!settings || key.isEmpty())
        return;
    settings->setValue(keyPath(key), value);
    settings->sync();
}

bool DzAppSettings::getBoolValue(const QString& key, bool def, bool* ok)
{
    if (DZ_HOST_CALL("getBoolValue"))
        return settle(false, def, def, ok);
    const QString text = read(key).toString();
    const bool yes = text == QLatin1String("true") || text == QLatin1String("1");
    const bool no = text == QLatin1String("false") || text == QLatin1String("0");
    return settle(yes || no, yes, def, ok);
}

int DzAppSettings::getIntValue(const QString& key, int def, bool* ok)
{
    if (DZ_HOST_CALL("getIntValue"))
        return settle(false, def, def, ok);
    bool good = false;
    const int value = read(key).toString().toLatin1().toInt(&good);
    return settle(good, value, def, ok);
}

double DzAppSettings::getFloatValue(const QString& key, double def, bool* ok)
{
    if (DZ_HOST_CALL("getFloatValue"))
        return settle(false, def, def, ok);
    bool good = false;
    const double value = read(key).toString().toLatin1().trimmed().toDouble(&good);
    return settle(good, value, def, ok);
}

QString DzAppSettings::getStringValue(const QString& key, const QString& def, bool* ok)
{
    if (DZ_HOST_CALL("getStringValue"))
        return settle(false, def, def, ok);
    const QVariant value = read(key);
    // A hand-edited line with commas arrives as a list.
    const QString text = value.type() == QVariant::StringList
        ? value.toStringList().join(QLatin1String(", "))
        : value.toString();
    return settle(value.isValid(), text, def, ok);
}

QColor DzAppSettings::getColorValue(const QString& key, const QColor& def, bool* ok)
{
    if (DZ_HOST_CALL("getColorValue"))
        return settle(false, def, def, ok);
    const QByteArray text = read(key).toString().toLatin1();
    bool good = false;
    const uint argb = text.mid(1).toUInt(&good, 16);
    good = good && text.size() == 9 && text.startsWith('#');
    return settle(good, QColor::fromRgba(argb), def, ok);
}

void DzAppSettings::setBoolValue(const QString& key, bool value)
{
    if (DZ_HOST_CALL("setBoolValue"))
        return;
    write(key, QLatin1String(value ? "true" : "false"));
}

void DzAppSettings::setIntValue(const QString& key, int value)
{
    if (DZ_HOST_CALL("setIntValue"))
        return;
    write(key, QString::number(value));
}

void DzAppSettings::setFloatValue(const QString& key, double value)
{
    if (DZ_HOST_CALL("setFloatValue"))
        return;
    write(key, QString::number(value, 'g', 17));
}

void DzAppSettings::setStringValue(const QString& key, const QString& value)
{
    if (DZ_HOST_CALL("setStringValue"))
        return;
    write(key, value.isNull() ? QString::fromLatin1("") : value);
}

void DzAppSettings::setColorValue(const QString& key, const QColor& value)
{
    if (DZ_HOST_CALL("setColorValue"))
        return;
    write(key, QString::fromLatin1("#%1").arg(value.rgba(), 8, 16, QLatin1Char('0')));
}

bool DzAppSettings::containsValue(const QString& key) const
{
    if (DZ_HOST_CALL("containsValue"))
        return false;
    return read(key).isValid();
}

void DzAppSettings::removeValue(const QString& key)
{
    if (DZ_HOST_CALL("removeValue"))
        return;
    QScopedPointer<QSettings> settings(openSettings());
    if (!settings || key.isEmpty())
        return;
    settings->remove(keyPath(key));
    settings->sync();
}

void DzAppSettings::pushPath(const QString& name)
{
    if (!name.isEmpty())
        m_path.append(name);
}

void DzAppSettings::popPath()
{
    if (m_path.size() > m_groupLevels)
        m_path.removeLast();
}
