#include "ground/whole_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace quillon {

// ---- files -----------------------------------------------------------------------------------

namespace {
enum class Opened { OneThatIs, OneThatIsNot };
}

// Keeps the bytes of one that is there. The toolkit's own way of opening creates a missing file and
// writes through a link, so the system is asked itself.
static bool openForWriting(QFile* file, Opened which)
{
#ifdef Q_OS_WIN
    const QString name = QDir::toNativeSeparators(file->fileName());
    const int made = which == Opened::OneThatIsNot ? _O_CREAT | _O_EXCL : 0;
    const int handle = _wopen(reinterpret_cast<const wchar_t*>(name.utf16()),
        _O_WRONLY | _O_BINARY | _O_NOINHERIT | made, _S_IREAD | _S_IWRITE);
#else
    const int made = which == Opened::OneThatIsNot ? O_CREAT | O_EXCL : 0;
    const int handle = ::open(QFile::encodeName(file->fileName()).constData(),
        O_WRONLY | O_CLOEXEC | O_NOFOLLOW | made, 0666);
#endif
    // Without a buffer, so that bytes that were refused do not come again with the next ones.
    return handle >= 0
        && file->open(handle, QIODevice::WriteOnly | QIODevice::Unbuffered, QFile::AutoCloseHandle);
}

// From the start, where a file stands that was just opened. Cut to the new length at the end only:
// old bytes still have their room when the disk is full.
static bool writeAndCut(QFile* file, const QByteArray& bytes)
{
    return file->write(bytes) == bytes.size() && file->resize(bytes.size());
}

static bool isPlainFile(const QString& path)
{
    const QFileInfo info(path);
    return info.isFile() && !info.isSymLink();
}

static bool hasOneName(const QFile& file)
{
#ifdef Q_OS_WIN
    BY_HANDLE_FILE_INFORMATION info;
    const HANDLE handle = reinterpret_cast<HANDLE>(_get_osfhandle(file.handle()));
    return GetFileInformationByHandle(handle, &info) && info.nNumberOfLinks == 1;
#else
    struct stat status;
    return ::fstat(file.handle(), &status) == 0 && status.st_nlink == 1;
#endif
}

bool replaceFile(const QString& finished, const QString& target)
{
#ifdef Q_OS_WIN
    const QString from = QDir::toNativeSeparators(finished);
    const QString to = QDir::toNativeSeparators(target);
    return MoveFileExW(reinterpret_cast<const wchar_t*>(from.utf16()),
               reinterpret_cast<const wchar_t*>(to.utf16()), MOVEFILE_REPLACE_EXISTING)
        != 0;
#else
    return std::rename(
               QFile::encodeName(finished).constData(), QFile::encodeName(target).constData())
        == 0;
#endif
}

// ---- beside ----------------------------------------------------------------------------------

static QString besideName(const QString& path)
{
    return path + QLatin1String(".new");
}

static bool flushToDisk(QFile* file)
{
#ifdef Q_OS_WIN
    return file->flush() && _commit(file->handle()) == 0;
#else
    return file->flush() && fsync(file->handle()) == 0;
#endif
}

static bool fillBeside(const QString& path, const QByteArray& bytes)
{
    const QString beside = besideName(path);
    QFile::remove(beside);
    QFile file(beside);
    if (!openForWriting(&file, Opened::OneThatIsNot))
        return false;
    const bool written = writeAndCut(&file, bytes) && flushToDisk(&file);
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
    return !info.exists() || (info.isFile() && info.isWritable());
}

bool writeWholeFile(const QString& path, const QByteArray& bytes)
{
    const QString target = resolveTarget(path);
    return mayBeWritten(path) && fillBeside(target, bytes) && placeBeside(target, true);
}

bool writePlainFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

static bool makeAlike(const QString& path, const QString& model)
{
    const QFileInfo info(path), wanted(model);
    // What the user himself may do is told along with the permissions, but is none of the file's.
    const QFile::Permissions own(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
    return info.ownerId() == wanted.ownerId() && info.groupId() == wanted.groupId()
        && QFile::setPermissions(path, wanted.permissions() & ~own);
}

static bool overwriteBeside(const QString& path, const QByteArray& bytes)
{
    return fillBeside(path, bytes)
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
    if (!file.open(QIODevice::ReadOnly))
        return !QFileInfo(path).isReadable();
    *bytes = file.readAll();
    if (bytes->isNull())
        *bytes = "";
    return bytes->size() == file.size();
}

static bool overwriteInPlace(
    const QString& path, const QByteArray& bytes, const QString& keepFolder)
{
    const QString name = QFileInfo(path).fileName();
    QTemporaryFile kept(keepFolder + QLatin1Char('/') + name + QLatin1String(".XXXXXX"));
    QByteArray old;
    if (keepFolder.isEmpty() || !readOldBytes(path, &old)
        || !(old.isNull() || keepBytes(old, &kept)))
        return false;
    QFile file(path);
    if (!openForWriting(&file, Opened::OneThatIs))
        return false;
    const bool written = writeAndCut(&file, bytes) && flushToDisk(&file);
    if (!written && !old.isNull()) // what cannot be put back stays in the folder
        kept.setAutoRemove(file.seek(0) && writeAndCut(&file, old));
    return written;
}

bool overwriteFile(const QString& path, const QByteArray& bytes, const QString& keepFolder)
{
    QFile file(path);
    if (!isPlainFile(path) || !openForWriting(&file, Opened::OneThatIs))
        return false;
    const bool canBeReplaced = hasOneName(file);
    file.close(); // some systems replace no open file
    return (canBeReplaced && overwriteBeside(path, bytes))
        || overwriteInPlace(path, bytes, keepFolder);
}

} // namespace quillon
