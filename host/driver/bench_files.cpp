#include "host/driver/bench_files.h"

#include "host/driver/call_table.h"
#include "host/driver/call_watch.h"
#include "host/driver/script_values.h"

#include <QDir>
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

QScriptValue failCall(QScriptContext* context, QScriptEngine* engine)
{
    const QString name = textArgument(context, 0);
    const int n = intArgument(context, 1, 1);
    const CallRow* call = findCall(name);
    if (!call)
        return throwError(context, unknownCall(name));
    if (n < 1)
        return throwError(context, QString("failCall counts from 1"));
    orderCall({call, n, false});
    return engine->undefinedValue();
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
    {"failCall", failCall},
    {"pendingCalls", pendingOrders},
    {"dropCalls", dropOrders},
};

} // namespace

void addFileFunctions(QScriptValue bench)
{
    addNatives(bench, kFiles);
}

} // namespace quillon
