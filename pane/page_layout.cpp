#include "pane/page_layout.h"

#include "finder/pose_type.h"
#include "finder/pose_ranks.h"
#include "pane/page_state.h"
#include "ground/plugin_settings.h"

#include <iterator>

namespace quillon {

namespace {

const double kEnlargement = 1.05;
const int kAreaHalfDrawn = 10; // canvas units
const int kAreaHalfHit = 12;
// clang-format off
const ButtonRow kButtons[] = {
    // number             pages                       x    y    w    h
    {  0,                 MainPage,                  30, 270,  94,  94},
    {  1,                 MainPage,                 150, 270,  94,  94},
    {  2,                 MainPage,                 270, 270,  94,  94},
    {  3,                 MainPage,                 390, 270,  94,  94},
    {  4,                 MainPage,                  30, 372,  94,  94},
    {  5,                 MainPage,                 150, 372,  94,  94},
    {  6,                 MainPage,                 270, 372,  94,  94},
    {  7,                 MainPage,                 390, 372,  94,  94},
    {  8,                 MainPage,                  30, 474,  94,  94},
    {  9,                 MainPage,                 150, 474,  94,  94},
    { 10,                 MainPage,                 270, 474,  94,  94},
    { 11,                 MainPage,                 390, 474,  94,  94},
    { 12,                 MainPage,                  30, 576,  94,  94},
    { 13,                 MainPage,                 150, 576,  94,  94},
    { 14,                 MainPage,                 270, 576,  94,  94},
    { 15,                 MainPage,                 390, 576,  94,  94},
    {100,                 PickerPage,                40, 280, 112, 112},
    {101,                 PickerPage,               198, 280, 112, 112},
    {102,                 PickerPage,               356, 280, 112, 112},
    {103,                 PickerPage,                40, 412, 112, 112},
    {104,                 PickerPage,               198, 412, 112, 112},
    {105,                 PickerPage,               356, 412, 112, 112},
    {106,                 PickerPage,                40, 544, 112, 112},
    {107,                 PickerPage,               198, 544, 112, 112},
    {108,                 PickerPage,               356, 544, 112, 112},
    {PreviousButton,      BrowsingPage,              24, 350, 120, 240},
    {NextButton,          BrowsingPage,             370, 350, 120, 240},
    {BackButton,          PickerPage | BrowsingPage, 210, 958, 120, 60},
    {IncludeFemaleButton, BrowsingPage,              24, 255,  80,  80},
    {IncludeMaleButton,   BrowsingPage,             122, 255,  80,  80},
    {MirrorButton,        BrowsingPage,             314, 255,  80,  80},
    {RankButton,          BrowsingPage,             410, 255,  80,  80},
    {214,                 BrowsingPage,              24, 605,  80,  80},
    {215,                 BrowsingPage,             122, 605,  80,  60},
    {216,                 BrowsingPage,             122, 665,  80,  20},
    {217,                 BrowsingPage,             218, 605,  80,  80},
    {218,                 BrowsingPage,             314, 605,  80,  80},
    {219,                 BrowsingPage,             410, 605,  80,  80},
    {FolderButton,        BrowsingPage,              36, 710,  50,  50},
    {ReferenceButton,     BrowsingPage,             218, 255,  80,  80},
    {224,                 BrowsingPage,             158, 352,  40,  40},
    {225,                 BrowsingPage,             214, 352,  40,  40},
    {226,                 BrowsingPage,             266, 352,  40,  40},
    {227,                 BrowsingPage,             322, 352,  40,  40},
};

// Shown on every page, tested after the page's own buttons.
const ButtonRow kBanner =  {BannerButton, kAllPages,              0,   0, 512, 202};
const ButtonRow kLinkTall = {LinkButton,  MainPage | PickerPage, 25, 730, 462, 180};
const ButtonRow kLinkLow =  {LinkButton,  BrowsingPage,          25, 810, 462, 100};

// Centres of the area squares, by number of the similarity flag.
const int kAreaCentres[][2] = {
    {258, 450}, {276, 555}, {240, 555}, {270, 509}, {246, 509},
    {280, 454}, {236, 454}, {300, 474}, {216, 474}, {258, 486},
};
// clang-format on
static_assert(std::size(kAreaCentres) == kBodyAreaCount, "one centre per similarity flag");

std::vector<ButtonRow> rowsOf(Page page)
{
    std::vector<ButtonRow> rows;
    for (const ButtonRow& row : kButtons)
        if (row.pages & page)
            rows.push_back(row);
    return rows;
}

int areaAt(const QSize& pane, const QPoint& position)
{
    for (int area = 0; area < kBodyAreaCount; ++area)
        if (areaRect(pane, area, AreaSquare::Hit).contains(position))
            return FirstAreaButton + area;
    return kNoButton;
}

} // namespace

Page currentPage()
{
    const PageState& state = pageState();
    if (state.browsingCategory != kNotBrowsing)
        return BrowsingPage;
    return state.picker ? PickerPage : MainPage;
}

const std::vector<ButtonRow>& pageButtons(Page page)
{
    static const std::vector<ButtonRow> kMain = rowsOf(MainPage);
    static const std::vector<ButtonRow> kPicker = rowsOf(PickerPage);
    static const std::vector<ButtonRow> kBrowsing = rowsOf(BrowsingPage);
    return page == MainPage ? kMain : page == PickerPage ? kPicker : kBrowsing;
}

const ButtonRow& bannerRow()
{
    return kBanner;
}

const ButtonRow& linkRow(Page page)
{
    return page == BrowsingPage ? kLinkLow : kLinkTall;
}

QRect canvasRect(const QSize& pane, const ArtPlace& place)
{
    const double sx = double(pane.width()) / kCanvasWidth;
    const double sy = double(pane.height()) / kCanvasHeight;
    return QRect(int(place.x * sx), int(place.y * sy), int(place.w * sx), int(place.h * sy));
}

QRect plainRect(const QSize& pane, const ButtonRow& row)
{
    // the fractions as whole numbers: no rounding error moves an edge
    return QRect(pane.width() * row.x / kCanvasWidth, pane.height() * row.y / kCanvasHeight,
        pane.width() * row.w / kCanvasWidth, pane.height() * row.h / kCanvasHeight);
}

QRect enlargedRect(const QRect& plain)
{
    const int w = int(plain.width() * kEnlargement), h = int(plain.height() * kEnlargement);
    return QRect(
        plain.left() - (w - plain.width()) / 2, plain.top() - (h - plain.height()) / 2, w, h);
}

bool isEnlarged(const QSize& pane, const ButtonRow& row, const QPoint& pointer)
{
    if (row.number == RankButton && pluginSettings().currentRank == CustomLibraryPose)
        return false;
    return plainRect(pane, row).contains(pointer);
}

QRect buttonRect(const QSize& pane, const ButtonRow& row, const QPoint& pointer)
{
    const QRect plain = plainRect(pane, row);
    return isEnlarged(pane, row, pointer) ? enlargedRect(plain) : plain;
}

QRect areaRect(const QSize& pane, int area, AreaSquare which)
{
    const int half = which == AreaSquare::Drawn ? kAreaHalfDrawn : kAreaHalfHit;
    const ButtonRow row = {FirstAreaButton + area, BrowsingPage, kAreaCentres[area][0] - half,
        kAreaCentres[area][1] - half, 2 * half, 2 * half};
    return plainRect(pane, row);
}

bool areasShown()
{
    return pageState().browsingCategory == ReferencePose;
}

int buttonAt(const QSize& pane, Page page, const QPoint& position, const QPoint& pointer)
{
    bool areasAsked = page != BrowsingPage || !areasShown();
    for (const ButtonRow& row : pageButtons(page)) {
        if (!areasAsked && row.number > BackButton) {
            areasAsked = true;
            const int area = areaAt(pane, position);
            if (area != kNoButton)
                return area;
        }
        if (buttonRect(pane, row, pointer).contains(position))
            return row.number;
    }
    return kNoButton;
}

int linkAt(const QSize& pane, Page page, const QPoint& position, const QPoint& pointer)
{
    for (const ButtonRow* row : {&kBanner, &linkRow(page)})
        if (buttonRect(pane, *row, pointer).contains(position))
            return row->number;
    return kNoButton;
}

} // namespace quillon
