#include "dzpanemgr.h"
#include "dzapp.h"
#include "dzclassfactory.h"
#include "dzhostcalls.h"
#include "dzpane.h"
#include "dzpanegroup.h"

#include <QMainWindow>

static const DzError kNoSuchPane = 1;

DzPaneMgr::DzPaneMgr(QMainWindow* mainWindow)
    : QWidget(mainWindow)
    , m_mainWindow(mainWindow)
{
    hide();
}

DzPaneMgr::~DzPaneMgr()
{
    destroyPanes();
}

static DzPane* paneOfClass(const QList<DzPane*>& panes, const QString& className)
{
    const QByteArray name = className.toLatin1();
    for (int i = 0; i < panes.size(); ++i) {
        if (name == panes.at(i)->metaObject()->className())
            return panes.at(i);
    }
    return nullptr;
}

DzPane* DzPaneMgr::findPane(const QString& className) const
{
    if (DZ_HOST_CALL("findPane"))
        return nullptr;
    return paneOfClass(m_panes, className);
}

int DzPaneMgr::getNumPanes() const
{
    return m_panes.size();
}

int DzPaneMgr::getNumPaneGroups() const
{
    if (DZ_HOST_CALL("getNumPaneGroups"))
        return 0;
    return m_groups.size();
}

DzPaneGroup* DzPaneMgr::getPaneGroup(int i) const
{
    if (DZ_HOST_CALL("getPaneGroup"))
        return nullptr;
    return m_groups.value(i, nullptr);
}

DzPaneGroup* DzPaneMgr::createEmptyPaneGroup()
{
    if (DZ_HOST_CALL("createEmptyPaneGroup"))
        return nullptr;
    return createGroup(true);
}

DzPaneGroup* DzPaneMgr::createGroup(bool staysWhenEmpty)
{
    DzPaneGroup* group = new DzPaneGroup(this, m_mainWindow, staysWhenEmpty);
    m_groups.append(group);
    emit paneGroupListChanged();
    return group;
}

int DzPaneMgr::showPane(DzPane* pane)
{
    if (DZ_HOST_CALL("showPane") || !pane)
        return kNoSuchPane;
    addPane(pane);
    if (!pane->m_group) {
        DzPaneGroup* own = createGroup(false);
        const bool sized = pane->testAttribute(Qt::WA_Resized);
        own->resize(sized ? pane->size() : pane->sizeHint().expandedTo(own->size()));
        pane->placeIn(own);
    }
    if (pane->m_group) // its first show event may have moved it elsewhere
        pane->m_group->showPane(pane);
    return DZ_NO_ERROR;
}

int DzPaneMgr::showPane(const QString& className)
{
    DzPane* pane = paneOfClass(m_panes, className);
    return showPane(pane ? pane : createPane(className));
}

int DzPaneMgr::hidePane(DzPane* pane)
{
    if (DZ_HOST_CALL("hidePane") || !m_panes.contains(pane))
        return kNoSuchPane;
    pane->hidePane();
    return DZ_NO_ERROR;
}

int DzPaneMgr::hidePane(const QString& className)
{
    return hidePane(paneOfClass(m_panes, className));
}

int DzPaneMgr::togglePane(DzPane* pane)
{
    if (DZ_HOST_CALL("togglePane") || !pane)
        return kNoSuchPane;
    return pane->isVisible() ? hidePane(pane) : showPane(pane);
}

int DzPaneMgr::togglePane(const QString& className)
{
    DzPane* pane = paneOfClass(m_panes, className);
    return pane ? togglePane(pane) : showPane(className);
}

DzPane* DzPaneMgr::createPane(const QString& className)
{
    const DzClassFactory* factory = dzApp ? dzApp->findClassFactory(className) : nullptr;
    QObject* made = factory ? factory->createInstance() : nullptr;
    DzPane* pane = qobject_cast<DzPane*>(made);
    if (pane)
        addPane(pane);
    else
        delete made;
    return pane;
}

void DzPaneMgr::addPane(DzPane* pane)
{
    if (!pane || m_panes.contains(pane))
        return;
    m_panes.append(pane);
    pane->m_paneMgr = this;
    emit paneAdded(pane);
    emit paneListChanged();
}

QList<DzPane*> DzPaneMgr::getPanes() const
{
    return m_panes;
}

void DzPaneMgr::destroyPanes()
{
    while (!m_panes.isEmpty())
        delete m_panes.last(); // its destructor calls forgetPane
}

void DzPaneMgr::forgetPane(DzPane* pane)
{
    if (m_panes.removeAll(pane) > 0)
        emit paneListChanged();
}

void DzPaneMgr::forgetGroup(DzPaneGroup* group)
{
    if (m_groups.removeAll(group) > 0)
        emit paneGroupListChanged();
}
