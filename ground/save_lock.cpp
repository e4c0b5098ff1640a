#include "ground/save_lock.h"

#include "ground/data_folder.h"
#include "ground/system_files.h"

#include <QFileInfo>

namespace quillon {

SaveLock::SaveLock()
    : m_lock(dataFiles().saveLock, kPatienceMs)
{
}

bool SaveLock::mayGoOn() const
{
    return !m_lock.isOthers();
}

void removeLeftSaveLock()
{
    if (QFileInfo(dataFiles().saveLock).exists())
        const FileLock taken(dataFiles().saveLock, 0);
}

} // namespace quillon
