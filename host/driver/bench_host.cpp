#include "host/driver/bench_host.h"

#include "host/driver/bench_widgets.h"
#include "host/driver/plugin_session.h"
#include "host/driver/script_engine.h"
#include "host/driver/script_values.h"
#include "host/posebench/content_library_pane.h"

#include "dzapp.h"
#include "dzclassfactory.h"
#include "dzmainwindow.h"
#include "dzpanemgr.h"
#include "dzplugin.h"
#include "dzpluginloader.h"

#include <QAction>
#include <QEventLoop>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

namespace quillon {
namespace {

QScriptValue factoriesOf(QScriptEngine* engine, const DzPlugin* plugin)
{
    QScriptValue list = engine->newArray(uint(plugin->getNumClassFactories()));
    for (int i = 0; i < plugin->getNumClassFactories(); ++i) {
        QScriptValue entry = engine->newObject();
        entry.setProperty("className", plugin->getClassFactory(i)->className());
        entry.setProperty("guid", plugin->getClassFactory(i)->getGuid().toString());
        list.setProperty(quint32(i), entry);
    }
    return list;
}

QScriptValue plugins(QScriptContext*, QScriptEngine* engine)
{
    const QList<DzPluginLoader*> loaders = loadedPlugins();
    QScriptValue list = engine->newArray(uint(loaders.size()));
    for (int i = 0; i < loaders.size(); ++i) {
        const DzPlugin* plugin = loaders.at(i)->getPlugin();
        QScriptValue entry = engine->newObject();
        entry.setProperty("name", plugin->getName());
        entry.setProperty("author", plugin->getAuthor());
        entry.setProperty("version", plugin->getVersionString());
        entry.setProperty("description", plugin->getDescription());
        entry.setProperty("sdkVersion", loaders.at(i)->getSDKVersion().toString());
        entry.setProperty("file", plugin->getFilename());
        entry.setProperty("factories", factoriesOf(engine, plugin));
        list.setProperty(quint32(i), entry);
    }
    return list;
}

QScriptValue startPane(QScriptContext*, QScriptEngine* engine)
{
    DzPane* pane = startPanes();
    settle();
    return toScript(engine, pane);
}

QScriptValue stopPane(QScriptContext*, QScriptEngine* engine)
{
    stopPanes();
    settle();
    return engine->undefinedValue();
}

QScriptValue restartPlugin(QScriptContext* context, QScriptEngine* engine)
{
    stopPane(context, engine);
    return startPane(context, engine);
}

QScriptValue urls(QScriptContext*, QScriptEngine* engine)
{
    return toScript(engine, dzApp->getShownUrls());
}

QScriptValue browsedFolders(QScriptContext*, QScriptEngine* engine)
{
    const DzContentLibraryPane* pane = qobject_cast<DzContentLibraryPane*>(
        dzApp->getInterface()->getPaneMgr()->findPane("DzContentLibraryPane"));
    return toScript(engine, pane ? pane->browsedFolders() : QStringList());
}

// An entry of the window's menus by its labels, without mnemonics: menu("Help", "Guide"). False:
// there is none, or it is disabled.
QScriptValue menu(QScriptContext* context, QScriptEngine*)
{
    QList<QAction*> level = dzApp->getInterface()->menuBar()->actions();
    QAction* found = nullptr;
    for (int i = 0; i < context->argumentCount(); ++i) {
        found = nullptr;
        for (QAction* action : std::as_const(level))
            if (action->text().remove('&') == textArgument(context, i))
                found = action;
        level = found && found->menu() ? found->menu()->actions() : QList<QAction*>();
    }
    if (!found || !found->isEnabled() || found->menu())
        return false;
    found->trigger();
    settle();
    return true;
}

QScriptValue wait(QScriptContext* context, QScriptEngine* engine)
{
    QEventLoop loop;
    QTimer::singleShot(qMax(0, intArgument(context, 0, 0)), &loop, &QEventLoop::quit);
    QTimer watch; // quit() may be called by a handler meanwhile
    QObject::connect(&watch, &QTimer::timeout, &loop, [&loop] {
        if (scriptIsEnding())
            loop.quit();
    });
    watch.start(20);
    loop.exec();
    settle();
    return engine->undefinedValue();
}

const NativeRow kHost[] = {
    {"plugins", plugins},
    {"startPane", startPane},
    {"stopPane", stopPane},
    {"restartPlugin", restartPlugin},
    {"urls", urls},
    {"browsedFolders", browsedFolders},
    {"menu", menu},
    {"wait", wait},
};

} // namespace

void addHostFunctions(QScriptValue bench)
{
    addNatives(bench, kHost);
}

} // namespace quillon
