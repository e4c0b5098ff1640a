#include "host/driver/bench_files.h"

#include "host/driver/call_table.h"
#include "host/driver/call_watch.h"
#include "host/driver/script_values.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace quillon {
namespace {

QScriptValue readFile(QScriptContext* context, QScriptEngine* engine)
{
    QFile file(textArgument(context, 0));
    if (!file.open(QIODevice::ReadOnly))
        return engine->nullValue();
    return QString::fromLatin1(file.readAll().toBase64());
}

QScriptValue writeFile(QScriptContext* context, QScriptEngine*)
{
    QFile file(textArgument(context, 0));
    const QByteArray bytes = QByteArray::fromBase64(textArgument(context, 1).toLatin1());
    QDir().mkpath(QFileInfo(file).path());
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

QScriptValue removeFile(QScriptContext* context, QScriptEngine*)
{
    const QString path = textArgument(context, 0);
    return QFile::remove(path) || QDir().rmdir(path);
}

// As QDir does it, hidden ones included; folders count by what is in them.
QScriptValue filesBelow(QScriptContext* context, QScriptEngine* engine)
{
    const QDir top(textArgument(context, 0));
    QDirIterator entry(
        top.path(), QDir::Files | QDir::System | QDir::Hidden, QDirIterator::Subdirectories);
    QStringList found;
    while (entry.hasNext())
        found += top.relativeFilePath(entry.next());
    found.sort();
    return toScript(engine, found);
}

QScriptValue orderFor(QScriptContext* context, QScriptEngine* engine, bool die)
{
    const QString name = textArgument(context, 0);
    const int n = intArgument(context, 1, 1);
    const CallRow* call = findCall(name);
    if (!call)
        return throwError(context, unknownCall(name));
    if (n < 1)
        return throwError(context, QString("calls are counted from 1"));
    orderCall({call, n, die});
    return engine->undefinedValue();
}

QScriptValue failCall(QScriptContext* context, QScriptEngine* engine)
{
    return orderFor(context, engine, false);
}

QScriptValue dieAtCall(QScriptContext* context, QScriptEngine* engine)
{
    return orderFor(context, engine, true);
}

QScriptValue namesOfCalls(QScriptContext*, QScriptEngine* engine)
{
    QScriptValue names = engine->newObject();
    names.setProperty(
        "host", toScript(engine, callNames(CallKind::Host) + callNames(CallKind::Within)));
    names.setProperty("files", toScript(engine, callNames(CallKind::File)));
    return names;
}

// --die-at is one of them, too.
QScriptValue pendingOrders(QScriptContext*, QScriptEngine* engine)
{
    const QList<CallOrder> orders = pendingCalls();
    QScriptValue list = engine->newArray(uint(orders.size()));
    for (int i = 0; i < orders.size(); ++i) {
        QScriptValue entry = engine->newObject();
        entry.setProperty("name", QString(orders.at(i).call->name));
        entry.setProperty("n", orders.at(i).left);
        list.setProperty(quint32(i), entry);
    }
    return list;
}

QScriptValue dropOrders(QScriptContext*, QScriptEngine*)
{
    const int count = pendingCalls().size();
    dropCallOrders();
    return count;
}

const NativeRow kFiles[] = {
    {"readFile", readFile},
    {"writeFile", writeFile},
    {"removeFile", removeFile},
    {"files", filesBelow},
    {"failCall", failCall},
    {"dieAtCall", dieAtCall},
    {"callNames", namesOfCalls},
    {"pendingCalls", pendingOrders},
    {"dropCalls", dropOrders},
};

} // namespace

void addFileFunctions(QScriptValue bench)
{
    addNatives(bench, kFiles);
}

} // namespace quillon
