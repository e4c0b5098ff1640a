// dzappsettings.h - small values that the host keeps between runs, in groups.
// Each object reads and writes below its group and its own path. Writes are on disk when the call
// returns (as far as the disk takes them). Without a dzApp, or with no settings file, reads give
// the default and writes do nothing.
#pragma once

#include "dzbase.h"

#include <QColor>
#include <QStringList>

class DZCORE_EXPORT DzAppSettings : public DzBase {
    Q_OBJECT
public:
    explicit DzAppSettings(const QString& group = QString()); // "Console"; empty: the top
    ~DzAppSettings() override;

    // Reads are not const: the real library is not known to have them so.
    // *ok: the value exists and reads as the type asked for; otherwise the default is returned.
    Q_INVOKABLE bool getBoolValue(const QString& key, bool def = false, bool* ok = nullptr);
    Q_INVOKABLE int getIntValue(const QString& key, int def = 0, bool* ok = nullptr);
    Q_INVOKABLE double getFloatValue(const QString& key, double def = 0, bool* ok = nullptr);
    Q_INVOKABLE QString getStringValue(
        const QString& key, const QString& def = QString(), bool* ok = nullptr);
    Q_INVOKABLE QColor getColorValue(
        const QString& key, const QColor& def = QColor(), bool* ok = nullptr);

    Q_INVOKABLE void setBoolValue(const QString& key, bool);
    Q_INVOKABLE void setIntValue(const QString& key, int);
    Q_INVOKABLE void setFloatValue(const QString& key, double);
    Q_INVOKABLE void setStringValue(const QString& key, const QString&);
    Q_INVOKABLE void setColorValue(const QString& key, const QColor&); // with opacity

    Q_INVOKABLE bool containsValue(const QString& key) const;
    Q_INVOKABLE void removeValue(const QString& key);
    Q_INVOKABLE void pushPath(const QString& name); // one level down
    Q_INVOKABLE void popPath(); // one level up; stays at the group

private:
    QString keyPath(const QString& key) const;
    QVariant read(const QString& key) const;
    void write(const QString& key, const QVariant&);

    QStringList m_path;
    int m_groupLevels; // of m_path, which popPath() leaves alone
};
