#include "frame_fixture.h"

#include "ground/data_files.h"

#include <QtTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>
#endif

using namespace quillon;

#ifdef Q_OS_UNIX
// While it lives, no file of this process can grow past a number of bytes: a disk that is full.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        m_handlerBefore = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handlerBefore);
    }

private:
    rlimit m_before;
    void (*m_handlerBefore)(int);
};
#endif

class TestDataFiles : public QObject {
    Q_OBJECT

private slots:
    void cleanup()
    {
        closeDat();
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

    void hashStartsAt5381AndTakesBytesAsSigned()
    {
        QCOMPARE(djb2Hash("", 0), quint32(5381));
        QCOMPARE(djb2Hash("a", 1), quint32(5381 * 33 + 97));
        QCOMPARE(djb2Hash("\xff", 1), quint32(5381 * 33 - 1));
        QCOMPARE(djb2Hash("\0a", 2), quint32(5381 * 33 * 33 + 97));
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

    void writesAndReadsValuesAsTheyLieInMemory()
    {
        TempFolder folder;
        const QString path = folder.path("x.dat");
        QVERIFY(openDatForWriting(path));
        QCOMPARE(int(datState()), 2);
        writeDatField(qint32(-2));
        writeDatField(quint8(7));
        writeDatField(0.5f);
        closeDat();
        QCOMPARE(int(datState()), 0);
        QCOMPARE(fileBytes(path), QByteArray("\xfe\xff\xff\xff\x07\x00\x00\x00\x3f", 9));

        qint32 number = 0;
        quint8 byte = 0;
        float part = 0;
        QVERIFY(openDatForReading(path));
        QCOMPARE(int(datState()), 1);
        readDatField(&number);
        readDatField(&byte);
        readDatField(&part);
        closeDat();
        QCOMPARE(number, qint32(-2));
        QCOMPARE(int(byte), 7);
        QCOMPARE(part, 0.5f);
        QCOMPARE(filesIn(folder.path()), QStringList("x.dat"));
    }

    void shortReadLeavesTheRestOfTheField()
    {
        TempFolder folder;
        writeFile(folder.path("x.dat"), QByteArray("\x11\x22", 2));
        QVERIFY(openDatForReading(folder.path("x.dat")));
        quint32 field = 0xaabbccdd;
        readDatField(&field);
        QCOMPARE(field, quint32(0xaabb2211));
        readDatField(&field);
        QCOMPARE(field, quint32(0xaabb2211));
    }

    void failureToOpenLeavesTheState()
    {
        TempFolder folder;
        QVERIFY(!openDatForReading(folder.path("missing")));
        QVERIFY(!openDatForWriting(folder.path("missing/x")));
        QVERIFY(!openDatForWriting(folder.path())); // a folder
        QCOMPARE(int(datState()), 0);
        writeFile(folder.path("x.dat"), "abcd");
        QVERIFY(openDatForReading(folder.path("x.dat")));
        QVERIFY(!openDatForWriting(folder.path("missing/x")));
        QCOMPARE(int(datState()), 1);
        quint32 field = 0;
        readDatField(&field);
        QCOMPARE(field, quint32(0x64636261));
        QCOMPARE(filesIn(folder.path()), QStringList("x.dat"));
    }

    void oneFileIsOpenAtATime()
    {
        TempFolder folder;
        writeFile(folder.path("x.dat"), "abcd");
        QVERIFY(openDatForWriting(folder.path("y.dat")));
        writeDatField(quint8('y'));
        QVERIFY(openDatForReading(folder.path("x.dat")));
        QCOMPARE(int(datState()), 1);
        QCOMPARE(fileBytes(folder.path("y.dat")), QByteArray("y"));
        QVERIFY(openDatForWriting(folder.path("z.dat")));
        QCOMPARE(int(datState()), 2);
        closeDat();
        closeDat();
        QCOMPARE(int(datState()), 0);
        QCOMPARE(filesIn(folder.path()),
            QStringList() << "x.dat"
                          << "y.dat"
                          << "z.dat");
    }

    void aShorterFileReplacesALongerOne()
    {
        TempFolder folder;
        writeFile(folder.path("x.dat"), QByteArray(100000, 'x'));
        QVERIFY(openDatForWriting(folder.path("x.dat")));
        writeDatField(quint8('y'));
        QCOMPARE(fileBytes(folder.path("x.dat")).size(), 100000); // not before it is whole
        closeDat();
        QCOMPARE(fileBytes(folder.path("x.dat")), QByteArray("y"));
    }

#ifdef Q_OS_UNIX
    void fullDiskKeepsTheOlderFile_data()
    {
        QTest::addColumn<int>("bytes");
        QTest::newRow("less than the file buffer") << 4000;
        QTest::newRow("more than the file buffer") << 400000;
    }
    void fullDiskKeepsTheOlderFile()
    {
        QFETCH(int, bytes);
        TempFolder folder;
        writeFile(folder.path("x.dat"), "older");
        {
            FullDisk full(2000);
            QVERIFY(openDatForWriting(folder.path("x.dat")));
            for (int i = 0; i < bytes; ++i)
                writeDatField(quint8('n'));
            closeDat();
        }
        QCOMPARE(fileBytes(folder.path("x.dat")), QByteArray("older"));
        QCOMPARE(filesIn(folder.path()), QStringList("x.dat"));
    }

    void oneLongWriteOnAFullDiskKeepsTheOlderFile()
    {
        TempFolder folder;
        writeFile(folder.path("x.dat"), "older");
        const QByteArray block(400000, 'n');
        {
            FullDisk full(2000);
            QVERIFY(openDatForWriting(folder.path("x.dat")));
            writeDat(block.constData(), block.size());
            closeDat();
        }
        QCOMPARE(fileBytes(folder.path("x.dat")), QByteArray("older"));
    }

    void aFailureIsForgottenByTheNextFile()
    {
        TempFolder folder;
        {
            FullDisk full(0);
            QVERIFY(openDatForWriting(folder.path("x.dat")));
            writeDatField(quint8('n'));
            closeDat();
        }
        QVERIFY(filesIn(folder.path()).isEmpty());
        QVERIFY(openDatForWriting(folder.path("x.dat")));
        writeDatField(quint8('y'));
        closeDat();
        QCOMPARE(fileBytes(folder.path("x.dat")), QByteArray("y"));
    }

    void writesThroughALink()
    {
        TempFolder folder;
        writeFile(folder.path("real.dat"), "older");
        QVERIFY(QFile::link(folder.path("real.dat"), folder.path("link.dat")));
        QVERIFY(openDatForWriting(folder.path("link.dat")));
        writeDatField(quint8('y'));
        closeDat();
        QVERIFY(QFileInfo(folder.path("link.dat")).isSymLink());
        QCOMPARE(fileBytes(folder.path("real.dat")), QByteArray("y"));
    }
#endif
};

QTEST_MAIN(TestDataFiles)
#include "test_data_files.moc"
