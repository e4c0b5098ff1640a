// thumbnail_files.h - where pictures that are made of pose presets lie: in a folder of our own,
// named by the path, size and time of what they are made of. Owns: nothing but files. Errors: empty
// names and null pictures.
#pragma once

#include <QSize>
#include <QString>

namespace quillon {

const int kThumbnailPx = 128; // both ways, of those that are made here
const qint64 kThumbnailBytes = 256ll << 20; // that all of ours together may take

// Of the file as it is now, a preset or a large picture, in that folder, whether there is one or
// not; empty when there is no such file.
QString thumbnailFile(const QString& folder, const QString& file);

// Marks a picture as used now.
void markUsed(const QString& thumbnail);

// Deletes what was used longest ago until the rest takes no more than nine tenths of the limit,
// when it takes more than the limit. The bytes that are left.
qint64 trimThumbnails(const QString& folder, qint64 limit);

} // namespace quillon
