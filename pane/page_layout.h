// page_layout.h - where everything of the three pages lies: one table for painting, hover and
// hit-testing. Canvas units: the pane is 512 x 1024 whatever its size in pixels.
// Owns: nothing but const tables. Pixel rectangles are in the pane's coordinates.
#pragma once

#include "art/atlas_table.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <vector>

namespace quillon {

enum Page { MainPage = 1, PickerPage = 2, BrowsingPage = 4 }; // bits, for rows of the table
const int kAllPages = MainPage | PickerPage | BrowsingPage;

Page currentPage(); // from pageState()

const int kCanvasWidth = 512;
const int kCanvasHeight = 1024;
const int kNoButton = -1;

// Numbers of buttons. Grid and category buttons are counted on from their first.
enum ButtonNumber {
    FirstGridButton = 0,
    GridButtonCount = 16,
    FirstCategoryButton = 100,
    CategoryButtonCount = 9,
    PreviousButton = 200,
    NextButton = 201,
    BackButton = 202,
    IncludeFemaleButton = 210,
    IncludeMaleButton = 211,
    MirrorButton = 212,
    RankButton = 213,
    FirstLockButton = 214,
    FolderButton = 220,
    ReferenceButton = 223,
    FirstRankFilterButton = 224,
    FirstAreaButton = 300, // our own numbers for the ten area squares
    BannerButton = 400,
    LinkButton = 401
};

struct ButtonRow {
    int number;
    int pages; // bits of Page
    int x, y, w, h; // canvas units
};

// The buttons of a page in the order of dispatch; area squares, banner and link not among them.
const std::vector<ButtonRow>& pageButtons(Page page);
const ButtonRow& bannerRow(); // the top of every page
const ButtonRow& linkRow(Page page); // lower while browsing

// A place of canvas units in a pane of that size.
QRect canvasRect(const QSize& pane, const ArtPlace& place);
QRect plainRect(const QSize& pane, const ButtonRow& row);
// 5 % larger about its centre.
QRect enlargedRect(const QRect& plain);

// Whether the button is drawn and hit enlarged while the pointer was last seen there.
bool isEnlarged(const QSize& pane, const ButtonRow& row, const QPoint& pointer);
// Where the button is drawn and hit.
QRect buttonRect(const QSize& pane, const ButtonRow& row, const QPoint& pointer);

// The ten squares on the figure silhouette, by number of the similarity flag; never enlarged.
enum class AreaSquare { Drawn, Hit };
QRect areaRect(const QSize& pane, int area, AreaSquare which);
bool areasShown(); // browsing by reference pose

// What a press at position hits, the pointer last seen at pointer: the first row in the order of
// dispatch (200 to 202, the squares, then 210 on). kNoButton when nothing. Banner and link are not
// asked here: they are tested beside the page's buttons.
int buttonAt(const QSize& pane, Page page, const QPoint& position, const QPoint& pointer);
// The banner or the link at that position, or kNoButton.
int linkAt(const QSize& pane, Page page, const QPoint& position, const QPoint& pointer);

} // namespace quillon
