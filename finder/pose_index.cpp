#include "finder/pose_index.h"

#include "ground/dat_file.h"
#include "ground/data_folder.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace quillon {

struct PoseIndex {
    std::vector<PoseIndexEntry> entries; // every slot
    int count = 0; // of those in use
};
static PoseIndex g_index;

// ---- the table

void createPoseIndex()
{
    g_index.entries.assign(kPoseIndexCapacity, PoseIndexEntry());
    g_index.count = 0;
}

void freePoseIndex()
{
    std::vector<PoseIndexEntry>().swap(g_index.entries);
    g_index.count = 0;
}

void resetPoseIndex()
{
    std::fill(g_index.entries.begin(), g_index.entries.end(), PoseIndexEntry());
    g_index.count = 0;
}

int poseCount()
{
    return g_index.count;
}

PoseIndexEntry* poseEntry(int entry)
{
    return entry >= 0 && entry < g_index.count ? &g_index.entries[std::size_t(entry)] : nullptr;
}

int appendPose(const QString& path)
{
    if (g_index.count >= int(g_index.entries.size()))
        return -1;
    PoseIndexEntry& fresh = g_index.entries[std::size_t(g_index.count)];
    fresh = PoseIndexEntry();
    fresh.path = path;
    return g_index.count++;
}

void copyEntry(int from, int to)
{
    Q_ASSERT_X(poseEntry(from) && poseEntry(to), "copyEntry", "both entries exist");
    if (from != to)
        g_index.entries[std::size_t(to)] = g_index.entries[std::size_t(from)];
}

void removeEntry(int entry)
{
    if (!poseEntry(entry))
        return;
    const auto end = g_index.entries.begin() + g_index.count;
    std::move(g_index.entries.begin() + entry + 1, end, g_index.entries.begin() + entry);
    truncatePoseIndex(g_index.count - 1);
}

void truncatePoseIndex(int count)
{
    const int kept = std::max(0, std::min(count, g_index.count));
    std::fill(
        g_index.entries.begin() + kept, g_index.entries.begin() + g_index.count, PoseIndexEntry());
    g_index.count = kept;
}

// ---- the file

static const qint32 kFileVersion = 1;
static const double kUnitTolerance = 1e-6; // narrowing to floats alone stays well below

namespace {

struct StoredSignature {
    float quat[kSignatureSlots][4]; // x, y, z, w
};
static_assert(sizeof(StoredSignature) == 160, "as it lies in the file");

// path length, hash, figure code, signature, flag
const qint64 kRecordBytes = 4 + 4 + 4 + qint64(sizeof(StoredSignature)) + 1; // without the path
const int kUsualEntryBytes = 300; // with one

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

// False when the file does not hold the whole entry or its path is longer than there is room for.
static bool readEntry(DatReader* file, PoseIndexEntry* entry, int* roomForPaths)
{
    if (file->bytesLeft() < kRecordBytes)
        return false;
    qint32 pathBytes = 0;
    file->readField(&pathBytes);
    if (pathBytes < 0 || pathBytes > file->bytesLeft() - (kRecordBytes - qint64(sizeof pathBytes)))
        return false;
    if (pathBytes > std::min(kLongestPathBytes, *roomForPaths))
        return false;
    *roomForPaths -= pathBytes;
    QByteArray path(pathBytes, '\0');
    file->read(path.data(), pathBytes);
    *entry = PoseIndexEntry();
    entry->path = QString::fromUtf8(path.constData(), path.size());
    file->readField(&entry->contentHash);
    file->readField(&entry->figureCode);
    readSignature(file, entry);
    quint8 flag = 0;
    file->readField(&flag);
    entry->hasSignature = flag != 0;
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
    const int slotCount = int(g_index.entries.size());
    const int wanted = std::max(0, std::min(int(count), slotCount));
    int roomForPaths = kAllPathsBytes;
    truncatePoseIndex(0);
    while (g_index.count < wanted
        && readEntry(file, &g_index.entries[std::size_t(g_index.count)], &roomForPaths))
        ++g_index.count;
}

bool readPoseIndex()
{
    DatReader file(dataFiles().poseIndex);
    if (!file.isOpen())
        return false;
    qint32 version = 0;
    file.readField(&version);
    if (version == kFileVersion)
        readEntries(&file);
    return true;
}

bool writePoseIndex()
{
    if (!ensureDataFolder())
        return false;
    DatWriter file;
    file.reserve(g_index.count * kUsualEntryBytes);
    file.writeField(kFileVersion);
    file.writeField(qint32(g_index.count));
    for (int entry = 0; entry < g_index.count; ++entry)
        writeEntry(g_index.entries[std::size_t(entry)], &file);
    return file.save(dataFiles().poseIndex);
}

} // namespace quillon
