#include "host/driver/script_engine.h"

#include "host/driver/bench_object.h"
#include "host/driver/script_scene.h"
#include "host/driver/script_values.h"

#include "dzscriptglobals.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace quillon {
namespace {

struct ScriptRun {
    QScriptEngine* engine = nullptr;
    QStringList folders; // of the files being evaluated, innermost last
    bool running = false;
    bool ending = false;
    bool quitCalled = false;
    int exitCode = 0;
};
ScriptRun g_run;

void writeLine(FILE* stream, const QString& line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stream);
    std::fflush(stream);
}

// JavaScript's errors know where they were thrown; of anything else the engine knows the line.
QString placeOfError(const QScriptValue& error, const QString& file, int line)
{
    const QScriptValue ownFile = error.property("fileName");
    const QScriptValue ownLine = error.property("lineNumber");
    const QString name
        = ownFile.isString() && !ownFile.toString().isEmpty() ? ownFile.toString() : file;
    return QString("%1:%2").arg(name).arg(ownLine.isNumber() ? ownLine.toInt32() : line);
}

// What is being evaluated ends when the call under way returns, be it a function of Bench or of
// some object of the host.
void stopEvaluation()
{
    if (g_run.running && g_run.engine->isEvaluating())
        g_run.engine->abortEvaluation();
}

void fail(const QString& line)
{
    if (g_run.ending)
        return; // the first failure is the one that counts
    writeLine(stderr, line);
    g_run.exitCode = 1;
    g_run.ending = true;
    stopEvaluation();
}

// Where the function that threw was called from, one line each; arguments are left out.
QString callersOf(const QStringList& backtrace)
{
    QString lines;
    for (const QString& frame : backtrace.mid(1)) {
        const QString function = frame.section(QLatin1Char('('), 0, 0);
        const QString place = frame.section(QString(" at "), -1);
        if (place.contains(QLatin1Char(':'))) // a function of the host has no line
            lines += QString("\n    in %1 at %2").arg(function, place);
    }
    return lines;
}

// True when nothing was thrown.
bool reportUncaught(const QString& file)
{
    if (!g_run.engine->hasUncaughtException())
        return true;
    const QScriptValue error = g_run.engine->uncaughtException();
    const QString place = placeOfError(error, file, g_run.engine->uncaughtExceptionLineNumber());
    fail(QString("%1: %2").arg(place, error.toString())
        + callersOf(g_run.engine->uncaughtExceptionBacktrace()));
    g_run.engine->clearExceptions();
    return false;
}

bool readFile(const QString& path, QString* text)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    *text = QString::fromUtf8(file.readAll());
    return true;
}

QScriptValue print(QScriptContext* context, QScriptEngine* engine)
{
    QStringList words;
    for (int i = 0; i < context->argumentCount(); ++i)
        words += context->argument(i).toString();
    writeLine(stdout, words.join(QString(" ")));
    return engine->undefinedValue();
}

QScriptValue quit(QScriptContext* context, QScriptEngine* engine)
{
    if (!g_run.ending)
        g_run.exitCode = intArgument(context, 0, 0);
    g_run.quitCalled = true;
    g_run.ending = true; // the caller of this function stops the evaluation
    return engine->undefinedValue();
}

QScriptValue include(QScriptContext* context, QScriptEngine* engine)
{
    const QString path = QDir(g_run.folders.value(g_run.folders.size() - 1))
                             .absoluteFilePath(textArgument(context, 0));
    QString text;
    if (!readFile(path, &text))
        return throwError(context, QString("include: cannot read '%1'").arg(path));
    context->setActivationObject(engine->globalObject());
    context->setThisObject(engine->globalObject());
    g_run.folders += QFileInfo(path).path();
    const QScriptValue result = engine->evaluate(text, path);
    g_run.folders.removeLast();
    return result;
}

const NativeRow kGlobals[] = {
    {"print", print},
    {"quit", quit},
    {"include", include},
};

} // namespace

void makeScriptEngine()
{
    g_run.engine = new QScriptEngine;
    dzEquipScriptEngine(g_run.engine);
    equipSceneScripting(g_run.engine);
    QScriptValue global = g_run.engine->globalObject();
    addNatives(global, kGlobals);
    global.setProperty("Bench", makeBenchObject(g_run.engine));
    QObject::connect(g_run.engine, &QScriptEngine::signalHandlerException,
        [](const QScriptValue&) { reportUncaught(QString("signal handler")); });
}

void dropScriptEngine()
{
    delete g_run.engine;
    g_run.engine = nullptr;
}

void runScript(const QString& file, const QStringList& args)
{
    QString text;
    if (!readFile(file, &text))
        return failScript(QString("cannot read the script '%1'").arg(file));
    g_run.engine->globalObject().setProperty("args", toScript(g_run.engine, args));
    g_run.folders = QStringList(QFileInfo(file).path());
    g_run.running = true;
    g_run.engine->evaluate(text, file);
    if (!g_run.ending)
        reportUncaught(file);
    g_run.running = false;
    g_run.ending = false; // what closing the host brings up can still fail
}

QScriptEngine* scriptEngine()
{
    return g_run.engine;
}

bool scriptIsEnding()
{
    return g_run.running && g_run.ending;
}

bool scriptAskedToQuit()
{
    return g_run.quitCalled;
}

int scriptExitCode()
{
    return g_run.exitCode;
}

void failScript(const QString& message)
{
    fail(QString("posebench: %1").arg(message));
}

bool callBack(QScriptValue function, const QScriptValue& argument)
{
    if (!function.isFunction())
        return true;
    function.call(QScriptValue(), QScriptValueList {argument});
    const bool passed = g_run.ending || reportUncaught(QString("callback"));
    if (g_run.ending)
        stopEvaluation(); // of what led here, too
    return passed;
}

} // namespace quillon
