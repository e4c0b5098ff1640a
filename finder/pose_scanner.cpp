#include "finder/pose_scanner.h"

#include "figure/channel_snapshot.h"
#include "figure/figure_walks.h"
#include "figure/reset_pose.h"
#include "figure/selected_figure.h"
#include "finder/browse_session.h"
#include "finder/content_walk.h"
#include "finder/index_saves.h"
#include "finder/kept_ranks.h"
#include "finder/pose_identify.h"
#include "finder/pose_index.h"
#include "finder/pose_ranks.h"
#include "finder/pose_signature.h"
#include "finder/scan_figure.h"
#include "finder/scan_phases.h"
#include "ground/backup_folder.h"
#include "ground/data_folder.h"
#include "ground/host_calls.h"
#include "ground/message_boxes.h"
#include "ground/plugin_settings.h"
#include "ground/save_result.h"
#include "ground/status_message.h"
#include "ground/undo_step.h"
#include "posefile/pose_text.h"
#include "posefile/reference_pose.h"

#include "dzapp.h"
#include "dzbone.h"
#include "dzcontentmgr.h"
#include "dzfloatproperty.h"
#include "dzprogress.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace quillon {

static const int kProgressSteps = 100;
static const int kFirstStep = 50;
static const int kHeadBytes = 1024;
static const int kMissedLogged = 200; // paths in the host's log
static const char kMissedText[]
    = "\r\n%1 files or folders\r\ncould not be read.\r\nThe log tells which.\r\n";
static const int kEventsMs = 25; // with what a pass begins with, a cancel is seen within 100

// Asked once a scan, so that all of it goes over the same ones.
static QStringList contentDirectories()
{
    const DzContentMgr* content = dzApp ? dzApp->getContentMgr() : nullptr;
    QStringList paths;
    for (int i = 0, count = content ? content->getNumContentDirectories() : 0; i < count; ++i)
        paths.append(content->getContentDirectoryPath(i));
    return paths;
}

// ---- clearing the pose

// What a reset can change of the figure.
static ChannelSnapshot poseOf(const DzSkeleton* figure, DzTime time)
{
    ChannelSnapshot kept;
    for (const FigureBone& each : bonesOf(figure))
        keepPoseChannels(each.bone, time, &kept);
    for (const FigureControl& each : controlsOf(figure))
        kept.push_back(keepValue(each.property, time));
    return kept;
}

// True when there was something to clear; that is one undo step then.
static bool clearPose(DzSkeleton* figure, DzTime time)
{
    const ChannelSnapshot before = poseOf(figure, time);
    UndoStep step;
    resetPose(figure, ResetWholeFigure, time);
    const bool changed = !isAsKept(before, time);
    step.note(changed);
    return changed;
}

// ---- what may end a scan early

namespace {

// The progress window runs events when it is told something, which may be seldom: a folder can hold
// thousands of files that are no poses.
class Scan {
public:
    Scan(DzProgress* shown, DzSkeleton* posed, DzTime at, const HeldNode& node)
        : progress(shown)
        , figure(posed)
        , time(at)
        , held(node)
    {
        m_sinceEvents.start();
    }
    bool isOver()
    {
        if (m_sinceEvents.elapsed() >= kEventsMs) {
            QCoreApplication::processEvents();
            m_sinceEvents.start();
        }
        return isCancelled(progress) || held.isGone();
    }

    // A folder or a file that could not be read.
    void miss(const QString& path)
    {
        if (++missed <= kMissedLogged)
            logLine(QLatin1String("the scan cannot read ") + path);
    }

    void missFolder(const QString& folder)
    {
        miss(folder);
        if (reporter)
            reporter->missFolder(folder);
    }
    void tell(const QString& path, Verdict verdict)
    {
        if (reporter)
            reporter->tell()(path, verdict, QString());
    }

    DzProgress* const progress;
    QStringList content; // its directories
    ScanReporter* reporter = nullptr; // null: nobody asks
    int missed = 0;
    DzSkeleton* const figure;
    const DzTime time;
    const HeldNode held;

private:
    QElapsedTimer m_sinceEvents;
};

} // namespace

// ---- phase 1

static bool looksLikePose(const QString& path, Scan* scan)
{
    char head[kHeadBytes];
    const int count = readPoseFileText(path, head, kHeadBytes, false);
    const bool isMissed = count <= 0 ? QFileInfo(path).size() != 0 : isStillPacked(head, count);
    const bool isPose = count > 0 && containsWord(head, count, "preset_pose");
    if (isMissed)
        scan->miss(path);
    if (!isPose)
        scan->tell(path, isMissed ? Verdict::Unreadable : Verdict::NotAPose);
    return isPose;
}

static void addPose(Scan* scan, const QString& path)
{
    if (appendPose(path) < 0)
        return scan->tell(path, Verdict::OverCapacity);
    const int found = poseCount();
    scan->progress->setInfo(
        QString::fromLatin1("Scanning pose files... %1").arg(found, 0, 10, QLatin1Char(' ')));
    scan->progress->update(std::min(kProgressSteps - 1, int(std::sqrt(double(found)))));
}

// Who asks what became of each file is told of those that there is no room for, too.
static bool isFull(const Scan& scan)
{
    return !scan.reporter && poseCount() >= kPoseIndexCapacity;
}

static bool findPoseFiles(Scan* scan)
{
    ContentVisitor visitor;
    visitor.visitPreset = [scan](const QString& path) {
        if (looksLikePose(path, scan))
            addPose(scan, path);
    };
    visitor.missFolder = [scan](const QString& folder) { scan->missFolder(folder); };
    bool isOver = false;
    visitor.isDone = [scan, &isOver] {
        isOver = scan->isOver();
        return isOver || isFull(*scan);
    };
    for (const QString& directory : scan->content) {
        if (!isFull(*scan))
            walkContent(directory, visitor);
        if (isOver)
            return false;
    }
    return true;
}

// ---- phases 2 to 9

static ScanWatch watchFor(Scan* scan, const char* info)
{
    DzProgress* progress = scan->progress;
    ScanWatch watch;
    watch.show = [progress, info](int entry, int count) {
        progress->setInfo(QString::fromLatin1(info)
                              .arg(entry, 0, 10, QLatin1Char(' '))
                              .arg(count, 0, 10, QLatin1Char(' ')));
        progress->update(scanPosition(entry, count));
    };
    watch.missFile = [scan](const QString& path) { scan->miss(path); };
    watch.isCancelled = [scan] { return scan->isOver(); };
    if (scan->reporter)
        watch.tell = scan->reporter->tell();
    return watch;
}

static bool isBrowsable(const PoseIndexEntry& entry)
{
    return entry.figureCode == kFemaleCode || entry.figureCode == kMaleCode;
}

static int lastBrowsable()
{
    int entry = poseCount() - 1;
    while (entry >= 0 && !isBrowsable(*poseEntry(entry)))
        --entry;
    return entry;
}

// Entries that are marked already need no signature.
static bool takeSignatures(const ScanWatch& watch, const ScanFigure& scan, const HeldNode& held)
{
    const int count = poseCount();
    EntriesToTell toTell(count, lastBrowsable());
    for (int entry = 0; entry < count; ++entry) {
        const PoseIndexEntry& e = *poseEntry(entry);
        if (isBrowsable(e)) {
            if (toTell.isDue(entry))
                watch.show(entry, count);
            if (held.isGone())
                return false;
            if (e.contentHash != 0 && scan.hip) {
                if (tryPose(scan, e.path))
                    takeSignature(entry, scan.figure, scan.time);
                else
                    watch.missFile(e.path);
            }
        }
        if (watch.isCancelled())
            return false;
    }
    return true;
}

// A figure that was only taken out of the scene gets everything back.
static bool indexPoses(const ScanWatch& watch, const Scan& scan)
{
    const DzUndoStackLock unrecorded;
    const QPointer<DzSkeleton> alive(scan.figure);
    const ScanFigure tried = beginScanPoses(scan.figure, scan.time);
    const bool finished = takeSignatures(watch, tried, scan.held);
    if (alive)
        endScanPoses(tried);
    return finished;
}

namespace {

struct PhaseRow {
    const char* info;
    bool (*run)(const ScanWatch&); // null: the phase that needs the figure
};

// clang-format off
const PhaseRow kPhases[] = {
    {"Identifying pose files... %1 of %2",     identifyPoses},
    {"Optimizing pose index (1)... %1 of %2",  keepIdentified},
    {"Optimizing pose index (2)... %1 of %2",  dropMakerVariants},
    {"Ignoring duplicate poses... %1 of %2",   markDuplicates},
    {"Indexing poses... %1 of %2",             nullptr},
    {"Skipping mirrored poses... %1 of %2",    markMirrored},
    {"Skipping similar poses... %1 of %2",     markSimilar},
    {"Cleaning up... %1 of %2",                dropMarked},
};
// clang-format on

} // namespace

static bool runPhases(Scan* scan)
{
    if (!findPoseFiles(scan))
        return false;
    for (const PhaseRow& phase : kPhases) {
        const ScanWatch watch = watchFor(scan, phase.info);
        if (!(phase.run ? phase.run(watch) : indexPoses(watch, *scan)))
            return false;
    }
    return true;
}

// ---- the scan

static void forgetPoses()
{
    resetPoseIndex();
    noteSaveResult(setAside(referencePosePath()));
    pluginSettings().currentPose = 0;
    refreshCurrentRank(); // the pane is painted while the scan runs
    forgetApplied(&browseSession());
}

// Ranks stay while the index on disk is the old one.
static bool saveIndex(int missed)
{
    return saveScannedIndex() && moveRanksAfterScan(missed == 0);
}

static bool canAnyBeListed(const QStringList& directories)
{
    return std::any_of(directories.begin(), directories.end(), canBeListed);
}

namespace {

struct ScanOutcome {
    bool finished = false, poseChanged = false;
    int missed = 0;
};

} // namespace

static ScanOutcome runScan(
    DzSkeleton* figure, DzTime time, const QStringList& content, ScanReporter* reporter)
{
    ScanOutcome outcome;
    const HeldNode held(figure);
    DzProgress progress(QLatin1String("Scanning..."), kProgressSteps, true);
    Scan scan(&progress, figure, time, held);
    scan.content = content;
    scan.reporter = reporter;
    progress.step(kFirstStep);
    if (scan.held.isGone())
        return outcome;
    forgetPoses();
    outcome.poseChanged = clearPose(figure, time);
    outcome.finished = runPhases(&scan);
    outcome.missed = scan.missed;
    if (!outcome.finished)
        truncatePoseIndex(0);
    if (!scan.held.isGone())
        clearPose(figure, time);
    progress.finish();
    return outcome;
}

bool scanPosesOn(DzSkeleton* figure, DzTime time)
{
    const QStringList content = contentDirectories();
    if (content.isEmpty())
        return false;
    if (!figure) {
        showBox(Box::NoFigure);
        return false;
    }
    if (!canAnyBeListed(content)) {
        showBox(Box::NoContent);
        return false;
    }
    setBusy(true);
    const ScanOutcome outcome = runScan(figure, time, content, nullptr);
    const bool saved = !outcome.finished || saveIndex(outcome.missed);
    refreshCurrentRank(); // of the first pose, or of none
    setBusy(false);
    noteSaveResult(saved);
    if (saved && outcome.missed > 0)
        showStatusMessage(QString::fromLatin1(kMissedText).arg(outcome.missed));
    if (!outcome.finished)
        showBox(Box::ScanAborted);
    else if (saved)
        showBox(Box::ScanDone, QString::number(poseCount()));
    refreshPane();
    return outcome.poseChanged;
}

bool scanWithReport(DzSkeleton* figure, DzTime time, ScanReport* report)
{
    ScanReporter reporter;
    setBusy(true);
    const ScanOutcome outcome = runScan(figure, time, contentDirectories(), &reporter);
    setBusy(false);
    *report = reporter.finish();
    return outcome.finished;
}

} // namespace quillon
