#include "host/driver/bench_scene_state.h"

#include "host/driver/script_values.h"

#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzrotationorder.h"
#include "dzscene.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace quillon {
namespace {

struct SceneState {
    QByteArray text;
    QStringList locked;
    QStringList notFinite;
};

const int kUsualBytes = 512 * 1024;

// Appends to the line of one channel.
class ChannelLine {
public:
    explicit ChannelLine(QByteArray* text)
        : m_text(text)
    {
    }
    void add(float number)
    {
        quint32 bits;
        std::memcpy(&bits, &number, sizeof bits);
        addNumber(bits, 16);
        m_isFinite = m_isFinite && std::isfinite(number);
    }
    void add(int number)
    {
        addNumber(number, 10);
    }
    bool isFinite() const
    {
        return m_isFinite;
    }

private:
    template <typename Number> void addNumber(Number number, int base)
    {
        char digits[16] = {' '};
        const auto end = std::to_chars(digits + 1, digits + sizeof digits, number, base);
        m_text->append(digits, int(end.ptr - digits));
    }

    QByteArray* m_text;
    bool m_isFinite = true;
};

void addChannel(const QString& name, const DzFloatProperty* p, SceneState* state)
{
    state->text += name.toUtf8();
    ChannelLine line(&state->text);
    for (float number : {p->getDefaultValue(), p->getMin(), p->getMax(), p->getSensitivity()})
        line.add(number);
    for (bool flag : {p->isLocked(), p->isClamped(), p->isOverridingControllers()})
        line.add(int(flag));
    for (int i = 0; i < p->getNumKeys(); ++i) {
        line.add(p->getKeyTime(i));
        line.add(p->getKeyValue(i));
    }
    state->text += '\n';
    if (p->isLocked())
        state->locked += name;
    if (!line.isFinite() || !std::isfinite(p->getValue()))
        state->notFinite += name;
}

void addNode(const DzNode* node, SceneState* state)
{
    const QString start = node->getName() + QLatin1Char('/');
    state->text += (start + node->getRotationOrder().toString()).toUtf8() + '\n';
    for (int i = 0; i < node->getNumProperties(); ++i)
        if (const DzFloatProperty* p = qobject_cast<DzFloatProperty*>(node->getProperty(i)))
            addChannel(start + p->getName(), p, state);
    const DzObject* object = node->getObject();
    for (int i = 0; object && i < object->getNumModifiers(); ++i)
        if (const DzMorph* morph = qobject_cast<DzMorph*>(object->getModifier(i)))
            addChannel(start + morph->getName(), morph->getValueChannel(), state);
}

QScriptValue sceneState(QScriptContext*, QScriptEngine* engine)
{
    SceneState state;
    state.text.reserve(kUsualBytes);
    for (int i = 0; i < dzScene->getNumNodes(); ++i)
        addNode(dzScene->getNode(i), &state);
    QScriptValue object = engine->newObject();
    object.setProperty("text", QString::fromUtf8(state.text));
    object.setProperty("locked", toScript(engine, state.locked));
    object.setProperty("notFinite", toScript(engine, state.notFinite));
    return object;
}

const NativeRow kSceneState[] = {
    {"sceneState", sceneState},
};

} // namespace

void addSceneStateFunctions(QScriptValue bench)
{
    addNatives(bench, kSceneState);
}

} // namespace quillon
