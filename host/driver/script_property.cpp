#include "host/driver/script_scene.h"

#include "host/driver/script_values.h"

#include "dzelement.h"
#include "dzfloatproperty.h"

namespace quillon {
namespace {

// getValue([t]) and getRawValue([t])
template <float (DzFloatProperty::*Now)() const, float (DzFloatProperty::*At)(DzTime) const>
QScriptValue readValue(QScriptContext* context, QScriptEngine*)
{
    const DzFloatProperty* p = thisObject<DzFloatProperty>(context);
    if (!p)
        return QScriptValue();
    return double(hasArgument(context, 0) ? (p->*At)(context->argument(0).toInt32()) : (p->*Now)());
}

// setValue([t,] v) and setRawValue([t,] v)
template <void (DzFloatProperty::*Now)(float), void (DzFloatProperty::*At)(DzTime, float)>
QScriptValue writeValue(QScriptContext* context, QScriptEngine* engine)
{
    DzFloatProperty* p = thisObject<DzFloatProperty>(context);
    if (!p)
        return QScriptValue();
    const bool timed = hasArgument(context, 1);
    const QScriptValue value = context->argument(timed ? 1 : 0);
    if (!value.isNumber() && !value.isBool())
        return throwError(context, QString("a value has to be a number"));
    if (timed)
        (p->*At)(context->argument(0).toInt32(), float(value.toNumber()));
    else
        (p->*Now)(float(value.toNumber()));
    return engine->undefinedValue();
}

template <class Result, Result (DzFloatProperty::*Get)() const>
QScriptValue get(QScriptContext* context, QScriptEngine*)
{
    const DzFloatProperty* p = thisObject<DzFloatProperty>(context);
    return p ? QScriptValue((p->*Get)()) : QScriptValue();
}

template <void (DzFloatProperty::*Set)(float)>
QScriptValue setNumber(QScriptContext* context, QScriptEngine* engine)
{
    if (DzFloatProperty* p = thisObject<DzFloatProperty>(context))
        (p->*Set)(float(context->argument(0).toNumber()));
    return engine->undefinedValue();
}

// Without an argument: on.
template <void (DzFloatProperty::*Set)(bool)>
QScriptValue setFlag(QScriptContext* context, QScriptEngine* engine)
{
    if (DzFloatProperty* p = thisObject<DzFloatProperty>(context))
        (p->*Set)(!hasArgument(context, 0) || context->argument(0).toBool());
    return engine->undefinedValue();
}

QScriptValue setMinMax(QScriptContext* context, QScriptEngine* engine)
{
    if (DzFloatProperty* p = thisObject<DzFloatProperty>(context))
        p->setMinMax(
            float(context->argument(0).toNumber()), float(context->argument(1).toNumber()));
    return engine->undefinedValue();
}

QScriptValue getNumKeys(QScriptContext* context, QScriptEngine*)
{
    const DzFloatProperty* p = thisObject<DzFloatProperty>(context);
    return p ? QScriptValue(p->getNumKeys()) : QScriptValue();
}

QScriptValue getNumControllers(QScriptContext* context, QScriptEngine*)
{
    const DzProperty* p = thisObject<DzProperty>(context);
    return p ? QScriptValue(p->getNumControllers()) : QScriptValue();
}

QScriptValue getKeyTime(QScriptContext* context, QScriptEngine*)
{
    const DzFloatProperty* p = thisObject<DzFloatProperty>(context);
    return p ? QScriptValue(p->getKeyTime(intArgument(context, 0, 0))) : QScriptValue();
}

QScriptValue getKeyValue(QScriptContext* context, QScriptEngine*)
{
    const DzFloatProperty* p = thisObject<DzFloatProperty>(context);
    return p ? QScriptValue(double(p->getKeyValue(intArgument(context, 0, 0)))) : QScriptValue();
}

QScriptValue deleteAllKeys(QScriptContext* context, QScriptEngine* engine)
{
    if (DzFloatProperty* p = thisObject<DzFloatProperty>(context))
        p->deleteAllKeys();
    return engine->undefinedValue();
}

QScriptValue getOwner(QScriptContext* context, QScriptEngine* engine)
{
    const DzProperty* p = thisObject<DzProperty>(context);
    return p ? toScript(engine, p->getOwner()) : QScriptValue();
}

typedef DzFloatProperty P;

const NativeRow kProperty[] = {
    {"getValue", readValue<&P::getValue, &P::getValue>},
    {"setValue", writeValue<&P::setValue, &P::setValue>},
    {"getRawValue", readValue<&P::getRawValue, &P::getRawValue>},
    {"setRawValue", writeValue<&P::setRawValue, &P::setRawValue>},
    {"getDefaultValue", get<float, &P::getDefaultValue>},
    {"isLocked", get<bool, &P::isLocked>},
    {"lock", setFlag<&P::lock>},
    {"isClamped", get<bool, &P::isClamped>},
    {"setIsClamped", setFlag<&P::setIsClamped>},
    {"getMin", get<float, &P::getMin>},
    {"getMax", get<float, &P::getMax>},
    {"setMinMax", setMinMax},
    {"getSensitivity", get<float, &P::getSensitivity>},
    {"setSensitivity", setNumber<&P::setSensitivity>},
    {"getNumKeys", getNumKeys},
    {"getKeyTime", getKeyTime},
    {"getKeyValue", getKeyValue},
    {"deleteAllKeys", deleteAllKeys},
    {"getNumControllers", getNumControllers},
    {"getOwner", getOwner},
};

} // namespace

void equipPropertyScripting(QScriptEngine* engine)
{
    addNatives(newPrototype(engine, qRegisterMetaType<DzProperty*>()), kProperty);
}

} // namespace quillon
