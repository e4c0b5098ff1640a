#include "dzmainwindow.h"
#include "dzactionmgr.h"
#include "dzapp.h"
#include "dzhostcalls.h"
#include "dzpanemgr.h"

#include <QCloseEvent>

DzMainWindow::DzMainWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_paneMgr(new DzPaneMgr(this))
    , m_actionMgr(new DzActionMgr(this))
{
    setDockNestingEnabled(true);
    if (dzApp)
        dzApp->setInterface(this);
}

DzMainWindow::~DzMainWindow()
{
    m_paneMgr->destroyPanes();
    if (dzApp && dzApp->getInterface() == this)
        dzApp->setInterface(nullptr);
}

DzPaneMgr* DzMainWindow::getPaneMgr() const
{
    if (DZ_HOST_CALL("getPaneMgr"))
        return nullptr;
    return m_paneMgr;
}

DzActionMgr* DzMainWindow::getActionMgr() const
{
    if (DZ_HOST_CALL("getActionMgr"))
        return nullptr;
    return m_actionMgr;
}

void DzMainWindow::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    if (event->isAccepted() && dzApp)
        dzApp->announceClosing();
}
