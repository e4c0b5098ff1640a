#include "host/driver/bench_modal.h"

#include "host/driver/modal_watch.h"
#include "host/driver/script_values.h"

namespace quillon {
namespace {

// Null when the script left it out.
QString textOf(const QScriptValue& object, const char* name)
{
    const QScriptValue value = object.property(QString(name));
    if (!value.isValid() || value.isUndefined() || value.isNull())
        return QString();
    const QString text = value.toString();
    return text.isNull() ? QString("") : text;
}

QScriptValue expect(QScriptContext* context, QScriptEngine* engine)
{
    const QScriptValue given = context->argument(0);
    if (!given.isObject())
        return throwError(context, QString("expect needs an object"));
    ExpectedModal expected;
    expected.given = given;
    expected.title = textOf(given, "title");
    expected.text = textOf(given, "text");
    expected.button = textOf(given, "button");
    expected.file = textOf(given, "file");
    expected.fields = given.property("fields").toVariant().toMap();
    expected.run = given.property("run");
    expectModal(expected);
    return engine->undefinedValue();
}

QScriptValue pending(QScriptContext*, QScriptEngine* engine)
{
    const QList<ExpectedModal> expects = pendingExpects();
    QScriptValue list = engine->newArray(uint(expects.size()));
    for (int i = 0; i < expects.size(); ++i)
        list.setProperty(quint32(i), expects.at(i).given);
    return list;
}

QScriptValue drop(QScriptContext*, QScriptEngine*)
{
    const int count = pendingExpects().size();
    dropExpects();
    return count;
}

// Fields by their labels as they read; also, hidden, without the blanks around.
QScriptValue fieldsOf(QScriptEngine* engine, const QList<DialogField>& fields)
{
    QScriptValue object = engine->newObject();
    for (const DialogField& field : fields) {
        const QScriptValue value = engine->toScriptValue(field.second);
        object.setProperty(field.first, value);
        const QString trimmed = field.first.trimmed();
        if (trimmed != field.first)
            object.setProperty(trimmed, value, QScriptValue::SkipInEnumeration);
    }
    return object;
}

QScriptValue recordOf(QScriptEngine* engine, const ModalRecord& record)
{
    QScriptValue object = engine->newObject();
    object.setProperty("kind", record.kind);
    object.setProperty("icon", record.icon);
    object.setProperty("title", record.title);
    object.setProperty("text", record.text);
    object.setProperty("buttons", toScript(engine, record.buttons));
    object.setProperty("answer", record.answer);
    object.setProperty("parentClass", record.parentClass);
    QScriptValue size = engine->newArray(2);
    size.setProperty(0, record.size.width());
    size.setProperty(1, record.size.height());
    size.setProperty("width", record.size.width(), QScriptValue::SkipInEnumeration);
    size.setProperty("height", record.size.height(), QScriptValue::SkipInEnumeration);
    object.setProperty("size", size);
    object.setProperty("fields", fieldsOf(engine, record.fields));
    object.setProperty("filter", record.filter);
    object.setProperty("directory", record.directory);
    return object;
}

QScriptValue dialogs(QScriptContext*, QScriptEngine* engine)
{
    const QList<ModalRecord> log = modalLog();
    QScriptValue list = engine->newArray(uint(log.size()));
    for (int i = 0; i < log.size(); ++i)
        list.setProperty(quint32(i), recordOf(engine, log.at(i)));
    return list;
}

const NativeRow kModal[] = {
    {"expect", expect},
    {"dialogs", dialogs},
    {"pendingExpects", pending},
    {"dropExpects", drop},
};

} // namespace

void addModalFunctions(QScriptValue bench)
{
    addNatives(bench, kModal);
}

} // namespace quillon
