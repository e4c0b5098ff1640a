#include "host/driver/bench_home.h"

#include "host/driver/command_line.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace quillon {

// In the build tree and in an installed one alike.
static QString pluginFolder()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QString("/../plugins"));
}

DzAppSetup appSetup(const CommandLine& c)
{
    DzAppSetup setup;
    setup.dataFolderPath = c.dataGiven ? c.data : c.home + QString("/data");
    setup.tempPath = c.tempGiven ? c.temp : c.home + QString("/temp");
    setup.documentationPath = c.home + QString("/docs");
    setup.pluginsPath = pluginFolder();
    setup.appDataPath = c.home;
    setup.homePath = QCoreApplication::applicationDirPath();
    setup.settingsFile = c.home + QString("/settings.ini");
    setup.contentDirectories = c.content;
    setup.openUrls = !c.headless;
    return setup;
}

// The folder of a plug-in's documents in the tree that the program runs from; empty: none.
static QString treeDocuments(const QString& plugin)
{
    const QString tree = QCoreApplication::applicationDirPath() + QString("/../");
    for (const QString& folder : {QString("docs/") + plugin, "share/doc/" + plugin.toLower()})
        if (QFileInfo(tree + folder + QString("/index.htm")).isFile())
            return QFileInfo(tree + folder).canonicalFilePath();
    return QString();
}

// Plug-ins are told HOME/docs, where a link leads to the documents of each.
static void linkDocuments(const CommandLine& c)
{
    for (const QString& file : pluginFiles(c)) {
        const QString plugin = QFileInfo(file).completeBaseName();
        const QString documents = treeDocuments(plugin);
        const QString link = c.home + QString("/docs/") + plugin;
        if (documents.isEmpty() || QFileInfo(link).canonicalFilePath() == documents)
            continue;
        if (QFileInfo(link).isSymLink())
            QFile::remove(link); // of a tree that was moved
        QFile::link(documents, link);
    }
}

bool createHome(const CommandLine& c, QString* why)
{
    if (!QDir().mkpath(c.home)) {
        *why = QString("home '%1' cannot be created").arg(c.home);
        return false;
    }
    QStringList folders {c.home + QString("/docs")};
    if (!c.dataGiven)
        folders += c.home + QString("/data");
    if (!c.tempGiven)
        folders += c.home + QString("/temp");
    else if (QDir::isAbsolutePath(c.temp))
        folders += c.temp; // a host's temporary folder exists
    for (const QString& folder : std::as_const(folders))
        QDir().mkpath(folder);
    linkDocuments(c);
    return true;
}

QStringList pluginFiles(const CommandLine& c)
{
    if (!c.plugins.isEmpty())
        return c.plugins;
    QStringList files;
    const QDir folder(pluginFolder());
    for (const QFileInfo& file : folder.entryInfoList({"*.so"}, QDir::Files, QDir::Name))
        files += file.absoluteFilePath();
    return files;
}

} // namespace quillon
