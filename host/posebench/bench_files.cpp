#include "host/posebench/bench_files.h"

#include "host/posebench/call_watch.h"
#include "host/posebench/script_values.h"

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
    if (name.isEmpty() || n < 1)
        return throwError(context, QString("failCall needs a name and a number from 1 on"));
    failCallOnce(name, n);
    return engine->undefinedValue();
}

const NativeRow kFiles[] = {
    {"readFile", readFile},
    {"writeFile", writeFile},
    {"removeFile", removeFile},
    {"failCall", failCall},
};

} // namespace

void addFileFunctions(QScriptValue bench)
{
    addNatives(bench, kFiles);
}

} // namespace quillon
