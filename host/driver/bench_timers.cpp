#include "host/driver/bench_timers.h"

#include "host/driver/bench_widgets.h"
#include "host/driver/script_values.h"

#include <QCoreApplication>
#include <QTimer>
#include <QTimerEvent>
#include <QWidget>

namespace quillon {
namespace {

QList<QTimer*> timersOf(const QWidget* widget)
{
    return widget->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
}

QScriptValue timers(QScriptContext* context, QScriptEngine* engine)
{
    const QWidget* widget = widgetArgument(context, 0);
    if (!widget)
        return QScriptValue();
    const QList<QTimer*> found = timersOf(widget);
    QScriptValue list = engine->newArray(uint(found.size()));
    for (int i = 0; i < found.size(); ++i) {
        QScriptValue entry = engine->newObject();
        entry.setProperty("interval", found.at(i)->interval());
        entry.setProperty("active", found.at(i)->isActive());
        entry.setProperty("singleShot", found.at(i)->isSingleShot());
        entry.setProperty("remaining", found.at(i)->remainingTime());
        list.setProperty(quint32(i), entry);
    }
    return list;
}

QScriptValue fireTimer(QScriptContext* context, QScriptEngine* engine)
{
    const QWidget* widget = widgetArgument(context, 0);
    if (!widget)
        return QScriptValue();
    const QList<QTimer*> found = timersOf(widget);
    const int i = intArgument(context, 1, 0);
    if (i < 0 || i >= found.size())
        return throwError(
            context, QString("there is no timer %1, the widget has %2").arg(i).arg(found.size()));
    QTimer* timer = found.at(i);
    if (timer->isActive()) {
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
    } else {
        QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection);
    }
    settle();
    return engine->undefinedValue();
}

const NativeRow kTimers[] = {
    {"timers", timers},
    {"fireTimer", fireTimer},
};

} // namespace

void addTimerFunctions(QScriptValue bench)
{
    addNatives(bench, kTimers);
}

} // namespace quillon
