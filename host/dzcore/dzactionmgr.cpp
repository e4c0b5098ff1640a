#include "dzactionmgr.h"
#include "dzaction.h"
#include "dzclassfactory.h"
#include "dzhostcalls.h"
#include "dzmainwindow.h"
#include "dzpanemgr.h"
#include "dzplugin.h"

DzActionMgr::DzActionMgr(QMainWindow* mainWindow)
    : QWidget(mainWindow)
{
    hide();
}

DzActionMgr::~DzActionMgr()
{
    const QList<DzAction*> actions = m_actions;
    m_actions.clear();
    qDeleteAll(actions);
}

static bool hasClass(const DzAction* action, const QString& className)
{
    return className == QLatin1String(action->metaObject()->className());
}

DzAction* DzActionMgr::findAction(const QString& className) const
{
    if (DZ_HOST_CALL("findAction"))
        return nullptr;
    for (int i = 0; i < m_actions.size(); ++i) {
        if (hasClass(m_actions.at(i), className))
            return m_actions.at(i);
    }
    return nullptr;
}

int DzActionMgr::getNumActions() const
{
    return m_actions.size();
}

DzAction* DzActionMgr::getAction(int i) const
{
    return m_actions.value(i, nullptr);
}

void DzActionMgr::registerAction(DzAction* action)
{
    if (!action || m_actions.contains(action))
        return;
    action->setParent(this);
    m_actions.append(action);
    connect(action, SIGNAL(destroyed(QObject*)), SLOT(actionDestroyed(QObject*)));
    DzPaneAction* paneAction = qobject_cast<DzPaneAction*>(action);
    DzMainWindow* window = qobject_cast<DzMainWindow*>(parentWidget());
    if (paneAction && window)
        paneAction->bind(window->getPaneMgr());
    emit actionListChanged();
}

int DzActionMgr::addPluginActions(const DzPlugin* plugin)
{
    int made = 0;
    for (int i = 0; i < plugin->getNumClassFactories(); ++i) {
        const DzClassFactory* factory = plugin->getClassFactory(i);
        if (!factory->createsKindOf(&DzAction::staticMetaObject))
            continue;
        DzAction* action = qobject_cast<DzAction*>(factory->createInstance());
        if (!action)
            continue;
        registerAction(action);
        ++made;
    }
    return made;
}

void DzActionMgr::removePluginActions(const DzPlugin* plugin)
{
    const QList<DzAction*> actions = m_actions;
    for (int f = 0; f < plugin->getNumClassFactories(); ++f) {
        const QString className = plugin->getClassFactory(f)->className();
        for (int i = 0; i < actions.size(); ++i) {
            if (m_actions.contains(actions.at(i)) && hasClass(actions.at(i), className))
                delete actions.at(i);
        }
    }
}

void DzActionMgr::actionDestroyed(QObject* gone)
{
    for (int i = m_actions.size() - 1; i >= 0; --i) {
        if (static_cast<QObject*>(m_actions.at(i)) == gone)
            m_actions.removeAt(i);
    }
    emit actionListChanged();
}
