#include "host/driver/bench_progress.h"

#include "host/driver/script_values.h"

#include <QElapsedTimer>

namespace quillon {
namespace {

// Cancels the first progress that fits, once.
struct CancelOrder {
    QString title; // empty: any; otherwise the whole or a part
    QString info; // null: by steps only; otherwise the start of the text
    int steps; // -1: by text only; with neither at its first sign
};
QList<CancelOrder> g_cancels;
QList<ProgressEntry> g_log;
QElapsedTimer g_clock;

bool isDue(const CancelOrder& order, const DzProgressRecord& now)
{
    if (!now.title.contains(order.title))
        return false;
    if (order.info.isNull() && order.steps < 0)
        return true;
    return (!order.info.isNull() && now.info.startsWith(order.info))
        || (order.steps >= 0 && now.calls >= order.steps);
}

bool sameForUser(const DzProgressRecord& a, const DzProgressRecord& b)
{
    return a.serial == b.serial && a.info == b.info && a.position == b.position
        && a.total == b.total;
}

bool watch(const DzProgressRecord& now)
{
    if (now.event == DzProgressRecord::Finished)
        return false;
    if (g_log.isEmpty() || !sameForUser(g_log.last().record, now))
        g_log.append({now, g_clock.elapsed()});
    if (now.cancelled)
        return false;
    for (int i = 0; i < g_cancels.size(); ++i) {
        // One that cannot be cancelled uses up what names it; otherwise another is meant.
        const bool meant = now.cancellable || !g_cancels.at(i).title.isEmpty();
        if (!meant || !isDue(g_cancels.at(i), now))
            continue;
        g_cancels.removeAt(i);
        return now.cancellable;
    }
    return false;
}

QScriptValue cancelProgress(QScriptContext* context, QScriptEngine* engine)
{
    const QScriptValue given = context->argument(0);
    const QScriptValue info = given.property("info");
    const QScriptValue steps = given.property("steps");
    const QScriptValue title = given.property("title");
    if (!info.isString() && !steps.isNumber() && !title.isString())
        return throwError(
            context, QString("cancelProgress needs a title, an info text or a number of steps"));
    CancelOrder order;
    order.title = title.isString() ? title.toString() : QString();
    order.info = info.isString() ? info.toString() : QString();
    order.steps = steps.isNumber() ? steps.toInt32() : -1;
    g_cancels.append(order);
    return engine->undefinedValue();
}

QScriptValue pendingCancels(QScriptContext*, QScriptEngine* engine)
{
    QScriptValue list = engine->newArray(uint(g_cancels.size()));
    for (int i = 0; i < g_cancels.size(); ++i) {
        const CancelOrder& order = g_cancels.at(i);
        QScriptValue entry = engine->newObject();
        if (!order.title.isEmpty())
            entry.setProperty("title", order.title);
        if (!order.info.isNull())
            entry.setProperty("info", order.info);
        if (order.steps >= 0)
            entry.setProperty("steps", order.steps);
        list.setProperty(quint32(i), entry);
    }
    return list;
}

QScriptValue dropCancels(QScriptContext*, QScriptEngine*)
{
    const int count = g_cancels.size();
    g_cancels.clear();
    return count;
}

QScriptValue progress(QScriptContext*, QScriptEngine* engine)
{
    QScriptValue list = engine->newArray(uint(g_log.size()));
    for (int i = 0; i < g_log.size(); ++i) {
        const DzProgressRecord& record = g_log.at(i).record;
        QScriptValue entry = engine->newObject();
        entry.setProperty("title", record.title);
        entry.setProperty("info", record.info);
        entry.setProperty("position", record.position);
        entry.setProperty("total", record.total);
        entry.setProperty("cancellable", record.cancellable);
        entry.setProperty("ms", double(g_log.at(i).ms));
        list.setProperty(quint32(i), entry);
    }
    return list;
}

const NativeRow kProgress[] = {
    {"cancelProgress", cancelProgress},
    {"pendingCancels", pendingCancels},
    {"dropCancels", dropCancels},
    {"progress", progress},
};

} // namespace

void addProgressFunctions(QScriptValue bench)
{
    dzProgressHook = watch;
    g_clock.start();
    addNatives(bench, kProgress);
}

const QList<ProgressEntry>& progressLog()
{
    return g_log;
}

} // namespace quillon
