// dzmainwindow.h - the window with the dock areas, and the two managers that belong to it.
#pragma once

#include "dzcore_export.h"

#include <QMainWindow>

class DzActionMgr;
class DzPaneMgr;

class DZCORE_EXPORT DzMainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit DzMainWindow(
        QWidget* parent = nullptr); // becomes dzApp's interface when there is a dzApp
    ~DzMainWindow() override; // destroys panes first, while the managers still work

    Q_INVOKABLE DzPaneMgr* getPaneMgr() const;
    Q_INVOKABLE DzActionMgr* getActionMgr() const;

protected:
    void closeEvent(QCloseEvent*) override; // an accepted close makes dzApp emit closing()

private:
    DzPaneMgr* m_paneMgr;
    DzActionMgr* m_actionMgr;
};
