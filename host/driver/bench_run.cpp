#include "host/driver/bench_run.h"

#include "host/driver/bench_home.h"
#include "host/driver/call_watch.h"
#include "host/driver/command_line.h"
#include "host/driver/desktop_stand_in.h"
#include "host/driver/headless_demo.h"
#include "host/driver/modal_watch.h"
#include "host/driver/network_guard.h"
#include "host/driver/paint_counter.h"
#include "host/driver/plugin_session.h"
#include "host/driver/script_engine.h"
#include "host/driver/widget_picture.h"
#include "host/driver/widget_size.h"
#include "host/figures/figure_data.h"
#include "host/figures/figure_loader.h"
#include "host/posebench/posebench_window.h"
#include "host/posebench/preset_commands.h"
#include "host/posebench/window_place.h"

#include "dzapp.h"
#include "dzfigure.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>

namespace quillon {
namespace {

bool select(const QString& name, QString* why)
{
    DzNode* node = dzScene->findNode(name);
    if (!node) {
        *why = QString("there is no node '%1' to select").arg(name);
        return false;
    }
    dzScene->selectAllNodes(false);
    node->select(true);
    return dzScene->setPrimarySelection(node);
}

// The scene as asked for on the command line; a start is nothing to undo.
bool setUpScene(const CommandLine& c, QString* why)
{
    const QString wanted
        = c.figure.isEmpty() && !c.presets.isEmpty() ? figureNames().value(0) : c.figure;
    if (!wanted.isEmpty()) {
        DzFigure* figure = loadFigure(wanted, why);
        if (!figure)
            return false;
        dzScene->addNode(figure);
        figure->select(true);
        dzScene->setPrimarySelection(figure);
        if (!c.presets.isEmpty() && !applyPresetFiles(c.presets, figure, why))
            return false;
    }
    if (!c.select.isEmpty() && !select(c.select, why))
        return false;
    dzUndoStack->clearAll();
    return true;
}

// The window of a user with a display stays as large as its panels need, at least.
void tellSize(const QSize& wanted, const QSize& given)
{
    if (wanted.isValid() && wanted != given)
        std::fprintf(stderr, "posebench: the window is %dx%d and not %dx%d\n", given.width(),
            given.height(), wanted.width(), wanted.height());
}

// With the event loop running: the pane, then whatever the user wants done.
void begin(const CommandLine& c, QWidget* window)
{
    QString why;
    if (!c.noPane)
        startPanes();
    tellSize(c.size, window->size());
    if (!c.screenshot.isEmpty() && !pictureOf(window).save(c.screenshot, "PNG"))
        failScript(QString("cannot write '%1'").arg(c.screenshot));
    if (!c.script.isEmpty() && scriptExitCode() == 0)
        runScript(c.script, c.scriptArgs);
    else if (c.headless && c.script.isEmpty() && !runHeadlessDemo(c.content, c.home, &why))
        failScript(why);
    if (c.headless || scriptAskedToQuit())
        return QCoreApplication::quit();
    stopModalWatch();
    stopDesktopStandIn();
    releaseSizes();
}

// The window, its panes and the script live in here.
void runWindow(const CommandLine& c)
{
    PoseBenchWindow window;
    if (c.size.isValid() && c.headless)
        giveWindowSize(&window, c.size);
    else if (!c.headless)
        window.placeOnScreen(c.size);
    if (c.headless)
        pauseViewport(&window);
    addPluginActions();
    makeScriptEngine();
    if (c.headless || !c.script.isEmpty()) {
        startModalWatch();
        startDesktopStandIn();
    }
    window.show();
    window.activateWindow();
    QObject::connect(dzApp, &DzApp::closing, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    QTimer::singleShot(0, &window, [&] { begin(c, &window); });
    QApplication::exec();
    forgetScriptValues();
    dropScriptEngine();
    if (!c.headless)
        rememberPlace(&window);
    window.close();
    stopPanes();
}

} // namespace

int refuse(const QString& why)
{
    std::fprintf(stderr, "posebench: %s\n", why.toUtf8().constData());
    return 2;
}

int runBench(const CommandLine& c)
{
    DzUndoStack undoStack;
    DzScene scene;
    DzApp app(appSetup(c));
    const QStringList files = pluginFiles(c);
    QString why;
    startCallWatch(files);
    if (c.dieAt)
        orderCall({c.dieAt, c.dieAtCall, true});
    if (!loadPlugins(files, &why) || !setUpScene(c, &why) || !createHome(c, &why))
        return refuse(why);
    guardNetwork(c);
    startPaintCounts();
    runWindow(c);
    return scriptExitCode();
}

} // namespace quillon
