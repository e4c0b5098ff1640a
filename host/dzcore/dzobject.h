// dzobject.h - the geometry of a node: its box and its modifiers.
#pragma once

#include "dzbox3.h"
#include "dzelement.h"

class DzModifier;
class DzNode;

class DZCORE_EXPORT DzObject : public DzElement {
    Q_OBJECT
public:
    explicit DzObject(const QString& name = QString());
    ~DzObject() override; // deletes its modifiers

    bool isInScene() const override; // as its node
    int getNumModifiers() const;
    DzModifier* getModifier(int i) const; // null outside 0..n-1
    DzModifier* findModifier(const QString& name) const; // exact; null when absent
    bool addModifier(DzModifier*); // takes ownership; false when the name is taken
    bool removeModifier(DzModifier*); // unreachable afterwards, deleted with the object

    DzBox3 getGeometryBox() const; // in the object's own space, cm
    void setGeometryBox(const DzBox3&);

private:
    friend class DzNode;
    DzNode* m_node; // whose geometry this is
    QList<DzModifier*> m_modifiers;
    QHash<QString, DzModifier*> m_byName;
    QList<DzModifier*> m_removed;
    DzBox3 m_box;
};
