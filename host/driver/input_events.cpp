#include "host/driver/input_events.h"

#include "host/driver/bench_widgets.h"
#include "host/driver/desktop_stand_in.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>
#include <qtestspontaneevent.h>

namespace quillon {
namespace {

const ulong kPauseMs = 1000; // between two doings of the user
const ulong kDoubleClickMs = 50;

QPointer<QWidget> g_under; // the widget that the pointer was last moved over
ulong g_clockMs = 0;

// Where an event at a point of a widget goes.
struct Target {
    QPointer<QWidget> widget;
    QPoint pos; // in that widget
};

Target targetAt(QWidget* widget, const QPoint& pos)
{
    QWidget* child = widget->childAt(pos);
    return child ? Target {child, child->mapFrom(widget, pos)} : Target {widget, pos};
}

QWidgetList chainOf(QWidget* widget) // the widget and everything it lies in, up to its window
{
    QWidgetList chain;
    for (QWidget* at = widget; at; at = at->isWindow() ? nullptr : at->parentWidget())
        chain.prepend(at);
    return chain;
}

// Leave events from the inside out, then enter events from the outside in.
void crossTo(const Target& target)
{
    if (g_under == target.widget)
        return;
    const QWidgetList before = chainOf(g_under);
    const QWidgetList now = chainOf(target.widget);
    g_under = target.widget;
    for (int i = before.size() - 1; i >= 0; --i) {
        QEvent leave(QEvent::Leave);
        if (!now.contains(before.at(i)))
            sendSpontaneous(before.at(i), &leave);
    }
    for (QWidget* widget : now) {
        const QPoint local = widget->mapFromGlobal(target.widget->mapToGlobal(target.pos));
        QEnterEvent enter(local, widget->window()->mapFromGlobal(widget->mapToGlobal(local)),
            widget->mapToGlobal(local));
        if (!before.contains(widget))
            sendSpontaneous(widget, &enter);
    }
}

struct Mouse {
    QEvent::Type type;
    Qt::MouseButton button;
    Qt::MouseButtons held; // after the event
    Qt::KeyboardModifiers modifiers;
};

void sendMouse(const Target& target, const Mouse& mouse)
{
    if (!target.widget)
        return; // it went away while an earlier event was handled
    const QPoint global = target.widget->mapToGlobal(target.pos);
    const QPoint inWindow = target.widget->window()->mapFromGlobal(global);
    QMouseEvent event(mouse.type, target.pos, inWindow, global, mouse.button, mouse.held,
        mouse.modifiers, Qt::MouseEventNotSynthesized);
    event.setTimestamp(g_clockMs);
    sendSpontaneous(target.widget, &event);
}

void moveTo(const Target& target, Qt::KeyboardModifiers modifiers)
{
    setPointerPos(target.widget->mapToGlobal(target.pos));
    crossTo(target);
    sendMouse(target, {QEvent::MouseMove, Qt::NoButton, Qt::NoButton, modifiers});
}

void click(const Target& target, QEvent::Type press, Qt::MouseButton button,
    Qt::KeyboardModifiers modifiers)
{
    sendMouse(target, {press, button, button, modifiers});
    sendMouse(target, {QEvent::MouseButtonRelease, button, Qt::NoButton, modifiers});
}

} // namespace

bool isBlocked(const QWidget* widget)
{
    const QWidget* modal = QApplication::activeModalWidget();
    if (!modal || QApplication::activePopupWidget() == widget->window())
        return false;
    for (const QWidget* at = widget; at; at = at->parentWidget())
        if (at == modal)
            return false;
    return true;
}

void sendSpontaneous(QWidget* widget, QEvent* event)
{
    QSpontaneKeyEvent::setSpontaneous(event);
    qApp->notify(widget, event);
}

ulong nextInputMs()
{
    g_clockMs += kPauseMs;
    return g_clockMs;
}

bool pressPointer(QWidget* widget, const QPoint& pos, const PointerPress& press)
{
    if (!press.through && isBlocked(widget))
        return false;
    settle();
    const Target target = targetAt(widget, pos);
    nextInputMs();
    if (press.move)
        moveTo(target, press.modifiers);
    click(target, QEvent::MouseButtonPress, press.button, press.modifiers);
    if (press.twice) {
        g_clockMs += kDoubleClickMs;
        click(target, QEvent::MouseButtonDblClick, press.button, press.modifiers);
    }
    settle();
    return true;
}

bool movePointer(QWidget* widget, const QPoint& pos)
{
    settle();
    nextInputMs();
    if (isBlocked(widget))
        return false;
    moveTo(targetAt(widget, pos), Qt::NoModifier);
    settle();
    return true;
}

} // namespace quillon
