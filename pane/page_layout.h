// page_layout.h - where everything of the three pages lies, from the button table, for painting,
// hover and hit-testing alike. Pixel rectangles are in the pane's coordinates.
// Owns: nothing.
#pragma once

#include "art/atlas_table.h"
#include "pane/button_table.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <vector>

namespace quillon {

Page currentPage(); // from browseSession() and pageState()

const int kCanvasWidth = 512;
const int kCanvasHeight = 1024;

// The rows of a page in the order of dispatch, banner and link at the end. The squares are among
// them while they are shown.
std::vector<const ButtonRow*> pageButtons(Page page);

// A place of canvas units in a pane of that size.
QRect canvasRect(const QSize& pane, const ArtPlace& place);
QRect plainRect(const QSize& pane, const ButtonRow& row);
// 5 % larger about its centre.
QRect enlargedRect(const QRect& plain);

// Whether the button is drawn and hit enlarged while the pointer was last seen there.
bool isEnlarged(const QSize& pane, const ButtonRow& row, const QPoint& pointer);
// Where the button is drawn, and where it is hit: the same, but for the squares.
QRect drawnRect(const QSize& pane, const ButtonRow& row, const QPoint& pointer);
QRect hitRect(const QSize& pane, const ButtonRow& row, const QPoint& pointer);

bool areasShown(); // browsing by reference pose

// What a press at position hits, the pointer last seen at pointer: the first row in the order of
// dispatch; null when nothing. Banner and link are not asked here: they are tested beside the
// page's buttons.
const ButtonRow* buttonAt(
    const QSize& pane, Page page, const QPoint& position, const QPoint& pointer);
// The banner or the link at that position, or null.
const ButtonRow* linkAt(
    const QSize& pane, Page page, const QPoint& position, const QPoint& pointer);

} // namespace quillon
