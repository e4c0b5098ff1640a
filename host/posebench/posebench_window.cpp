#include "host/posebench/posebench_window.h"

#include "host/posebench/content_library_pane.h"
#include "host/posebench/dark_theme.h"
#include "host/posebench/host_menus.h"
#include "host/posebench/parameter_panel.h"
#include "host/posebench/preset_commands.h"
#include "host/posebench/reading_order.h"
#include "host/posebench/scene_commands.h"
#include "host/posebench/scene_tree_panel.h"
#include "host/posebench/status_line.h"
#include "host/posebench/time_panel.h"
#include "host/posebench/viewport.h"
#include "host/posebench/window_place.h"

#include "dzaction.h"
#include "dzactionmgr.h"
#include "dzapp.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"

#include <QApplication>
#include <QDockWidget>
#include <QScreen>
#include <QStatusBar>

static const QSize kWindowPx(1500, 950);
static const int kLeftPx = 420; // room for a pane of 400 x 800
static const int kRightPx = 320;
static const int kScenePx = 330;
static const int kTimelinePx = 122;
static const int kContentShare = 60; // of the right column for the content library, in percent

PoseBenchWindow::PoseBenchWindow()
    : m_viewport(new ViewportWidget)
    , m_statusLine(nullptr)
{
    quillon::applyDarkTheme(qApp); // before the first widget that asks for its palette is shown
    setWindowTitle("posebench");
    setObjectName("PoseBenchWindow");
    setCentralWidget(m_viewport);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    m_left = dockGroup(Qt::LeftDockWidgetArea); // the first group: where plug-in panes go
    m_rightTop = dockGroup(Qt::RightDockWidgetArea);
    m_rightBottom = dockGroup(Qt::RightDockWidgetArea);
    m_bottom = dockGroup(Qt::BottomDockWidgetArea);
    DzContentLibraryPane* content = new DzContentLibraryPane;
    m_statusLine = new StatusLine(statusBar());
    connect(content, SIGNAL(message(QString)), m_statusLine, SLOT(say(QString)));
    connect(content, SIGNAL(wantsToBeSeen()), SLOT(showContent()));
    connect(m_viewport, SIGNAL(presetsDropped(QStringList)), SLOT(applyPresets(QStringList)));
    addPane(content, m_left);
    addPane(new DzSceneTreePane, m_rightTop);
    addPane(new DzParametersPane, m_rightBottom);
    addPane(new DzTimelinePane, m_bottom);
    new HostMenus(this);
    if (dzApp)
        connect(dzApp, SIGNAL(lineLogged(QString)), m_statusLine, SLOT(say(QString)));
    resize(kWindowPx);
    arrangeDocks();
    m_viewport->setFocus();
}

ViewportWidget* PoseBenchWindow::viewport() const
{
    return m_viewport;
}

DzContentLibraryPane* PoseBenchWindow::contentPane() const
{
    return findChild<DzContentLibraryPane*>();
}

StatusLine* PoseBenchWindow::statusLine() const
{
    return m_statusLine;
}

DzPaneGroup* PoseBenchWindow::dockGroup(Qt::DockWidgetArea area)
{
    DzPaneGroup* group = getPaneMgr()->createEmptyPaneGroup();
    group->dock(area);
    return group;
}

void PoseBenchWindow::addPane(DzPane* pane, DzPaneGroup* group)
{
    getPaneMgr()->addPane(pane);
    pane->moveToGroup(group);
    getActionMgr()->registerAction(new DzPaneAction(pane->metaObject()->className()));
}

void PoseBenchWindow::arrangeDocks()
{
    resizeDocks({m_left->getFrame(), m_rightTop->getFrame()}, {kLeftPx, kRightPx}, Qt::Horizontal);
    resizeDocks({m_rightTop->getFrame(), m_rightBottom->getFrame()},
        {kScenePx, kWindowPx.height() - kScenePx}, Qt::Vertical);
    resizeDocks({m_bottom->getFrame()}, {kTimelinePx}, Qt::Vertical);
}

void PoseBenchWindow::placeOnScreen(const QSize& wanted)
{
    if (wanted.isValid())
        resize(wanted);
    else if (!quillon::restorePlace(this))
        setGeometry(quillon::fittedPlace(kWindowPx, screen()->availableGeometry()));
}

void PoseBenchWindow::applyPresets(const QStringList& files)
{
    QString text;
    quillon::applyPresetFiles(files, quillon::figureToPose(), &text);
    m_statusLine->say(text);
}

// Beside the pane that asks for it, and not in its place: a tab behind another one moves over to
// the scene.
void PoseBenchWindow::showContent()
{
    DzContentLibraryPane* content = contentPane();
    DzPaneGroup* group = content->getPaneGroup();
    const DzPane* inFront = group ? group->getCurrentPane() : nullptr;
    if (inFront && inFront != content)
        content->moveToGroup(group == m_rightTop ? m_left : m_rightTop);
    getPaneMgr()->showPane(content);
    if (content->getPaneGroup() != group && content->getPaneGroup() == m_rightTop)
        resizeDocks({m_rightTop->getFrame(), m_rightBottom->getFrame()},
            {height() * kContentShare / 100, height() * (100 - kContentShare) / 100}, Qt::Vertical);
}

bool PoseBenchWindow::focusNextPrevChild(bool next)
{
    QWidget* to = quillon::neighbour(quillon::readingOrder(this), focusWidget(), next);
    if (!to)
        return DzMainWindow::focusNextPrevChild(next);
    to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}
