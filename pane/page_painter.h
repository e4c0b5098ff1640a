// page_painter.h - draws the pane: artwork, counter, label, tips, version line.
// Draws what page_layout.h places, in the state that the other files of this folder keep; changes
// no state but its cache of scaled artwork. Colours and text places are tables of the source file.
#pragma once

#include <QRect>
#include <QSize>
#include <QString>

class QPainter;

namespace quillon {

void paintPage(QPainter* painter, const QSize& pane);

// What the page says beside its buttons, while it says it.
enum PageText { CounterText, PoseText, MessageText };
const int kPageTexts = 3;
QString pageText(PageText which); // in one line; empty: it is not shown
QRect pageTextRect(const QSize& pane, PageText which);

// Whether the notice is drawn in the banner: nothing else stands in its place.
bool isNoticeShown();

} // namespace quillon
