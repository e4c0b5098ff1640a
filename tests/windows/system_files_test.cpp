// system_files_test.cpp - ground/system_files_windows.cpp as a program of its own, for Windows or
// Wine. FOLDER: an empty one, absolute, with backslashes. A second process of the same program
// holds what the first one needs: "hold FILE LIVESMS" opens it so that nobody may replace it, "lock
// FILE" takes its lock; each ends when its standard input does. Prints one line a claim; 1 when one
// does not hold.
#include "ground/system_files.h"

#include <io.h>
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <cwchar>

using namespace quillon;

static int g_failures = 0;

static void claim(bool holds, const char* text)
{
    g_failures += !holds;
    std::printf("%s %s\n", holds ? "ok    " : "FAILED", text);
    std::fflush(stdout);
}

static bool writeText(const SystemPath& path, Opened which, const char* text)
{
    const int file = openForWriting(path, which);
    if (file < 0)
        return false;
    const int size = int(std::strlen(text));
    const bool written = _write(file, text, unsigned(size)) == size && flushToDisk(file);
    return _close(file) == 0 && written;
}

static SystemPath prefixed(const SystemPath& path)
{
    return L"\\\\?\\" + path;
}

static std::string textOf(const SystemPath& path)
{
    char text[64] = {};
    const HANDLE file = CreateFileW(prefixed(path).c_str(), GENERIC_READ,
        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD got = 0;
    if (file == INVALID_HANDLE_VALUE || !ReadFile(file, text, sizeof text - 1, &got, nullptr))
        got = 0;
    CloseHandle(file);
    return std::string(text, got);
}

// ---- a second process ---------------------------------------------------------------------------

namespace {

struct Other {
    HANDLE process, input, output;
};

} // namespace

static Other startOther(const wchar_t* program, const std::wstring& arguments)
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE theirInput, theirOutput;
    Other other = {};
    CreatePipe(&theirInput, &other.input, &inherited, 0);
    CreatePipe(&other.output, &theirOutput, &inherited, 0);
    SetHandleInformation(other.input, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = theirInput;
    start.hStdOutput = theirOutput;
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION info = {};
    std::wstring line = L"\"" + std::wstring(program) + L"\" " + arguments;
    if (CreateProcessW(
            nullptr, &line[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &info))
        CloseHandle(info.hThread);
    other.process = info.hProcess;
    CloseHandle(theirInput);
    CloseHandle(theirOutput);
    char ready = 0;
    DWORD got = 0;
    ReadFile(other.output, &ready, 1, &got, nullptr); // it holds what it was told to
    claim(got == 1 && ready == '+', "a second process is ready");
    return other;
}

static void endOther(const Other& other)
{
    CloseHandle(other.input);
    WaitForSingleObject(other.process, INFINITE);
    CloseHandle(other.process);
    CloseHandle(other.output);
}

// Holds the file until the input ends, or for so long.
static int holdFile(const wchar_t* path, int livesMs)
{
    const HANDLE file = CreateFileW(
        prefixed(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    std::fputc(file != INVALID_HANDLE_VALUE ? '+' : '-', stdout);
    std::fflush(stdout);
    if (livesMs)
        Sleep(DWORD(livesMs));
    else
        std::fgetc(stdin);
    CloseHandle(file);
    return 0;
}

static int holdLock(const wchar_t* path)
{
    const int lock = lockFile(path, 0);
    std::fputc(lock >= 0 ? '+' : '-', stdout);
    std::fflush(stdout);
    std::fgetc(stdin);
    return 0; // without unlocking, as one that crashes
}

// ---- claims -------------------------------------------------------------------------------------

static void opensExclusively(const SystemPath& folder)
{
    const SystemPath path = folder + L"\\made.dat";
    claim(openForWriting(path, Opened::OneThatIs) == -1, "a missing file is not made");
    claim(
        writeText(path, Opened::OneThatIsNot, "first"), "a new file is made, written and flushed");
    claim(openForWriting(path, Opened::OneThatIsNot) == -1, "one that is there is not made again");
    claim(textOf(path) == "first", "and keeps its bytes");
    claim(writeText(path, Opened::OneThatIs, "F"), "one that is there is opened");
    claim(textOf(path) == "First", "and not cut");
    claim(whatIsAt(path) == At::PlainFile, "it is a plain file");
    claim(whatIsAt(folder) == At::SomethingElse, "its folder is something else");
    claim(whatIsAt(path + L".none") == At::Nothing && whatIsAt(path + L"\\none") == At::Nothing,
        "what is not there is nothing");
}

static void replaces(const wchar_t* program, const SystemPath& folder)
{
    const SystemPath target = folder + L"\\target.dat", finished = folder + L"\\finished.dat";
    writeText(target, Opened::OneThatIsNot, "old");
    writeText(finished, Opened::OneThatIsNot, "new");
    const FileMark before = markOf(target);
    claim(replaceFile(finished, target), "a file is replaced");
    claim(textOf(target) == "new" && textOf(finished).empty(), "by the other one");
    const FileMark after = markOf(target);
    claim(before.file != after.file || before.changed != after.changed, "which the mark tells");

    writeText(finished, Opened::OneThatIsNot, "newer");
    const Other brief = startOther(program, L"hold \"" + target + L"\" 60");
    claim(replaceFile(finished, target), "one that is held for a moment is replaced after it");
    claim(textOf(target) == "newer", "by the other one");
    endOther(brief);

    writeText(finished, Opened::OneThatIsNot, "newest");
    const Other holder = startOther(program, L"hold \"" + target + L"\" 0");
    const ULONGLONG begun = GetTickCount64();
    claim(!replaceFile(finished, target), "one that stays held is not replaced");
    const ULONGLONG took = GetTickCount64() - begun;
    claim(took >= ULONGLONG(kPatienceMs) && took < 20ULL * kPatienceMs, "after some patience");
    claim(textOf(target) == "newer" && textOf(finished) == "newest", "and both are as they were");
    endOther(holder);
}

static void locks(const wchar_t* program, const SystemPath& folder)
{
    const SystemPath path = folder + L"\\lock";
    const int lock = lockFile(path, 0);
    claim(lock >= 0, "a lock is taken");
    claim(lockFile(path, 0) == kLockedByOther, "and not taken twice");
    unlockFile(lock, path);
    claim(GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES, "its end removes the file");
    const Other other = startOther(program, L"lock \"" + path + L"\"");
    claim(lockFile(path, 50) == kLockedByOther, "a lock of another process is told");
    claim(processLives(long(GetProcessId(other.process))), "which lives");
    endOther(other);
    const int again = lockFile(path, 1000);
    claim(again >= 0, "a lock goes with its process");
    unlockFile(again, path);
    claim(lockFile(folder + L"\\none\\lock", 0) == -1, "no folder, no lock");
}

static void takesLongPaths(const SystemPath& folder)
{
    SystemPath deep = folder;
    for (int i = 0; i < 12; ++i) {
        deep += L"\\" + SystemPath(40, wchar_t(L'a' + i));
        CreateDirectoryW(prefixed(deep).c_str(), nullptr);
    }
    claim(deep.size() > 259 + 200, "a path of more than 459 characters");
    const SystemPath target = deep + L"\\target.dat", finished = deep + L"\\finished.dat";
    claim(writeText(target, Opened::OneThatIsNot, "old"), "is written");
    claim(writeText(finished, Opened::OneThatIsNot, "new") && replaceFile(finished, target)
            && textOf(target) == "new",
        "and replaced");
    const int lock = lockFile(deep + L"\\lock", 0);
    claim(lock >= 0, "and locked");
    unlockFile(lock, deep + L"\\lock");
    claim(markOf(target).bytes == 3, "and has a mark");
    claim(whatIsAt(target) == At::PlainFile, "and is a plain file");
}

int wmain(int count, wchar_t** arguments)
{
    if (count == 4 && std::wcscmp(arguments[1], L"hold") == 0)
        return holdFile(arguments[2], int(std::wcstol(arguments[3], nullptr, 10)));
    if (count == 3 && std::wcscmp(arguments[1], L"lock") == 0)
        return holdLock(arguments[2]);
    if (count != 2)
        return 2;
    opensExclusively(arguments[1]);
    replaces(arguments[0], arguments[1]);
    locks(arguments[0], arguments[1]);
    takesLongPaths(arguments[1]);
    std::printf("%d claim(s) failed\n", g_failures);
    return g_failures > 0;
}
