#include "frame_fixture.h"
#include "full_pipe.h"
#include "room_tests.h"

#include "ground/backup_folder.h"
#include "ground/data_folder.h"
#include "ground/plugin_settings.h"
#include "pane/crash_guard.h"

#include <QtTest>

#include <algorithm>

using namespace quillon;

class TestCrashGuard : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> m_host;

    void writeDataFiles()
    {
        writeFile(dataFiles().settings, "s");
        writeFile(dataFiles().ranks, "r");
        writeFile(dataFiles().poseIndex, "p");
        writeFile(dataFiles().folder + "reference.duf", "kept");
    }
    static QByteArray rankFileOf(int records)
    {
        QByteArray bytes("\1\0\0\0\0\0\0\0", 8);
        bytes[4] = char(records);
        for (int key = 1; key <= records; ++key)
            bytes += QByteArray("\1\0\0\0", 4) + char(key) + QByteArray(3, char(records));
        return bytes;
    }
    static QList<QByteArray> copies()
    {
        QList<QByteArray> found;
        for (const QString& name : filesIn(backupFolder()))
            found << fileBytes(backupFolder() + name);
        return found;
    }

private slots:
    void init()
    {
        m_host.reset(new HostFixture);
        locateDataFiles();
    }
    void cleanup()
    {
        m_host.reset();
    }

    void markerHoldsTheNumber77()
    {
        QVERIFY(writeCrashMarker());
        QCOMPARE(fileBytes(dataFiles().crashMarker), QByteArray("\x4d\x00\x00\x00", 4));
        removeCrashMarker();
        QVERIFY(!QFile::exists(dataFiles().crashMarker));
    }

    void whereThereIsNoLockTheGuardGoesOnWithout()
    {
        QVERIFY(QDir().mkpath(dataFiles().crashMarker + ".lock"));
        {
            const StartGuard guard;
            QVERIFY(QFile::exists(dataFiles().crashMarker));
        }
        QVERIFY(!QFile::exists(dataFiles().crashMarker));
    }

    void aPipeInTheMarkersPlaceIsGivenAnotherName()
    {
        const FullPipe pipe(dataFiles().crashMarker);
        QVERIFY(writeCrashMarker());
        QCOMPARE(fileBytes(dataFiles().crashMarker), QByteArray("\x4d\x00\x00\x00", 4));
    }

    void noMarkerMeansNoWarning()
    {
        writeDataFiles();
        BoxAnswers answers;
        checkCrashMarker();
        QCOMPARE(answers.boxes.size(), 0);
        QCOMPARE(filesIn(dataFiles().folder).size(), 4);
    }

    void markerWarnsOnceAndDropsTheData()
    {
        writeDataFiles();
        QVERIFY(writeCrashMarker());
        BoxAnswers answers;
        checkCrashMarker();
        QCOMPARE(answers.boxes.size(), 1);
        const SeenBox& box = answers.boxes.first();
        QCOMPARE(box.title, QString("Quillon plugin - Warning"));
        QCOMPARE(box.icon, QMessageBox::Warning);
        QCOMPARE(int(box.buttons), int(QMessageBox::Ok));
        QVERIFY(!box.parent && box.isModal);
        QVERIFY(!QFile::exists(dataFiles().settings));
        QVERIFY(!QFile::exists(dataFiles().ranks));
        QVERIFY(!QFile::exists(dataFiles().poseIndex));
        QVERIFY(QFile::exists(dataFiles().crashMarker)); // this start rewrites and removes it
        QCOMPARE(fileBytes(dataFiles().folder + "reference.duf"), QByteArray("kept"));
    }

    void otherContentIsNoMarker_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("another number") << QByteArray("\x4e\x00\x00\x00", 4);
        QTest::newRow("77 in a high byte") << QByteArray("\x00\x4d\x00\x00", 4);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut after one byte") << QByteArray("\x4d", 1);
        QTest::newRow("cut after two bytes") << QByteArray("\x4d\x00", 2);
        QTest::newRow("cut after three bytes") << QByteArray("\x4d\x00\x00", 3);
        QTest::newRow("a byte more") << QByteArray("\x4d\x00\x00\x00\x00", 5);
    }
    void otherContentIsNoMarker()
    {
        QFETCH(QByteArray, content);
        writeDataFiles();
        writeFile(dataFiles().crashMarker, content);
        BoxAnswers answers;
        checkCrashMarker();
        QCOMPARE(answers.boxes.size(), 0);
        QVERIFY(QFile::exists(dataFiles().settings));
    }

    void aMarkerOfTheNamingWithoutAKeyCounts()
    {
        writeFile(dataFiles().folder + "crashed.dat", QByteArray("\x4d\x00\x00\x00", 4));
        migrateDataFiles();
        BoxAnswers answers;
        checkCrashMarker();
        QCOMPARE(answers.boxes.size(), 1);
    }

    void whatIsDroppedLiesInTheBackups()
    {
        writeDataFiles();
        QVERIFY(writeCrashMarker());
        BoxAnswers answers;
        checkCrashMarker();
        QByteArray bytes;
        for (const QString& name : filesIn(backupFolder()))
            bytes += fileBytes(backupFolder() + name);
        std::sort(bytes.begin(), bytes.end());
        QCOMPARE(bytes, QByteArray("prs"));
    }

    void ranksThatAreDroppedAreKeptForTheNextScan()
    {
        const QByteArray ranks = QByteArray::fromHex("01000000010000000200000007000000");
        writeFile(dataFiles().ranks, ranks);
        QVERIFY(writeCrashMarker());
        BoxAnswers answers;
        checkCrashMarker();
        QVERIFY(!QFile::exists(dataFiles().ranks));
        QCOMPARE(fileBytes(dataFiles().ranksKept), ranks);
    }

    // The poorer they get the less there is to push out, and the last ones are those wanted.
    void everyRankFileThatIsDroppedIsCopied()
    {
        for (int records = 8; records >= 1; --records) {
            const QByteArray ranks = rankFileOf(records);
            writeFile(dataFiles().ranks, ranks);
            QVERIFY(writeCrashMarker());
            BoxAnswers answers;
            checkCrashMarker();
            QVERIFY(!QFile::exists(dataFiles().ranks));
            QVERIFY(copies().contains(ranks));
            QVERIFY(copies().contains(rankFileOf(8)));
            QVERIFY(copies().size() <= kGenerations);
        }
    }

    void whatSaysNothingIsDroppedWithoutACopy()
    {
        const QByteArray noRecords = QByteArray::fromHex("0100000000000000");
        writeFile(dataFiles().ranks, noRecords);
        writeFile(dataFiles().poseIndex, noRecords);
        pluginSettings() = PluginSettings();
        QVERIFY(saveSettings());
        QVERIFY(writeCrashMarker());
        BoxAnswers answers;
        checkCrashMarker();
        QVERIFY(!QFile::exists(dataFiles().ranks));
        QVERIFY(!QFile::exists(dataFiles().settings));
        QCOMPARE(copies(), QList<QByteArray>());
    }

    void theMarkerOfAHostThatIsStartingIsNoCrash()
    {
        writeDataFiles();
        BoxAnswers answers;
        {
            const StartGuard first;
            QVERIFY(QFile::exists(dataFiles().crashMarker));
            {
                const StartGuard second;
            }
            QVERIFY(QFile::exists(dataFiles().crashMarker)); // still the first one's
        }
        QVERIFY(!QFile::exists(dataFiles().crashMarker));
        QCOMPARE(answers.boxes.size(), 0);
        QCOMPARE(filesIn(dataFiles().folder).size(), 4); // and no lock
    }

    void theMarkerOfAStartThatWasKilledIsACrash()
    {
        writeDataFiles();
        QVERIFY(writeCrashMarker());
        writeFile(dataFiles().crashMarker + ".lock", ""); // which nobody holds any more
        BoxAnswers answers;
        {
            const StartGuard next;
            QVERIFY(QFile::exists(dataFiles().crashMarker));
        }
        QCOMPARE(answers.boxes.size(), 1);
        QCOMPARE(filesIn(dataFiles().folder), QStringList("reference.duf"));
    }

    void aFolderInTheMarkersPlaceSwitchesNothingOff()
    {
        QVERIFY(QDir().mkpath(dataFiles().crashMarker + "/full"));
        QVERIFY(writeCrashMarker());
        BoxAnswers answers;
        checkCrashMarker();
        QCOMPARE(answers.boxes.size(), 1);
        QVERIFY(QFileInfo(dataFiles().crashMarker + ".1/full").isDir());
    }

    void anUnusableFolderIsSilent()
    {
        writeFile(m_host->home.path("data"), "in the way");
        BoxAnswers answers;
        checkCrashMarker();
        QVERIFY(!writeCrashMarker());
        removeCrashMarker();
        QCOMPARE(answers.boxes.size(), 0);
        QCOMPARE(fileBytes(m_host->home.path("data")), QByteArray("in the way"));
    }
};

QUILLON_TEST(TestCrashGuard)
#include "test_crash_guard.moc"
