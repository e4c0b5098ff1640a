// dzappsetup.h - what an embedding application decides about a DzApp. Not part of the interface
// that plug-ins see. Paths are absolute, with forward slashes and without a trailing one; the
// folders need not exist. A path left empty is told to plug-ins as it is.
#pragma once

#include <QString>
#include <QStringList>

struct DzAppSetup {
    QString dataFolderPath;
    QString tempPath;
    QString documentationPath;
    QString pluginsPath;
    QString appDataPath;
    QString homePath; // folder of the executable
    QString settingsFile; // ini file of DzAppSettings; empty: nothing is kept
    QStringList contentDirectories; // in order of preference
    bool openUrls = true; // false: showURL only remembers
};
