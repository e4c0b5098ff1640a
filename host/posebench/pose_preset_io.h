// pose_preset_io.h - the application's own reader and writer of pose presets (.duf): JSON, plain or
// gzip. Values are raw channel values: degrees, centimetres, plain fractions; times in ticks.
// Errors: false and *why as "file: text"; nothing is then applied or left behind on disk.
#pragma once

#include "dztimerange.h"

#include <QString>
#include <QVariant>

#include <vector>

class DzFloatProperty;
class DzNode;
class DzSkeleton;

namespace quillon {

// A transform channel and its part of the address, in the order of files.
struct PresetChannelName {
    const char* property; // "XRotate"
    const char* url; // "rotation/x"
};
const int kPresetChannelCount = 10;
extern const PresetChannelName kPresetChannels[kPresetChannelCount];

struct PresetKey {
    DzTime time; // ticks from the preset's start
    float value;
};

struct PresetChannel {
    QString node; // bone; empty: the figure
    QString control; // morph or pose control; empty: a transform channel
    QString property; // "XRotate"; "Value" of a control
    std::vector<PresetKey> keys;
};

struct PosePreset {
    QString name; // of the file, without folder and extension
    std::vector<PresetChannel> channels;
};

// Entries of other things than numbers on a known channel are left out. Refused are other types of
// presets and text that is no JSON.
bool readPosePreset(const QString& file, PosePreset* out, QString* why);

// False for an address that names no channel.
bool parseChannelUrl(const QString& url, PresetChannel* out);

// Null when the figure has no such channel.
DzFloatProperty* presetProperty(const DzSkeleton* figure, const PresetChannel& channel);

// Sets the channels, their first key at that time; one undo step "Apply Pose <name>". Locked
// channels stay. The number of channels that the figure has.
int applyPosePreset(const PosePreset& preset, DzSkeleton* figure, DzTime at);

struct PresetSaveOptions {
    DzTimeRange range; // keys in it, counted from its start; a single time: the values there
    bool compress = false; // as gzip
};

bool savePosePreset(
    const QString& file, const DzSkeleton* figure, const PresetSaveOptions& options, QString* why);

} // namespace quillon
