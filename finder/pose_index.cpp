#include "finder/pose_index.h"

#include "finder/pose_pair_products.h"
#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/whole_file.h"
#include "posefile/custom_library.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace quillon {

struct PoseIndex {
    std::vector<PoseIndexEntry> entries; // its capacity is that of the table
    quint32 lastStamp = 0;
    IndexOnDisk onDisk;
};
static PoseIndex g_index;

// ---- the table

void createPoseIndex()
{
    resetPoseIndex();
    g_index.onDisk = IndexOnDisk();
    g_index.entries.reserve(kPoseIndexCapacity);
}

void freePoseIndex()
{
    std::vector<PoseIndexEntry>().swap(g_index.entries);
}

void resetPoseIndex()
{
    g_index.entries.clear();
    g_index.onDisk.isMirrored = false;
    g_index.onDisk.isBehind = false;
}

int poseCount()
{
    return int(g_index.entries.size());
}

const PoseIndexEntry* poseEntry(int entry)
{
    return entry >= 0 && entry < poseCount() ? &g_index.entries[std::size_t(entry)] : nullptr;
}

PoseIndexEntry* entryToChange(int entry)
{
    if (!poseEntry(entry))
        return nullptr;
    PoseIndexEntry* changed = &g_index.entries[std::size_t(entry)];
    changed->stamp = ++g_index.lastStamp;
    return changed;
}

static int freeSlots()
{
    return int(g_index.entries.capacity() - g_index.entries.size());
}

int appendPose(const QString& path)
{
    if (freeSlots() == 0)
        return -1;
    g_index.entries.emplace_back();
    PoseIndexEntry& fresh = g_index.entries.back();
    fresh.path = path;
    fresh.stamp = ++g_index.lastStamp;
    fresh.isCustom = isCustomLibraryPath(path);
    fresh.isOfPair = posePairKind(path).kind != 0;
    return poseCount() - 1;
}

void copyEntry(int from, int to)
{
    Q_ASSERT_X(poseEntry(from) && poseEntry(to), "copyEntry", "both entries exist");
    if (from != to)
        g_index.entries[std::size_t(to)] = g_index.entries[std::size_t(from)];
}

void removeEntry(int entry)
{
    if (poseEntry(entry))
        g_index.entries.erase(g_index.entries.begin() + entry);
}

void truncatePoseIndex(int count)
{
    if (count < poseCount())
        g_index.entries.resize(std::size_t(std::max(0, count)));
}

// ---- the file

static const double kUnitTolerance = 1e-6; // narrowing to floats alone stays well below

namespace {

struct StoredSignature {
    float quat[kSignatureSlots][4]; // x, y, z, w
};
static_assert(sizeof(StoredSignature) == 160, "as it lies in the file");

const int kUsualEntryBytes = 300; // with its path

} // namespace

// What was written is taken as it is, so that it is written again the same.
static DzQuat quatOf(const float q[4])
{
    const double x = double(q[0]), y = double(q[1]), z = double(q[2]), w = double(q[3]);
    const double length = std::sqrt(x * x + y * y + z * z + w * w);
    if (!std::isfinite(length) || length == 0)
        return DzQuat();
    return DzQuat(x, y, z, w, std::fabs(length - 1) > kUnitTolerance);
}

static void readSignature(DatReader* file, PoseIndexEntry* entry)
{
    StoredSignature stored = {};
    file->read(&stored, sizeof stored);
    for (int slot = 0; slot < kSignatureSlots; ++slot)
        entry->signature[slot] = quatOf(stored.quat[slot]);
}

static void writeSignature(const PoseIndexEntry& entry, DatWriter* file)
{
    StoredSignature stored;
    for (int slot = 0; slot < kSignatureSlots; ++slot) {
        const DzQuat& q = entry.signature[slot];
        const double numbers[4] = {q.m_x, q.m_y, q.m_z, q.m_w};
        std::copy(std::begin(numbers), std::end(numbers), stored.quat[slot]);
    }
    file->write(&stored, sizeof stored);
}

// Appends it. False when the file does not hold the whole entry or its path is longer than there is
// room for.
static bool readEntry(DatReader* file, int* roomForPaths)
{
    if (file->bytesLeft() < kIndexRecordBytes)
        return false;
    qint32 pathBytes = 0;
    file->readField(&pathBytes);
    if (pathBytes < 0
        || pathBytes > file->bytesLeft() - (kIndexRecordBytes - qint64(sizeof pathBytes)))
        return false;
    if (pathBytes > std::min(kLongestPathBytes, *roomForPaths))
        return false;
    *roomForPaths -= pathBytes;
    appendPose(file->readText(pathBytes));
    PoseIndexEntry& entry = g_index.entries.back();
    file->readField(&entry.contentHash);
    file->readField(&entry.figureCode);
    readSignature(file, &entry);
    quint8 flag = 0;
    file->readField(&flag);
    entry.hasSignature = flag != 0;
    return true;
}

static void writeEntry(const PoseIndexEntry& entry, DatWriter* file)
{
    const QByteArray path = entry.path.toUtf8();
    file->writeField(qint32(path.size()));
    file->write(path.constData(), path.size());
    file->writeField(entry.contentHash);
    file->writeField(entry.figureCode);
    writeSignature(entry, file);
    file->writeField(quint8(entry.hasSignature ? 1 : 0));
}

static void readEntries(DatReader* file)
{
    qint32 count = 0;
    file->readField(&count);
    int roomForPaths = kAllPathsBytes;
    resetPoseIndex();
    while (poseCount() < count && freeSlots() > 0 && readEntry(file, &roomForPaths)) { }
}

IndexOnDisk& indexOnDisk()
{
    return g_index.onDisk;
}

// What the table holds now and the file, too.
static void noteMirrored(const FileMark& mark)
{
    g_index.onDisk.mark = mark;
    g_index.onDisk.isMirrored = true;
    g_index.onDisk.pending.clear();
}

bool readPoseIndex()
{
    const FileMark mark = markOf(dataFiles().poseIndex); // one that changes now is another then
    DatReader file(dataFiles().poseIndex);
    if (!file.isWhole())
        return false;
    qint32 version = 0;
    file.readField(&version);
    if (version != kIndexFileVersion)
        return true;
    readEntries(&file);
    noteMirrored(mark);
    return true;
}

bool writePoseIndex()
{
    if (!ensureDataFolder())
        return false;
    DatWriter file;
    file.reserve(poseCount() * kUsualEntryBytes);
    file.writeField(kIndexFileVersion);
    file.writeField(qint32(poseCount()));
    for (const PoseIndexEntry& entry : g_index.entries)
        writeEntry(entry, &file);
    g_index.onDisk.isBehind = !file.save(dataFiles().poseIndex);
    if (!g_index.onDisk.isBehind)
        noteMirrored(markOf(dataFiles().poseIndex));
    return !g_index.onDisk.isBehind;
}

QByteArray recordOf(int entry)
{
    DatWriter record;
    if (const PoseIndexEntry* e = poseEntry(entry))
        writeEntry(*e, &record);
    return record.bytes();
}

} // namespace quillon
