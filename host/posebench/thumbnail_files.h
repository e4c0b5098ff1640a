// thumbnail_files.h - where the pictures of pose presets lie: beside the preset, made by whoever
// made it, or in a folder of our own, named by the preset's path, size and time.
// Owns: nothing but files. Errors: empty names and null pictures.
#pragma once

#include <QSize>
#include <QString>

namespace quillon {

const int kThumbnailPx = 128; // both ways, of those that are made here
const qint64 kThumbnailBytes = 256ll << 20; // that all of ours together may take

// name.duf.png, name.tip.png or name.png beside name.duf; empty: none.
QString ownPicture(const QString& preset);

// Of the preset as it is now in that folder, whether the picture exists or not; empty when the
// preset does not.
QString thumbnailFile(const QString& folder, const QString& preset);

// Marks a picture as used now.
void markUsed(const QString& thumbnail);

// Deletes what was used longest ago until the rest takes no more than nine tenths of the limit,
// when it takes more than the limit. The bytes that are left.
qint64 trimThumbnails(const QString& folder, qint64 limit);

} // namespace quillon
