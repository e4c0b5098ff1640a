#include "frame_fixture.h"
#include "room_tests.h"

#include "ground/data_folder.h"

#include <QtTest>

using namespace quillon;

class TestDataFolder : public QObject {
    Q_OBJECT

private slots:
    void cleanup()
    {
        locateDataFiles(); // without an application: no paths
    }

    void cutsTheDataPathAfterItsLastData_data()
    {
        QTest::addColumn<QString>("hostPath");
        QTest::addColumn<QString>("folder");
        QTest::newRow("ends in data") << "C:/My Library/data"
                                      << "C:/My Library/data/Brannoc/Quillon/";
        QTest::newRow("goes below data") << "C:/My Library/data/cloud/1_2"
                                         << "C:/My Library/data/Brannoc/Quillon/";
        QTest::newRow("twice data") << "D:/data/x/data/y"
                                    << "D:/data/x/data/Brannoc/Quillon/";
        QTest::newRow("part of a name counts") << "C:/data/database/x"
                                               << "C:/data/data/Brannoc/Quillon/";
        QTest::newRow("only another case") << "C:/Data/x"
                                           << "C:/Data/x/Brannoc/Quillon/";
        QTest::newRow("no slash before it") << "data"
                                            << "data/Brannoc/Quillon/";
        QTest::newRow("no data") << "C:/x"
                                 << "C:/x/Brannoc/Quillon/";
        QTest::newRow("empty") << ""
                               << "/Brannoc/Quillon/";
    }
    void cutsTheDataPathAfterItsLastData()
    {
        QFETCH(QString, hostPath);
        QFETCH(QString, folder);
        QCOMPARE(dataFolderFor(hostPath), folder);
    }

    void keyIsTheHashOfTheSecondToLastComponent_data()
    {
        QTest::addColumn<QString>("tempPath");
        QTest::addColumn<QString>("key");
        // Hashes worked out apart from this program.
        QTest::newRow("a usual path, leading zero kept")
            << "C:/Users/x/AppData/Roaming/DAZ 3D/Studio4/temp"
            << "0ff58ef1";
        QTest::newRow("another channel") << "C:/Users/x/Studio4 Public Build/temp"
                                         << "d4b22860";
        QTest::newRow("one slash, at the start: whole path") << "/temp"
                                                             << "0b92d7ea";
        QTest::newRow("two slashes") << "/a/b"
                                     << "0002b606";
        QTest::newRow("no slash: whole path") << "temp"
                                              << "7c9e679b";
        QTest::newRow("trailing slash moves on by one") << "C:/a/b/"
                                                        << "0002b607";
        QTest::newRow("double slash: empty component") << "C:/x//temp"
                                                       << "";
        QTest::newRow("double slash, relative") << "a//b"
                                                << "";
        QTest::newRow("double slash at the start: empty component") << "//temp"
                                                                    << "";
        QTest::newRow("empty path") << ""
                                    << "";
        QTest::newRow("bytes of 128 and above subtract (Cyrillic)")
            << QString::fromUtf8("C:/\xd0\xa1\xd1\x82\xd1\x83\xd0\xb4\xd0\xb8\xd1\x8f/temp")
            << "2eb18ca9";
        QTest::newRow("bytes of 128 and above subtract (Japanese)")
            << QString::fromUtf8("C:/\xe6\x97\xa5\xe6\x9c\xac/temp") << "c39a7535";
    }
    void keyIsTheHashOfTheSecondToLastComponent()
    {
        QFETCH(QString, tempPath);
        QFETCH(QString, key);
        QCOMPARE(installationKeyFor(tempPath), key);
    }

    void namesTheFourFilesAndTheCustomFolder()
    {
        const DataFiles files = dataFilesFor("C:/x/data", "C:/app/Studio4/temp");
        QCOMPARE(files.folder, QString("C:/x/data/Brannoc/Quillon/"));
        QCOMPARE(files.customFolder, QString("C:/x/data/Brannoc/Quillon/custom/"));
        QCOMPARE(files.key, QString("0ff58ef1"));
        QCOMPARE(files.settings, files.folder + "settings_0ff58ef1.dat");
        QCOMPARE(files.crashMarker, files.folder + "crashed_0ff58ef1.dat");
        QCOMPARE(files.ranks, files.folder + "ranks_0ff58ef1.dat");
        QCOMPARE(files.ranksKept, files.folder + "ranksKept_0ff58ef1.dat");
        QCOMPARE(files.poseIndex, files.folder + "poseIndex_0ff58ef1.dat");
    }

    void emptyTempPathGivesNamesWithoutKey()
    {
        const DataFiles files = dataFilesFor("/x/data", QString());
        QCOMPARE(files.settings, QString("/x/data/Brannoc/Quillon/settings_.dat"));
        QCOMPARE(files.crashMarker, QString("/x/data/Brannoc/Quillon/crashed_.dat"));
        QCOMPARE(files.ranks, QString("/x/data/Brannoc/Quillon/ranks_.dat"));
        QCOMPARE(files.poseIndex, QString("/x/data/Brannoc/Quillon/poseIndex_.dat"));
    }

    void pathsAreAskedOfTheHost()
    {
        HostFixture host;
        locateDataFiles();
        QCOMPARE(dataFiles().folder, host.dataFolder());
        QCOMPARE(dataFiles().key, installationKeyFor(host.home.path("temp")));
    }

    void withoutAnApplicationThereIsNoFolder()
    {
        QVERIFY(dataFiles().folder.isEmpty());
        QVERIFY(dataFiles().settings.isEmpty());
        QVERIFY(!ensureDataFolder());
    }

    void createsTheFolderWithAllParents()
    {
        HostFixture host;
        locateDataFiles();
        QVERIFY(!QFile::exists(host.home.path("data")));
        QVERIFY(ensureDataFolder());
        QVERIFY(QFileInfo(host.dataFolder()).isDir());
        QVERIFY(ensureDataFolder());
    }

    void aFileInPlaceOfTheFolderIsLeftAlone()
    {
        HostFixture host;
        writeFile(host.home.path("data"), "in the way");
        locateDataFiles();
        QVERIFY(!ensureDataFolder());
        QCOMPARE(fileBytes(host.home.path("data")), QByteArray("in the way"));
    }

    void migrationRenamesFilesOfTheOldNaming()
    {
        HostFixture host;
        locateDataFiles();
        writeFile(host.dataFolder() + "settings.dat", "s");
        writeFile(host.dataFolder() + "crashed.dat", "c");
        writeFile(host.dataFolder() + "ranks.dat", "r");
        writeFile(host.dataFolder() + "poseIndex.dat", "p");
        writeFile(host.dataFolder() + "reference.duf", "not ours to rename");
        migrateDataFiles();
        QCOMPARE(fileBytes(dataFiles().settings), QByteArray("s"));
        QCOMPARE(fileBytes(dataFiles().crashMarker), QByteArray("c"));
        QCOMPARE(fileBytes(dataFiles().ranks), QByteArray("r"));
        QCOMPARE(fileBytes(dataFiles().poseIndex), QByteArray("p"));
        QCOMPARE(filesIn(host.dataFolder()).size(), 5);
        QVERIFY(QFile::exists(host.dataFolder() + "reference.duf"));
    }

    void migrationNeverReplacesAFile()
    {
        HostFixture host;
        locateDataFiles();
        writeFile(host.dataFolder() + "ranks.dat", "old");
        writeFile(dataFiles().ranks, "new");
        writeFile(host.dataFolder() + "settings.dat", "s");
        migrateDataFiles();
        QCOMPARE(fileBytes(host.dataFolder() + "ranks.dat"), QByteArray("old"));
        QCOMPARE(fileBytes(dataFiles().ranks), QByteArray("new"));
        QCOMPARE(fileBytes(dataFiles().settings), QByteArray("s"));
    }
};

QUILLON_TEST(TestDataFolder)
#include "test_data_folder.moc"
