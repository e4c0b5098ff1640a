// preset_thumbnail.h - a pose preset as a small picture of the stand-in figure that it is made for.
// No window is needed, but an application of the gui kind and a dzScene, which is used up. Owns:
// nothing; the figure is the scene's.
#pragma once

#include <QImage>

namespace quillon {

// The stand-in figure that a preset is made for, by the words of its path.
QString figureForPreset(const QString& file);

// That figure in the file's pose; it is loaded when it is not the one of the picture before. Null
// with *why when the file cannot be read.
QImage presetThumbnail(const QString& file, const QSize& size, QString* why);

} // namespace quillon
