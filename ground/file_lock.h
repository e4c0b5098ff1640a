// file_lock.h - a lock that one process at a time can have, by the name of a file.
// The file is there as long as the lock is held, and after the holder was killed; it is not locked
// then. Owns: the lock.
#pragma once

#include <QString>

namespace quillon {

class FileLock {
public:
    // Waits at most so long for another holder, in this process or in another one.
    FileLock(const QString& path, int patienceMs);
    ~FileLock();

    bool isHeld() const; // false also where no such file can be made
    bool isOthers() const; // another holder kept it

private:
    Q_DISABLE_COPY(FileLock)
    QString m_path;
    int m_lock;
};

} // namespace quillon
