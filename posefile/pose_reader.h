// pose_reader.h - puts the pose of a preset file onto a figure.
// Values go to the channels as they stand in the file, at one time, in the order of the file;
// locked channels keep theirs. The text is gone over once and nothing of it is copied.
// Errors: false, nothing changed and no message; callers report. A damaged entry never stops a
// reading: it is ignored, or its value is 0.
#pragma once

#include "posefile/pose_channels.h"

#include <QString>

class DzNode;
class DzSkeleton;

namespace quillon {

static constexpr int kMaxEntries = 100000; // read from one file

// resetFirst: the whole figure is reset, at that time, before the first value is handed to set.
// False, and nothing changed, unless the figure has a hip and a byte could be read; true also
// when no entry was found.
bool applyPose(DzSkeleton* figure, DzTime time, const QString& path, bool resetFirst,
    SetChannel set = setStoredValue);

// The same without a reset, and with any figure.
bool readAndApplyPoseFile(const QString& path, DzNode* figure, DzTime time);

// Sets X, Y and Z rotation of the 16 key bones that the figure has, those that the file does not
// mention to 0. A signature is taken from them.
bool readKeyBoneRotations(const QString& path, DzNode* figure, DzTime time);

// ---- the same from the pose text (pose_text.h), with the values handed to set

void applyPoseText(DzSkeleton* figure, DzTime time, SetChannel set = setStoredValue);
void applyKeyBoneText(DzSkeleton* figure, DzTime time, SetChannel set = setStoredValue);

static constexpr int kKeyBoneCount = 16;
extern const char* const kKeyBones[kKeyBoneCount]; // in the order in which they are set

} // namespace quillon
