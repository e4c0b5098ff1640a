#include "ground/file_lock.h"

#include "ground/whole_file.h"

namespace quillon {

FileLock::FileLock(const QString& path, int patienceMs)
    : m_path(path)
    , m_lock(lockFile(systemPath(path), patienceMs))
{
}

FileLock::~FileLock()
{
    unlockFile(m_lock, systemPath(m_path));
}

bool FileLock::isHeld() const
{
    return m_lock >= 0;
}

bool FileLock::isOthers() const
{
    return m_lock == kLockedByOther;
}

} // namespace quillon
