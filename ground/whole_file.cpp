#include "ground/whole_file.h"

#include "ground/plain_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cstddef>

namespace quillon {

// ---- files -----------------------------------------------------------------------------------

SystemPath systemPath(const QString& path)
{
    const QString name = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
#ifdef Q_OS_WIN
    return SystemPath(reinterpret_cast<const wchar_t*>(name.utf16()), std::size_t(name.size()));
#else
    return QFile::encodeName(name).constData();
#endif
}

// The toolkit's own way of opening creates a missing file and writes through a link. Without a
// buffer, so that bytes that were refused do not come again with the next ones.
static bool open(QFile* file, Opened which)
{
    const int handle = openForWriting(systemPath(file->fileName()), which);
    return handle >= 0
        && file->open(handle, QIODevice::WriteOnly | QIODevice::Unbuffered, QFile::AutoCloseHandle);
}

// From the start. Cut to the new length at the end only: old bytes still have their room when the
// disk is full.
static bool writeAndCut(QFile* file, const QByteArray& bytes)
{
    return (file->pos() == 0 || file->seek(0)) && file->write(bytes) == bytes.size()
        && file->resize(bytes.size());
}

static bool writeInTurn(QFile* file, const QList<QByteArray>& inTurn)
{
    for (const QByteArray& bytes : inTurn)
        if (!writeAndCut(file, bytes))
            return false;
    return true;
}

static bool isPlainFile(const QString& path)
{
    const QFileInfo info(path);
    return info.isFile() && !info.isSymLink();
}

FileMark markOf(const QString& path)
{
    return markOf(systemPath(path));
}

At whatIsAt(const QString& path)
{
    return path.isEmpty() ? At::Nothing : whatIsAt(systemPath(path));
}

bool isMissing(const QString& path)
{
    return whatIsAt(path) == At::Nothing;
}

bool isSameMark(const FileMark& a, const FileMark& b)
{
    return a.device == b.device && a.file == b.file && a.bytes == b.bytes && a.changed == b.changed;
}

bool replaceFile(const QString& finished, const QString& target)
{
    return replaceFile(systemPath(finished), systemPath(target));
}

// ---- beside ----------------------------------------------------------------------------------

static const char kBesideEnd[] = ".new";

QString besideName(const QString& path)
{
    return QString::fromLatin1("%1.%2%3")
        .arg(path)
        .arg(ownProcess())
        .arg(QLatin1String(kBesideEnd));
}

static bool flushToDisk(QFile* file)
{
    return file->flush() && flushToDisk(file->handle());
}

static bool fillBeside(const QString& path, const QList<QByteArray>& inTurn)
{
    const QString beside = besideName(path);
    QFile::remove(beside);
    QFile file(beside);
    if (!open(&file, Opened::OneThatIsNot))
        return false;
    const bool written = writeInTurn(&file, inTurn) && flushToDisk(&file);
    file.close();
    if (!written)
        QFile::remove(beside); // an open file of that kind has forgotten its name
    return written;
}

// Puts what was filled in its place if all is well so far.
static bool placeBeside(const QString& path, bool allIsWell)
{
    const QString beside = besideName(path);
    if (allIsWell && replaceFile(beside, path))
        return true;
    QFile::remove(beside);
    return false;
}

// The file behind a link is the one to be replaced, not the link.
static QString resolveTarget(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

static bool mayBeWritten(const QString& path)
{
    const QFileInfo info(path);
    return mayBeOpened(path) && (!info.exists() || info.isWritable());
}

bool writeWholeFile(const QString& path, const QByteArray& bytes)
{
    const QString target = resolveTarget(path);
    return mayBeWritten(path) && fillBeside(target, QList<QByteArray>() << bytes)
        && placeBeside(target, true);
}

bool writePlainFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return openPlainFile(&file, QIODevice::WriteOnly) && file.write(bytes) == bytes.size()
        && file.flush();
}

// The process that a leftover is from, 0 if the name is no such file's.
static long processOf(const QString& name)
{
    const QStringList parts = name.split(QLatin1Char('.'));
    return parts.size() < 3 ? 0 : parts.at(parts.size() - 2).toLong();
}

static void removeThoseThatBegin(const QString& start, const QString& folder)
{
    const QStringList pattern(QLatin1Char('*') + QLatin1String(kBesideEnd));
    const QStringList names = QDir(folder).entryList(pattern, QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        const long process = name.startsWith(start) ? processOf(name) : 0;
        if (process > 0 && process != ownProcess() && !processLives(process))
            QFile::remove(folder + QLatin1Char('/') + name);
    }
}

void removeLeftovers(const QString& folder)
{
    if (!folder.isEmpty()) // which would be where the host was started
        removeThoseThatBegin(QString(), folder);
}

void removeLeftoversOf(const QString& path)
{
    const QFileInfo info(path);
    removeThoseThatBegin(info.fileName() + QLatin1Char('.'), info.path());
}

static bool makeAlike(const QString& path, const QString& model)
{
    const QFileInfo info(path), wanted(model);
    // What the user himself may do is told along with the permissions, but is none of the file's.
    const QFile::Permissions own(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
    return info.ownerId() == wanted.ownerId() && info.groupId() == wanted.groupId()
        && QFile::setPermissions(path, wanted.permissions() & ~own);
}

static bool overwriteBeside(const QString& path, const QList<QByteArray>& inTurn)
{
    return fillBeside(path, inTurn)
        && placeBeside(path, makeAlike(besideName(path), path) && isPlainFile(path));
}

// ---- in place --------------------------------------------------------------------------------

// Asking for the name makes the file one that a crash leaves behind.
static bool keepBytes(const QByteArray& bytes, QTemporaryFile* kept)
{
    return kept->open() && !kept->fileName().isEmpty() && kept->write(bytes) == bytes.size()
        && kept->flush();
}

// What is there, null if it may not be read. False: it may, and not all of it came.
static bool readOldBytes(const QString& path, QByteArray* bytes)
{
    QFile file(path);
    if (!openPlainFile(&file, QIODevice::ReadOnly))
        return !QFileInfo(path).isReadable();
    *bytes = file.readAll();
    if (bytes->isNull())
        *bytes = "";
    return bytes->size() == file.size();
}

static bool overwriteInPlace(
    const QString& path, const QList<QByteArray>& inTurn, const QString& keepFolder)
{
    const QString name = QFileInfo(path).fileName();
    QTemporaryFile kept(keepFolder + QLatin1Char('/') + name + QLatin1String(".XXXXXX"));
    QByteArray old;
    if (keepFolder.isEmpty() || !readOldBytes(path, &old)
        || !(old.isNull() || keepBytes(old, &kept)))
        return false;
    QFile file(path);
    if (!open(&file, Opened::OneThatIs))
        return false;
    const bool written = writeInTurn(&file, inTurn) && flushToDisk(&file);
    if (!written && !old.isNull()) // what cannot be put back stays in the folder
        kept.setAutoRemove(writeAndCut(&file, old));
    return written;
}

bool overwriteFile(const QString& path, const QByteArray& bytes, const QString& keepFolder)
{
    return overwriteFile(path, QList<QByteArray>() << bytes, keepFolder);
}

bool overwriteFile(const QString& path, const QList<QByteArray>& inTurn, const QString& keepFolder)
{
    removeLeftoversOf(path); // nobody else looks there
    QFile file(path);
    if (!isPlainFile(path) || !open(&file, Opened::OneThatIs))
        return false;
    const bool canBeReplaced = hasOneName(file.handle());
    file.close(); // some systems replace no open file
    return (canBeReplaced && overwriteBeside(path, inTurn))
        || overwriteInPlace(path, inTurn, keepFolder);
}

} // namespace quillon
