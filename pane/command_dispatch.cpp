#include "pane/command_dispatch.h"

#include "figure/selected_figure.h"
#include "finder/browse_session.h"
#include "ground/live_panes.h"
#include "ground/message_boxes.h"
#include "ground/status_message.h"
#include "ground/undo_step.h"
#include "pane/hover.h"
#include "pane/page_layout.h"
#include "pane/page_painter.h"
#include "pane/press_context.h"
#include "services/update_notice.h"

#include "dzapp.h"
#include "dzscene.h"
#include "dzskeleton.h"

namespace quillon {

namespace {

Operation operationOf(const ButtonRow& row, ClickKind kind)
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
        return (press.figure && press.node.data() == press.figure.data())
            || refuse(Box::InvalidSelection);
    }
    return false;
}

bool runOperation(const ButtonRow& row, Operation operation, const PressContext& press)
{
    if (row.undo == Undo::None)
        return operation(press);
    UndoStep step;
    step.note(true);
    return operation(press);
}

void runCommand(const ButtonRow& row, ClickKind kind, const PressContext& press)
{
    const Operation operation = operationOf(row, kind);
    if (!operation || !isMet(row.needs, press))
        return;
    if (runOperation(row, operation, press) && row.status)
        showStatusMessage(QLatin1String(row.status));
}

PressContext contextOf(const ButtonRow* row)
{
    PressContext press;
    press.which = row ? row->which : 0;
    press.node = selectedNode();
    press.figure = supportedFigureOf(press.node);
    press.time = dzScene ? dzScene->getTime() : 0;
    press.overlayBefore = browseSession().referenceOverlay;
    return press;
}

void followLink(const ButtonRow* link)
{
    if (!dzApp || !link)
        return;
    if (link->look == Look::Link)
        dzApp->showURL(pluginPageUrl());
    else if (isNoticeShown() && !updatePicture().isNull())
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
    const ButtonRow* button = buttonAt(pane, page, position, pointer);
    const ButtonRow* link = linkAt(pane, page, position, pointer);
    const PressContext press = contextOf(button);
    browseSession().referenceOverlay = false;
    if (button && kind != OtherClick)
        runCommand(*button, kind, press);
    updateHover(pane, position);
    if (kind != OtherClick)
        followLink(link);
    repaintPanes();
}

} // namespace quillon
