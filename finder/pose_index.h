// pose_index.h - the poses that the Pose Finder knows: a table of fixed capacity and its file.
// A position in the table is what every other file of this folder calls an entry.
//
// File: version (1), count, then the entries: path (length and UTF-8 bytes), hash, figure code,
// ten quaternions as four floats x, y, z, w, and the flag as one byte; nothing between them. What
// was read is written again byte for byte. A file cut short gives the entries that are whole.
// Reading ends before a path longer than kLongestPathBytes and before the paths together pass
// kAllPathsBytes.
// Owns: the table, which has room for all slots as long as there is a pane.
#pragma once

#include "finder/index_edits.h"
#include "ground/host_types.h"
#include "ground/system_files.h"

#include <QString>

namespace quillon {

const int kPoseIndexCapacity = 65536;
const qint32 kIndexFileVersion = 1;
const int kLongestPathBytes = 32767;
const int kAllPathsBytes = 32 * 1024 * 1024;
const quint32 kFigureNotIdentified = 0xffffffffu;
const quint32 kFemaleCode = 8; // also of a pose that tells no sex
const quint32 kMaleCode = 264;

// The ten orientations of a signature, in the order of the index file.
enum SignatureSlot {
    HipSlot,
    TorsoSlot,
    LeftShinSlot,
    RightShinSlot,
    LeftThighSlot,
    RightThighSlot,
    LeftArmSlot,
    RightArmSlot,
    LeftForearmSlot,
    RightForearmSlot
};
const int kSignatureSlots = 10;
// Path length, hash, figure code, signature, flag: an entry in the file without its path.
const int kIndexRecordBytes = 4 + 4 + 4 + kSignatureSlots * 16 + 1;

struct PoseIndexEntry {
    QString path; // as the directory walk gave it
    quint32 contentHash = 0; // 0 while a scan runs: dropped
    quint32 figureCode = kFigureNotIdentified; // kFemaleCode, kMaleCode; others: not browsable
    quint32 stamp = 0; // another one after each change; none is given twice, but a copy keeps it
    bool hasSignature = false;
    bool isCustom = false, isOfPair = false; // what appendPose() saw in the path
    DzQuat signature[kSignatureSlots]; // identity until taken
};

// ---- the table

void createPoseIndex(); // with room for the capacity, count 0
void freePoseIndex(); // nor any room
void resetPoseIndex(); // count 0; the file keeps its entries
int poseCount();
const PoseIndexEntry* poseEntry(int entry); // null outside 0..poseCount()-1
PoseIndexEntry* entryToChange(int entry); // likewise; to be written to before anything else happens

int appendPose(const QString& path); // a fresh entry at the end; -1: the table is full
void copyEntry(int from, int to); // all fields; both below poseCount()
void removeEntry(int entry); // later entries move down by one; nothing outside the table
void truncatePoseIndex(int count); // forgets the entries from count on

// ---- the file

// What is known of it; goes with the table.
struct IndexOnDisk {
    FileMark mark = {}; // when it was last read or written
    bool isMirrored = false; // it had the entries of the table then, in their order
    bool isBehind = false; // the table as a whole could not be written
    bool isBackedUp = false; // before an entry was dropped
    IndexEdits pending; // that could not be written
};
IndexOnDisk& indexOnDisk();

// False when not all of it can be read; nothing changes then, nor when its version is another.
bool readPoseIndex();
// The whole table; of single entries see index_saves.h. Its caller holds the save lock. False when
// there is no data folder or the file cannot be written.
[[nodiscard]] bool writePoseIndex();
QByteArray recordOf(int entry); // as in the file; empty outside the table

} // namespace quillon
