// pose_reader_reference.h - reading a pose in its literal form: one text, one search after the
// other, a copy for every piece. Slow and plain; what posefile/ does in one pass is held against
// it.
#pragma once

#include "posefile/pose_channels.h"

#include <QByteArray>
#include <QString>

class DzSkeleton;

namespace quillon {
namespace reference {

// The bytes as a file was read, terminator included: a Latin-1 text up to the first zero byte.
void setPoseText(const QByteArray& bytes);

QString nextEntry();
int channelOf(const QString& entry);
QString nodeNameOf(const QString& entry);
float valueOf(const QString& entry);

void applyPoseText(DzSkeleton* figure, DzTime time, SetChannel set);
void applyKeyBoneText(DzSkeleton* figure, DzTime time, SetChannel set);

} // namespace reference
} // namespace quillon
