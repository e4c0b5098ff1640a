// dzactionmgr.h - every action of the main window, found by the name of its class.
// A widget without looks: it is always hidden.
#pragma once

#include "dzcore_export.h"

#include <QList>
#include <QString>
#include <QWidget>

class DzAction;
class DzPlugin;
class QMainWindow;

class DZCORE_EXPORT DzActionMgr : public QWidget {
    Q_OBJECT
public:
    explicit DzActionMgr(QMainWindow*); // a child of the main window
    ~DzActionMgr() override; // deletes the actions

    Q_INVOKABLE DzAction* findAction(const QString& className) const; // null when absent
    Q_INVOKABLE int getNumActions() const;
    Q_INVOKABLE DzAction* getAction(int i) const; // null outside 0..n-1

    // ---- for embedding applications --------------------------------------------------------
    void registerAction(DzAction*); // takes ownership
    // Makes one of every action class of the plug-in; the number made.
    int addPluginActions(const DzPlugin*);
    void removePluginActions(const DzPlugin*); // deletes them

signals:
    void actionListChanged();

private slots:
    void actionDestroyed(QObject*);

private:
    QList<DzAction*> m_actions;
};
