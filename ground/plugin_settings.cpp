#include "ground/plugin_settings.h"

#include "ground/backup_folder.h"
#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/save_lock.h"
#include "ground/whole_file.h"

#include <cstddef>
#include <cstring>

namespace quillon {

static const qint32 kFormatVersion = 3;

enum FieldKind { FlagField, NumberField, ReservedField };

struct FieldRow {
    FieldKind kind;
    std::size_t offset; // in PluginSettings
    int width; // bytes of one value in the file
    int count;
    int sinceVersion;
};

#define FLAGS(member, count, since)                                                                \
    {                                                                                              \
        FlagField, offsetof(PluginSettings, member), 1, count, since                               \
    }
#define NUMBER(member, since)                                                                      \
    {                                                                                              \
        NumberField, offsetof(PluginSettings, member), 4, 1, since                                 \
    }

// The file, field by field. The reserved byte is written as 1 and skipped when read.
// clang-format off
static constexpr FieldRow kFields[] = {
    FLAGS (similarity, kBodyAreaCount,     1),
    FLAGS (includeFemale, 1,               2),
    FLAGS (includeMale, 1,                 2),
    NUMBER(currentRank,                    1),
    FLAGS (partLocks, kPartLockCount,      3),
    FLAGS (similarityCopy, kBodyAreaCount, 1),
    NUMBER(rankFilter,                     1),
    NUMBER(propOrigin,                     1),
    NUMBER(translationNudge,               1),
    FLAGS (allowPoseViolation, 1,          1),
    FLAGS (allowFaceViolation, 1,          1),
    FLAGS (allowTranslations, 1,           1),
    FLAGS (ignorePosePairs, 1,             1),
    FLAGS (muteUpdateNotice, 1,            1),
    {ReservedField, 0, 1, 1,               1},
    NUMBER(currentPose,                    1),
};
// clang-format on

#undef FLAGS
#undef NUMBER

static constexpr int fileBytes()
{
    int bytes = int(sizeof(kFormatVersion));
    for (const FieldRow& row : kFields)
        bytes += row.width * row.count;
    return bytes;
}
static_assert(fileBytes() == 58, "the size of a file of version 3");
static_assert(sizeof(float) == 4 && sizeof(bool) == 1, "fields are copied as they are");

namespace {

struct SettingsStore {
    PluginSettings live;
    PluginSettings synced; // live, as it was at the last load or save
    qint32 syncedOnDisk = -1; // its position as it was in the file, unless that was another host's
};

} // namespace
static SettingsStore g_settings;

PluginSettings& pluginSettings()
{
    return g_settings.live;
}

// ---- fields

static char* fieldOf(const FieldRow& row, PluginSettings* settings)
{
    return reinterpret_cast<char*>(settings) + row.offset;
}

static void readFlag(DatReader* file, bool* flag)
{
    quint8 byte = *flag ? 1 : 0;
    file->readField(&byte);
    *flag = byte != 0;
}

static void readRow(const FieldRow& row, DatReader* file, PluginSettings* settings)
{
    if (row.kind == NumberField) {
        file->read(fieldOf(row, settings), row.width);
        return;
    }
    bool skipped = true;
    bool* flags
        = row.kind == FlagField ? reinterpret_cast<bool*>(fieldOf(row, settings)) : &skipped;
    for (int i = 0; i < row.count; ++i)
        readFlag(file, flags + i);
}

static void writeRow(const FieldRow& row, PluginSettings settings, DatWriter* file)
{
    if (row.kind == NumberField) {
        file->write(fieldOf(row, &settings), row.width);
        return;
    }
    const bool reserved = true;
    const bool* flags
        = row.kind == FlagField ? reinterpret_cast<bool*>(fieldOf(row, &settings)) : &reserved;
    for (int i = 0; i < row.count; ++i)
        file->writeField(quint8(flags[i] ? 1 : 0));
}

// Each flag by itself.
static void mergeRow(
    const FieldRow& row, PluginSettings base, PluginSettings ours, PluginSettings* theirs)
{
    const std::size_t width = std::size_t(row.width);
    for (std::size_t at = 0; row.kind != ReservedField && at < width * std::size_t(row.count);
         at += width) {
        const char* our = fieldOf(row, &ours) + at;
        if (std::memcmp(our, fieldOf(row, &base) + at, width) != 0)
            std::memcpy(fieldOf(row, theirs) + at, our, width);
    }
}

// ---- the file

enum class SettingsFile { Missing, Unreadable, Newer, Read };

static SettingsFile readFile(PluginSettings* settings)
{
    const QString& path = dataFiles().settings;
    const bool exists = !isMissing(path);
    DatReader file(path);
    if (!file.isWhole())
        return exists || file.isOpen() ? SettingsFile::Unreadable : SettingsFile::Missing;
    qint32 version = 0;
    file.readField(&version);
    if (version > kFormatVersion)
        return SettingsFile::Newer;
    for (const FieldRow& row : kFields) {
        // Version 1 is the oldest; a smaller number, negative ones included, counts as it.
        if (row.sinceVersion == 1 || version >= row.sinceVersion)
            readRow(row, &file, settings);
    }
    return SettingsFile::Read;
}

bool loadSettings()
{
    const SettingsFile found = readFile(&g_settings.live);
    g_settings.synced = g_settings.live;
    g_settings.syncedOnDisk = g_settings.live.currentPose;
    return found == SettingsFile::Read || found == SettingsFile::Newer;
}

static DatWriter fileOf(const PluginSettings& settings)
{
    DatWriter file;
    file.writeField(kFormatVersion);
    for (const FieldRow& row : kFields)
        writeRow(row, settings, &file);
    return file;
}

QByteArray defaultSettingsFile()
{
    return fileOf(PluginSettings()).bytes();
}

static PluginSettings merged(PluginSettings theirs)
{
    for (const FieldRow& row : kFields)
        mergeRow(row, g_settings.synced, g_settings.live, &theirs);
    return theirs;
}

// The position is a number in an index that another host may have changed since: what it was on
// disk tells whether the other one moved it.
static bool isPositionTheirs(qint32 theirs)
{
    const bool weMoved = g_settings.live.currentPose != g_settings.synced.currentPose;
    return !weMoved && theirs != g_settings.syncedOnDisk;
}

static bool saveMerged(qint32 positionOnDisk)
{
    PluginSettings onDisk = g_settings.synced;
    onDisk.currentPose = g_settings.syncedOnDisk;
    const SettingsFile found = readFile(&onDisk);
    if (found == SettingsFile::Unreadable
        || (found == SettingsFile::Newer && !backUpForeign(dataFiles().settings)))
        return false;
    const bool theirPosition = isPositionTheirs(onDisk.currentPose);
    PluginSettings saved = merged(onDisk);
    saved.currentPose = theirPosition ? onDisk.currentPose : positionOnDisk;
    if (!fileOf(saved).save(dataFiles().settings))
        return false;
    g_settings.synced = g_settings.live;
    if (!theirPosition)
        g_settings.syncedOnDisk = positionOnDisk;
    return true;
}

bool saveSettings(qint32 positionOnDisk)
{
    if (!ensureDataFolder())
        return false;
    const SaveLock lock;
    return lock.mayGoOn() && saveMerged(positionOnDisk);
}

bool saveSettings()
{
    return saveSettings(g_settings.live.currentPose);
}

} // namespace quillon
