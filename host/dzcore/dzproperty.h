// dzproperty.h - a value of an element: lock, controllers, keys.
#pragma once

#include "dzbase.h"
#include "dztimerange.h"

#include <QList>

class DzController;
class DzElement;

class DZCORE_EXPORT DzProperty : public DzBase {
    Q_OBJECT
public:
    explicit DzProperty(const QString& name, bool canAnimate, bool isUser = false);
    ~DzProperty() override; // deletes its controllers

    DzElement* getOwner() const; // null until added to an element
    bool isInScene() const override; // as its owner
    Q_INVOKABLE QString getLabel() const; // the name while no label was set
    Q_INVOKABLE void setLabel(const QString&);
    QString getPath() const; // where a slider panel shows it: "Pose/Head"; may be empty
    void setPath(const QString&);
    bool isHidden() const;
    void setHidden(bool);

    // A locked property takes no value and no key; its controllers still move it.
    virtual bool isLocked() const = 0;
    virtual void lock(bool onOff = true) = 0;

    bool canAnimate() const;
    virtual bool hasKeys() const = 0;
    virtual int getNumKeys() const = 0;
    virtual int getNumKeys(const DzTimeRange&) const = 0;
    virtual DzTime getKeyTime(int i) const = 0; // ascending; 0 outside 0..n-1
    virtual DzTimeRange getKeyRange() const = 0; // first to last key; (0, 0) without keys
    virtual void deleteKeys(const DzTimeRange&) = 0;
    virtual void deleteAllKeys() = 0;

    bool hasControllers() const;
    int getNumControllers() const;
    DzController* getController(int i) const; // in the order in which they apply; null outside
    // Appends and takes ownership; false (and nothing taken) when a circle of drivers would arise.
    bool insertController(DzController*);
    bool removeController(DzController*); // deletes it

    virtual bool setOverrideControllers(bool) = 0; // true: controllers have no effect
    virtual bool isOverridingControllers() const = 0;

signals:
    void currentValueChanged();
    void lockStateChanged(bool locked);
    void labelChanged(const QString&);

protected:
    void nameDidChange() override;
    // The value at the current time may have changed: drops caches and tells whoever depends on
    // it. Does nothing when the caches are already dropped.
    virtual void valueDidChange() = 0;

    QList<DzController*> m_controllers;
    QList<DzController*> m_driven; // controllers of other properties that read this one

private:
    friend class DzElement;
    friend class DzController;

    DzElement* m_owner;
    QString m_label;
    QString m_path;
    bool m_canAnimate;
    bool m_isUser;
    bool m_hidden;
};
