// The scan as a whole: when it runs, which files it finds, what it tells and writes.
#include "scan_fixture.h"
#include "room_tests.h"
#include "qt_test_compat.h"

#include "ground/status_message.h"

#include "dzhostcalls.h"

#include <unistd.h>

#include <QElapsedTimer>

using namespace quillon;

class TestPoseScanner : public QObject {
    Q_OBJECT
private slots:
    // before it begins
    void withoutContentDirectoriesNothingHappens();
    void theHostIsAskedOnceWhichContentThereIs();
    void withoutAFigureOnlyABoxIsShown_data();
    void withoutAFigureOnlyABoxIsShown();
    void aBoneStandsForItsFigure();

    // finding and identifying
    void onlyPosePresetsAreFound_data();
    void onlyPosePresetsAreFound();
    void theWalkTakesFilesOfAnyCaseAndDepth();
    void hiddenFilesAndLinksAreNotWalked();
    void directoriesAreWalkedInTheHostsOrder();
    void moreFilesThanTheTableHoldsAreIgnored();
    void theLastPoseIsTold();
    void pathsOfAllScriptsAreIndexed();

    // what it leaves
    void theScanReplacesIndexPositionAndReference();
    void theIndexFileHoldsWhatWasFound();
    void ranksOfPosesThatAreGoneArePruned();
    void theRankFileIsLeftWhenNothingIsPruned();
    void theRankIsThatOfTheFirstPose_data();
    void theRankIsThatOfTheFirstPose();
    void thePaneIsBusyMeanwhile();

    // cancelling
    void cancellingLeavesAnEmptyIndexAndTheOldFile_data();
    void cancellingLeavesAnEmptyIndexAndTheOldFile();
    void cancellingWhileIndexingUnlocksTheUndoStackAndLeavesAnEmptyIndex();
    void cancellingEndsTheWalkAtOnce();
    void aFigureThatGoesEndsTheScan_data();
    void aFigureThatGoesEndsTheScan();
    void eventsAreHandledNowAndThenNotAtEveryFile();

    // progress
    void progressIsToldAsDescribed();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

static QStringList names(const char* text)
{
    return s(text).split(QLatin1Char(' '));
}

// ---- before it begins

void TestPoseScanner::withoutContentDirectoriesNothingHappens()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    f.setContent(QStringList());
    addEntry(s("/old.duf"), 1);
    ProgressLog log;
    QVERIFY(!scanPoses());
    QCOMPARE(indexedPaths(), QStringList() << s("/old.duf"));
    QVERIFY(f.boxes.boxes.isEmpty());
    QVERIFY(log.records().empty());
    QVERIFY(f.indexBytes().isEmpty());
}

static int g_contentAsked = 0;

static bool failFromTheSecondOn(const char* name, const void*)
{
    return qstrcmp(name, "getContentMgr") == 0 && ++g_contentAsked > 1;
}

// It was asked again while it scanned, and taken to have an answer.
void TestPoseScanner::theHostIsAskedOnceWhichContentThereIs()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    g_contentAsked = 0;
    dzHostCallHook = failFromTheSecondOn;
    scanPoses();
    dzHostCallHook = nullptr;
    QCOMPARE(g_contentAsked, 1);
    QCOMPARE(poseCount(), 1);
}

void TestPoseScanner::withoutAFigureOnlyABoxIsShown_data()
{
    QTest::addColumn<QString>("selected");
    QTest::newRow("nothing") << "nothing";
    QTest::newRow("a prop") << "a prop";
    QTest::newRow("a figure of another name") << "other";
    QTest::newRow("a figure below another node") << "child";
}

void TestPoseScanner::withoutAFigureOnlyABoxIsShown()
{
    QFETCH(QString, selected);
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    DzNode* prop = new DzNode(s("Box"));
    f.rig.scene.addNode(prop);
    if (selected != "other" && selected != "child")
        f.rig.scene.selectAllNodes(false);
    if (selected == "a prop") {
        prop->select(true);
        f.rig.scene.setPrimarySelection(prop);
    }
    if (selected == "other")
        f.figure->setName(s("Genesis3Female"));
    if (selected == "child")
        prop->addNodeChild(f.figure);
    addEntry(s("/old.duf"), 1);
    ProgressLog log;
    scanPoses();
    QCOMPARE(f.boxes.boxes.size(), 1);
    QCOMPARE(f.boxes.boxes.first().title, s("Error"));
    QCOMPARE(f.boxes.boxes.first().text, s("Please select a Genesis 8 figure first."));
    QCOMPARE(indexedPaths(), QStringList() << s("/old.duf"));
    QVERIFY(log.records().empty());
}

void TestPoseScanner::aBoneStandsForItsFigure()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    f.selectBones(names("lShin"));
    QCOMPARE(f.scanned(), names("a.duf"));
}

// ---- finding and identifying

void TestPoseScanner::onlyPosePresetsAreFound_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("found"); // by the walk
    QTest::addColumn<int>("indexed");
    const QByteArray pose = poseFileText(poseNumber(1));
    QTest::newRow("whole body") << pose << 1 << 1;
    QTest::newRow("type in capitals")
        << QByteArray(pose).replace("preset_pose", "PRESET_Pose") << 1 << 1;
    QTest::newRow("another type") << QByteArray(pose).replace("preset_pose", "preset_shape") << 0
                                  << 0;
    QTest::newRow("type in the last of 1024 bytes")
        << QByteArray(1024 - 11, ' ') + "preset_pose" + pose << 1 << 1;
    QTest::newRow("type one byte later")
        << QByteArray(1024 - 10, ' ') + "preset_pose bigtoe pinky head" << 0 << 0;
    QTest::newRow("empty") << QByteArray() << 0 << 0;
    QTest::newRow("a part of the body") << QByteArray(pose).replace("lPinky1", "lThumb1") << 1 << 0;
    QTest::newRow("another generation") << pose + "abdomen2" << 1 << 0;
}

void TestPoseScanner::onlyPosePresetsAreFound()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, found);
    QFETCH(int, indexed);
    ScanFixture f;
    f.addText("a.duf", bytes);
    ProgressLog log;
    scanPoses();
    QCOMPARE(log.infosOf("Scanning pose files").size(), found);
    QCOMPARE(poseCount(), indexed);
    QCOMPARE(f.boxes.boxes.first().text, QString("Success! Indexed pose files: %1").arg(indexed));
}

void TestPoseScanner::theWalkTakesFilesOfAnyCaseAndDepth()
{
    ScanFixture f;
    f.add("top.duf", poseNumber(1));
    f.add("People/Poses/Sit/X.DUF", poseNumber(2));
    f.add("People/Poses/y.Duf", poseNumber(3));
    f.add("notes.duf.txt", poseNumber(4));
    f.add("notes.dufx", poseNumber(5));
    QDir().mkpath(f.content("folder.duf"));
    QCOMPARE(f.scanned(), names("People/Poses/Sit/X.DUF People/Poses/y.Duf top.duf"));
}

void TestPoseScanner::hiddenFilesAndLinksAreNotWalked()
{
    ScanFixture f;
    f.add("a/pose.duf", poseNumber(1));
    f.add("a/.hidden.duf", poseNumber(2));
    f.add(".hidden/pose.duf", poseNumber(3));
    writeFile(f.home.path(s("outside/pose.duf")), poseFileText(poseNumber(4)));
    QVERIFY(QFile::link(f.content(), f.content("a/round")));
    QVERIFY(QFile::link(f.home.path(s("outside")), f.content("linked")));
    QVERIFY(QFile::link(f.home.path(s("outside/pose.duf")), f.content("a/linked.duf")));
    QCOMPARE(f.scanned(), names("a/pose.duf"));
}

void TestPoseScanner::directoriesAreWalkedInTheHostsOrder()
{
    ScanFixture f;
    f.add("b/pose.duf", poseNumber(1));
    f.add("a/twin.duf", poseNumber(1));
    f.setContent(QStringList() << f.content("b") << f.content("a") << f.content("missing"));
    scanPoses();
    QCOMPARE(indexedPaths(), QStringList() << f.content("b/pose.duf"));
    f.setContent(QStringList() << f.content("a") << f.content("b"));
    scanPoses();
    QCOMPARE(indexedPaths(), QStringList() << f.content("a/twin.duf"));
}

// Links are quick to make; a file system without them gets files.
static void addTwins(ScanFixture* f, const QByteArray& folder, int count, const QByteArray& bytes)
{
    const QString path = f->addText((folder + "/pose.duf").constData(), bytes);
    for (int n = 1; n < count; ++n) {
        const QString twin
            = f->content((folder + "/" + QByteArray::number(n) + ".duf").constData());
        if (::link(QFile::encodeName(path).constData(), QFile::encodeName(twin).constData()))
            writeFile(twin, bytes);
    }
}

static int g_gzipFiles;

static bool countGzipFiles(const char* call, const void*)
{
    g_gzipFiles += qstrcmp(call, "gzOpen") == 0;
    return false;
}

void TestPoseScanner::moreFilesThanTheTableHoldsAreIgnored()
{
    ScanFixture f;
    for (int folder = 0; folder < 257; ++folder)
        addTwins(&f, QByteArray::number(folder), 256, poseFileText(poseNumber(1)));
    f.setContent(QStringList() << f.content() << f.content("0"));
    ProgressLog log;
    g_gzipFiles = 0;
    dzHostCallHook = countGzipFiles;
    scanPoses();
    dzHostCallHook = nullptr;
    QCOMPARE(log.infosOf("Scanning pose files").last(), s("Scanning pose files... 65536"));
    QCOMPARE(poseCount(), 1);
    QCOMPARE(g_gzipFiles, 2 * 65536 + 1); // the rest is not opened, and only one is posed
    QMap<QString, int> last; // position by info text
    for (const DzProgressRecord& each : log.records())
        last[each.info] = each.position;
    QCOMPARE(last[s("Scanning pose files... 9800")], 98);
    for (const char* found : {"9801", "9999", "10000", "10001", "65536"}) // the walk never ends it
        QCOMPARE(last[s("Scanning pose files... ") + s(found)], 99);
    const QStringList identifying = log.infosOf("Identifying");
    QCOMPARE(identifying.first(), s("Identifying pose files... 0 of 65536"));
    QCOMPARE(identifying.last(), s("Identifying pose files... 65535 of 65536"));
    QVERIFY(identifying.size() >= 993 && identifying.size() <= 1101);
}

// Where the last entries are no whole bodies.
void TestPoseScanner::theLastPoseIsTold()
{
    ScanFixture f;
    addTwins(&f, "poses", 1500, poseFileText(poseNumber(1)));
    addTwins(&f, "others", 20, "preset_pose");
    f.setContent(QStringList() << f.content("poses") << f.content("others"));
    ProgressLog log;
    scanPoses();
    const QStringList indexing = log.infosOf("Indexing");
    QCOMPARE(indexing.last(), s("Indexing poses... 1499 of 1520"));
    QVERIFY(indexing.size() >= 750 && indexing.size() <= 850); // every second one and new positions
}

void TestPoseScanner::pathsOfAllScriptsAreIndexed()
{
    ScanFixture f;
    const char* const paths[] = {"ポーズ/座る.duf", "Поза/сидя.duf", "cafe\xcc\x81/n\xcc\x83.duf"};
    int n = 0;
    for (const char* path : paths)
        f.add(path, poseNumber(++n));
    scanPoses();
    QCOMPARE(poseCount(), 3);
    resetPoseIndex();
    QVERIFY(readPoseIndex());
    for (const char* path : paths) {
        QVERIFY(indexedPaths().contains(f.content(path)));
        QVERIFY(QFile::exists(f.content(path)));
        QVERIFY(f.entryOf(path).hasSignature);
    }
}

// ---- what it leaves

void TestPoseScanner::theScanReplacesIndexPositionAndReference()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    addEntry(s("/old.duf"), 1);
    addEntry(s("/older.duf"), 2);
    pluginSettings().currentPose = 1;
    browseSession().tablesState = Applied;
    writeFile(referencePosePath(), "a reference pose");
    QCOMPARE(f.scanned(), names("a.duf"));
    QCOMPARE(pluginSettings().currentPose, 0);
    QVERIFY((browseSession().tablesState != Applied));
    QVERIFY(!QFile::exists(referencePosePath()));
}

void TestPoseScanner::theIndexFileHoldsWhatWasFound()
{
    ScanFixture f;
    for (int n = 0; n < 12; ++n)
        f.add(qPrintable(QString("%1.duf").arg(n)), poseNumber(n));
    scanPoses();
    const QStringList paths = indexedPaths();
    const QByteArray written = f.indexBytes();
    QVERIFY(paths.size() > 3);
    resetPoseIndex();
    QVERIFY(readPoseIndex());
    QCOMPARE(indexedPaths(), paths);
    QVERIFY(writePoseIndex());
    QVERIFY(f.indexBytes() == written);
}

void TestPoseScanner::ranksOfPosesThatAreGoneArePruned()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    const QString gone = f.add("b.duf", poseNumber(11));
    scanPoses();
    for (int entry = 0; entry < 2; ++entry) {
        pluginSettings().currentPose = entry;
        setCurrentRank(Favorite);
    }
    QFile::remove(gone);
    scanPoses();
    QCOMPARE(rankRecordCount(), 1);
    QCOMPARE(rankOf(0), int(Favorite));
    QCOMPARE(fileBytes(dataFiles().ranks).size(), 16);
}

void TestPoseScanner::theRankFileIsLeftWhenNothingIsPruned()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    scanPoses();
    pluginSettings().currentPose = 0;
    setCurrentRank(Favorite);
    writeFile(dataFiles().ranks, "as it was");
    scanPoses();
    QCOMPARE(rankRecordCount(), 1);
    QCOMPARE(fileBytes(dataFiles().ranks), QByteArray("as it was"));
}

void TestPoseScanner::theRankIsThatOfTheFirstPose_data()
{
    QTest::addColumn<QString>("cancelAt");
    QTest::addColumn<int>("rank");
    QTest::newRow("finished") << QString() << int(Favorite);
    QTest::newRow("aborted: there is none") << s("Identifying") << int(Unranked);
}

void TestPoseScanner::theRankIsThatOfTheFirstPose()
{
    QFETCH(QString, cancelAt);
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    f.add("b.duf", poseNumber(11));
    scanPoses();
    for (int entry = 0; entry < 2; ++entry) {
        pluginSettings().currentPose = entry;
        setCurrentRank(entry == 0 ? Favorite : Hidden);
    }
    ProgressLog log;
    log.cancelAt() = cancelAt;
    int shownMeanwhile = -1;
    log.atChange() = [&](const QString& info) {
        if (info.startsWith(s("Scanning pose files")))
            shownMeanwhile = pluginSettings().currentRank;
    };
    scanPoses();
    QCOMPARE(shownMeanwhile, int(Unranked));
    QTEST(int(pluginSettings().currentRank), "rank");
}

void TestPoseScanner::thePaneIsBusyMeanwhile()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    ProgressLog log;
    int busy = 0, idle = 0;
    log.atChange() = [&](const QString&) { ++(isBusy() ? busy : idle); };
    scanPoses();
    QVERIFY(busy > 0);
    QCOMPARE(idle, 0);
    QVERIFY(!isBusy());
}

// ---- cancelling

void TestPoseScanner::cancellingLeavesAnEmptyIndexAndTheOldFile_data()
{
    QTest::addColumn<QString>("cancelAt");
    for (const char* phase : kPhaseInfos)
        QTest::newRow(phase) << s(phase);
}

void TestPoseScanner::cancellingLeavesAnEmptyIndexAndTheOldFile()
{
    QFETCH(QString, cancelAt);
    ScanFixture f;
    for (int n = 0; n < 8; ++n)
        f.add(qPrintable(QString("%1.duf").arg(n)), poseNumber(n));
    f.add("male/1.duf", poseNumber(9));
    scanPoses();
    const QByteArray written = f.indexBytes();
    pluginSettings().currentPose = 0;
    setCurrentRank(Favorite);
    f.boxes.boxes.clear();
    ProgressLog log;
    log.cancelAt() = cancelAt;
    scanPoses();
    QCOMPARE(poseCount(), 0);
    QVERIFY(f.indexBytes() == written);
    QCOMPARE(rankRecordCount(), 1);
    QCOMPARE(log.records().back().event, DzProgressRecord::Finished);
    QCOMPARE(f.boxes.boxes.size(), 1);
    const SeenBox box = f.boxes.boxes.first();
    QCOMPARE(box.title, s("Info"));
    QCOMPARE(box.text, s("Scanning aborted"));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QVERIFY(!isBusy());
    QVERIFY(log.infosOf("Cleaning up").isEmpty() || cancelAt == s("Cleaning up"));
}

void TestPoseScanner::cancellingWhileIndexingUnlocksTheUndoStackAndLeavesAnEmptyIndex()
{
    ScanFixture f;
    for (int n = 0; n < 8; ++n)
        f.add(qPrintable(QString("%1.duf").arg(n)), poseNumber(n));
    bool wasLocked = false;
    ProgressLog log;
    log.cancelAt() = s("Indexing poses... 3");
    log.atChange() = [&](const QString& info) {
        if (info.startsWith(log.cancelAt()))
            wasLocked = wasLocked || f.rig.undoStack.isLocked();
    };
    scanPoses();
    QVERIFY(wasLocked);
    QVERIFY(!f.rig.undoStack.isLocked());
    QCOMPARE(f.rig.undoStack.getHoldDepth(), 0);
    QCOMPARE(poseCount(), 0);
    QCOMPARE(f.boxes.boxes.last().text, s("Scanning aborted"));
}

void TestPoseScanner::cancellingEndsTheWalkAtOnce()
{
    ScanFixture f;
    for (int n = 0; n < 5; ++n) {
        f.add(qPrintable(QString("a/%1.duf").arg(n)), poseNumber(n));
        f.add(qPrintable(QString("b/%1.duf").arg(n)), poseNumber(n));
    }
    f.setContent(QStringList() << f.content("a") << f.content("b"));
    ProgressLog log;
    log.cancelAt() = s("Scanning pose files... 2");
    scanPoses();
    QCOMPARE(log.infosOf("Scanning pose files").last(), s("Scanning pose files... 2"));
    QVERIFY(log.infosOf("Identifying").isEmpty());
}

// The progress window runs events, and with them scripts.
void TestPoseScanner::aFigureThatGoesEndsTheScan_data()
{
    QTest::addColumn<QString>("goesAt");
    QTest::addColumn<bool>("deleted");
    for (const char* info : kPhaseInfos) {
        QTest::newRow(qPrintable(s(info) + ", taken out")) << s(info) << false;
        QTest::newRow(qPrintable(s(info) + ", deleted")) << s(info) << true;
    }
}

void TestPoseScanner::aFigureThatGoesEndsTheScan()
{
    QFETCH(QString, goesAt);
    QFETCH(bool, deleted);
    ScanFixture f;
    for (int n = 0; n < 5; ++n)
        f.add(qPrintable(QString("%1.duf").arg(n)), poseNumber(n));
    scanPoses();
    const QByteArray written = f.indexBytes();
    f.boxes.boxes.clear();
    ProgressLog log;
    bool isGone = false;
    QScopedPointer<DzNode> takenOut;
    log.atChange() = [&](const QString& info) {
        if (isGone || !info.startsWith(goesAt))
            return;
        isGone = true;
        takenOut.reset(deleted ? nullptr : f.figure);
        if (deleted)
            f.rig.scene.clear();
        else
            f.rig.scene.removeNode(f.figure);
    };
    scanPoses();
    QVERIFY(isGone);
    QCOMPARE(poseCount(), 0);
    QVERIFY(f.indexBytes() == written);
    QCOMPARE(f.boxes.boxes.size(), 1);
    QCOMPARE(f.boxes.boxes.first().text, s("Scanning aborted"));
    QVERIFY(!isBusy());
    QCOMPARE(log.records().back().event, DzProgressRecord::Finished);
}

// At each of many small files they would take more time than the walk.
void TestPoseScanner::eventsAreHandledNowAndThenNotAtEveryFile()
{
    static const int kFiles = 300;
    ScanFixture f;
    for (int n = 0; n < kFiles; ++n)
        f.addText(qPrintable(QString("no pose %1.duf").arg(n)), "{}");
    int ticks = 0;
    QElapsedTimer watch;
    watch.start();
    {
        const EveryTurn ticker([&ticks] { ++ticks; });
        scanPoses();
    }
    QVERIFY2(ticks < kFiles / 3 + watch.elapsed() / 50, qPrintable(QString::number(ticks)));
}

// ---- progress

void TestPoseScanner::progressIsToldAsDescribed()
{
    ScanFixture f;
    for (int n = 0; n < 10; ++n)
        f.add(qPrintable(QString("%1.duf").arg(n)), poseNumber(n));
    ProgressLog log;
    scanPoses();
    const std::vector<DzProgressRecord>& records = log.records();
    QCOMPARE(records[0].title, s("Scanning..."));
    QCOMPARE(records[0].total, 100);
    QVERIFY(records[0].cancellable);
    QCOMPARE(records[1].position, 50);
    QMap<QString, int> last; // position by info text
    for (const DzProgressRecord& each : records)
        last[each.info] = each.position;
    QCOMPARE(last[s("Scanning pose files... 3")], 1); // square root, cut
    QCOMPARE(last[s("Scanning pose files... 10")], 3);
    QCOMPARE(last[s("Identifying pose files... 0 of 10")], 0);
    QCOMPARE(last[s("Identifying pose files... 7 of 10")], 70);
    QCOMPARE(last[s("Indexing poses... 9 of 10")], 90);
    const SeenBox box = f.boxes.boxes.first();
    QCOMPARE(box.title, s("Info"));
    QCOMPARE(box.icon, QMessageBox::Warning);
}

QUILLON_TEST(TestPoseScanner)
#include "test_pose_scanner.moc"
