// What a scan that cannot look, or cannot write, leaves and tells.
#include "room_tests.h"
#include "scan_fixture.h"

#include "finder/content_walk.h"
#include "ground/backup_folder.h"
#include "ground/status_message.h"

using namespace quillon;

class TestScanSafety : public QObject {
    Q_OBJECT

private:
    // Copies of a file in the backups, oldest first.
    static QList<QByteArray> copiesOf(const QString& path)
    {
        QList<QByteArray> copies;
        const QString start = QFileInfo(path).fileName() + QLatin1Char('.');
        for (const QString& name : filesIn(backupFolder())) {
            if (name.startsWith(start))
                copies << fileBytes(backupFolder() + name);
        }
        return copies;
    }

private slots:
    void whereNoContentCanBeListedNothingChanges()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        scanPoses();
        pluginSettings().currentPose = 0;
        QVERIFY(setCurrentRank(Favorite));
        writeFile(referencePosePath(), "a reference pose");
        const QByteArray index = f.indexBytes(), ranks = fileBytes(dataFiles().ranks);
        f.boxes.boxes.clear();
        f.setContent(QStringList() << f.home.path("missing") << f.home.path("gone"));
        QVERIFY(!scanPoses());
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes.first().text.left(41),
            QString("None of the content folders can be opened"));
        QCOMPARE(indexedPaths().size(), 1);
        QCOMPARE(f.indexBytes(), index);
        QCOMPARE(fileBytes(dataFiles().ranks), ranks);
        QCOMPARE(fileBytes(referencePosePath()), QByteArray("a reference pose"));
    }

    void aDirectoryThatIsMissingIsTold()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        f.setContent(QStringList() << f.content() << f.home.path("missing"));
        clearStatusMessage();
        scanPoses();
        QCOMPARE(indexedPaths().size(), 1);
        QCOMPARE(f.boxes.boxes.last().text, QString("Success! Indexed pose files: 1"));
        QVERIFY2(statusMessage().contains("1 files or folders"), qPrintable(statusMessage()));
        const QStringList log = dzApp->getLogLines().filter("cannot read");
        QCOMPARE(log.size(), 1);
        QVERIFY2(log.first().endsWith("/missing"), qPrintable(log.first()));
    }

    void ranksOutliveADirectoryThatIsMissing()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        scanPoses();
        pluginSettings().currentPose = 0;
        QVERIFY(setCurrentRank(Favorite));
        const QByteArray ranks = fileBytes(dataFiles().ranks);
        f.setContent(QStringList()
            << backupFolder().left(backupFolder().size() - 8) << f.home.path("missing"));
        scanPoses();
        QCOMPARE(indexedPaths(), QStringList());
        QCOMPARE(fileBytes(dataFiles().ranks), ranks);
        f.setContent(QStringList() << f.content());
        scanPoses();
        QCOMPARE(rankOf(0), int(Favorite));
    }

    void aPackedPresetThatCannotBeUnpackedIsTold()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        f.addText("damaged.duf", "\x1f\x8b and nothing that could be unpacked");
        clearStatusMessage();
        scanPoses();
        QCOMPARE(indexedPaths().size(), 1);
        QVERIFY2(statusMessage().contains("1 files or folders"), qPrintable(statusMessage()));
        const QStringList log = dzApp->getLogLines().filter("cannot read");
        QCOMPARE(log.size(), 1);
        QVERIFY2(log.first().endsWith("/damaged.duf"), qPrintable(log.first()));
    }

    void whatCanBeReadIsNotTold()
    {
        ScanFixture f;
        f.add("deep/er/a.duf", poseNumber(1));
        f.addText("empty.duf", "");
        QVERIFY(QDir().mkpath(f.content() + "/empty folder"));
        clearStatusMessage();
        scanPoses();
        QCOMPARE(indexedPaths().size(), 1);
        QVERIFY2(statusMessage().isEmpty(), qPrintable(statusMessage()));
        QCOMPARE(dzApp->getLogLines().filter("cannot read"), QStringList());
    }

    void emptyFoldersCanBeListedAndMissingOnesCannot()
    {
        TempFolder folder;
        writeFile(folder.path("file"), "x");
        QVERIFY(canBeListed(folder.path()));
        QVERIFY(QDir().mkpath(folder.path("empty")));
        QVERIFY(canBeListed(folder.path("empty")));
        QVERIFY(canBeListed("/"));
        QVERIFY(!canBeListed(folder.path("missing")));
        QVERIFY(!canBeListed(folder.path("file")));
    }

    // All files were read; it is the figure that lacks something.
    void aFigureWithoutAHipMakesNoFileUnreadable()
    {
        ScanFixture f;
        for (int n = 0; n < 4; ++n)
            f.add(qPrintable(QString("%1.duf").arg(n)), poseNumber(n));
        const QString gone = f.add("gone.duf", poseNumber(9));
        scanPoses();
        pluginSettings().currentPose = indexedPaths().indexOf(gone);
        QVERIFY(setCurrentRank(Favorite));
        QVERIFY(QFile::remove(gone));
        f.figure->removeBone(f.bone("hip"));
        clearStatusMessage();
        scanPoses();
        QVERIFY2(statusMessage().isEmpty(), qPrintable(statusMessage()));
        QCOMPARE(dzApp->getLogLines().filter("cannot read"), QStringList());
        QCOMPARE(rankRecordCount(), 0); // every pose was seen
        QCOMPARE(fileBytes(dataFiles().ranksKept).size(), 16);
    }

    void theReferenceThatAScanDropsIsKept()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        writeFile(referencePosePath(), "a reference pose");
        scanPoses();
        QVERIFY(!QFile::exists(referencePosePath()));
        QCOMPARE(copiesOf(referencePosePath()), QList<QByteArray>() << "a reference pose");
    }

    void everyReferenceThatScansDropIsKept()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        for (int n = 9; n > 0; --n) {
            const QByteArray reference = "a reference pose" + QByteArray(n, '.');
            writeFile(referencePosePath(), reference);
            scanPoses();
            QVERIFY(!QFile::exists(referencePosePath()));
            QCOMPARE(copiesOf(referencePosePath()).last(), reference);
        }
        QCOMPARE(copiesOf(referencePosePath()).size(), kGenerations);
    }

    void theIndexThatAScanReplacesIsKept()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        scanPoses();
        const QByteArray first = f.indexBytes();
        f.add("b.duf", poseNumber(11));
        scanPoses();
        QVERIFY(f.indexBytes() != first);
        QCOMPARE(copiesOf(dataFiles().poseIndex), QList<QByteArray>() << first);
    }

    // The one that counts on the backups finding nothing is the next scan.
    void aScanOverTheBackupsFindsNothing()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        writeFile(referencePosePath(), poseFileText(poseNumber(2)));
        scanPoses();
        QVERIFY(!copiesOf(referencePosePath()).isEmpty());
        f.setContent(QStringList() << backupFolder());
        scanPoses();
        QCOMPARE(indexedPaths(), QStringList());
    }

    void anIndexThatCannotBeWrittenIsNoSuccess()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        QVERIFY(QDir().mkpath(dataFiles().poseIndex + "/in the way"));
        clearStatusMessage();
        scanPoses();
        QCOMPARE(f.boxes.boxes.size(), 0);
        QVERIFY2(statusMessage().startsWith("ERROR"), qPrintable(statusMessage()));
    }
};

QUILLON_TEST(TestScanSafety)
#include "test_scan_safety.moc"
