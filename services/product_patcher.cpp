#include "services/product_patcher.h"

#include "ground/host_calls.h"
#include "ground/status_message.h"
#include "ground/whole_file.h"
#include "services/patch_table.h"

#include "dzapp.h"
#include "dzcontentmgr.h"
#include "dzprogress.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace quillon {

// ---- the installed scripts -------------------------------------------------------------------

namespace {

struct InstalledScript {
    QString path; // as the content directory shows it
    QString place; // the same below its folder's canonical path
    QString file; // the file behind it, links resolved
};

struct Folder {
    QString path; // as the content directory shows it
    QString canonical;
};

struct InstalledScripts {
    std::vector<InstalledScript> scripts;
    std::vector<Folder> links; // other names of folders
};

struct Search {
    DzProgress* progress; // may be null
    QSet<QString> foldersRead; // canonical
    std::vector<Folder> pending;
    InstalledScripts found;
};

} // namespace

static bool isBelow(const QString& canonical, const QString& root)
{
    return canonical.startsWith(root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/'));
}

// What of a folder's entries leads out of the content directory, or nowhere, is left out.
static void readEntry(
    const QFileInfo& entry, const Folder& folder, const QString& root, Search* search)
{
    const QString name = QLatin1Char('/') + entry.fileName();
    const QString path = folder.path + name, place = folder.canonical + name;
    const bool mayBeElsewhere = entry.isSymLink() || entry.isDir();
    const QString canonical = mayBeElsewhere ? entry.canonicalFilePath() : place;
    if (!isBelow(canonical, root))
        return;
    if (entry.isDir() && canonical == place)
        search->pending.push_back(Folder {path, canonical});
    else if (entry.isDir())
        search->found.links.push_back(Folder {path, canonical});
    else if (entry.isFile() && path.endsWith(QLatin1String(".dse")))
        search->found.scripts.push_back(InstalledScript {path, place, canonical});
}

static void readFolder(const Folder& folder, const QString& root, Search* search)
{
    if (search->foldersRead.contains(folder.canonical))
        return;
    search->foldersRead.insert(folder.canonical);
    const QFileInfoList entries
        = QDir(folder.path)
              .entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (int i = 0; i < entries.size(); ++i)
        readEntry(entries.at(i), folder, root, search);
    QCoreApplication::processEvents(); // the window repaints, and Cancel works
}

static void readPendingFolders(const QString& root, Search* search)
{
    while (!search->pending.empty() && !isCancelled(search->progress)) {
        const Folder folder = search->pending.back();
        search->pending.pop_back();
        readFolder(folder, root, search);
    }
}

// A folder that links lead to has nearly always been read by its own path before they are looked
// at.
static void readContentDirectory(const Folder& root, Search* search)
{
    std::size_t link = search->found.links.size();
    if (root.path != root.canonical)
        search->found.links.push_back(root);
    search->pending.push_back(root);
    readPendingFolders(root.canonical, search);
    for (; link < search->found.links.size(); ++link) {
        search->pending.push_back(search->found.links[link]);
        readPendingFolders(root.canonical, search);
    }
}

// The shorter canonical paths come first: of directories in each other the outer one may follow
// more links.
static std::vector<Folder> contentDirectories()
{
    std::vector<Folder> roots;
    const DzContentMgr* content = dzApp ? dzApp->getContentMgr() : nullptr;
    const int count = content ? content->getNumContentDirectories() : 0;
    for (int i = 0; i < count; ++i) {
        const QString path = content->getContentDirectoryPath(i);
        const QString canonical = QFileInfo(path).canonicalFilePath();
        if (!canonical.isEmpty())
            roots.push_back(Folder {path, canonical});
    }
    std::stable_sort(roots.begin(), roots.end(),
        [](const Folder& a, const Folder& b) { return a.canonical.size() < b.canonical.size(); });
    return roots;
}

// Not all of them once the progress, which may be null, is cancelled.
static InstalledScripts findInstalledScripts(DzProgress* progress)
{
    Search search = {progress, QSet<QString>(), {}, {}};
    for (const Folder& root : contentDirectories())
        readContentDirectory(root, &search);
    return search.found;
}

// ---- writing ---------------------------------------------------------------------------------

// Where the script of that name lies if a link is the beginning of its name.
static QStringList placesBehindLinks(const std::vector<Folder>& links, const QString& name)
{
    QStringList places;
    for (int at = name.indexOf(QLatin1Char('/')); at >= 0;
         at = name.indexOf(QLatin1Char('/'), at + 1)) {
        const QString end = QLatin1Char('/') + name.left(at);
        for (const Folder& link : links) {
            if (link.path.endsWith(end))
                places += link.canonical + name.mid(at);
        }
    }
    return places;
}

// Each of the blocks over those before, so that no script is left with any but the last one.
static int overwriteAmong(const InstalledScripts& installed, const QString& nameSuffix,
    const QList<QByteArray>& blocksInTurn)
{
    const QString end = QLatin1Char('/') + nameSuffix;
    const QString keepFolder = dzApp ? dzApp->getTempPath() : QString();
    const QStringList places = placesBehindLinks(installed.links, nameSuffix);
    int written = 0;
    for (const InstalledScript& script : installed.scripts) {
        const bool isNamedSo = script.path.endsWith(end) || places.contains(script.place);
        if (isNamedSo && overwriteFile(script.file, blocksInTurn, keepFolder))
            ++written;
    }
    return written;
}

int overwriteScripts(const QString& nameSuffix, const char* data, int length)
{
    return overwriteAmong(findInstalledScripts(nullptr), nameSuffix,
        QList<QByteArray>() << QByteArray::fromRawData(data, length));
}

// ---- the patch -------------------------------------------------------------------------------

static int percentOf(int i, int count)
{
    return count > 1 ? i * 100 / (count - 1) : 100;
}

static QByteArray bytesOf(PatchScript script)
{
    const ScriptBlock& block = scriptBlock(script);
    return QByteArray::fromRawData(block.bytes, block.length);
}

// Begins no further script once the user has cancelled.
static int patchRow(const PatchRow& row, const InstalledScripts& installed, DzProgress* progress)
{
    const QList<QByteArray> blocks = QList<QByteArray>()
        << bytesOf(PatchScript::Shared) << bytesOf(row.own);
    int written = 0;
    for (int i = 0; i < row.scripts && !isCancelled(progress); ++i) {
        const QString name = scriptName(row, i);
        written += overwriteAmong(installed, name, blocks);
        progress->setInfo(QLatin1String("Updating ") + name);
        progress->update(percentOf(i, row.scripts));
    }
    return written;
}

bool patchProducts()
{
    setBusy(true);
    DzProgress progress(QLatin1String("Updating..."), 100, true);
    progress.setCloseOnFinish(true);
    const InstalledScripts installed = findInstalledScripts(&progress);
    int written = 0;
    for (const PatchRow& row : kPatchRows)
        written += patchRow(row, installed, &progress);
    progress.finish();
    setBusy(false);
    return written > 0;
}

} // namespace quillon
