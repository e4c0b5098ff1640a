// The system's file functions as this process and every library in it see them: the program's own
// definitions come first in the search for a symbol. Each passes the call on, unless call_watch.h
// wants it to fail. Only ordinary files count, and none of the system's own: painting a text opens
// fonts, and posting an event writes to a pipe.
// Not seen: what the C library does within itself. Of stdio that is everything but the opening
// (fwrite and fclose write by calls of their own), of directories everything but opendir.
#include "host/driver/call_watch.h"

#include <QtGlobal>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

bool isUsersPath(const char* path)
{
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

bool fails(const char* name, int fd)
{
    struct stat info;
    return quillon::callsAreWatched() && fstat(fd, &info) == 0 && S_ISREG(info.st_mode)
        && quillon::fileCallFails(name);
}

// The definition that would be used without this file.
template <class Function> Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
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
