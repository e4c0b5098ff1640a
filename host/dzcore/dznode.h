// dznode.h - a thing with a place in the scene.
//
// World: right-handed, Y up, centimetres; degrees at the channels. Column form of the composition
// (g: world, p: parent, O: orientation, R: rotation channels in the node's order):
//   position  g = p.position + p.rotation p.scale (origin - p.origin + translation)
//   rotation  g = p.rotation O R O'                        (stored: local * parent world)
//   scale     g = p.scale O S general O'                   (node inherits scale)
//             g = p.scale p.local' O S general O'          (otherwise)
//   vertex    position + rotation scale (v - origin)
// A setter writes the channels with setValue: locks, controllers and limits act on it, and it
// places keys. Of the Euler solutions of a rotation it takes the one nearest to the present
// channel values, whole turns included, among those that the limits of clamped channels allow;
// where there is none, the nearest of all.
#pragma once

#include "dzbox3.h"
#include "dzelement.h"
#include "dzmatrix3.h"
#include "dzquat.h"
#include "dzrotationorder.h"
#include "dztime.h"
#include "dzvec3.h"

#include <QList>

class DzFloatProperty;
class DzNode;
class DzObject;
class DzScene;
class DzSkeleton;

typedef QList<DzNode*> DzNodeList;

class DZCORE_EXPORT DzNode : public DzElement {
    Q_OBJECT
public:
    explicit DzNode(const QString& name = QString());
    ~DzNode() override; // deletes its children and its object

    bool isRootNode() const; // has no parent
    bool isInScene() const override;
    Q_INVOKABLE bool isSelected() const;
    Q_INVOKABLE void select(bool onOff = true); // not recorded by the undo stack

    DzNode* getNodeParent() const;
    int getNumNodeChildren() const;
    DzNode* getNodeChild(int i) const;
    QObjectList getNodeChildren(bool recurse = false) const; // parents before their children
    void getNodeChildren(DzNodeList& out, bool recurse = false) const;
    DzNode* findNodeChild(const QString& name, bool recurse) const;
    // Gives the node a parent; inPlace keeps its world transform. Undoable. Refuses (false) a node
    // that is this one or above it.
    bool addNodeChild(DzNode*, bool inPlace = false);
    bool removeNodeChild(DzNode*, bool inPlace = false); // it becomes a root node

    virtual DzSkeleton* getSkeleton() const; // the nearest one upwards; null without
    DzObject* getObject() const;
    void setObject(DzObject*); // takes ownership

    DzFloatProperty* getXPosControl() const;
    DzFloatProperty* getYPosControl() const;
    DzFloatProperty* getZPosControl() const;
    DzFloatProperty* getXRotControl() const;
    DzFloatProperty* getYRotControl() const;
    DzFloatProperty* getZRotControl() const;
    DzFloatProperty* getScaleControl() const; // general
    DzFloatProperty* getXScaleControl() const;
    DzFloatProperty* getYScaleControl() const;
    DzFloatProperty* getZScaleControl() const;
    DzFloatProperty* getOriginXControl() const; // hidden, not animatable; so are the next five
    DzFloatProperty* getOriginYControl() const;
    DzFloatProperty* getOriginZControl() const;
    DzFloatProperty* getOrientXControl() const; // degrees, always in the order XYZ
    DzFloatProperty* getOrientYControl() const;
    DzFloatProperty* getOrientZControl() const;

    // World space. defaultVal: as if every channel had its default value.
    DzVec3 getWSPos() const;
    DzVec3 getWSPos(DzTime, bool defaultVal = false) const;
    DzQuat getWSRot() const;
    DzQuat getWSRot(DzTime, bool defaultVal = false) const;
    DzMatrix3 getWSScale() const;
    DzMatrix3 getWSScale(DzTime, bool defaultVal = false) const;
    void getWSTransform(DzVec3&, DzQuat&, DzMatrix3&) const;
    void getWSTransform(DzTime, DzVec3&, DzQuat&, DzMatrix3&) const;
    void setWSPos(const DzVec3&);
    void setWSPos(DzTime, const DzVec3&);
    void setWSRot(const DzQuat&);
    void setWSRot(DzTime, const DzQuat&);
    void setWSScale(const DzMatrix3&); // writes X/Y/ZScale, sets the general scale to 1
    void setWSScale(DzTime, const DzMatrix3&);
    void setWSTransform(const DzVec3&, const DzQuat&, const DzMatrix3&);
    void setWSTransform(DzTime, const DzVec3&, const DzQuat&, const DzMatrix3&);

    // Against the parent. The position is the translation offset: 0 for a resting bone.
    DzVec3 getLocalPos() const;
    DzVec3 getLocalPos(DzTime, bool defaultVal = false) const;
    DzQuat getLocalRot() const;
    DzQuat getLocalRot(DzTime, bool defaultVal = false) const;
    DzMatrix3 getLocalScale() const;
    DzMatrix3 getLocalScale(DzTime, bool defaultVal = false) const;
    void setLocalPos(const DzVec3&);
    void setLocalPos(DzTime, const DzVec3&);
    void setLocalRot(const DzQuat&);
    void setLocalRot(DzTime, const DzQuat&);
    void setLocalScale(const DzMatrix3&);
    void setLocalScale(DzTime, const DzMatrix3&);

    virtual DzVec3 getOrigin(bool defaultVal = false) const;
    virtual void setOrigin(const DzVec3&, bool makeDefault = false); // translation stays as it is
    DzQuat getOrientation(bool defaultVal = false) const;
    void setOrientation(const DzQuat&, bool makeDefault = false);
    DzRotationOrder getRotationOrder() const;
    void setRotationOrder(DzRotationOrder); // channels keep their values. Undoable
    bool inheritsScale() const;
    void setInheritScale(bool); // undoable

    // Along the world axes, relative to the origin point; invalid without geometry.
    DzBox3 getLocalBoundingBox() const;
    DzBox3 getWSBoundingBox() const; // children included
    void invalidateBoundingBoxes();

    DzVec3 getEndPoint() const; // where the next joint is, in the space of the origin; bones
    void setEndPoint(const DzVec3&);

signals:
    void transformChanged();
    void rotationOrderChanged();
    void selectedStateChanged();
    void childListChanged();
    void parentChanged();

protected:
    void nameDidChange() override;

private:
    friend class DzFloatProperty;
    friend class DzScene;
    friend class DzSkeleton;
    friend class DzPlaceChange;
    struct Transform; // dztransform.h: doubles, column form

    void addChannels();
    DzFloatProperty* addChannel(
        const char* name, const char* label, float def, float sensitivity, bool hidden);
    void invalidateTransform(); // this node and everything below it
    const Transform& currentTransform() const;
    Transform transformAt(DzTime, bool defaults) const;
    void composeWith(const Transform* parent, DzTime, bool defaults, Transform* out) const;
    void setRotationFromLocal(DzTime, const DzQuat& local);

    // Where a node hangs: below a parent, among the roots of a scene, or nowhere.
    struct Place {
        DzScene* scene;
        DzNode* parent;
        int index;
    };
    Place place() const;
    void moveTo(const Place&); // without undo
    void recordPlace(); // call before moveTo
    void forgetPlaces(); // steps that moved it do nothing any more
    void detach(); // to nowhere, without undo
    void setSceneBelow(DzScene*);
    void structureDidChange(); // drops lookup tables above

    enum { PosX, PosY, PosZ, RotX, RotY, RotZ, ScaleX, ScaleY, ScaleZ, ScaleAll, ChannelCount };
    DzFloatProperty* m_channel[ChannelCount];
    DzFloatProperty* m_origin[3];
    DzFloatProperty* m_orient[3];
    DzNode* m_parent;
    QList<DzNode*> m_children;
    DzObject* m_object;
    DzScene* m_scene; // set while the node, or the root above it, is part of a scene
    DzRotationOrder m_order;
    bool m_inheritsScale;
    bool m_selected;
    DzVec3 m_endPoint;
    mutable Transform* m_current; // owned; cache for the scene's current time
    mutable unsigned m_currentEpoch;
};
