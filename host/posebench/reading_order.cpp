#include "host/posebench/reading_order.h"

#include <QDockWidget>
#include <QMainWindow>

#include <algorithm>
#include <vector>

namespace quillon {

namespace {

struct Placed {
    QWidget* widget;
    QRect rect; // in the window
};

typedef int (*Edge)(const QRect&);

int top(const QRect& r)
{
    return r.top();
}

int left(const QRect& r)
{
    return r.left();
}

} // namespace

static Placed placed(QWidget* widget, const QWidget* window)
{
    return {widget, QRect(widget->mapTo(const_cast<QWidget*>(window), QPoint()), widget->size())};
}

static int lastOf(const QRect& r, Edge edge)
{
    return edge == top ? r.bottom() : r.right();
}

static int middleOf(const QRect& r, Edge edge)
{
    return edge == top ? r.center().y() : r.center().x();
}

// Those whose middle lies beside the first of a line belong to that line; lines by one edge, what
// is in a line by the other.
static void sortIntoLines(std::vector<Placed>* list, Edge lines, Edge inLine)
{
    const auto before = [](Edge edge) {
        return [edge](const Placed& a, const Placed& b) { return edge(a.rect) < edge(b.rect); };
    };
    std::stable_sort(list->begin(), list->end(), before(lines));
    for (auto first = list->begin(); first != list->end();) {
        const int last = lastOf(first->rect, lines);
        const auto end = std::find_if(
            first, list->end(), [&](const Placed& p) { return middleOf(p.rect, lines) > last; });
        std::stable_sort(first, end, before(inLine));
        first = end;
    }
}

static bool takesTab(const QWidget* widget, const QMainWindow* window)
{
    return (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy() && widget->isEnabled()
        && widget->isVisibleTo(window) && widget->window() == window && !widget->size().isEmpty();
}

static std::vector<Placed> panels(const QMainWindow* window)
{
    std::vector<Placed> list;
    if (window->centralWidget())
        list.push_back(placed(window->centralWidget(), window));
    for (QDockWidget* dock : window->findChildren<QDockWidget*>())
        if (!dock->isFloating() && dock->isVisibleTo(window))
            list.push_back(placed(dock, window));
    sortIntoLines(&list, left, top);
    return list;
}

QList<QWidget*> readingOrder(const QMainWindow* window)
{
    QList<QWidget*> order;
    for (const Placed& panel : panels(window)) {
        std::vector<Placed> controls;
        if (takesTab(panel.widget, window))
            controls.push_back(placed(panel.widget, window));
        for (QWidget* widget : panel.widget->findChildren<QWidget*>())
            if (takesTab(widget, window))
                controls.push_back(placed(widget, window));
        sortIntoLines(&controls, top, left);
        for (const Placed& control : controls)
            order << control.widget;
    }
    return order;
}

QWidget* neighbour(const QList<QWidget*>& order, const QWidget* of, bool next)
{
    if (order.isEmpty())
        return nullptr;
    const int at = order.indexOf(const_cast<QWidget*>(of));
    if (at < 0)
        return next ? order.first() : order.last();
    return order[(at + (next ? 1 : order.size() - 1)) % order.size()];
}

} // namespace quillon
