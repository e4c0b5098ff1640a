// dzpluginloader.h - loads a plug-in file. Not part of the interface that plug-ins see.
//
// load(): opens the library with every symbol bound, calls getSDKVersion() and refuses a plug-in
// built for an interface newer than DZ_SDK_VERSION, then takes getPluginDefinition(). The plug-in
// is made known to dzApp if there is one.
// Errors are one line that names the file and can be shown as it is; nothing stays loaded then.
#pragma once

#include "dzversion.h"

#include <QLibrary>
#include <QString>

class DzPlugin;

class DZCORE_EXPORT DzPluginLoader {
public:
    explicit DzPluginLoader(const QString& file);
    ~DzPluginLoader(); // leaves a loaded plug-in where it is

    bool load(QString* why);
    // Withdraws the plug-in from dzApp and unloads the library. Everything that its factories made
    // and every script engine that knows its classes must be gone before.
    bool unload();

    DzPlugin* getPlugin() const; // null unless loaded
    DzVersion getSDKVersion() const; // that the plug-in was built for
    QString getFile() const; // absolute

private:
    Q_DISABLE_COPY(DzPluginLoader)
    bool fail(const QString& reason, QString* why);

    QString m_file;
    QLibrary m_library;
    DzPlugin* m_plugin;
    DzVersion m_sdkVersion;
};
