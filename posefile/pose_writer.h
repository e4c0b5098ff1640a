// pose_writer.h - saves a figure's pose as a preset file.
// Layout: the host's, with three blanks a level; four lines an entry, which the rewriter relies on.
// Values are the stored ones (pose_channels.h) at one time, with 7 significant digits; the
// key stands at time 0. Every rotation and translation of every bone is written, then every
// control, zero or not. UTF-8, "\n".
#pragma once

#include "ground/host_types.h"

#include <QString>

class DzSkeleton;

namespace quillon {

// male: "G8M" as the file's id, else "G8F"; no reader looks at it. compressed: through the host's
// gzip device. Without a figure the list of animations is empty.
// Written whole (whole_file.h): false leaves the file as it was.
[[nodiscard]] bool writePose(
    const DzSkeleton* figure, DzTime time, const QString& path, bool male, bool compressed);

// The two steps of it.
QByteArray textOfPose(const DzSkeleton* figure, DzTime time, bool male);
[[nodiscard]] bool writePoseText(const QByteArray& text, const QString& path, bool compressed);

// The same text with "G8F", not compressed, into a file that nobody misses: false leaves it cut
// short.
[[nodiscard]] bool writePassingPose(const DzSkeleton* figure, DzTime time, const QString& path);

// What a reader of the file gets for a stored value: the number of its 7 digits.
float valueAsWritten(float value);

// "rotation/x" for "XRotate" and so on. A name that is none of a transform channel comes back as it
// is, with *notTransform set.
QString channelPathOf(const QString& propertyName, bool* notTransform);

} // namespace quillon
