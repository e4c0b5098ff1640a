// without_rights.h - work in a child process: as a user who is not root, whoever runs the tests,
// and as one that may end by a signal.
#pragma once

#include <QFile>
#include <QString>

#include <cstdio>
#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

const unsigned kNobody = 65534; // who root becomes

// There in a tree for coverage only.
extern "C" void __gcov_dump() __attribute__((weak));

// A child ends without the rest of its process, which would write down what it reached. So it does
// that itself, as root where root started it: nobody may not write beside the objects.
inline unsigned whoEndsTheChild()
{
    return __gcov_dump ? 0 : kNobody;
}

inline void tellCoverage()
{
    rlimit limit;
    if (!__gcov_dump || ::getrlimit(RLIMIT_FSIZE, &limit) != 0)
        return;
    limit.rlim_cur = limit.rlim_max;
    const bool isRoot = ::seteuid(0) == 0 && ::setegid(0) == 0;
    if (::setrlimit(RLIMIT_FSIZE, &limit) == 0 && (isRoot || ::getuid() != kNobody))
        __gcov_dump();
}

inline void endChild(int status)
{
    tellCoverage();
    ::_exit(status);
}

// What work returned, 0 to 255; the negative number of the signal that ended it; 1000: not run.
template <typename Work> int runInChild(Work work)
{
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0)
        endChild(int(work()));
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child)
        return 1000;
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

inline bool giveUpRoot()
{
    return ::geteuid() != 0
        || (::setgroups(0, nullptr) == 0 && ::setresgid(kNobody, kNobody, whoEndsTheChild()) == 0
            && ::setresuid(kNobody, kNobody, whoEndsTheChild()) == 0);
}

template <typename Work> int runWithoutRights(Work work)
{
    return runInChild([&work] { return giveUpRoot() ? int(work()) : 255; });
}

// To the user that the child is; without root it is his already.
inline bool giveToChild(const QString& path)
{
    return ::geteuid() != 0 || ::lchown(QFile::encodeName(path).constData(), kNobody, kNobody) == 0;
}

inline bool setMode(const QString& path, unsigned mode)
{
    return ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

// No file of this process gets longer than that many bytes, until the limit is lifted at its end.
// For a child only.
inline bool limitFileSize(unsigned bytes)
{
    rlimit limit;
    if (::getrlimit(RLIMIT_FSIZE, &limit) != 0)
        return false;
    limit.rlim_cur = bytes;
    return ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

// While it lives, the folder takes no new file from the child.
class ClosedFolder {
public:
    explicit ClosedFolder(const QString& path)
        : m_path(path)
    {
        setMode(m_path, 0555);
    }
    ~ClosedFolder()
    {
        setMode(m_path, 0755);
    }

private:
    Q_DISABLE_COPY(ClosedFolder)
    QString m_path;
};
