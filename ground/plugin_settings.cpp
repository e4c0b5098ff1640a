#include "ground/plugin_settings.h"

#include "ground/dat_file.h"
#include "ground/data_folder.h"

#include <cstddef>

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

static PluginSettings g_settings;

PluginSettings& pluginSettings()
{
    return g_settings;
}

static void* fieldOf(const FieldRow& row)
{
    return reinterpret_cast<char*>(&g_settings) + row.offset;
}

static void readFlag(DatReader* file, bool* flag)
{
    quint8 byte = *flag ? 1 : 0;
    file->readField(&byte);
    *flag = byte != 0;
}

static void readRow(const FieldRow& row, DatReader* file)
{
    if (row.kind == NumberField) {
        file->read(fieldOf(row), row.width);
        return;
    }
    bool skipped = true;
    bool* flags = row.kind == FlagField ? static_cast<bool*>(fieldOf(row)) : &skipped;
    for (int i = 0; i < row.count; ++i)
        readFlag(file, flags + i);
}

static void writeRow(const FieldRow& row, DatWriter* file)
{
    if (row.kind == NumberField) {
        file->write(fieldOf(row), row.width);
        return;
    }
    const bool reserved = true;
    const bool* flags = row.kind == FlagField ? static_cast<bool*>(fieldOf(row)) : &reserved;
    for (int i = 0; i < row.count; ++i)
        file->writeField(quint8(flags[i] ? 1 : 0));
}

bool loadSettings()
{
    DatReader file(dataFiles().settings);
    if (!file.isOpen())
        return false;
    qint32 version = 0;
    file.readField(&version);
    if (version > kFormatVersion)
        return true;
    for (const FieldRow& row : kFields) {
        // Version 1 is the oldest; a smaller number, negative ones included, counts as it.
        if (row.sinceVersion == 1 || version >= row.sinceVersion)
            readRow(row, &file);
    }
    return true;
}

bool saveSettings()
{
    if (!ensureDataFolder())
        return false;
    DatWriter file;
    file.writeField(kFormatVersion);
    for (const FieldRow& row : kFields)
        writeRow(row, &file);
    return file.save(dataFiles().settings);
}

} // namespace quillon
