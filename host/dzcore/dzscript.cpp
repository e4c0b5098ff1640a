#include "dzscript.h"
#include "dzapp.h"
#include "dzhostcalls.h"
#include "dzscriptglobals.h"

#include <QScriptEngine>

static const int kBlanksPerIndent = 4;

DzScript::DzScript()
    : m_errorLine(-1)
{
}

DzScript::~DzScript()
{
}

void DzScript::clear()
{
    m_lines.clear();
    m_error.clear();
    m_errorLine = -1;
    m_result = QVariant();
}

void DzScript::addLine(const QString& line, int indent)
{
    m_lines.append(QString(qMax(0, indent) * kBlanksPerIndent, QLatin1Char(' ')) + line);
}

QString DzScript::getCode() const
{
    return m_lines.join(QLatin1String("\n"));
}

bool DzScript::execute()
{
    return execute(QVariantList());
}

bool DzScript::execute(const QVariantList& args)
{
    return run(args, nullptr, QVariantList());
}

bool DzScript::call(const QString& function, const QVariantList& args)
{
    return run(QVariantList(), &function, args);
}

static QScriptValueList toScriptValues(QScriptEngine* engine, const QVariantList& values)
{
    QScriptValueList list;
    for (int i = 0; i < values.size(); ++i)
        list.append(engine->toScriptValue(values.at(i)));
    return list;
}

static QScriptValue toScriptArray(QScriptEngine* engine, const QVariantList& values)
{
    const QScriptValueList list = toScriptValues(engine, values);
    QScriptValue array = engine->newArray(uint(list.size()));
    for (int i = 0; i < list.size(); ++i)
        array.setProperty(quint32(i), list.at(i));
    return array;
}

bool DzScript::run(const QVariantList& args, const QString* function, const QVariantList& callArgs)
{
    m_error.clear();
    m_errorLine = -1;
    m_result = QVariant();
    if (DZ_HOST_CALL("execute"))
        return fail(tr("The script was not run"), -1);
    const QString code = getCode();
    const QScriptSyntaxCheckResult syntax = QScriptEngine::checkSyntax(code);
    if (syntax.state() != QScriptSyntaxCheckResult::Valid)
        return fail(tr("SyntaxError: %1").arg(syntax.errorMessage()), syntax.errorLineNumber());

    QScriptEngine engine;
    dzEquipScriptEngine(&engine);
    engine.globalObject().setProperty(QLatin1String("args"), toScriptArray(&engine, args));
    QScriptValue value = engine.evaluate(code, getName());
    if (function && !engine.hasUncaughtException()) {
        QScriptValue callee = engine.globalObject().property(*function);
        if (!callee.isFunction())
            return fail(tr("%1 is not a function").arg(*function), -1);
        value = callee.call(QScriptValue(), toScriptValues(&engine, callArgs));
    }
    if (engine.hasUncaughtException())
        return fail(engine.uncaughtException().toString(), engine.uncaughtExceptionLineNumber());
    m_result = value.toVariant();
    return true;
}

bool DzScript::fail(const QString& message, int line)
{
    m_error = message;
    m_errorLine = line;
    if (dzApp)
        dzApp->log(tr("Script error in line %1: %2").arg(line).arg(message));
    return false;
}

QString DzScript::errorMessage() const
{
    return m_error;
}

int DzScript::errorLine() const
{
    return m_errorLine;
}

QVariant DzScript::result() const
{
    return m_result;
}
