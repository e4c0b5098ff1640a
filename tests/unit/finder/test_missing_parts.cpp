// What the Pose Finder does where a part of its world is missing: the data folder, the figure or
// its hip, the window, content that can be read.
#include "browse_fixture.h"
#include "room_tests.h"
#include "scan_fixture.h"

#include "finder/content_walk.h"
#include "finder/custom_pose_commands.h"
#include "finder/figure_place.h"
#include "finder/index_saves.h"
#include "finder/kept_ranks.h"
#include "ground/whole_file.h"

using namespace quillon;

class TestMissingParts : public QObject {
    Q_OBJECT
private slots:
    // ---- the data folder

    void withoutADataFolderNothingIsSavedAndThatIsTold()
    {
        BrowseFixture f;
        f.addFiles(2);
        const QString inTheWay = dataFiles().folder.left(dataFiles().folder.size() - 1);
        writeFile(inTheWay, "in the way");
        QVERIFY(QFileInfo(inTheWay).isFile());
        QVERIFY(!saveScannedIndex());
        QVERIFY(!saveEntry(0));
        QVERIFY(!saveDeletion(poseEntry(0)->path));
        RankRecord record;
        record.key = 7;
        QVERIFY(!keepRanks(RankRecords(1, record)));
        QVERIFY(keepRanks(RankRecords())); // there is nothing to keep
        QCOMPARE(fileBytes(inTheWay), QByteArray("in the way"));
    }

    void anEntryThatIsNoneNeedsNoSaving()
    {
        BrowseFixture f;
        QVERIFY(saveEntry(-1));
        QVERIFY(!QFile::exists(dataFiles().poseIndex));
    }

    // A kept rank goes when the other file has it, not before.
    void ranksThatCannotBeWrittenStayKept()
    {
        BrowseFixture f;
        addEntry("/a.duf", 10);
        RankRecord record;
        record.key = 10;
        record.rank = Favorite;
        QVERIFY(keepRanks(RankRecords(1, record)));
        const QByteArray kept = fileBytes(dataFiles().ranksKept);
        QVERIFY(QDir().mkpath(besideName(dataFiles().ranks) + "/full"));
        QVERIFY(!moveRanksAfterScan(false));
        QCOMPARE(fileBytes(dataFiles().ranksKept), kept);
        QVERIFY(!QFile::exists(dataFiles().ranks));
    }

    // ---- the figure

    void thePlaceOfAFigureThatLostItsHipIsPutBackNowhere()
    {
        BrowseFixture f;
        FigurePlace place = placeOf(f.figure, f.time());
        QVERIFY(isPlaceOf(place, f.figure));
        QVERIFY(!isPlaceOf(place, nullptr));
        QVERIFY(f.figure->removeBone(f.bone("hip")));
        f.figure->getYRotControl()->setValue(30);
        f.figure->getXPosControl()->setValue(5);
        putBackRotation(place, f.time());
        putBackRotationUnderHip(place, f.time());
        putBackPlace(place, f.time());
        QCOMPARE(f.figure->getYRotControl()->getValue(), 30.f);
        QCOMPARE(f.figure->getXPosControl()->getValue(), 5.f);
        notePlaceLeft(&place, f.time());
        QVERIFY(place.left.empty());
        QVERIFY(!isPlaceAsLeft(place, f.figure, f.time()));
    }

    void aFigureWithoutAHipIsNeitherPosedNorMirrored()
    {
        BrowseFixture f;
        f.addFile("a.duf", values({{"lShin/x", 40}}));
        f.browse(AllPoses);
        f.apply(0);
        f.rig.undoStack.clearAll();
        QVERIFY(f.figure->removeBone(f.bone("hip")));
        const float before = f.rotationDeg("lShin", 'x');
        QVERIFY(!mirrorCurrentPose(&browseSession(), f.figure, f.time()));
        QVERIFY(!reapplyCurrentPose(&browseSession(), f.figure, f.time()));
        QCOMPARE(f.rotationDeg("lShin", 'x'), before);
        QCOMPARE(f.steps(), 0);
    }

    // Opening the progress window runs events.
    void aFigureThatGoesAsTheScanBeginsEndsIt()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        QCOMPARE(f.scanned(), QStringList("a.duf"));
        const QByteArray index = f.indexBytes();
        ProgressLog progress;
        const ScanFixture* fixture = &f;
        ProgressLog::atChange() = [fixture](const QString&) {
            if (dzScene->getNumSkeletons() > 0)
                dzScene->removeNode(fixture->figure);
        };
        scanPoses();
        QCOMPARE(ProgressLog::infosOf("Identifying"), QStringList());
        QCOMPARE(poseCount(), 1); // nothing was forgotten for it
        QCOMPARE(f.indexBytes(), index);
    }

    // ---- the window

    void withoutAWindowNoFolderIsShown()
    {
        BrowseFixture f;
        QVERIFY(!dzApp->getInterface());
        browseToPoseFolder("C:/Content/People/Poses/sit.duf");
        QCOMPARE(f.steps(), 0);
    }

    // ---- content

    void theRootOfADiskCanBeListed()
    {
        QVERIFY(canBeListed("/"));
        QVERIFY(!canBeListed("/no such folder"));
    }

    void ofManyThatCannotBeReadTheLogNamesTheFirst()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        QStringList content(f.content());
        for (int i = 0; i < 230; ++i)
            content << f.home.path(QString("missing%1").arg(i));
        f.setContent(content);
        clearStatusMessage();
        scanPoses();
        QVERIFY2(statusMessage().contains("230 files or folders"), qPrintable(statusMessage()));
        QCOMPARE(dzApp->getLogLines().filter("cannot read").size(), 200);
    }
};

QUILLON_TEST(TestMissingParts)
#include "test_missing_parts.moc"
