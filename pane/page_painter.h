// page_painter.h - draws the pane: artwork, counter, label, tips, version line.
// Draws what page_layout.h places, in the state that the other files of this folder keep; changes
// no state but its cache of scaled artwork. Colours and text places are tables of the source file.
#pragma once

#include <QSize>

class QPainter;

namespace quillon {

void paintPage(QPainter* painter, const QSize& pane);

// Whether the notice is drawn in the banner: nothing else stands in its place.
bool isNoticeShown();

} // namespace quillon
