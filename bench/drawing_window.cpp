#include "bench/drawing_window.h"

#include "host/driver/input_events.h"
#include "host/driver/modal_watch.h"
#include "host/driver/painted_pane.h"
#include "host/driver/plugin_session.h"
#include "host/figures/figure_loader.h"
#include "host/posebench/posebench_window.h"
#include "host/posebench/viewport.h"

#include "dzapp.h"
#include "dzfigure.h"
#include "dzpane.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QDir>
#include <QTemporaryDir>

namespace quillon {

static const char kFigure[] = "Genesis8Female";
static const char kStandingButton[] = "Browse all poses similar to a standing pose";

static DzAppSetup setupIn(const QString& home)
{
    DzAppSetup setup;
    setup.dataFolderPath = home + QLatin1String("/data");
    setup.tempPath = home;
    setup.documentationPath = home;
    setup.appDataPath = home;
    setup.settingsFile = home + QLatin1String("/settings.ini");
    setup.contentDirectories << QLatin1String(QUILLON_SAMPLES);
    setup.openUrls = false;
    QDir().mkpath(setup.dataFolderPath);
    return setup;
}

struct DrawingWindow::Parts {
    QTemporaryDir home;
    DzUndoStack undoStack;
    DzScene scene;
    DzApp app {setupIn(home.path())};
    std::unique_ptr<PoseBenchWindow> window;
    DzPane* pane = nullptr;
    QPoint next; // the button, in the pane

    void press(const char* button);
    void scan();
    void addFigure();
    void loadPane();
};

void DrawingWindow::Parts::press(const char* button)
{
    if (!pressPaneButton(pane, QLatin1String(button)))
        qFatal("the pane shows no button '%s'", button);
}

void DrawingWindow::Parts::scan()
{
    ExpectedModal answer;
    for (const char* button : {"Yes", "OK"}) {
        answer.button = QLatin1String(button);
        expectModal(answer);
    }
    press("Re-initialize Pose Finder");
}

void DrawingWindow::Parts::addFigure()
{
    QString why;
    DzFigure* figure = loadFigure(QLatin1String(kFigure), &why);
    if (!figure)
        qFatal("%s", qPrintable(why));
    scene.addNode(figure);
    figure->select(true);
}

void DrawingWindow::Parts::loadPane()
{
    QString why;
    if (!loadPlugins(QStringList(QLatin1String(QUILLON_MODULE)), &why))
        qFatal("%s", qPrintable(why));
}

DrawingWindow::DrawingWindow()
    : m_parts(new Parts)
{
    m_parts->addFigure();
    startModalWatch();
    m_parts->loadPane();
    m_parts->window.reset(new PoseBenchWindow);
    m_parts->window->show();
    m_parts->window->activateWindow();
    m_parts->pane = startPanes();
    m_parts->scan();
    m_parts->press("Pose Finder");
    m_parts->press(kStandingButton);
    m_parts->next = paneButtonRect(m_parts->pane, QLatin1String("Apply Next Pose")).center();
    for (int i = 0; i < 3; ++i) // the first ones find cold caches
        pressNext();
}

DrawingWindow::~DrawingWindow()
{
    m_parts->window->close();
    stopPanes();
    m_parts->window.reset();
    stopModalWatch();
}

void DrawingWindow::pressNext()
{
    pressPointer(m_parts->pane, m_parts->next);
}

QImage DrawingWindow::viewport() const
{
    return m_parts->window->viewport()->grab().toImage();
}

QImage DrawingWindow::pane() const
{
    return m_parts->pane->grab().toImage();
}

} // namespace quillon
