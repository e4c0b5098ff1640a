#include "host/driver/script_values.h"

#include "host/driver/script_engine.h"

#include <QObject>

namespace quillon {
namespace {

QScriptValue numberList(QScriptEngine* engine, const double* numbers, int count)
{
    QScriptValue list = engine->newArray(uint(count));
    for (int i = 0; i < count; ++i)
        list.setProperty(quint32(i), numbers[i]);
    return list;
}

QScriptValue callRow(QScriptContext* context, QScriptEngine* engine, void* row)
{
    QScriptValue result;
    if (!scriptIsEnding()) // a handler may have ended the script between two calls
        result = static_cast<const NativeRow*>(row)->call(context, engine);
    if (scriptIsEnding())
        engine->abortEvaluation();
    return result;
}

void alias(QScriptValue list, const char* name, const QScriptValue& value)
{
    list.setProperty(QString(name), value, QScriptValue::SkipInEnumeration);
}

// count numbers at the start of an array; longer arrays are taken, shorter ones are not.
bool readNumbers(const QScriptValue& list, int count, double* out)
{
    for (int i = 0; i < count; ++i) {
        const QScriptValue number = list.property(quint32(i));
        if (!number.isNumber())
            return false;
        out[i] = number.toNumber();
    }
    return true;
}

bool refuse(QScriptContext* context, int argument, const char* expected)
{
    throwError(context, QString("argument %1 is not %2").arg(argument + 1).arg(QString(expected)));
    return false;
}

} // namespace

void addNatives(QScriptValue object, const NativeRow* rows, int count)
{
    QScriptEngine* engine = object.engine();
    for (int i = 0; i < count; ++i) {
        void* row = const_cast<NativeRow*>(&rows[i]);
        object.setProperty(QString(rows[i].name), engine->newFunction(callRow, row),
            QScriptValue::SkipInEnumeration);
    }
}

QScriptValue toScript(QScriptEngine* engine, const DzVec3& v)
{
    const double numbers[] = {v.m_x, v.m_y, v.m_z};
    return numberList(engine, numbers, 3);
}

QScriptValue toScript(QScriptEngine* engine, const DzQuat& q)
{
    const double numbers[] = {q.m_x, q.m_y, q.m_z, q.m_w};
    return numberList(engine, numbers, 4);
}

QScriptValue toScript(QScriptEngine* engine, const DzMatrix3& m)
{
    QScriptValue rows = engine->newArray(3);
    for (int i = 0; i < 3; ++i)
        rows.setProperty(quint32(i), toScript(engine, m.row(i)));
    return rows;
}

QScriptValue toScript(QScriptEngine* engine, const DzBox3& box)
{
    if (!box.isValid())
        return engine->nullValue();
    QScriptValue corners = engine->newArray(2);
    corners.setProperty(0, toScript(engine, box.getMin()));
    corners.setProperty(1, toScript(engine, box.getMax()));
    alias(corners, "min", corners.property(0));
    alias(corners, "max", corners.property(1));
    return corners;
}

QScriptValue toScript(QScriptEngine* engine, const QRectF& r)
{
    const double numbers[] = {r.x(), r.y(), r.width(), r.height()};
    static const char* const kNames[] = {"x", "y", "width", "height"};
    QScriptValue list = numberList(engine, numbers, 4);
    for (int i = 0; i < 4; ++i)
        alias(list, kNames[i], numbers[i]);
    return list;
}

QScriptValue toScript(QScriptEngine* engine, const QStringList& texts)
{
    QScriptValue list = engine->newArray(uint(texts.size()));
    for (int i = 0; i < texts.size(); ++i)
        list.setProperty(quint32(i), texts.at(i));
    return list;
}

QScriptValue toScript(QScriptEngine* engine, QObject* object)
{
    if (!object)
        return engine->nullValue();
    return engine->newQObject(
        object, QScriptEngine::QtOwnership, QScriptEngine::PreferExistingWrapperObject);
}

bool fromScript(QScriptContext* context, int argument, DzVec3* out)
{
    double n[3];
    if (!readNumbers(context->argument(argument), 3, n))
        return refuse(context, argument, "a vector [x, y, z]");
    *out = DzVec3(float(n[0]), float(n[1]), float(n[2]));
    return true;
}

bool fromScript(QScriptContext* context, int argument, DzQuat* out)
{
    double n[4];
    if (!readNumbers(context->argument(argument), 4, n))
        return refuse(context, argument, "a quaternion [x, y, z, w]");
    *out = DzQuat(n[0], n[1], n[2], n[3]);
    return true;
}

bool fromScript(QScriptContext* context, int argument, DzMatrix3* out)
{
    DzMatrix3 matrix;
    for (int i = 0; i < 3; ++i) {
        double n[3];
        if (!readNumbers(context->argument(argument).property(quint32(i)), 3, n))
            return refuse(context, argument, "a matrix of three rows");
        matrix[i] = DzVec3(float(n[0]), float(n[1]), float(n[2]));
    }
    *out = matrix;
    return true;
}

bool hasArgument(QScriptContext* context, int i)
{
    return i < context->argumentCount() && !context->argument(i).isUndefined();
}

QString textArgument(QScriptContext* context, int i)
{
    return hasArgument(context, i) ? context->argument(i).toString() : QString();
}

int intArgument(QScriptContext* context, int i, int otherwise)
{
    return hasArgument(context, i) ? context->argument(i).toInt32() : otherwise;
}

QScriptValue throwError(QScriptContext* context, const QString& message)
{
    return context->throwError(message);
}

} // namespace quillon
