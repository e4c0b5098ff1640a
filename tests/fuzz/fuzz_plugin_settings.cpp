// The settings file of any version and length: what is written after it was read, against the
// fields put in their places by hand.
#include "fuzz/dat_bytes.h"
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

using namespace quillon;

// The fields in order: how many flags, and 0 for a number of four bytes, each with the version that
// brought it.
static const struct {
    int flags, since;
} kFields[] = {{10, 1}, {2, 2}, {0, 1}, {6, 3}, {10, 1}, {0, 1}, {0, 1}, {0, 1}, {5, 1}, {1, 1},
    {0, 1}}; // the tenth is the byte that is always 1

static const int kReservedField = 9;

static QByteArray flagsFrom(fuzz::DatBytes* file, const QByteArray& otherwise)
{
    QByteArray flags;
    for (const char each : otherwise)
        flags += char(file->number<quint8>(quint8(each)) ? 1 : 0);
    return flags;
}

// What saving writes after these bytes were read over settings that are saved as the old ones.
static QByteArray savedAfter(const QByteArray& bytes, const QByteArray& old)
{
    fuzz::DatBytes file = {bytes}, before = {old};
    const qint32 version = file.number<qint32>();
    QByteArray saved = before.take(4);
    for (int i = 0; i < int(std::size(kFields)); ++i) {
        const QByteArray field = before.take(kFields[i].flags ? kFields[i].flags : 4);
        if (version > 3 || (kFields[i].since > 1 && version < kFields[i].since)) {
            saved += field;
        } else if (kFields[i].flags) {
            const QByteArray flags = flagsFrom(&file, field);
            saved += i == kReservedField ? field : flags;
        } else {
            const QByteArray taken = file.take(4);
            saved += taken + field.mid(taken.size());
        }
    }
    return saved;
}

static QByteArray saved()
{
    FUZZ_CHECK(saveSettings());
    return fileBytes(dataFiles().settings);
}

QUILLON_FUZZ_TARGET(plugin_settings)
{
    fuzz::world();
    pluginSettings() = PluginSettings();
    const QByteArray old = saved();
    FUZZ_CHECK(old.size() == 58);
    writeFile(dataFiles().settings, input.copy());
    FUZZ_CHECK(loadSettings());
    const QByteArray now = saved();
    FUZZ_CHECK(now == savedAfter(input.copy(), old));
    pluginSettings() = PluginSettings();
    FUZZ_CHECK(loadSettings());
    FUZZ_CHECK(saved() == now);
    pluginSettings() = PluginSettings();
}
