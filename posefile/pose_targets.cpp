#include "posefile/pose_targets.h"

#include "figure/figure_lookup.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <cstring>

namespace quillon {

int nameIdOf(const TextSpan& name)
{
    return nameIdOfBytes(name.begin, name.end);
}

PoseTargets::PoseTargets(DzSkeleton* figure)
    : m_figure(figure)
    , m_model(modelOf(figure))
    , m_lastName(TextSpan {nullptr, nullptr})
    , m_lastId(-1)
{
}

// -1 also for a name that is in none of the model's tables.
int PoseTargets::knownId(const TextSpan& name)
{
    const ptrdiff_t length = name.end - name.begin;
    if (length == m_lastName.end - m_lastName.begin && length > 0
        && std::memcmp(name.begin, m_lastName.begin, size_t(length)) == 0)
        return m_lastId;
    const int id = nameIdOf(name);
    m_lastName = name;
    m_lastId = boneNumberOf(id, m_model) >= 0 || controlNumberOf(id, m_model) >= 0 ? id : -1;
    return m_lastId;
}

DzFloatProperty* PoseTargets::control(int id)
{
    if (!m_controlKnown.test(size_t(id))) {
        m_control[id] = findControl(nameText(id), m_figure);
        m_controlKnown.set(size_t(id));
    }
    return m_control[id];
}

DzBone* PoseTargets::bone(int id)
{
    if (!m_boneKnown.test(size_t(id))) {
        m_bone[id] = findBone(nameText(id), m_figure);
        m_boneKnown.set(size_t(id));
    }
    return m_bone[id];
}

static DzFloatProperty* transformChannel(const DzNode* node, int code)
{
    switch (code) {
    case RotateX:
        return node->getXRotControl();
    case RotateY:
        return node->getYRotControl();
    case RotateZ:
        return node->getZRotControl();
    case TranslateX:
        return node->getXPosControl();
    case TranslateY:
        return node->getYPosControl();
    case TranslateZ:
        return node->getZPosControl();
    default:
        return nullptr;
    }
}

DzFloatProperty* PoseTargets::channel(const TextSpan& name, int code)
{
    if (code == NoChannel)
        return nullptr;
    if (isRootName(name))
        return transformChannel(m_figure, code);
    const int id = knownId(name);
    if (id < 0)
        return nullptr;
    if (code == ControlValue)
        return control(id);
    if (boneNumberOf(id, m_model) == kHipNumber && code >= TranslateX)
        return nullptr;
    const DzBone* node = bone(id);
    return node ? transformChannel(node, code) : nullptr;
}

} // namespace quillon
