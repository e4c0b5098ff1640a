#include "dznode.h"

#include "dzclock.h"
#include "dzfloatproperty.h"
#include "dzhostcalls.h"
#include "dzinexact.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzskeleton.h"
#include "dztransform.h"
#include "dzundoitem.h"
#include "dzundostack.h"

#include <QPointer>
#include <QScopedPointer>

#include <utility>

namespace {

const float kPositionStep = 0.1f; // cm
const float kRotationStep = 0.5f; // degrees
const float kScaleStep = 0.01f;

} // namespace

DzNode::DzNode(const QString& name)
    : DzElement(name)
    , m_parent(nullptr)
    , m_object(nullptr)
    , m_scene(nullptr)
    , m_inheritsScale(true)
    , m_selected(false)
    , m_current(new Transform)
    , m_currentEpoch(0)
{
    addChannels();
}

DzNode::~DzNode()
{
    if (m_parent || m_scene)
        detach();
    while (!m_children.isEmpty()) {
        DzNode* child = m_children.last();
        child->detach();
        delete child;
    }
    delete m_object;
    delete m_current;
    forgetPlaces();
}

DzFloatProperty* DzNode::addChannel(
    const char* name, const char* label, float def, float sensitivity, bool hidden)
{
    auto* p = new DzFloatProperty(QLatin1String(name), !hidden, false, def);
    p->m_state.sensitivity = sensitivity;
    p->setLabel(QLatin1String(label));
    p->setHidden(hidden);
    p->setPath(QLatin1String(hidden ? "Rig" : "Transforms"));
    p->m_transformOf = this;
    addProperty(p);
    return p;
}

void DzNode::addChannels()
{
    struct Row {
        DzFloatProperty** slot;
        const char *name, *label;
        float def, step;
        bool hidden;
    };
    const Row rows[] = {
        {&m_channel[PosX], "XTranslate", "X Translate", 0, kPositionStep, false},
        {&m_channel[PosY], "YTranslate", "Y Translate", 0, kPositionStep, false},
        {&m_channel[PosZ], "ZTranslate", "Z Translate", 0, kPositionStep, false},
        {&m_channel[RotX], "XRotate", "X Rotate", 0, kRotationStep, false},
        {&m_channel[RotY], "YRotate", "Y Rotate", 0, kRotationStep, false},
        {&m_channel[RotZ], "ZRotate", "Z Rotate", 0, kRotationStep, false},
        {&m_channel[ScaleAll], "Scale", "Scale", 1, kScaleStep, false},
        {&m_channel[ScaleX], "XScale", "X Scale", 1, kScaleStep, false},
        {&m_channel[ScaleY], "YScale", "Y Scale", 1, kScaleStep, false},
        {&m_channel[ScaleZ], "ZScale", "Z Scale", 1, kScaleStep, false},
        {&m_origin[0], "XOrigin", "X Origin", 0, kPositionStep, true},
        {&m_origin[1], "YOrigin", "Y Origin", 0, kPositionStep, true},
        {&m_origin[2], "ZOrigin", "Z Origin", 0, kPositionStep, true},
        {&m_orient[0], "XOrientation", "X Orientation", 0, kRotationStep, true},
        {&m_orient[1], "YOrientation", "Y Orientation", 0, kRotationStep, true},
        {&m_orient[2], "ZOrientation", "Z Orientation", 0, kRotationStep, true},
    };
    for (const Row& r : rows)
        *r.slot = addChannel(r.name, r.label, r.def, r.step, r.hidden);
}

// ---- selection ------------------------------------------------------------------------------

bool DzNode::isSelected() const
{
    return m_selected;
}

void DzNode::select(bool onOff)
{
    if (onOff == m_selected || (onOff && !m_scene))
        return;
    m_selected = onOff;
    m_scene->nodeSelected(this, onOff);
    emit selectedStateChanged();
}

// ---- tree -----------------------------------------------------------------------------------

bool DzNode::isInScene() const
{
    return m_scene;
}

bool DzNode::isRootNode() const
{
    return !m_parent;
}

DzNode* DzNode::getNodeParent() const
{
    return m_parent;
}

int DzNode::getNumNodeChildren() const
{
    return m_children.size();
}

DzNode* DzNode::getNodeChild(int i) const
{
    return i >= 0 && i < m_children.size() ? m_children.at(i) : nullptr;
}

QObjectList DzNode::getNodeChildren(bool recurse) const
{
    DzNodeList nodes;
    getNodeChildren(nodes, recurse);
    QObjectList list;
    for (DzNode* node : std::as_const(nodes))
        list.append(node);
    return list;
}

void DzNode::getNodeChildren(DzNodeList& out, bool recurse) const
{
    for (DzNode* child : m_children) {
        out.append(child);
        if (recurse)
            child->getNodeChildren(out, true);
    }
}

DzNode* DzNode::findNodeChild(const QString& name, bool recurse) const
{
    for (DzNode* child : m_children) {
        if (child->getName() == name)
            return child;
        if (DzNode* below = recurse ? child->findNodeChild(name, true) : nullptr)
            return below;
    }
    return nullptr;
}

DzSkeleton* DzNode::getSkeleton() const
{
    DZ_HOST_SEEN("getSkeleton");
    for (DzNode* n = m_parent; n; n = n->m_parent)
        if (DzSkeleton* skeleton = qobject_cast<DzSkeleton*>(n))
            return skeleton;
    return nullptr;
}

DzObject* DzNode::getObject() const
{
    return m_object;
}

void DzNode::setObject(DzObject* object)
{
    delete m_object;
    m_object = object;
    if (m_object)
        m_object->m_node = this;
    noteSceneChange();
}

// ---- moving within the tree -------------------------------------------------------------------

// Steps of the undo stack that move a node hold a share in it: a node that hangs nowhere dies with
// the last of them.
class DzPlaceChange : public DzUndoItem {
public:
    explicit DzPlaceChange(DzNode* node)
        : m_node(node)
        , m_place(node->place())
    {
        ++shares()[m_node];
    }
    ~DzPlaceChange() override
    {
        if (!m_node || --shares()[m_node] > 0)
            return;
        shares().remove(m_node);
        if (!m_node->m_parent && !m_node->m_scene)
            delete m_node;
    }
    void exchange() override
    {
        if (!m_node)
            return;
        const DzNode::Place present = m_node->place();
        m_node->moveTo(m_place);
        m_place = present;
    }

    static QHash<DzNode*, int>& shares()
    {
        static QHash<DzNode*, int>& g_shares = *new QHash<DzNode*, int>; // nodes may die at the end
        return g_shares;
    }

private:
    QPointer<DzNode> m_node; // null: it went with the one that it hung below
    DzNode::Place m_place;
};

void DzNode::forgetPlaces()
{
    DzPlaceChange::shares().remove(this);
}

DzNode::Place DzNode::place() const
{
    DzNode* self = const_cast<DzNode*>(this);
    if (m_parent)
        return {m_scene, m_parent, m_parent->m_children.indexOf(self)};
    return {m_scene, nullptr, m_scene ? m_scene->m_roots.indexOf(self) : 0};
}

void DzNode::recordPlace()
{
    if (dzUndoStack && dzUndoStack->isRecording())
        dzUndoStack->record(new DzPlaceChange(this));
}

void DzNode::setSceneBelow(DzScene* scene)
{
    if (!scene)
        select(false);
    m_scene = scene;
    for (DzNode* child : std::as_const(m_children))
        child->setSceneBelow(scene);
}

void DzNode::structureDidChange()
{
    if (DzSkeleton* skeleton = getSkeleton())
        skeleton->bonesDidChange();
    if (m_scene)
        m_scene->structureDidChange();
}

void DzNode::moveTo(const Place& to)
{
    DzScene* const before = m_scene;
    DzScene* const after = to.parent ? to.parent->m_scene : to.scene;
    structureDidChange();
    if (m_parent) {
        m_parent->m_children.removeOne(this);
        emit m_parent->childListChanged();
    } else if (m_scene) {
        m_scene->takeRoot(this);
    }
    if (before && before != after)
        setSceneBelow(nullptr);
    m_parent = to.parent;
    if (m_parent)
        m_parent->m_children.insert(qBound(0, to.index, m_parent->m_children.size()), this);
    else if (after)
        after->insertRoot(this, to.index);
    if (after && before != after)
        setSceneBelow(after);
    structureDidChange();
    invalidateTransform();
    emit parentChanged();
    if (m_parent)
        emit m_parent->childListChanged();
    if (before && !after)
        emit before->nodeRemoved(this);
    if (after && !before)
        emit after->nodeAdded(this);
    if (before || after)
        emit(after ? after : before)->nodeListChanged();
}

void DzNode::detach()
{
    moveTo({nullptr, nullptr, 0});
}

bool DzNode::addNodeChild(DzNode* child, bool inPlace)
{
    if (!child)
        return false;
    for (DzNode* n = this; n; n = n->m_parent)
        if (n == child)
            return false;
    const DzImplicitHold hold("Change Parent");
    DzVec3 position;
    DzQuat rotation;
    DzMatrix3 scale;
    child->getWSTransform(position, rotation, scale);
    if (m_scene || child->m_scene)
        child->recordPlace();
    child->moveTo({m_scene, this, m_children.size()});
    if (inPlace)
        child->setWSTransform(position, rotation, scale);
    return true;
}

bool DzNode::removeNodeChild(DzNode* child, bool inPlace)
{
    if (!child || child->m_parent != this)
        return false;
    const DzImplicitHold hold("Change Parent");
    DzVec3 position;
    DzQuat rotation;
    DzMatrix3 scale;
    child->getWSTransform(position, rotation, scale);
    if (m_scene)
        child->recordPlace();
    child->moveTo({m_scene, nullptr, m_scene ? m_scene->m_roots.size() : 0});
    if (inPlace)
        child->setWSTransform(position, rotation, scale);
    return true;
}

void DzNode::nameDidChange()
{
    structureDidChange();
    DzElement::nameDidChange();
}

// ---- channels -------------------------------------------------------------------------------

DzFloatProperty* DzNode::getXPosControl() const
{
    return m_channel[PosX];
}
DzFloatProperty* DzNode::getYPosControl() const
{
    return m_channel[PosY];
}
DzFloatProperty* DzNode::getZPosControl() const
{
    return m_channel[PosZ];
}
DzFloatProperty* DzNode::getXRotControl() const
{
    return m_channel[RotX];
}
DzFloatProperty* DzNode::getYRotControl() const
{
    return m_channel[RotY];
}
DzFloatProperty* DzNode::getZRotControl() const
{
    return m_channel[RotZ];
}
DzFloatProperty* DzNode::getScaleControl() const
{
    return m_channel[ScaleAll];
}
DzFloatProperty* DzNode::getXScaleControl() const
{
    return m_channel[ScaleX];
}
DzFloatProperty* DzNode::getYScaleControl() const
{
    return m_channel[ScaleY];
}
DzFloatProperty* DzNode::getZScaleControl() const
{
    return m_channel[ScaleZ];
}
DzFloatProperty* DzNode::getOriginXControl() const
{
    return m_origin[0];
}
DzFloatProperty* DzNode::getOriginYControl() const
{
    return m_origin[1];
}
DzFloatProperty* DzNode::getOriginZControl() const
{
    return m_origin[2];
}
DzFloatProperty* DzNode::getOrientXControl() const
{
    return m_orient[0];
}
DzFloatProperty* DzNode::getOrientYControl() const
{
    return m_orient[1];
}
DzFloatProperty* DzNode::getOrientZControl() const
{
    return m_orient[2];
}

DzRotationOrder DzNode::getRotationOrder() const
{
    return m_order;
}

void DzNode::setRotationOrder(DzRotationOrder order)
{
    if (DZ_HOST_CALL("setRotationOrder") || order == m_order)
        return;
    DzRotationOrder other = m_order;
    const QScopedPointer<DzUndoStackLock> forgotten(
        dzUndoForgetsOrigins ? new DzUndoStackLock : nullptr);
    dzRecordExchange(this, [this, other]() mutable {
        std::swap(m_order, other);
        invalidateTransform();
        noteSceneChange();
        emit rotationOrderChanged();
    });
    m_order = order;
    invalidateTransform();
    noteSceneChange();
    emit rotationOrderChanged();
}

bool DzNode::inheritsScale() const
{
    return m_inheritsScale;
}

void DzNode::setInheritScale(bool onOff)
{
    if (onOff == m_inheritsScale)
        return;
    dzRecordExchange(this, [this]() {
        m_inheritsScale = !m_inheritsScale;
        invalidateTransform();
        noteSceneChange();
    });
    m_inheritsScale = onOff;
    invalidateTransform();
    noteSceneChange();
}

DzVec3 DzNode::getEndPoint() const
{
    return m_endPoint;
}

void DzNode::setEndPoint(const DzVec3& point)
{
    m_endPoint = point;
}
