// The system's file functions as this process and every library in it see them: the program's own
// definitions come first in the search for a symbol. Each passes the call on, unless call_watch.h
// wants it to fail. Only ordinary files count, and none of the system's own: painting a text opens
// fonts, and posting an event writes to a pipe.
// Not seen: what the C library does within itself. Of stdio that is everything but the opening
// (fwrite and fclose write by calls of their own).
#include "host/driver/call_watch.h"

#include <QtGlobal>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

const char kMemoryDisk[] = "/dev/shm/";

bool isUsersPath(const char* path)
{
    if (std::strncmp(path, kMemoryDisk, sizeof kMemoryDisk - 1) == 0)
        return true;
    static const char* const kSystem[] = {"/usr/", "/etc/", "/proc/", "/sys/", "/dev/", "/lib"};
    for (const char* start : kSystem)
        if (std::strncmp(path, start, std::strlen(start)) == 0)
            return false;
    return true;
}

bool fails(const char* name, const char* path)
{
    return quillon::callsAreWatched() && isUsersPath(path) && quillon::fileCallFails(name);
}

// The definition that would be used without this file.
template <class Function> Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

typedef int StatOfFile(int, struct stat*);

bool isUsersFile(int fd, mode_t kind)
{
    static const auto real = next<StatOfFile>("fstat");
    struct stat info;
    if (real(fd, &info) != 0 || (info.st_mode & S_IFMT) != kind)
        return false;
    char link[32];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    char path[4096];
    const ssize_t length = readlink(link, path, sizeof path - 1);
    path[length < 0 ? 0 : length] = '\0';
    return isUsersPath(path);
}

bool fails(const char* name, int fd, mode_t kind = S_IFREG)
{
    return quillon::callsAreWatched() && isUsersFile(fd, kind) && quillon::fileCallFails(name);
}

template <class Result> Result failWith(int error, Result result)
{
    errno = error;
    return result;
}

mode_t modeOf(int flags, va_list list)
{
    const bool hasMode = (flags & O_CREAT) || (flags & O_TMPFILE) == O_TMPFILE;
    return hasMode ? va_arg(list, mode_t) : 0;
}

} // namespace

#define EXPORTED extern "C" Q_DECL_EXPORT
#define NEXT(name) static const auto real = next<decltype(name)>(#name)

#define OPEN_CALL(name)                                                                            \
    EXPORTED int name(const char* path, int flags, ...)                                            \
    {                                                                                              \
        static const auto real = next<int(const char*, int, ...)>(#name);                          \
        va_list list;                                                                              \
        va_start(list, flags);                                                                     \
        const mode_t mode = modeOf(flags, list);                                                   \
        va_end(list);                                                                              \
        return fails("open", path) ? failWith(EIO, -1) : real(path, flags, mode);                  \
    }
OPEN_CALL(open)
OPEN_CALL(open64)
#undef OPEN_CALL

#define OPENAT_CALL(name)                                                                          \
    EXPORTED int name(int folder, const char* path, int flags, ...)                                \
    {                                                                                              \
        static const auto real = next<int(int, const char*, int, ...)>(#name);                     \
        va_list list;                                                                              \
        va_start(list, flags);                                                                     \
        const mode_t mode = modeOf(flags, list);                                                   \
        va_end(list);                                                                              \
        return fails("open", path) ? failWith(EIO, -1) : real(folder, path, flags, mode);          \
    }
OPENAT_CALL(openat)
OPENAT_CALL(openat64)
#undef OPENAT_CALL

EXPORTED ssize_t read(int fd, void* bytes, size_t count)
{
    NEXT(read);
    return fails("read", fd) ? failWith(EIO, ssize_t(-1)) : real(fd, bytes, count);
}

EXPORTED ssize_t write(int fd, const void* bytes, size_t count)
{
    NEXT(write);
    return fails("write", fd) ? failWith(ENOSPC, ssize_t(-1)) : real(fd, bytes, count);
}

EXPORTED ssize_t writev(int fd, const iovec* parts, int count)
{
    NEXT(writev);
    return fails("write", fd) ? failWith(ENOSPC, ssize_t(-1)) : real(fd, parts, count);
}

EXPORTED int close(int fd)
{
    NEXT(close);
    const bool failing = fails("close", fd);
    const int result = real(fd); // a close that reports an error has closed all the same
    return failing ? failWith(EIO, -1) : result;
}

EXPORTED int fsync(int fd)
{
    NEXT(fsync);
    return fails("sync", fd) ? failWith(EIO, -1) : real(fd);
}

EXPORTED int fdatasync(int fd)
{
    NEXT(fdatasync);
    return fails("sync", fd) ? failWith(EIO, -1) : real(fd);
}

EXPORTED int ftruncate(int fd, off_t length) noexcept
{
    NEXT(ftruncate);
    return fails("truncate", fd) ? failWith(EIO, -1) : real(fd, length);
}

EXPORTED int ftruncate64(int fd, off64_t length) noexcept
{
    NEXT(ftruncate64);
    return fails("truncate", fd) ? failWith(EIO, -1) : real(fd, length);
}

EXPORTED int rename(const char* from, const char* to) noexcept
{
    NEXT(rename);
    return fails("rename", from) ? failWith(EIO, -1) : real(from, to);
}

EXPORTED int renameat2(
    int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept
{
    NEXT(renameat2);
    return fails("rename", from) ? failWith(EIO, -1) : real(fromFolder, from, toFolder, to, flags);
}

EXPORTED int unlink(const char* path) noexcept
{
    NEXT(unlink);
    return fails("unlink", path) ? failWith(EIO, -1) : real(path);
}

EXPORTED int link(const char* from, const char* to) noexcept
{
    NEXT(link);
    return fails("link", from) ? failWith(EIO, -1) : real(from, to);
}

// From a file without a name, too, by which the toolkit makes its temporary files.
EXPORTED int linkat(
    int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    NEXT(linkat);
    return fails("link", to) ? failWith(EIO, -1) : real(fromFolder, from, toFolder, to, flags);
}

EXPORTED int chmod(const char* path, mode_t mode) noexcept
{
    NEXT(chmod);
    return fails("chmod", path) ? failWith(EPERM, -1) : real(path, mode);
}

EXPORTED int fchmod(int fd, mode_t mode) noexcept
{
    NEXT(fchmod);
    return fails("chmod", fd) ? failWith(EPERM, -1) : real(fd, mode);
}

// Not as if another one held it, which is waited for.
EXPORTED int flock(int fd, int operation) noexcept
{
    NEXT(flock);
    return fails("flock", fd) ? failWith(ENOLCK, -1) : real(fd, operation);
}

EXPORTED off_t lseek(int fd, off_t offset, int from) noexcept
{
    NEXT(lseek);
    return fails("seek", fd) ? failWith(EIO, off_t(-1)) : real(fd, offset, from);
}

EXPORTED off64_t lseek64(int fd, off64_t offset, int from) noexcept
{
    NEXT(lseek64);
    return fails("seek", fd) ? failWith(EIO, off64_t(-1)) : real(fd, offset, from);
}

EXPORTED int mkdir(const char* path, mode_t mode) noexcept
{
    NEXT(mkdir);
    return fails("mkdir", path) ? failWith(ENOSPC, -1) : real(path, mode);
}

EXPORTED int rmdir(const char* path) noexcept
{
    NEXT(rmdir);
    return fails("rmdir", path) ? failWith(EIO, -1) : real(path);
}

// statx: what the toolkit asks by, wherever the system has it.
EXPORTED int statx(
    int folder, const char* path, int flags, unsigned mask, struct statx* out) noexcept
{
    NEXT(statx);
    return fails("stat", path) ? failWith(EIO, -1) : real(folder, path, flags, mask, out);
}

#define STAT_CALL(name, result)                                                                    \
    EXPORTED int name(const char* path, struct result* out) noexcept                               \
    {                                                                                              \
        NEXT(name);                                                                                \
        return fails("stat", path) ? failWith(EIO, -1) : real(path, out);                          \
    }
STAT_CALL(stat, stat)
STAT_CALL(stat64, stat64)
STAT_CALL(lstat, stat)
STAT_CALL(lstat64, stat64)
#undef STAT_CALL

EXPORTED int fstat(int fd, struct stat* out) noexcept
{
    NEXT(fstat);
    return fails("stat", fd) ? failWith(EIO, -1) : real(fd, out);
}

EXPORTED int fstat64(int fd, struct stat64* out) noexcept
{
    NEXT(fstat64);
    return fails("stat", fd) ? failWith(EIO, -1) : real(fd, out);
}

// The toolkit asks this of a file of which only the existence is in question.
EXPORTED int access(const char* path, int mode) noexcept
{
    NEXT(access);
    return fails("stat", path) ? failWith(EIO, -1) : real(path, mode);
}

EXPORTED FILE* fopen(const char* path, const char* mode)
{
    NEXT(fopen);
    return fails("open", path) ? failWith(EIO, static_cast<FILE*>(nullptr)) : real(path, mode);
}

EXPORTED FILE* fopen64(const char* path, const char* mode)
{
    NEXT(fopen64);
    return fails("open", path) ? failWith(EIO, static_cast<FILE*>(nullptr)) : real(path, mode);
}

EXPORTED DIR* opendir(const char* path)
{
    NEXT(opendir);
    return fails("opendir", path) ? failWith(EIO, static_cast<DIR*>(nullptr)) : real(path);
}

#define READDIR_CALL(name, result)                                                                 \
    EXPORTED result* name(DIR* folder)                                                             \
    {                                                                                              \
        NEXT(name);                                                                                \
        return fails("readdir", dirfd(folder), S_IFDIR)                                            \
            ? failWith(EIO, static_cast<result*>(nullptr))                                         \
            : real(folder);                                                                        \
    }
READDIR_CALL(readdir, dirent)
READDIR_CALL(readdir64, dirent64)
#undef READDIR_CALL

EXPORTED char* realpath(const char* path, char* resolved) noexcept
{
    NEXT(realpath);
    return fails("realpath", path) ? failWith(EIO, static_cast<char*>(nullptr))
                                   : real(path, resolved);
}
