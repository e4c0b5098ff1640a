#include "host/figures/json_text.h"

#if QT_VERSION >= 0x050000
#include <QJsonDocument>
#else
#include <QScriptEngine>
#endif

namespace quillon {

#if QT_VERSION >= 0x050000

bool parseJson(const QByteArray& text, QVariant* out, QString* why)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError) {
        const int line = int(text.left(error.offset).count('\n')) + 1;
        *why = QString("line %1: %2").arg(line).arg(error.errorString());
        return false;
    }
    *out = document.toVariant();
    return true;
}

#else

// Qt 4 has no JSON reader of its own, but its script engine has the standard one. The engine tells
// no place of an error, so the line is that of the whole text.
bool parseJson(const QByteArray& text, QVariant* out, QString* why)
{
    QScriptEngine engine;
    QScriptValue parse = engine.globalObject().property("JSON").property("parse");
    QScriptValueList arguments;
    arguments << QScriptValue(QString::fromUtf8(text.constData(), text.size()));
    const QScriptValue value = parse.call(QScriptValue(), arguments);
    if (engine.hasUncaughtException()) {
        *why = QString("line 1: %1").arg(engine.uncaughtException().toString());
        return false;
    }
    *out = value.toVariant();
    return true;
}

#endif

} // namespace quillon
