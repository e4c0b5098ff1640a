// scaled_artwork.h - pieces of the page images at the sizes in which they are drawn, in pixels of
// the screen. Owns: a cache of scaled pixmaps for one size of the pane. GUI thread only.
#pragma once

#include <QPixmap>
#include <QRect>
#include <QSize>

class QPainter;

namespace quillon {

// Draws the piece of a button (or a kArt... piece) into the rectangle; nothing when there is none.
void drawArtwork(QPainter* painter, const QRect& rect, int button, int state = 0);

// Starts anew when the pane's size differs from the one before.
void keepArtworkFor(const QSize& pane);
void dropScaledArtwork();

} // namespace quillon
