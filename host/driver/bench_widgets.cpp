#include "host/driver/bench_widgets.h"

#include "host/driver/script_values.h"

#include "dzapp.h"
#include "dzmainwindow.h"
#include "dzpane.h"
#include "dzpanemgr.h"

#include <QApplication>
#include <QWidget>

namespace quillon {
namespace {

// The higher the likelier it is meant.
int rank(const QWidget* widget)
{
    const QWidget* modal = QApplication::activeModalWidget();
    const bool inDialog = modal && (widget == modal || modal->isAncestorOf(widget));
    return (inDialog ? 4 : 0) + (widget->isVisible() ? 2 : 0) + (widget->isWindow() ? 1 : 0);
}

template <class Matches> QWidget* bestWidget(Matches matches)
{
    QWidget* best = nullptr;
    const QWidgetList all = QApplication::allWidgets();
    for (QWidget* widget : all)
        if (matches(widget) && (!best || rank(widget) > rank(best)))
            best = widget;
    return best;
}

QWidget* findPane(const QString& className)
{
    const DzMainWindow* window = dzApp ? dzApp->getInterface() : nullptr;
    return window ? window->getPaneMgr()->findPane(className) : nullptr;
}

QWidget* findWidget(const QString& name)
{
    if (QWidget* pane = findPane(name))
        return pane;
    const QByteArray className = name.toLatin1();
    QWidget* found
        = bestWidget([&](const QWidget* w) { return className == w->metaObject()->className(); });
    if (!found)
        found = bestWidget(
            [&](const QWidget* w) { return w->isWindow() && w->windowTitle() == name; });
    if (!found)
        found = bestWidget(
            [&](const QWidget* w) { return w->windowTitle() == name && !name.isEmpty(); });
    return found;
}

} // namespace

QWidget* widgetArgument(QScriptContext* context, int argument)
{
    const QScriptValue value = context->argument(argument);
    if (QWidget* widget = qobject_cast<QWidget*>(value.toQObject()))
        return widget;
    QWidget* widget = value.isString() ? findWidget(value.toString()) : nullptr;
    if (!widget)
        throwError(
            context, QString("there is no pane, widget or window '%1'").arg(value.toString()));
    return widget;
}

void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace quillon
