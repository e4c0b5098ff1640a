// save_lock.h - two hosts on one data folder take turns in saving.
//
// Each save reads what is on disk, applies what this host changed, and replaces the file; the lock
// is held meanwhile, so that what the other one saved in between is not lost. Whoever waits longer
// than kPatienceMs does not save: what was to be saved goes into the next save of the file. Where
// there can be no lock, on a file system that has none, saving goes on without it.
// Owns: nothing. Not taken twice: a function that saves says so if it wants its caller to hold it.
#pragma once

#include "ground/file_lock.h"

namespace quillon {

class SaveLock {
public:
    SaveLock(); // the data folder is there
    bool mayGoOn() const;

private:
    FileLock m_lock;
};

// Removes the lock file of a host that was killed while it saved.
void removeLeftSaveLock();

} // namespace quillon
