#include "host/driver/bench_accessible.h"

#include "host/driver/bench_widgets.h"
#include "host/driver/script_values.h"

#include <QAccessible>
#include <QMetaEnum>
#include <QWidget>

namespace quillon {
namespace {

struct StateRow {
    const char* name;
    bool (*isSet)(const QAccessible::State&);
};

// The states of painted and ordinary controls; window and text states are left out.
#define STATE(name)                                                                                \
    {                                                                                              \
#name, [](const QAccessible::State& s) { return bool(s.name); }                            \
    }
const StateRow kStates[] = {
    STATE(disabled),
    STATE(invisible),
    STATE(offscreen),
    STATE(focusable),
    STATE(focused),
    STATE(checkable),
    STATE(checked),
    STATE(checkStateMixed),
    STATE(pressed),
    STATE(hotTracked),
    STATE(selectable),
    STATE(selected),
    STATE(defaultButton),
    STATE(readOnly),
    STATE(expandable),
    STATE(expanded),
    STATE(collapsed),
    STATE(busy),
    STATE(linked),
    STATE(hasPopup),
    STATE(editable),
};
#undef STATE

QScriptValue stateOf(QScriptEngine* engine, const QAccessible::State& state)
{
    QScriptValue object = engine->newObject();
    for (const StateRow& row : kStates)
        object.setProperty(row.name, row.isSet(state));
    return object;
}

QScriptValue describe(QScriptEngine* engine, QAccessibleInterface* child, const QWidget* widget)
{
    const QRect onScreen = child->rect();
    const QRect rect(widget->mapFromGlobal(onScreen.topLeft()), onScreen.size());
    const char* role = QMetaEnum::fromType<QAccessible::Role>().valueToKey(child->role());
    QScriptValue object = engine->newObject();
    object.setProperty("name", child->text(QAccessible::Name));
    object.setProperty("role", QString(role));
    object.setProperty("state", stateOf(engine, child->state()));
    object.setProperty("rectangle", toScript(engine, QRectF(rect)));
    if (QAccessibleActionInterface* actions = child->actionInterface())
        object.setProperty("actions", toScript(engine, actions->actionNames()));
    object.setProperty("rect", object.property("rectangle"), QScriptValue::SkipInEnumeration);
    return object;
}

QScriptValue accessible(QScriptContext* context, QScriptEngine* engine)
{
    QWidget* widget = widgetArgument(context, 0);
    if (!widget)
        return QScriptValue();
    settle();
    QScriptValue list = engine->newArray();
    QAccessibleInterface* parent = QAccessible::queryAccessibleInterface(widget);
    for (int i = 0, at = 0; parent && i < parent->childCount(); ++i)
        if (QAccessibleInterface* child = parent->child(i))
            list.setProperty(quint32(at++), describe(engine, child, widget));
    return list;
}

const NativeRow kAccessible[] = {
    {"accessible", accessible},
};

} // namespace

void addAccessibleFunctions(QScriptValue bench)
{
    addNatives(bench, kAccessible);
}

} // namespace quillon
