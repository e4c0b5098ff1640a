// preset_picture.h - what a pose preset looks like on a figure, without a window.
#pragma once

#include <QImage>
#include <QString>

class DzSkeleton;

namespace quillon {

// Clears the figure's pose, puts the preset's on it and draws it (pose_picture.h). The scene's time
// is that of the preset's first keys; nothing is recorded for undo. Null with *why as "file: text"
// when the preset cannot be read; the figure is then as it was.
QImage presetPicture(const QString& file, DzSkeleton* figure, const QSize&, QString* why);

} // namespace quillon
