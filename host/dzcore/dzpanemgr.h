// dzpanemgr.h - knows every pane and every pane group of the main window.
// A pane becomes known by createPane, addPane or by being moved into a group. Panes are found by
// the name of their class. A widget without looks: it is always hidden.
#pragma once

#include "dzcore_export.h"

#include <QList>
#include <QString>
#include <QWidget>

class DzPane;
class DzPaneGroup;
class QMainWindow;

class DZCORE_EXPORT DzPaneMgr : public QWidget {
    Q_OBJECT
public:
    explicit DzPaneMgr(QMainWindow*); // a child of the main window
    ~DzPaneMgr() override;

    Q_INVOKABLE DzPane* findPane(const QString& className) const; // the oldest; null when absent
    Q_INVOKABLE int getNumPanes() const;

    Q_INVOKABLE int getNumPaneGroups() const; // hidden groups, too
    Q_INVOKABLE DzPaneGroup* getPaneGroup(int i) const; // null outside 0..n-1
    Q_INVOKABLE DzPaneGroup* createEmptyPaneGroup(); // floating; hidden until a pane comes in

    // DZ_NO_ERROR, or 1 when there is no such pane. By name, showPane and togglePane make the pane
    // through its class factory when it does not exist.
    Q_INVOKABLE int showPane(DzPane*); // without a group: in a floating one of its own
    Q_INVOKABLE int showPane(const QString& className);
    Q_INVOKABLE int hidePane(DzPane*);
    Q_INVOKABLE int hidePane(const QString& className);
    Q_INVOKABLE int togglePane(DzPane*); // hides a visible pane, shows any other
    Q_INVOKABLE int togglePane(const QString& className);

    // ---- for embedding applications --------------------------------------------------------
    DzPane* createPane(const QString& className); // not placed yet; null: no factory, or no pane
    void addPane(DzPane*); // takes ownership
    QList<DzPane*> getPanes() const; // getPane(int) belongs to later versions of the interface
    void destroyPanes(); // newest first; groups that stay when empty remain

signals:
    void paneAdded(DzPane*);
    void paneListChanged();
    void paneGroupListChanged();

private:
    friend class DzPane;
    friend class DzPaneGroup;
    DzPaneGroup* createGroup(bool staysWhenEmpty);
    void forgetPane(DzPane*);
    void forgetGroup(DzPaneGroup*);

    QMainWindow* m_mainWindow;
    QList<DzPane*> m_panes;
    QList<DzPaneGroup*> m_groups;
};
