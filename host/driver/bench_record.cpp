#include "host/driver/bench_record.h"

#include "host/driver/bench_widgets.h"
#include "host/driver/paint_counter.h"
#include "host/driver/paint_recorder.h"
#include "host/driver/script_values.h"
#include "host/driver/widget_picture.h"
#include "host/posebench/viewport.h"

#include "dzapp.h"
#include "dzmainwindow.h"

#include <QPixmap>

namespace quillon {
namespace {

QString colourName(const QColor& colour)
{
    if (!colour.isValid())
        return QString("");
    return colour.name(colour.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

QScriptValue texts(QScriptContext* context, QScriptEngine* engine)
{
    QWidget* widget = widgetArgument(context, 0);
    if (!widget)
        return QScriptValue();
    QStringList lines;
    for (const DrawRecord& record : recordRepaint(widget))
        if (qstrcmp(record.kind, "text") == 0)
            lines += record.text;
    return toScript(engine, lines);
}

QScriptValue draws(QScriptContext* context, QScriptEngine* engine)
{
    QWidget* widget = widgetArgument(context, 0);
    if (!widget)
        return QScriptValue();
    const QList<DrawRecord> records = recordRepaint(widget);
    QScriptValue list = engine->newArray(uint(records.size()));
    for (int i = 0; i < records.size(); ++i) {
        QScriptValue entry = engine->newObject();
        entry.setProperty("kind", QString(records.at(i).kind));
        entry.setProperty("rect", toScript(engine, records.at(i).rect));
        entry.setProperty("colour", colourName(records.at(i).colour));
        entry.setProperty("text", records.at(i).text);
        entry.setProperty("pen", colourName(records.at(i).pen));
        list.setProperty(quint32(i), entry);
    }
    return list;
}

QScriptValue countPaints(QScriptContext* context, QScriptEngine*)
{
    const QWidget* widget = widgetArgument(context, 0);
    if (!widget)
        return QScriptValue();
    settle(); // a repaint that was asked for has happened when this returns
    return paintCount(widget);
}

QScriptValue grab(QScriptContext* context, QScriptEngine*)
{
    QWidget* widget = widgetArgument(context, 0);
    if (!widget)
        return QScriptValue();
    return pictureOf(widget).save(textArgument(context, 1), "PNG");
}

QScriptValue grabViewport(QScriptContext* context, QScriptEngine*)
{
    ViewportWidget* viewport = dzApp->getInterface()->findChild<ViewportWidget*>();
    if (!viewport)
        return throwError(context, QString("the window has no viewport"));
    settle();
    return viewport->grabScene().save(textArgument(context, 0), "PNG");
}

const NativeRow kRecord[] = {
    {"texts", texts},
    {"draws", draws},
    {"paintCount", countPaints},
    {"grab", grab},
    {"grabViewport", grabViewport},
};

} // namespace

void addRecordFunctions(QScriptValue bench)
{
    addNatives(bench, kRecord);
}

} // namespace quillon
