// script_values.h - how values of the host look in scripts, and what every native function needs.
//   vector [x, y, z]   quaternion [x, y, z, w]   matrix three rows of three
//   box [min, max], also as .min and .max     rectangle [x, y, w, h], also as .x .y .width .height
// Readers throw a script error and return false when the argument is something else.
#pragma once

#include "dzbox3.h"
#include "dzmatrix3.h"
#include "dzquat.h"
#include "dztime.h"

#include <QRect>
#include <QRectF>
#include <QScriptContext>
#include <QScriptEngine>
#include <QScriptValue>
#include <QStringList>

#include <cstddef>

namespace quillon {

// One function that scripts can call.
struct NativeRow {
    const char* name;
    QScriptEngine::FunctionSignature call;
};

// Sets the functions on the object, hidden from for-in. A script that is ending (script_engine.h)
// stops as soon as the function it called returns. rows must live as long as the engine.
void addNatives(QScriptValue object, const NativeRow* rows, int count);

template <std::size_t N> void addNatives(QScriptValue object, const NativeRow (&rows)[N])
{
    addNatives(object, rows, int(N));
}

QScriptValue toScript(QScriptEngine*, const DzVec3&);
QScriptValue toScript(QScriptEngine*, const DzQuat&);
QScriptValue toScript(QScriptEngine*, const DzMatrix3&);
QScriptValue toScript(QScriptEngine*, const DzBox3&); // null when the box is invalid
QScriptValue toScript(QScriptEngine*, const QRectF&);
QScriptValue toScript(QScriptEngine*, const QStringList&);
QScriptValue toScript(QScriptEngine*, QObject*); // null for a null pointer; never owned

bool fromScript(QScriptContext*, int argument, DzVec3* out);
bool fromScript(QScriptContext*, int argument, DzQuat* out);
bool fromScript(QScriptContext*, int argument, DzMatrix3* out);

bool hasArgument(QScriptContext*, int i); // given, and not undefined
QString textArgument(QScriptContext*, int i); // empty when it is not given
int intArgument(QScriptContext*, int i, int otherwise);

QScriptValue throwError(QScriptContext*, const QString& message);

// The object that the function was called on, or the i-th argument, as a T; null: an error was
// thrown that says so.
template <class T> T* thisObject(QScriptContext* context)
{
    T* object = qobject_cast<T*>(context->thisObject().toQObject());
    if (!object)
        throwError(context,
            QString("called on something that is no %1, or on one that is gone")
                .arg(T::staticMetaObject.className()));
    return object;
}

template <class T> T* objectArgument(QScriptContext* context, int i)
{
    T* object = qobject_cast<T*>(context->argument(i).toQObject());
    if (!object)
        throwError(context,
            QString("argument %1 is no %2").arg(i + 1).arg(T::staticMetaObject.className()));
    return object;
}

} // namespace quillon
