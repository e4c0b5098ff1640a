#include "dzaction.h"
#include "dzapp.h"
#include "dzhostcalls.h"
#include "dzmainwindow.h"
#include "dzpane.h"
#include "dzpanemgr.h"

#include <QIcon>

DzAction::DzAction(const QString& text, const QString& description)
    : QAction(text, static_cast<QObject*>(0))
{
    setDescription(description);
    connect(this, SIGNAL(triggered()), SLOT(executeIfEnabled()));
}

DzAction::~DzAction()
{
}

QString DzAction::className() const
{
    return QString::fromLatin1(metaObject()->className());
}

QString DzAction::getDescription() const
{
    return m_description;
}

void DzAction::setDescription(const QString& text)
{
    m_description = text;
    setStatusTip(text);
}

QString DzAction::getActionGroup() const
{
    return QString();
}

QString DzAction::getDefaultMenuPath() const
{
    return QString();
}

QString DzAction::getIconFile() const
{
    return m_iconFile;
}

void DzAction::setIconFile(const QString& path)
{
    if (DZ_HOST_CALL("setIconFile"))
        return;
    m_iconFile = path;
    setIcon(QIcon(path));
}

void DzAction::executeAction()
{
}

void DzAction::executeIfEnabled()
{
    if (isEnabled())
        executeAction();
}

DzPaneAction::DzPaneAction(const QString& paneClassName)
    : DzAction(paneClassName, QString())
    , m_paneClassName(paneClassName)
{
    setCheckable(true);
}

DzPaneAction::~DzPaneAction()
{
}

QString DzPaneAction::getPaneClassName() const
{
    return m_paneClassName;
}

QString DzPaneAction::getActionGroup() const
{
    return tr("Panes");
}

QString DzPaneAction::getDefaultMenuPath() const
{
    return tr("&Window/Panes (Tabs)");
}

DzPaneMgr* DzPaneAction::paneMgr() const // null without a main window
{
    if (m_paneMgr)
        return m_paneMgr;
    DzMainWindow* window = dzApp ? dzApp->getInterface() : nullptr;
    return window ? window->getPaneMgr() : nullptr;
}

void DzPaneAction::executeAction()
{
    DzPaneMgr* panes = paneMgr();
    if (panes)
        panes->togglePane(m_paneClassName);
    const DzPane* pane = panes ? panes->findPane(m_paneClassName) : nullptr;
    setChecked(pane && pane->isVisible()); // triggering has flipped the mark, right or wrong
}

void DzPaneAction::bind(DzPaneMgr* panes)
{
    m_paneMgr = panes;
    connect(panes, SIGNAL(paneAdded(DzPane*)), SLOT(followPane(DzPane*)));
    if (DzPane* pane = panes->findPane(m_paneClassName))
        followPane(pane);
}

void DzPaneAction::followPane(DzPane* pane)
{
    const bool mine = m_paneClassName == QLatin1String(pane->metaObject()->className());
    if (!mine || m_pane)
        return; // of several panes of the class it follows the first
    m_pane = pane;
    paneLabelChanged(pane->getLabel());
    paneShownOrHidden(pane->isVisible());
    connect(pane, SIGNAL(labelChanged(QString)), SLOT(paneLabelChanged(QString)));
    connect(pane, SIGNAL(visibilityChanged(bool)), SLOT(paneShownOrHidden(bool)));
    connect(pane, SIGNAL(destroyed()), SLOT(paneDestroyed()));
}

void DzPaneAction::paneShownOrHidden(bool visible)
{
    setChecked(visible);
}

void DzPaneAction::paneLabelChanged(const QString& label)
{
    setText(label);
}

void DzPaneAction::paneDestroyed()
{
    m_pane = nullptr; // the next one may be followed
    setChecked(false);
}
