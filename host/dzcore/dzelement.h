// dzelement.h - a named, labelled owner of properties: nodes, objects, modifiers.
#pragma once

#include "dzbase.h"

#include <QHash>
#include <QList>

class DzProperty;

class DZCORE_EXPORT DzElement : public DzBase {
    Q_OBJECT
    Q_PROPERTY(QString label READ getLabel WRITE setLabel)
public:
    explicit DzElement(const QString& name = QString());
    ~DzElement() override; // deletes its properties

    Q_INVOKABLE QString getLabel() const; // the name while no label was set
    Q_INVOKABLE void setLabel(const QString&);

    int getNumProperties() const;
    DzProperty* getProperty(int i) const; // in order of creation; null outside 0..n-1
    DzProperty* findProperty(const QString& name) const; // exact; null when absent
    DzProperty* findProperty(const QString& name, bool caseSensitive) const;
    DzProperty* findPropertyByLabel(const QString& label) const;

    bool addProperty(DzProperty*); // takes ownership; false when the name is taken
    // Takes the property out of the lists and cuts its links to others. The object lives on,
    // unreachable, as long as the element does, because undo steps may still speak of it. This
    // changes the rig, not the scene: it is not recorded, and the links are gone for good.
    bool removeProperty(DzProperty*);

    void beginEdit();
    void finishEdit();
    void cancelEdit(); // beginEdit..finishEdit is one undo step; cancelEdit takes it back

signals:
    void labelChanged(const QString& label);
    void propertyAdded(DzProperty*);
    void propertyRemoved(DzProperty*);
    void propertyListChanged();

private:
    friend class DzProperty;
    void propertyNameChanged();

    QString m_label;
    QList<DzProperty*> m_properties;
    QHash<QString, DzProperty*> m_byName;
    QList<DzProperty*> m_removed;
};
