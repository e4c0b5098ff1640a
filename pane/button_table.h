// button_table.h - the buttons of the three pages: all there is to say about one stands in its row.
// Canvas units: the pane is 512 x 1024 whatever its size in pixels.
// Owns: nothing but the const table. A new button is a row here, its picture in art/, and, if no
// operation fits, a function in main_commands or finder_commands.
#pragma once

#include "pane/press_context.h"

#include <QString>

namespace quillon {

enum Page { MainPage = 1, PickerPage = 2, BrowsingPage = 4 }; // bits, for rows of the table
const int kAllPages = MainPage | PickerPage | BrowsingPage;

// The numbers that the code asks for; the other buttons are known by their rows alone.
enum ButtonNumber {
    kNoButton = -1,
    FirstCategoryButton = 100, // counted on by the category
    BackButton = 202,
    RankButton = 213,
    FolderButton = 220,
    FirstAreaButton = 300, // our own numbers for the ten area squares
    BannerButton = 400,
    LinkButton = 401
};

enum class Look {
    Push,
    Switch, // a push button that stays on or off
    Square, // a switch on the figure silhouette: never enlarged, hit a little beside it, too
    Link, // opens a web page, beside what the buttons do
    Banner // likewise, while a new version is shown
};

enum class Needs {
    Nothing,
    Figure, // else the no-figure box
    ScannerFigure, // else the scanner box
    Node, // else the invalid-selection box, as for the next ones
    NodeAndFigure,
    NodeOfFigure, // likewise, and nothing at all while the figure node itself is selected
    FigureSelected
};

enum class Undo {
    None, // the operation brackets what it changes, if anything
    OneStep
};

typedef bool (*Operation)(const PressContext&); // true: show the row's status text
typedef int (*ButtonState)(int which);
typedef QString (*TipText)();

struct ButtonRow {
    int number;
    const char* name; // for the developers only
    int pages; // bits of Page
    int x, y, w, h; // canvas units
    Look look;
    int which; // of several that share an operation: category, body area, lock, rank
    Needs needs;
    Undo undo;
    Operation left, right, middle; // null: that click does nothing
    const char* status; // null: none, or the operation shows its own
    const char* tip; // null: none, or tipText
    TipText tipText; // null, or what makes a tip that follows the current pose
    ButtonState state; // of its picture, see AtlasCell; null: always 0
};

extern const ButtonRow kButtons[]; // page by page, in the order of dispatch
extern const int kButtonCount;

// The row of a button on a page; null for a number that the page does not have.
const ButtonRow* buttonOf(Page page, int number);

} // namespace quillon
