// dzpanegroup.h - panes as tabs of one dock window.
// A pane belongs to the group that holds it, also while it is hidden there: then it has no tab. A
// group without tabs is hidden. A group that was made for one pane goes away with its last pane;
// one made by DzPaneMgr::createEmptyPaneGroup() stays.
#pragma once

#include "dzdockwindow.h"

#include <QList>

class DzPane;
class DzPaneMgr;
class DzPaneTabs;

class DZCORE_EXPORT DzPaneGroup : public DzDockWindow {
    Q_OBJECT
public:
    ~DzPaneGroup() override; // deletes its panes

    Q_INVOKABLE int getNumPanes() const; // hidden ones, too
    Q_INVOKABLE DzPane* getPane(int i) const; // in order of arrival; null outside 0..n-1
    Q_INVOKABLE DzPane* getCurrentPane() const; // the pane of the tab in front; null without tabs
    Q_INVOKABLE bool hasTab(DzPane*) const;

public slots:
    // Both ignore a pane of another group.
    void showPane(DzPane*); // gives it a tab, brings it to the front, shows and restores the group
    void hidePane(DzPane*);

private slots:
    void updateTitle();

private:
    friend class DzPane;
    friend class DzPaneMgr;
    DzPaneGroup(DzPaneMgr*, QMainWindow*, bool staysWhenEmpty);
    void insertPane(DzPane*, bool withTab); // re-parents the pane
    void removePane(DzPane*); // the pane stays a child until its new group takes it
    void bringToFront(DzPane*);
    void hideWhenEmpty();

    DzPaneTabs* m_tabs;
    QList<DzPane*> m_panes;
    QPointer<DzPaneMgr> m_paneMgr;
    bool m_staysWhenEmpty;
};
