// dzskeleton.h - a node whose bones can be found by name.
#pragma once

#include "dznode.h"

class DzBone;

typedef QList<DzBone*> DzBoneList;

class DZCORE_EXPORT DzSkeleton : public DzNode {
    Q_OBJECT
public:
    explicit DzSkeleton(const QString& name = QString());
    ~DzSkeleton() override;

    DzSkeleton* getSkeleton() const override; // itself
    DzBone* findBone(const QString& name) const; // exact; null when absent
    DzBone* findBoneByLabel(const QString& label) const;
    QObjectList getAllBones() const; // parents before their children
    void getAllBones(DzBoneList& out) const;
    DzSkeleton* getFollowTarget() const; // the figure this one is fitted to; null: none
    void setFollowTarget(DzSkeleton*);
    // Takes a bone out for good; its children hang on its parent. This changes the rig, not the
    // scene: it is not recorded.
    bool removeBone(DzBone*);

private:
    friend class DzNode;
    void collectBones(const DzNode* below) const;
    void bonesDidChange(); // names or structure: drops the lookup table

    mutable bool m_bonesValid;
    mutable DzBoneList m_bones;
    mutable QHash<QString, DzBone*> m_boneByName;
    DzSkeleton* m_followTarget;
    QList<DzNode*> m_removedBones; // undo steps may still speak of them
};
