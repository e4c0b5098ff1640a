// system_files.h - what files need of the operating system and the toolkit does not give: opening
// without creating or following, flushing to the disk, replacing in one step, locks. One source
// for each system, and neither uses the toolkit.
//
// Paths are absolute and in the system's form: bytes, or on Windows UTF-16 with backslashes, there
// of any length. Owns: nothing; what is opened or locked is the caller's to close.
// Errors: -1 or false; nothing is told.
#pragma once

#include <string>

namespace quillon {

#ifdef _WIN32
typedef std::wstring SystemPath;
#else
typedef std::string SystemPath;
#endif

const int kPatienceMs = 200; // with a file that another process holds

// Tells one state of a file from another: each replacing gives it another mark.
struct FileMark {
    unsigned long long device, file, bytes, changed; // all 0: there is none
};
FileMark markOf(const SystemPath& path);
// Behind links. NotTold: the system cannot tell just now, and anything may be there.
enum class At { Nothing, PlainFile, SomethingElse, NotTold };
At whatIsAt(const SystemPath& path);

enum class Opened { OneThatIs, OneThatIsNot };

// For writing, the bytes of one that is there kept; a link is not followed. A descriptor of the C
// library.
int openForWriting(const SystemPath& path, Opened which);
bool flushToDisk(int file);
// That no other name leads to the same bytes.
bool hasOneName(int file);
// Puts a finished file in another's place in one step. While another process holds one of them it
// is tried again, for at most kPatienceMs. False leaves both as they were.
bool replaceFile(const SystemPath& finished, const SystemPath& target);

// Makes the file where it is missing and takes its lock, which one opening in all processes can
// have and which goes with the process however that ends. Waits at most so long for another's end;
// kLockedByOther then, and -1 when there can be no such file.
const int kLockedByOther = -2;
int lockFile(const SystemPath& path, int patienceMs);
// Removes the file as well. The path is that of lockFile; does nothing with what is no lock.
void unlockFile(int lock, const SystemPath& path);

long ownProcess();
// Also true of one that has taken over the number of another.
bool processLives(long process);

} // namespace quillon
