#include "bench/browsing_rows.h"

#include "finder/browse_commands.h"
#include "finder/browse_session.h"
#include "finder/custom_pose_commands.h"
#include "finder/pose_apply.h"
#include "finder/pose_browser.h"
#include "ground/data_folder.h"
#include "ground/plugin_settings.h"
#include "pane/dzquillonpane.h"
#include "posefile/custom_library.h"
#include "posefile/pose_text.h"
#include "posefile/pose_writer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>

#include <algorithm>
#include <unistd.h>

// The flush of a file to disk is no matter of these times.
extern "C" int fsync(int)
{
    return 0;
}

namespace quillon {

using reference::IndexKind;

static const int kRuns = 5;

// ---- dialogs

namespace {

// Answers a file dialog with a name and a box with Yes, and takes the time from there.
class Answers : public QObject {
public:
    explicit Answers(const QString& fileName)
        : m_fileName(fileName)
    {
        qApp->installEventFilter(this);
    }
    double answeredMs = 0;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Show)
            return false;
        if (auto* box = qobject_cast<QMessageBox*>(watched))
            QMetaObject::invokeMethod(
                box, [this, box] { answerBox(box); }, Qt::QueuedConnection);
        if (auto* dialog = qobject_cast<QFileDialog*>(watched))
            QMetaObject::invokeMethod(
                dialog, [this, dialog] { answerDialog(dialog); }, Qt::QueuedConnection);
        return false;
    }

private:
    void answerBox(QMessageBox* box)
    {
        box->button(QMessageBox::Yes)->click();
        answeredMs = nowMs();
    }
    void answerDialog(QFileDialog* dialog)
    {
        dialog->findChild<QLineEdit*>(QLatin1String("fileNameEdit"))->setText(m_fileName);
        QMetaObject::invokeMethod(dialog, "accept");
        answeredMs = nowMs();
    }
    QString m_fileName;
};

struct Timed {
    double ms;
    std::uint32_t checksum;
};

} // namespace

// ---- commands

// What browsing shows and what it remembers, as one number.
static std::uint32_t stateChecksum()
{
    const BrowseSession& session = browseSession();
    std::uint32_t sum = 2166136261u;
    for (const int each :
        {poseCount(), session.matchCount, session.matchOrdinal, int(pluginSettings().currentPose),
            int(pluginSettings().currentRank), rankRecordCount()})
        sum = (sum ^ std::uint32_t(each)) * 16777619u;
    for (const int each : session.matches)
        sum = (sum ^ std::uint32_t(each)) * 16777619u;
    return sum;
}

static double timeOfApplying(BrowsingScene* scene)
{
    const double start = nowMs();
    reapplyCurrentPose(&browseSession(), scene->figure(), scene->time());
    return nowMs() - start;
}

template <typename Run> static Timed fastest(Run run)
{
    Timed timed = {1e9, 0};
    for (int n = 0; n < kRuns; ++n) {
        const double ms = run();
        timed.ms = std::min(timed.ms, ms);
        timed.checksum = timed.checksum * 31 + stateChecksum();
    }
    return timed;
}

static void print(const char* name, int count, const Timed& timed, const char* note)
{
    printRow(BrowsingRow {name, count, timed.ms, -1, false, timed.checksum, note});
}

static QString writePoseFile(BrowsingScene* scene, const QString& name)
{
    const QString path = customLibraryFolder() + name;
    mustSucceed(ensureCustomLibraryFolder());
    mustSucceed(writePose(scene->figure(), scene->time(), path, false, true));
    return path;
}

// Every other entry is rejected by the last part that is looked at.
static void leaveFarthestOnly(BrowsingScene* scene, int count)
{
    freshIndex(*scene, IndexKind::Alike, count - 1);
    appendPose(writePoseFile(scene, QLatin1String("far.duf")));
    const PoseIndexEntry first = *poseEntry(0);
    PoseIndexEntry& end = *entryToChange(count - 1);
    end.figureCode = first.figureCode;
    std::copy(std::begin(first.signature), std::end(first.signature), end.signature);
    end.hasSignature = true;
    for (int entry = 0; entry < count - 1; ++entry) {
        DzQuat& last = entryToChange(entry)->signature[TorsoSlot];
        last = last * DzQuat(DzVec3(1, 1, 1), 2.5);
    }
    std::fill_n(pluginSettings().similarity, kBodyAreaCount, true);
}

static void farthestRows(BrowsingScene* scene, int count)
{
    leaveFarthestOnly(scene, count);
    browse(*scene, ReferencePose);
    browseSession().place = placeOf(scene->figure(), scene->time());
    const auto step = [scene, count] {
        pluginSettings().currentPose = 0;
        const double start = nowMs();
        stepPose(scene->figure(), scene->time(), +1, false);
        const double ms = nowMs() - start;
        return pluginSettings().currentPose == count - 1 ? ms - timeOfApplying(scene) : 1e9;
    };
    print("step to the farthest match, tables new", count, fastest([&] {
        browse(*scene, ReferencePose);
        return step();
    }),
        "applying aside");
    print("step to the farthest match", count, fastest(step), "applying aside");
}

static void rankRows(BrowsingScene* scene, int count)
{
    countMatches(scene->figure(), scene->time());
    int position = 0;
    print("rank press", count, fastest([&] {
        pluginSettings().currentPose = position;
        position += count / 7;
        const double start = nowMs();
        mustSucceed(advanceCurrentRank(scene->figure()));
        return nowMs() - start;
    }),
        "");
    print("back", count, fastest([&] {
        const double start = nowMs();
        mustSucceed(leaveCategory());
        return nowMs() - start;
    }),
        "");
}

static void vanishedRow(BrowsingScene* scene, int count)
{
    browse(*scene, Standing);
    pluginSettings().currentPose = 0;
    countMatches(scene->figure(), scene->time());
    print("step that drops a vanished entry", count, fastest([&] {
        const int before = poseCount();
        const double start = nowMs();
        stepPose(scene->figure(), scene->time(), +1, false);
        const double ms = nowMs() - start;
        return poseCount() == before - 1 ? ms : 1e9;
    }),
        "with clearing the figure");
}

static void saveRow(BrowsingScene* scene, int count)
{
    truncatePoseIndex(count - kRuns);
    int number = 0;
    print("save of a custom pose", count, fastest([&] {
        const QString name = QString::fromLatin1("saved_%1_%2.duf").arg(count).arg(++number);
        Answers answers(customLibraryFolder() + name);
        mustSucceed(savePoseOf(scene->figure(), scene->time()));
        return nowMs() - answers.answeredMs;
    }),
        "from the answer on");
}

static int addMatch(const QString& path)
{
    const int entry = appendPose(path);
    entryToChange(entry)->figureCode = kFemaleCode;
    entryToChange(entry)->hasSignature = true;
    return entry;
}

static void deleteRow(BrowsingScene* scene, int count)
{
    browse(*scene, Standing);
    countMatches(scene->figure(), scene->time());
    const QString stays = writePoseFile(scene, QLatin1String("stays.duf"));
    int number = 0;
    print("delete of a custom pose", count, fastest([&] {
        const QString name = QString::fromLatin1("gone_%1.duf").arg(++number);
        truncatePoseIndex(count - 2);
        pluginSettings().currentPose = addMatch(writePoseFile(scene, name));
        addMatch(stays);
        countMatches(scene->figure(), scene->time());
        Answers answers((QString()));
        openFolderOrDeletePose(scene->figure(), scene->time());
        const double ms = nowMs() - answers.answeredMs;
        return QFileInfo(stays).exists() ? ms - timeOfApplying(scene) : 1e9;
    }),
        "from the answer on, applying aside");
}

void timeCommands(BrowsingScene* scene, int count)
{
    createReadBuffer();
    farthestRows(scene, count);
    freshIndex(*scene, IndexKind::Clustered, count);
    rankRows(scene, count);
    vanishedRow(scene, count);
    saveRow(scene, count);
    deleteRow(scene, count);
    freeReadBuffer();
    freeFilteredList();
    freeRankStore();
    freePoseIndex();
}

// ---- the start

void timePane(BrowsingScene* scene, int count)
{
    freshIndex(*scene, IndexKind::Clustered, count);
    pluginSettings().muteUpdateNotice = true;
    mustSucceed(saveSettings());
    mustSucceed(writePoseIndex());
    const qint64 bytes = QFileInfo(dataFiles().poseIndex).size();
    double ms = 1e9;
    std::uint32_t sum = 0;
    for (int run = 0; run < kRuns; ++run) {
        freePoseIndex();
        const double start = nowMs();
        const DzQuillonPane pane;
        ms = std::min(ms, nowMs() - start);
        sum = sum * 31 + std::uint32_t(poseCount()) * 31 + std::uint32_t(rankRecordCount());
    }
    const std::string note = std::to_string(bytes / 1000000.0).substr(0, 5) + " MB index file";
    printRow(BrowsingRow {"pane construction", count, ms, -1, false, sum, note});
}

static double residentNowMB()
{
    QFile file(QLatin1String("/proc/self/statm"));
    file.open(QIODevice::ReadOnly);
    const double pages = file.readAll().split(' ').value(1).toDouble();
    return pages * double(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

double residentMB(BrowsingScene* scene)
{
    const double before = residentNowMB();
    createPoseIndex();
    createFilteredList();
    createRankStore();
    readRanks();
    readPoseIndex();
    for (int type = AllPoses; type < kCategoryCount; ++type) {
        browse(*scene, type);
        countMatches(scene->figure(), scene->time());
    }
    return residentNowMB() - before;
}

} // namespace quillon
