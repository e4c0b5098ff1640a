#include "ground/system_files.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

namespace quillon {

static const int kTryEveryMs = 5;

// Beyond 259 characters the system wants its own prefix.
static SystemPath longPath(const SystemPath& path)
{
    if (path.compare(0, 4, L"\\\\?\\") == 0)
        return path;
    if (path.compare(0, 2, L"\\\\") == 0)
        return L"\\\\?\\UNC\\" + path.substr(2);
    return path.size() > 1 && path[1] == L':' ? L"\\\\?\\" + path : path;
}

static bool isHeld(DWORD error)
{
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION
        || error == ERROR_LOCK_VIOLATION;
}

// By the clock: a sleep lasts as long as the system's timer has it.
static ULONGLONG endOf(int patienceMs)
{
    return GetTickCount64() + ULONGLONG(patienceMs);
}

template <typename Attempt> static bool tryUntil(ULONGLONG end, Attempt attempt)
{
    for (;;) {
        if (attempt())
            return true;
        if (!isHeld(GetLastError()) || GetTickCount64() >= end)
            return false;
        Sleep(kTryEveryMs);
    }
}

static bool isLink(const SystemPath& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

int openForWriting(const SystemPath& path, Opened which)
{
    const SystemPath name = longPath(path);
    if (which == Opened::OneThatIs && isLink(name))
        return -1;
    const int made = which == Opened::OneThatIsNot ? _O_CREAT | _O_EXCL : 0;
    return _wopen(name.c_str(), _O_WRONLY | _O_BINARY | _O_NOINHERIT | made, _S_IREAD | _S_IWRITE);
}

FileMark markOf(const SystemPath& path)
{
    FileMark mark = {};
    const DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file
        = CreateFileW(longPath(path).c_str(), 0, all, nullptr, OPEN_EXISTING, 0, nullptr);
    BY_HANDLE_FILE_INFORMATION info;
    if (file != INVALID_HANDLE_VALUE && GetFileInformationByHandle(file, &info)) {
        const auto whole
            = [](DWORD high, DWORD low) { return (unsigned long long)high << 32 | low; };
        mark = {info.dwVolumeSerialNumber, whole(info.nFileIndexHigh, info.nFileIndexLow),
            whole(info.nFileSizeHigh, info.nFileSizeLow),
            whole(info.ftLastWriteTime.dwHighDateTime, info.ftLastWriteTime.dwLowDateTime)};
    }
    if (file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
    return mark;
}

At whatIsAt(const SystemPath& path)
{
    const DWORD attributes = GetFileAttributesW(longPath(path).c_str());
    const DWORD error = GetLastError();
    const DWORD other = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE;
    if (attributes != INVALID_FILE_ATTRIBUTES)
        return attributes & other ? At::SomethingElse : At::PlainFile;
    const bool isMissing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return isMissing ? At::Nothing : At::NotTold;
}

bool flushToDisk(int file)
{
    return _commit(file) == 0; // FlushFileBuffers
}

bool hasOneName(int file)
{
    BY_HANDLE_FILE_INFORMATION info;
    const HANDLE handle = reinterpret_cast<HANDLE>(_get_osfhandle(file));
    return GetFileInformationByHandle(handle, &info) && info.nNumberOfLinks == 1;
}

bool replaceFile(const SystemPath& finished, const SystemPath& target)
{
    const SystemPath from = longPath(finished), to = longPath(target);
    return tryUntil(endOf(kPatienceMs), [&] {
        return MoveFileExW(
                   from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
            != 0;
    });
}

int lockFile(const SystemPath& path, int patienceMs)
{
    const SystemPath name = longPath(path);
    const ULONGLONG end = endOf(patienceMs);
    int file = -1;
    // A file that is about to be removed cannot be opened, which passes as well.
    const bool opened = tryUntil(end, [&] {
        file = _wopen(
            name.c_str(), _O_RDWR | _O_CREAT | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
        return file >= 0;
    });
    const bool openByOther = !opened && GetLastError() == ERROR_SHARING_VIOLATION;
    const HANDLE handle = reinterpret_cast<HANDLE>(opened ? _get_osfhandle(file) : -1);
    const bool locked = opened && tryUntil(end, [handle] {
        OVERLAPPED whole = {};
        return LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, MAXDWORD,
                   MAXDWORD, &whole)
            != 0;
    });
    const bool lockedByOther = openByOther || (opened && !locked && isHeld(GetLastError()));
    if (opened && !locked)
        _close(file);
    return locked ? file : lockedByOther ? kLockedByOther : -1;
}

void unlockFile(int lock, const SystemPath& path)
{
    if (lock < 0)
        return;
    _close(lock);
    DeleteFileW(longPath(path).c_str()); // fails while another process has it open
}

long ownProcess()
{
    return long(GetCurrentProcessId());
}

bool processLives(long process)
{
    const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, DWORD(process));
    if (!handle)
        return GetLastError() == ERROR_ACCESS_DENIED;
    const bool lives = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
    CloseHandle(handle);
    return lives;
}

} // namespace quillon
