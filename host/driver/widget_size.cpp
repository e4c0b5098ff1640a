#include "host/driver/widget_size.h"

#include "host/driver/bench_widgets.h"

#include <QDockWidget>
#include <QLayout>
#include <QList>
#include <QPointer>
#include <QWidget>

namespace quillon {
namespace {

const int kPasses = 3; // layouts ask their window for room, which it gets a turn later

const QSize kByLayout(0, 0);
const QSize kNextToNothing(1, 1);

struct HeldSize {
    QPointer<QWidget> widget;
    QSize minimumBefore, maximumBefore;
};
QList<HeldSize> g_held;
QList<QPointer<QWidget>> g_loose; // windows whose layout sets no smallest size for now

void remember(QWidget* widget)
{
    for (const HeldSize& held : std::as_const(g_held))
        if (held.widget == widget)
            return;
    g_held.append({widget, widget->minimumSize(), widget->maximumSize()});
}

bool isFixed(const QWidget* window)
{
    return window->maximumWidth() < QWIDGETSIZE_MAX || window->maximumHeight() < QWIDGETSIZE_MAX;
}

// The smallest size of what is docked in a window, where it is the first one given.
void limitDocked(QWidget* window, const QSize& present, const QSize& wanted)
{
    for (const QDockWidget* dock : window->findChildren<QDockWidget*>())
        if (dock->widget() && dock->widget()->minimumSize() == present)
            dock->widget()->setMinimumSize(wanted);
}

void loosen(QWidget* window)
{
    if (!window->layout() || isFixed(window)
        || window->layout()->sizeConstraint() != QLayout::SetDefaultConstraint)
        return;
    limitDocked(window, kByLayout, kNextToNothing); // parts without room would overlap
    window->layout()->setSizeConstraint(QLayout::SetNoConstraint);
    window->setMinimumSize(0, 0);
    g_loose.append(window);
}

void tighten(QWidget* window)
{
    if (g_loose.removeAll(window) == 0)
        return;
    limitDocked(window, kNextToNothing, kByLayout);
    window->layout()->setSizeConstraint(QLayout::SetDefaultConstraint);
}

} // namespace

void giveWindowSize(QWidget* window, const QSize& size)
{
    loosen(window);
    window->resize(size);
}

void giveSize(QWidget* widget, const QSize& size)
{
    settle(); // layout requests of before must not undo it
    if (widget->isWindow()) {
        giveWindowSize(widget, size);
    } else {
        remember(widget);
        widget->setFixedSize(size);
        widget->resize(size);
        tighten(widget->window());
    }
    for (QWidget* at = widget->parentWidget(); at; at = at->parentWidget())
        if (at->layout())
            at->layout()->activate();
    for (int i = 0; i < kPasses; ++i)
        settle();
}

void releaseSizes()
{
    for (const HeldSize& held : std::as_const(g_held)) {
        if (!held.widget)
            continue;
        held.widget->setMinimumSize(held.minimumBefore);
        held.widget->setMaximumSize(held.maximumBefore);
    }
    g_held.clear();
    const QList<QPointer<QWidget>> loose = g_loose;
    for (const QPointer<QWidget>& window : loose)
        if (window)
            tighten(window);
    g_loose.clear();
}

} // namespace quillon
