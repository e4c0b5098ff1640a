// dzbase.h - root of everything that has a name: elements, properties, controllers, scripts.
#pragma once

#include "dzcore_export.h"

#include <QObject>
#include <QString>

class DZCORE_EXPORT DzBase : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ getName WRITE setName)
public:
    explicit DzBase(const QString& name = QString());
    ~DzBase() override;

    Q_INVOKABLE QString getName() const;
    Q_INVOKABLE void setName(const QString&); // undoable
    Q_INVOKABLE QString className() const; // "DzBone"; never that of a base class
    // Part of a scene, so that changes are recorded by the undo stack. False for things under
    // construction and for those that belong to no scene.
    virtual bool isInScene() const;
    Q_INVOKABLE bool iskindof(const QString& className) const; // this class or one of its bases

signals:
    void nameChanged(const QString& name);

protected:
    virtual void nameDidChange(); // base: emits nameChanged

private:
    QString m_name;
};
