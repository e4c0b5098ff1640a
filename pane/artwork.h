// artwork.h - the four pictures built into the plug-in.
// Owns: the decoded pixmaps, null before the first pane is built. The icon stays for the About box
// when the panes are gone, the page pictures do not.
#pragma once

#include "pane/area_average.h"

#include <QPixmap>

namespace quillon {

enum class Picture { MainPage, PickerPage, BrowsingPage, Icon };

QPixmap picture(Picture which);

// To scale pieces of it; made when first asked for. Null while the picture is.
const FlatPicture* flatPicture(Picture which);

void decodeArtwork();
void releasePageArtwork();

// Writes the icon's PNG bytes. False when they could not be written in full.
[[nodiscard]] bool writeIconFile(const QString& path);

} // namespace quillon
