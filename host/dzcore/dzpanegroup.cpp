#include "dzpanegroup.h"
#include "dzhostcalls.h"
#include "dzpane.h"
#include "dzpanemgr.h"

#include <QDockWidget>
#include <QTabBar>
#include <QTabWidget>

// Shows its bar only when there is something to choose.
class DzPaneTabs : public QTabWidget {
public:
    explicit DzPaneTabs(QWidget* parent)
        : QTabWidget(parent)
    {
        setDocumentMode(true);
        setMovable(true);
        setFocusProxy(nullptr); // Tab must not end at a bar that is hidden
        setFocusPolicy(Qt::NoFocus);
        tabBar()->hide();
    }

protected:
    void tabInserted(int index) override
    {
        QTabWidget::tabInserted(index);
        tabBar()->setVisible(count() > 1);
    }
    void tabRemoved(int index) override
    {
        QTabWidget::tabRemoved(index);
        tabBar()->setVisible(count() > 1);
    }
};

static const int kFloatingWidthPx = 300;
static const int kFloatingHeightPx = 400;

DzPaneGroup::DzPaneGroup(DzPaneMgr* paneMgr, QMainWindow* mainWindow, bool staysWhenEmpty)
    : DzDockWindow(mainWindow)
    , m_tabs(new DzPaneTabs(this))
    , m_paneMgr(paneMgr)
    , m_staysWhenEmpty(staysWhenEmpty)
{
    static int made = 0;
    getFrame()->setObjectName(QString::fromLatin1("PaneGroup%1").arg(++made));
    setBody(m_tabs);
    resize(kFloatingWidthPx, kFloatingHeightPx);
    connect(m_tabs, SIGNAL(currentChanged(int)), SLOT(updateTitle()));
}

DzPaneGroup::~DzPaneGroup()
{
    disconnect(m_tabs, nullptr, this, nullptr);
    const QList<DzPane*> panes = m_panes;
    for (int i = panes.size() - 1; i >= 0; --i)
        delete panes.at(i);
    if (m_paneMgr)
        m_paneMgr->forgetGroup(this);
}

int DzPaneGroup::getNumPanes() const
{
    return m_panes.size();
}

DzPane* DzPaneGroup::getPane(int i) const
{
    return m_panes.value(i, nullptr);
}

DzPane* DzPaneGroup::getCurrentPane() const
{
    return static_cast<DzPane*>(m_tabs->currentWidget()); // pages are panes
}

bool DzPaneGroup::hasTab(DzPane* pane) const
{
    return m_tabs->indexOf(pane) >= 0;
}

void DzPaneGroup::showPane(DzPane* pane)
{
    if (DZ_HOST_CALL("showPane") || !m_panes.contains(pane))
        return;
    restore();
    bringToFront(pane);
}

// Showing a pane may make it leave for another group, within these calls.
void DzPaneGroup::bringToFront(DzPane* pane)
{
    if (!hasTab(pane))
        m_tabs->addTab(pane, pane->getLabel());
    m_tabs->setCurrentWidget(pane);
    updateTitle();
    if (m_tabs->count() > 0)
        showFrame();
}

void DzPaneGroup::hidePane(DzPane* pane)
{
    if (DZ_HOST_CALL("hidePane") || !m_panes.contains(pane))
        return;
    m_tabs->removeTab(m_tabs->indexOf(pane));
    pane->hide();
    hideWhenEmpty();
}

void DzPaneGroup::insertPane(DzPane* pane, bool withTab)
{
    m_panes.append(pane);
    if (withTab) {
        bringToFront(pane);
    } else {
        pane->hide();
        pane->setParent(m_tabs);
    }
}

void DzPaneGroup::removePane(DzPane* pane)
{
    m_panes.removeAll(pane);
    const int index = m_tabs->indexOf(pane);
    if (index >= 0)
        m_tabs->removeTab(index);
    hideWhenEmpty();
}

// Often reached from an event of a pane of this group, so the group itself goes later.
void DzPaneGroup::hideWhenEmpty()
{
    if (m_tabs->count() > 0)
        return;
    hideFrame();
    if (m_staysWhenEmpty || !m_panes.isEmpty())
        return;
    if (m_paneMgr)
        m_paneMgr->forgetGroup(this);
    getFrame()->deleteLater(); // and this with it
}

void DzPaneGroup::updateTitle()
{
    const DzPane* pane = getCurrentPane();
    setFrameTitle(pane ? pane->getLabel() : QString());
    for (int i = 0; i < m_tabs->count(); ++i)
        m_tabs->setTabText(i, static_cast<DzPane*>(m_tabs->widget(i))->getLabel());
}
