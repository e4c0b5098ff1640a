#include "host/posebench/widget_size.h"

#include "host/posebench/bench_widgets.h"

#include <QLayout>
#include <QList>
#include <QPointer>
#include <QWidget>

namespace quillon {
namespace {

struct HeldSize {
    QPointer<QWidget> widget;
    QSize minimumBefore, maximumBefore;
};
QList<HeldSize> g_held;

void remember(QWidget* widget)
{
    for (const HeldSize& held : std::as_const(g_held))
        if (held.widget == widget)
            return;
    g_held.append({widget, widget->minimumSize(), widget->maximumSize()});
}

} // namespace

void giveSize(QWidget* widget, const QSize& size)
{
    settle(); // layout requests of before must not undo it
    if (!widget->isWindow()) {
        remember(widget);
        widget->setFixedSize(size);
    }
    widget->resize(size);
    for (QWidget* at = widget->parentWidget(); at; at = at->parentWidget())
        if (at->layout())
            at->layout()->activate();
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
}

} // namespace quillon
