// preset_commands.h - pose preset files onto a figure, as the menu, the content library, a drop and
// the command line apply them.
#pragma once

#include <QStringList>

class DzSkeleton;
class QMimeData;

namespace quillon {

// The files in their order, at the scene's time: one undo step. False with *text as what went wrong
// with the first file that cannot be read; then nothing is changed. Else *text tells what was done.
bool applyPresetFiles(const QStringList& files, DzSkeleton* figure, QString* text);

// The pose presets among what is dragged: local files that end in .duf.
QStringList presetFilesOf(const QMimeData*);

} // namespace quillon
