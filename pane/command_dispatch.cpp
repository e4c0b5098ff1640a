#include "pane/command_dispatch.h"

#include "finder/selected_figure.h"
#include "pane/finder_commands.h"
#include "pane/hover.h"
#include "pane/page_painter.h"
#include "ground/live_panes.h"
#include "pane/main_commands.h"
#include "ground/message_boxes.h"
#include "pane/page_layout.h"
#include "pane/page_state.h"
#include "pane/press_context.h"
#include "ground/status_message.h"
#include "services/update_notice.h"

#include "dzapp.h"
#include "dzscene.h"
#include "dzskeleton.h"
#include "dzundostack.h"

namespace quillon {

namespace {

enum class Needs {
    Nothing,
    Figure, // else the no-figure box
    ScannerFigure, // else the scanner box
    Node, // else the invalid-selection box, as for the next ones
    NodeAndFigure,
    NodeOfFigure, // likewise, and nothing at all while the figure node itself is selected
    FigureSelected
};

enum class Undo { None, OneStep };

typedef bool (*Operation)(const PressContext&); // true: show the row's status text

struct CommandRow {
    int first, last; // button numbers
    int pages;
    Needs needs;
    Undo undo; // None: the operation brackets what it changes, if anything
    Operation left, right, middle; // null: that click does nothing
    const char* status; // null: none, or the operation shows its own
};

// clang-format off
const CommandRow kCommands[] = {
    {  0,   0, MainPage, Needs::Figure, Undo::None, memorizeReference, showReference, nullptr, nullptr},
    {  1,   1, MainPage, Needs::Nothing, Undo::None, openPicker, openPicker, openPicker, nullptr},
    {  2,   2, MainPage, Needs::NodeAndFigure, Undo::OneStep,
       resetPoseCommand, resetPoseCommand, resetPoseCommand, "\r\n\r\nReset succeeded\r\n\r\n"},
    {  3,   3, MainPage, Needs::Node, Undo::OneStep,
       optimizeEditingCommand, optimizeEditingCommand, optimizeEditingCommand, "\r\n\r\nOptimization succeeded\r\n\r\n"},
    {  4,   4, MainPage, Needs::Node, Undo::OneStep,
       swapCommand, nullptr, swapCommand, "\r\n\r\nSwapping succeeded\r\n\r\n"},
    {  5,   5, MainPage, Needs::NodeOfFigure, Undo::OneStep,
       symmetrizeCommand, nullptr, symmetrizeCommand, "\r\n\r\nSymmetrization succeeded\r\n\r\n"},
    {  6,   6, MainPage, Needs::FigureSelected, Undo::None, clampFaceLimits, clampBodyLimits, releaseLimits, nullptr},
    {  7,   7, MainPage, Needs::FigureSelected, Undo::OneStep, limitTranslations, zeroTranslations, zeroTranslations, nullptr},
    {  8,   8, MainPage, Needs::FigureSelected, Undo::OneStep,
       bakeCommand, bakeCommand, nullptr, "\r\n\r\nFigure pose baking succeeded\r\n\r\n"},
    { 12,  12, MainPage, Needs::Nothing, Undo::None, patchProductsCommand, patchProductsCommand, patchProductsCommand, nullptr},
    { 13,  13, MainPage, Needs::Nothing, Undo::None, saveCustomPoseCommand, saveCustomPoseCommand, saveCustomPoseCommand, nullptr},
    { 14,  14, MainPage, Needs::ScannerFigure, Undo::None, scanCommand, scanCommand, scanCommand, nullptr},
    { 15,  15, MainPage, Needs::Nothing, Undo::None, settingsCommand, settingsCommand, settingsCommand, nullptr},

    {100, 108, PickerPage, Needs::Nothing, Undo::None, browseCategory, browseCategory, browseCategory, nullptr},
    {202, 202, PickerPage, Needs::Nothing, Undo::None, backToMain, backToMain, backToMain, nullptr},

    {200, 200, BrowsingPage, Needs::Nothing, Undo::None, previousPose, previousProduct, firstPose, nullptr},
    {201, 201, BrowsingPage, Needs::Nothing, Undo::None, nextPose, nextProduct, lastPose, nullptr},
    {202, 202, BrowsingPage, Needs::Nothing, Undo::None, backToPicker, backToPicker, backToPicker, nullptr},
    {300, 309, BrowsingPage, Needs::Nothing, Undo::None, toggleArea, toggleArea, toggleArea, nullptr},
    {210, 210, BrowsingPage, Needs::Nothing, Undo::None, toggleFemale, toggleFemale, toggleFemale, nullptr},
    {211, 211, BrowsingPage, Needs::Nothing, Undo::None, toggleMale, toggleMale, toggleMale, nullptr},
    {212, 212, BrowsingPage, Needs::Nothing, Undo::None, toggleMirrored, toggleMirrored, toggleMirrored, nullptr},
    {213, 213, BrowsingPage, Needs::Nothing, Undo::None, advanceRank, advanceRank, advanceRank, nullptr},
    {214, 219, BrowsingPage, Needs::Nothing, Undo::None, togglePartLock, togglePartLock, togglePartLock, nullptr},
    {220, 220, BrowsingPage, Needs::Nothing, Undo::None, openFolderOrDelete, openFolderOrDelete, openFolderOrDelete, nullptr},
    {223, 223, BrowsingPage, Needs::Nothing, Undo::None, toggleReference, toggleReference, toggleReference, nullptr},
    {224, 227, BrowsingPage, Needs::Nothing, Undo::None, toggleRankFilter, toggleRankFilter, toggleRankFilter, nullptr},
};
// clang-format on

const CommandRow* commandOf(Page page, int button)
{
    for (const CommandRow& row : kCommands)
        if (row.first <= button && button <= row.last && (row.pages & page))
            return &row;
    return nullptr;
}

Operation operationOf(const CommandRow& row, ClickKind kind)
{
    return kind == LeftClick  ? row.left
        : kind == RightClick  ? row.right
        : kind == MiddleClick ? row.middle
                              : nullptr;
}

bool refuse(Box box)
{
    if (box != Box::NoFigure) { // nothing old stands behind the box
        clearStatusMessage();
        repaintPanes();
    }
    showBox(box);
    return false;
}

// Shows the box of a requirement that is not met.
bool isMet(Needs needs, const PressContext& press)
{
    switch (needs) {
    case Needs::Nothing:
        return true;
    case Needs::Figure:
        return press.figure || refuse(Box::NoFigure);
    case Needs::ScannerFigure:
        return press.figure || refuse(Box::ScannerNeedsFigure);
    case Needs::Node:
        return press.node || refuse(Box::InvalidSelection);
    case Needs::NodeAndFigure:
        return press.figure || refuse(Box::InvalidSelection);
    case Needs::NodeOfFigure:
        return press.figure ? !press.figure->isSelected() : refuse(Box::InvalidSelection);
    case Needs::FigureSelected:
        return (press.figure && press.node == press.figure) || refuse(Box::InvalidSelection);
    }
    return false;
}

bool runOperation(const CommandRow& row, Operation operation, const PressContext& press)
{
    if (row.undo == Undo::None)
        return operation(press);
    DzUndoStackHold hold;
    const bool result = operation(press);
    hold.accept(QLatin1String("quillon_stack"));
    return result;
}

void runCommand(Page page, const PressContext& press)
{
    const CommandRow* row = commandOf(page, press.button);
    const Operation operation = row ? operationOf(*row, press.kind) : nullptr;
    if (!operation || !isMet(row->needs, press))
        return;
    if (runOperation(*row, operation, press) && row->status)
        showStatusMessage(QLatin1String(row->status));
}

PressContext contextOf(ClickKind kind, int button)
{
    PressContext press;
    press.kind = kind;
    press.button = button;
    press.node = dzScene ? dzScene->getPrimarySelection() : nullptr;
    press.figure = selectedFigure();
    press.time = dzScene ? dzScene->getTime() : 0;
    press.overlayBefore = pageState().referenceOverlay;
    return press;
}

void followLink(int link)
{
    if (!dzApp)
        return;
    if (link == LinkButton)
        dzApp->showURL(pluginPageUrl());
    else if (link == BannerButton && isNoticeShown() && !updatePicture().isNull())
        dzApp->showURL(newVersionPageUrl());
}

} // namespace

ClickKind clickKind(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return LeftClick;
    case Qt::RightButton:
        return RightClick;
    case Qt::MiddleButton:
        return MiddleClick;
    default:
        return OtherClick;
    }
}

void dispatchPress(const QSize& pane, const QPoint& position, ClickKind kind)
{
    if (isBusy())
        return;
    const Page page = currentPage();
    const QPoint pointer = hoverPosition(); // buttons are hit as they are drawn
    const PressContext press = contextOf(kind, buttonAt(pane, page, position, pointer));
    const int link = linkAt(pane, page, position, pointer);
    pageState().referenceOverlay = false;
    if (kind != OtherClick)
        runCommand(page, press);
    updateHover(pane, position);
    if (kind != OtherClick)
        followLink(link);
    repaintPanes();
}

} // namespace quillon
