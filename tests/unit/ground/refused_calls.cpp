#include "refused_calls.h"

#include "frame_fixture.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <dlfcn.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

struct Refusal {
    int error;
    int times; // still to be refused
    int seen;
};
static Refusal g_refusals[kCalls];
long restedMs = 0;
QString lostLock;
bool isLostLockMadeAgain = false;

Refused::Refused(Call call, int error, int times)
    : m_call(call)
{
    g_refusals[call] = {error, times, 0};
    restedMs = 0;
}

Refused::~Refused()
{
    g_refusals[m_call].times = 0;
}

int Refused::seen() const
{
    return g_refusals[m_call].seen;
}

static bool isRefused(Call call)
{
    Refusal& refusal = g_refusals[call];
    ++refusal.seen;
    if (refusal.times <= 0)
        return false;
    --refusal.times;
    errno = refusal.error;
    return true;
}

template <typename Function> static Function* next(Function*, const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}
#define PASS_ON(function) (*next(&::function, #function))

#pragma GCC visibility push(default) // the toolkit's calls come here, too
extern "C" {

int rename(const char* from, const char* to) noexcept
{
    return isRefused(Rename) ? -1 : PASS_ON(rename)(from, to);
}

int fsync(int file)
{
    return isRefused(Flush) ? -1 : PASS_ON(fsync)(file);
}

int ftruncate64(int file, off64_t length) noexcept
{
    return isRefused(Cut) ? -1 : PASS_ON(ftruncate64)(file, length);
}

int flock(int file, int operation) noexcept
{
    if (!lostLock.isEmpty())
        QFile::remove(lostLock);
    if (!lostLock.isEmpty() && isLostLockMadeAgain)
        writeFile(lostLock, "another's");
    return isRefused(Lock) ? -1 : PASS_ON(flock)(file, operation);
}

ssize_t read(int file, void* bytes, size_t count)
{
    return isRefused(Read) ? -1 : PASS_ON(read)(file, bytes, count);
}

int chmod(const char* path, mode_t mode) noexcept
{
    return isRefused(Permit) ? -1 : PASS_ON(chmod)(path, mode);
}

int nanosleep(const timespec* span, timespec*)
{
    restedMs += span->tv_sec * 1000 + span->tv_nsec / 1000000;
    if (restedMs >= 20)
        lostLock.clear();
    return 0;
}

} // extern "C"
#pragma GCC visibility pop
