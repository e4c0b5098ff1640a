#include "ground/system_files.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {

static const int kTryEveryMs = 5;

static void rest()
{
    const timespec span = {0, kTryEveryMs * 1000000L};
    nanosleep(&span, nullptr);
}

// Until it succeeds or fails for a reason that does not pass.
template <typename Attempt, typename Passes>
static bool tryFor(int patienceMs, Attempt attempt, Passes passes)
{
    for (int waitedMs = 0;; waitedMs += kTryEveryMs) {
        if (attempt())
            return true;
        if (!passes(errno) || waitedMs >= patienceMs)
            return false;
        rest();
    }
}

int openForWriting(const SystemPath& path, Opened which)
{
    const int made = which == Opened::OneThatIsNot ? O_CREAT | O_EXCL : 0;
    return ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | made, 0666);
}

FileMark markOf(const SystemPath& path)
{
    struct stat status;
    FileMark mark = {};
    if (::stat(path.c_str(), &status) == 0) {
        const unsigned long long seconds = (unsigned long long)status.st_mtim.tv_sec;
        mark = {status.st_dev, status.st_ino, (unsigned long long)status.st_size,
            seconds * 1000000000u + (unsigned long long)status.st_mtim.tv_nsec};
    }
    return mark;
}

At whatIsAt(const SystemPath& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) == 0)
        return S_ISREG(status.st_mode) ? At::PlainFile : At::SomethingElse;
    return errno == ENOENT || errno == ENOTDIR ? At::Nothing : At::NotTold;
}

bool flushToDisk(int file)
{
    return ::fsync(file) == 0;
}

bool hasOneName(int file)
{
    struct stat status;
    return ::fstat(file, &status) == 0 && status.st_nlink == 1;
}

bool replaceFile(const SystemPath& finished, const SystemPath& target)
{
    return tryFor(
        kPatienceMs, [&] { return std::rename(finished.c_str(), target.c_str()) == 0; },
        [](int error) { return error == EBUSY || error == EINTR; });
}

// Whoever unlocks a file removes it: one that was opened before and locked after that is another
// than the next process will find.
static bool isStillThere(int file, const SystemPath& path)
{
    struct stat opened, found;
    return ::fstat(file, &opened) == 0 && ::stat(path.c_str(), &found) == 0
        && opened.st_ino == found.st_ino && opened.st_dev == found.st_dev;
}

// -1 with errno EWOULDBLOCK: another has it.
static int tryToLock(const SystemPath& path)
{
    const int file
        = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
    if (file < 0)
        return -1;
    const bool locked = ::flock(file, LOCK_EX | LOCK_NB) == 0;
    if (locked && isStillThere(file, path))
        return file;
    const int error = locked ? EWOULDBLOCK : errno;
    ::close(file);
    errno = error;
    return -1;
}

int lockFile(const SystemPath& path, int patienceMs)
{
    int file = -1;
    const bool locked = tryFor(
        patienceMs, [&] { return (file = tryToLock(path)) >= 0; },
        [](int error) { return error == EWOULDBLOCK || error == EINTR; });
    return !locked && errno == EWOULDBLOCK ? kLockedByOther : file;
}

void unlockFile(int lock, const SystemPath& path)
{
    if (lock < 0)
        return;
    ::unlink(path.c_str());
    ::close(lock);
}

long ownProcess()
{
    return long(::getpid());
}

bool processLives(long process)
{
    return process > 0 && (::kill(pid_t(process), 0) == 0 || errno == EPERM);
}

} // namespace quillon
