#include "pane/dzquillonpane.h"

#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "figure/pose_limits.h"
#include "finder/browse_session.h"
#include "finder/index_saves.h"
#include "finder/pose_browser.h"
#include "finder/pose_index.h"
#include "finder/pose_ranks.h"
#include "ground/backup_folder.h"
#include "ground/data_folder.h"
#include "ground/host_calls.h"
#include "ground/live_panes.h"
#include "ground/plain_file.h"
#include "ground/plugin_settings.h"
#include "ground/qt_compat.h"
#include "ground/save_lock.h"
#include "ground/save_result.h"
#include "ground/status_message.h"
#include "ground/version_text.h"
#include "ground/whole_file.h"
#include "pane/accessible_buttons.h"
#include "pane/artwork.h"
#include "pane/command_dispatch.h"
#include "pane/crash_guard.h"
#include "pane/docking.h"
#include "pane/hover.h"
#include "pane/info_banner.h"
#include "pane/page_painter.h"
#include "pane/page_state.h"
#include "pane/scaled_artwork.h"
#include "posefile/pose_text.h"
#include "posefile/swap_symmetrize.h"
#include "services/update_notice.h"

#include "dzaction.h"
#include "dzactionmgr.h"
#include "dzapp.h"

#include <QFileInfo>
#include <QMouseEvent>
#include <QPainter>
#include <QTime>
#include <QTimer>

#include <memory>

using namespace quillon;

// ---- start-up --------------------------------------------------------------------------------

// A start must not see what an earlier pane of the same process left behind.
static void resetProcessState()
{
    resetFigureKind();
    forgetLimits();
    pluginSettings() = PluginSettings();
    pageState() = PageState();
    browseSession() = BrowseSession();
    clearStatusMessage();
    hideBanner();
}

static void findDataFiles()
{
    locateDataFiles();
    migrateDataFiles();
    removeLeftSaveLock();
    removeLeftovers(dataFiles().folder);
    removeLeftovers(dataFiles().customFolder);
    removeLeftovers(backupFolder());
    removePassingPoses();
}

static void decoratePaneAction()
{
    DzActionMgr* actions = hostManagers().actions;
    DzAction* action
        = actions ? actions->findAction(QLatin1String("DzQuillonPaneAction")) : nullptr;
    if (!action)
        return;
    const QString path = dzApp->getTempPath() + QLatin1String("/icon.png");
    logSaveResult(writeIconFile(path));
    if (mayBeOpened(path)) // the host reads it
        setIconFile(action, path);
}

static void createStores()
{
    createPoseIndex();
    createFilteredList();
    createRankStore();
    createReadBuffer();
}

static void freeStores()
{
    freeRankStore();
    freePoseIndex();
    freeFilteredList();
    freeReadBuffer();
}

// No more than the current pose is lost by it: what is saved later joins the file, or fails as long
// as that lasts.
static void logUnread(bool isRead, const QString& path)
{
    if (!isRead && QFileInfo(path).exists())
        logLine(QLatin1String("cannot read ") + path);
}

static void loadData()
{
    logUnread(loadSettings(), dataFiles().settings);
    logUnread(readRanks(), dataFiles().ranks);
    logUnread(readPoseIndex(), dataFiles().poseIndex);
    dropStalePosition();
}

static void startUpdateNotices()
{
    if (pluginSettings().muteUpdateNotice)
        return;
    checkForUpdate();
    startBanner();
}

DzQuillonPane::DzQuillonPane()
    : DzPane(QLatin1String("Quillon"))
{
    const bool isFirst = enterPane(this) == 1;
    std::unique_ptr<StartGuard> guard; // to the end of this start
    installEventFilter(this);
    if (isFirst) {
        resetProcessState();
        findDataFiles();
        guard.reset(new StartGuard);
        readDockedFlag();
        seedRandom(uint(QTime::currentTime().msec()));
    }
    setMouseTracking(true);
    setFocusPolicy(Qt::NoFocus); // keys are the host's
    if (isFirst) {
        createTimers();
        setBusy(false);
        cacheHostManagers();
        decodeArtwork();
        decoratePaneAction();
        buildVersionText();
        installAccessibleButtons();
    }
    const bool connected
        = connect(this, SIGNAL(visibilityChanged(bool)), this, SLOT(visibilityDidChange(bool)));
    Q_ASSERT(connected);
    Q_UNUSED(connected);
    if (isFirst) {
        createStores();
        buildFigureTables();
        enableAboutAction();
        loadData();
        startUpdateNotices();
    }
}

// ---- timers ----------------------------------------------------------------------------------

void DzQuillonPane::createTimers()
{
    PaneTimers& timers = paneTimers();
    timers.status = new QTimer(this);
    timers.banner = new QTimer(this);
    timers.status->setSingleShot(true);
    timers.banner->setSingleShot(true);
    adoptTimers();
}

void DzQuillonPane::adoptTimers()
{
    const PaneTimers& timers = paneTimers();
    timers.status->setParent(this);
    timers.banner->setParent(this);
    const bool connected
        = connect(timers.status, SIGNAL(timeout()), this, SLOT(toolTipsTextTimerUpdate()))
        && connect(timers.banner, SIGNAL(timeout()), this, SLOT(infoBannerShowTimerUpdate()));
    Q_ASSERT(connected);
    Q_UNUSED(connected);
}

static void deleteTimers()
{
    PaneTimers& timers = paneTimers();
    timers.status->stop();
    timers.banner->stop();
    delete timers.status;
    delete timers.banner;
    timers = PaneTimers();
}

// ---- end -------------------------------------------------------------------------------------

DzQuillonPane::~DzQuillonPane()
{
    if (leavePane(this) > 0) {
        // Another pane lives on; a timer that runs keeps running.
        if (paneTimers().status->parent() == this)
            static_cast<DzQuillonPane*>(currentPane())->adoptTimers();
        return;
    }
    logSaveResult(saveWhatIsPending()); // before the position in it
    logSaveResult(saveSettingsAndPosition());
    logSaveResult(writeRanks());
    removeAccessibleButtons();
    deleteTimers();
    freeStores();
    writeDockedFlag();
    dropScaledArtwork();
    releasePageArtwork();
    forgetHostManagers();
}

// ---- slots and events ------------------------------------------------------------------------

void DzQuillonPane::visibilityDidChange(bool)
{
}

void DzQuillonPane::toolTipsTextTimerUpdate()
{
    hideStatusMessage();
}

void DzQuillonPane::infoBannerShowTimerUpdate()
{
    bannerTimerFired();
}

bool DzQuillonPane::eventFilter(QObject* watched, QEvent* event)
{
    return DzPane::eventFilter(watched, event);
}

void DzQuillonPane::showEvent(QShowEvent* event)
{
    DzPane::showEvent(event);
    dockPane(this);
}

void DzQuillonPane::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintPage(&painter, size());
    announceChanges(this);
}

void DzQuillonPane::mousePressEvent(QMouseEvent* event)
{
    dispatchPress(size(), event->pos(), clickKind(event->button()));
}

void DzQuillonPane::mouseMoveEvent(QMouseEvent* event)
{
    if (updateHover(size(), event->pos()))
        update();
    bannerSeen();
}

void DzQuillonPane::leaveEvent(QEvent*)
{
    if (leaveHover(size()))
        update();
}

bool DzQuillonPane::focusNextPrevChild(bool)
{
    return false;
}
