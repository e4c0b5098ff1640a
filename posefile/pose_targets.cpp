#include "posefile/pose_targets.h"

#include "figure/figure_lookup.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <QByteArray>

#include <cstring>
#include <vector>

namespace quillon {

namespace {

const int kSlotCount = 2048; // a power of two, at most a third in use
const int kMaxNameLength = 64;
const int kHipId = 0;

struct ByteIndex {
    std::vector<QByteArray> names; // by name id
    short slots_[kSlotCount]; // name ids, open addressing; -1: free
};

} // namespace

static unsigned slotOf(const char* name, int length)
{
    unsigned h = 2166136261u; // FNV-1a
    for (int i = 0; i < length; ++i)
        h = (h ^ static_cast<unsigned char>(name[i])) * 16777619u;
    return (h ^ h >> 15) % kSlotCount;
}

static ByteIndex buildIndex()
{
    ByteIndex index;
    std::memset(index.slots_, -1, sizeof index.slots_);
    for (int id = 0; id < kNameCount; ++id) {
        const QByteArray name = nameText(id).toLatin1();
        Q_ASSERT_X(name.size() < kMaxNameLength, "pose_targets", "a name too long to be joined");
        unsigned slot = slotOf(name.constData(), name.size());
        while (index.slots_[slot] >= 0)
            slot = (slot + 1) % kSlotCount;
        index.slots_[slot] = short(id);
        index.names.push_back(name);
    }
    return index;
}

static int idOf(const char* name, int length)
{
    static const ByteIndex index = buildIndex();
    for (unsigned slot = slotOf(name, length);; slot = (slot + 1) % kSlotCount) {
        const int id = index.slots_[slot];
        if (id < 0)
            return -1;
        const QByteArray& known = index.names[size_t(id)];
        if (known.size() == length && std::memcmp(known.constData(), name, size_t(length)) == 0)
            return id;
    }
}

int nameIdOf(const TextSpan& name)
{
    const int length = int(name.end - name.begin);
    if (length <= 0)
        return -1;
    if (!std::memchr(name.begin, '\n', size_t(length)))
        return idOf(name.begin, length);
    char joined[kMaxNameLength];
    int count = 0;
    for (const char* at = name.begin; at < name.end; ++at) {
        if (*at == '\n')
            continue;
        if (count == kMaxNameLength)
            return -1;
        joined[count++] = *at;
    }
    return idOf(joined, count);
}

PoseTargets::PoseTargets(DzSkeleton* figure)
    : m_figure(figure)
    , m_lastName(TextSpan {nullptr, nullptr})
    , m_lastId(-1)
{
}

// -1 also for a name that is in no active table.
int PoseTargets::knownId(const TextSpan& name)
{
    const ptrdiff_t length = name.end - name.begin;
    if (length == m_lastName.end - m_lastName.begin && length > 0
        && std::memcmp(name.begin, m_lastName.begin, size_t(length)) == 0)
        return m_lastId;
    const int id = nameIdOf(name);
    m_lastName = name;
    m_lastId = id < kBoneCount || isBodyControl(nameText(id)) ? id : -1;
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
    if (id == kHipId && code >= TranslateX)
        return nullptr;
    const DzBone* node = bone(id);
    return node ? transformChannel(node, code) : nullptr;
}

} // namespace quillon
