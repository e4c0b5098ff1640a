#include "dzskeleton.h"

#include "dzbone.h"
#include "dzclock.h"
#include "dzhostcalls.h"
#include "dzundostack.h"

#include <utility>

DzSkeleton::DzSkeleton(const QString& name)
    : DzNode(name)
    , m_bonesValid(false)
    , m_followTarget(nullptr)
{
}

DzSkeleton::~DzSkeleton()
{
    qDeleteAll(m_removedBones);
}

DzSkeleton* DzSkeleton::getSkeleton() const
{
    DZ_HOST_SEEN("getSkeleton");
    return const_cast<DzSkeleton*>(this);
}

void DzSkeleton::collectBones(const DzNode* below) const
{
    if (below == this) {
        m_bones.clear();
        m_boneByName.clear();
    }
    for (int i = 0; i < below->getNumNodeChildren(); ++i) {
        DzNode* child = below->getNodeChild(i);
        if (child->inherits("DzSkeleton"))
            continue; // another figure, with bones of its own
        if (DzBone* bone = qobject_cast<DzBone*>(child)) {
            m_bones.append(bone);
            if (!m_boneByName.contains(bone->getName()))
                m_boneByName.insert(bone->getName(), bone);
        }
        collectBones(child);
    }
    m_bonesValid = true;
}

void DzSkeleton::bonesDidChange()
{
    m_bonesValid = false;
}

DzBone* DzSkeleton::findBone(const QString& name) const
{
    if (DZ_HOST_CALL("findBone"))
        return nullptr;
    if (!m_bonesValid)
        collectBones(this);
    return m_boneByName.value(name, nullptr);
}

DzBone* DzSkeleton::findBoneByLabel(const QString& label) const
{
    if (!m_bonesValid)
        collectBones(this);
    for (DzBone* bone : m_bones)
        if (bone->getLabel() == label)
            return bone;
    return nullptr;
}

QObjectList DzSkeleton::getAllBones() const
{
    DzBoneList bones;
    getAllBones(bones);
    QObjectList list;
    for (DzBone* bone : std::as_const(bones))
        list.append(bone);
    return list;
}

void DzSkeleton::getAllBones(DzBoneList& out) const
{
    if (!m_bonesValid)
        collectBones(this);
    out = m_bones;
}

DzSkeleton* DzSkeleton::getFollowTarget() const
{
    return m_followTarget;
}

void DzSkeleton::setFollowTarget(DzSkeleton* target)
{
    m_followTarget = target;
}

bool DzSkeleton::removeBone(DzBone* bone)
{
    if (!bone || bone->getSkeleton() != this)
        return false;
    const DzUndoStackLock lock;
    bone->select(false);
    DzNode* parent = bone->getNodeParent();
    while (bone->getNumNodeChildren() > 0)
        parent->addNodeChild(bone->getNodeChild(0));
    bone->detach();
    m_removedBones.append(bone);
    noteSceneChange();
    return true;
}
