#include "services/product_patcher.h"

#include "ground/status_message.h"
#include "ground/whole_file.h"
#include "services/patch_table.h"

#include "dzapp.h"
#include "dzcontentmgr.h"
#include "dzprogress.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <vector>

namespace quillon {

// ---- the installed scripts -------------------------------------------------------------------

namespace {

struct InstalledScript {
    QString path; // as the content directory shows it
    QString file; // the file behind it, links resolved
};
typedef std::vector<InstalledScript> InstalledScripts;

struct Folder {
    QString path;
    QString canonical;
    bool behindLink;
};

} // namespace

static bool isCancelled(const DzProgress* progress)
{
    return progress && progress->isCancelled();
}

static bool isBelow(const QString& canonical, const QString& root)
{
    return canonical.startsWith(root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/'));
}

// Adds the folder's scripts to found and its subfolders to pending. Links to folders are followed
// once on a way down, so that a circle of them ends.
static void readFolder(const Folder& folder, const QString& root, std::vector<Folder>* pending,
    InstalledScripts* found)
{
    const QFileInfoList entries
        = QDir(folder.path)
              .entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (int i = 0; i < entries.size(); ++i) {
        const QFileInfo& entry = entries.at(i);
        const QString path = folder.path + QLatin1Char('/') + entry.fileName();
        const bool isLink = entry.isSymLink();
        const QString canonical = isLink ? entry.canonicalFilePath()
                                         : folder.canonical + QLatin1Char('/') + entry.fileName();
        if (isLink && !isBelow(canonical, root))
            continue;
        if (entry.isDir() && !(isLink && folder.behindLink))
            pending->push_back(Folder {path, canonical, isLink || folder.behindLink});
        else if (entry.isFile() && path.endsWith(QLatin1String(".dse")))
            found->push_back(InstalledScript {path, canonical});
    }
}

static void readContentDirectory(
    const QString& path, const DzProgress* progress, InstalledScripts* found)
{
    const QString root = QFileInfo(path).canonicalFilePath();
    std::vector<Folder> pending;
    if (!root.isEmpty())
        pending.push_back(Folder {path, root, false});
    while (!pending.empty() && !isCancelled(progress)) {
        const Folder folder = pending.back();
        pending.pop_back();
        readFolder(folder, root, &pending, found);
        QCoreApplication::processEvents(); // the window repaints, and Cancel works
    }
}

// Not all of them once the progress, which may be null, is cancelled.
static InstalledScripts findInstalledScripts(const DzProgress* progress)
{
    InstalledScripts found;
    const DzContentMgr* content = dzApp ? dzApp->getContentMgr() : nullptr;
    const int count = content ? content->getNumContentDirectories() : 0;
    for (int i = 0; i < count; ++i)
        readContentDirectory(content->getContentDirectoryPath(i), progress, &found);
    return found;
}

// ---- writing ---------------------------------------------------------------------------------

static int overwriteAmong(
    const InstalledScripts& installed, const QString& nameSuffix, const char* data, int length)
{
    const QString end = QLatin1Char('/') + nameSuffix;
    const QByteArray bytes = QByteArray::fromRawData(data, length);
    const QString keepFolder = dzApp ? dzApp->getTempPath() : QString();
    int written = 0;
    for (const InstalledScript& script : installed)
        if (script.path.endsWith(end) && overwriteFile(script.file, bytes, keepFolder))
            ++written;
    return written;
}

int overwriteScripts(const QString& nameSuffix, const char* data, int length)
{
    return overwriteAmong(findInstalledScripts(nullptr), nameSuffix, data, length);
}

// ---- the patch -------------------------------------------------------------------------------

static int percentOf(int i, int count)
{
    return count > 1 ? i * 100 / (count - 1) : 100;
}

// Begins no further script once the user has cancelled.
static int patchRow(const PatchRow& row, const InstalledScripts& installed, DzProgress* progress)
{
    const ScriptBlock& shared = scriptBlock(PatchScript::Shared);
    const ScriptBlock& own = scriptBlock(row.own);
    int written = 0;
    for (int i = 0; i < row.scripts && !progress->isCancelled(); ++i) {
        const QString name = scriptName(row, i);
        written += overwriteAmong(installed, name, shared.bytes, shared.length);
        written += overwriteAmong(installed, name, own.bytes, own.length);
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
