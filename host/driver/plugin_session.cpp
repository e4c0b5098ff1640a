#include "host/driver/plugin_session.h"

#include "dzactionmgr.h"
#include "dzapp.h"
#include "dzappsettings.h"
#include "dzclassfactory.h"
#include "dzmainwindow.h"
#include "dzpane.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"
#include "dzplugin.h"
#include "dzpluginloader.h"

#include <QDockWidget>

namespace quillon {
namespace {

QList<DzPluginLoader*> g_loaders;
const char* const kPlaces = "pane_places"; // host settings: group of each pane class

QStringList paneClasses()
{
    QStringList names;
    for (const DzPluginLoader* loader : std::as_const(g_loaders)) {
        const DzPlugin* plugin = loader->getPlugin();
        for (int i = 0; i < plugin->getNumClassFactories(); ++i)
            if (plugin->getClassFactory(i)->createsKindOf(&DzPane::staticMetaObject))
                names += plugin->getClassFactory(i)->className();
    }
    return names;
}

DzPaneMgr* paneMgr()
{
    return dzApp->getInterface()->getPaneMgr();
}

// Groups are known from run to run by the names of their frames.
DzPaneGroup* lastGroup(const QString& className) // null: it is gone, or there never was one
{
    const QString frame = DzAppSettings(QString(kPlaces)).getStringValue(className);
    for (int i = 0; i < paneMgr()->getNumPaneGroups(); ++i)
        if (paneMgr()->getPaneGroup(i)->getFrame()->objectName() == frame)
            return paneMgr()->getPaneGroup(i);
    return nullptr;
}

void rememberGroup(const QString& className, const DzPane* pane)
{
    const DzPaneGroup* group = pane->getPaneGroup();
    DzAppSettings(QString(kPlaces))
        .setStringValue(className, group ? group->getFrame()->objectName() : QString());
}

void startPane(const QString& className)
{
    DzPane* pane = paneMgr()->createPane(className);
    if (!pane)
        return;
    pane->moveToGroup(lastGroup(className)); // nothing happens without one
    paneMgr()->showPane(pane);
}

} // namespace

bool loadPlugins(const QStringList& files, QString* why)
{
    for (const QString& file : files) {
        g_loaders += new DzPluginLoader(file);
        if (!g_loaders.last()->load(why)) {
            delete g_loaders.takeLast();
            return false;
        }
    }
    return true;
}

QList<DzPluginLoader*> loadedPlugins()
{
    return g_loaders;
}

void addPluginActions()
{
    for (const DzPluginLoader* loader : std::as_const(g_loaders))
        dzApp->getInterface()->getActionMgr()->addPluginActions(loader->getPlugin());
}

DzPane* startPanes()
{
    const QStringList names = paneClasses();
    for (const QString& name : names)
        if (!paneMgr()->findPane(name))
            startPane(name);
    return names.isEmpty() ? nullptr : paneMgr()->findPane(names.first());
}

void stopPanes()
{
    const QStringList names = paneClasses();
    for (const QString& name : names)
        while (DzPane* pane = paneMgr()->findPane(name)) {
            rememberGroup(name, pane);
            delete pane;
        }
}

} // namespace quillon
