#include "host/driver/bench_state.h"

#include "host/driver/script_values.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzmodifier.h"
#include "dzmorph.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzskeleton.h"

namespace quillon {
namespace {

typedef QScriptValue (*ReadChannel)(QScriptEngine*, const DzFloatProperty*);

QScriptValue finalValue(QScriptEngine*, const DzFloatProperty* p)
{
    return double(p->getValue());
}

QScriptValue rawValue(QScriptEngine*, const DzFloatProperty* p)
{
    return double(p->getRawValue());
}

QScriptValue flags(QScriptEngine* engine, const DzFloatProperty* p)
{
    QScriptValue object = engine->newObject();
    object.setProperty("locked", p->isLocked());
    object.setProperty("clamped", p->isClamped());
    return object;
}

bool isTransformChannel(const DzNode* node, const DzFloatProperty* p)
{
    const DzFloatProperty* const channels[] = {node->getXPosControl(), node->getYPosControl(),
        node->getZPosControl(), node->getXRotControl(), node->getYRotControl(),
        node->getZRotControl(), node->getScaleControl(), node->getXScaleControl(),
        node->getYScaleControl(), node->getZScaleControl()};
    for (const DzFloatProperty* channel : channels)
        if (channel == p)
            return true;
    return false;
}

void addNode(QScriptValue state, const DzNode* node, bool isRoot, ReadChannel read)
{
    for (int i = 0; i < node->getNumProperties(); ++i) {
        const DzFloatProperty* p = qobject_cast<DzFloatProperty*>(node->getProperty(i));
        if (!p || p->isHidden())
            continue;
        const QScriptValue value = read(state.engine(), p);
        const QString own = node->getName() + QLatin1Char('/') + p->getName();
        if (!isRoot) {
            state.setProperty(own, value);
        } else if (isTransformChannel(node, p)) {
            state.setProperty(QString("figure/") + p->getName(), value);
            state.setProperty(own, value, QScriptValue::SkipInEnumeration);
        } else {
            state.setProperty(p->getName(), value);
        }
    }
}

void addMorphs(QScriptValue state, const DzObject* object, ReadChannel read)
{
    for (int i = 0; object && i < object->getNumModifiers(); ++i)
        if (const DzMorph* morph = qobject_cast<DzMorph*>(object->getModifier(i)))
            state.setProperty(morph->getName(), read(state.engine(), morph->getValueChannel()));
}

template <ReadChannel read> QScriptValue stateOf(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = objectArgument<DzNode>(context, 0);
    if (!node)
        return QScriptValue();
    const DzSkeleton* skeleton = node->getSkeleton();
    const DzNode* root = skeleton ? skeleton : node;
    QScriptValue state = engine->newObject();
    addNode(state, root, true, read);
    DzBoneList bones;
    if (skeleton)
        skeleton->getAllBones(bones);
    for (const DzBone* bone : std::as_const(bones))
        addNode(state, bone, false, read);
    addMorphs(state, root->getObject(), read);
    return state;
}

const NativeRow kState[] = {
    {"poseState", stateOf<finalValue>},
    {"rawState", stateOf<rawValue>},
    {"flagState", stateOf<flags>},
};

} // namespace

void addStateFunctions(QScriptValue bench)
{
    addNatives(bench, kState);
}

} // namespace quillon
