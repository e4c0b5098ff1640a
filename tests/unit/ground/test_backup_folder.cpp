#include "frame_fixture.h"
#include "room_tests.h"

#include "ground/backup_folder.h"
#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/plugin_settings.h"

#include <QtTest>

#include <algorithm>

using namespace quillon;

class TestBackupFolder : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> m_host;

    QStringList copies() const
    {
        return filesIn(backupFolder());
    }
    QList<QByteArray> contents() const
    {
        QList<QByteArray> found;
        for (const QString& name : copies())
            found.append(fileBytes(backupFolder() + name));
        std::sort(found.begin(), found.end());
        return found;
    }
    bool backUpNow(const QByteArray& bytes, int generations = kGenerations)
    {
        writeFile(dataFiles().ranks, bytes);
        return backUp(dataFiles().ranks, generations);
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

    void aCopyHasTheFilesNameADateAndNoEndingOfAPose()
    {
        const QString path = dataFiles().folder + "ReferencePose.duf";
        writeFile(path, "pose");
        QVERIFY(backUp(path));
        QCOMPARE(copies().size(), 1);
        const QRegExp form("ReferencePose\\.duf\\.\\d{8}-\\d{6}-\\d{3}\\.bak");
        QVERIFY2(form.exactMatch(copies().first()), qPrintable(copies().first()));
        QCOMPARE(fileBytes(backupFolder() + copies().first()), QByteArray("pose"));
        QCOMPARE(fileBytes(path), QByteArray("pose"));
    }

    // Nobody reads one of that length, and its copy would push out all others. Taken away it is
    // only given another name.
    void aFileLongerThanAnyThatIsReadIsNotCopied()
    {
        const QString path = dataFiles().poseIndex;
        QVERIFY(backUpNow("ranks"));
        writeFile(path, "x");
        QVERIFY(QFile::resize(path, kLargestDatFile + 1));
        QVERIFY(backUp(path));
        QCOMPARE(contents(), QList<QByteArray>() << "ranks");
        QVERIFY(setAside(path));
        QVERIFY(!QFile::exists(path));
        QCOMPARE(contents().size(), 2);
        QCOMPARE(contents().at(0).size() + contents().at(1).size(), int(kLargestDatFile) + 1 + 5);
    }

    void nothingIsCopiedOfMissingOrEmptyOrEqualFiles()
    {
        QVERIFY(backUp(dataFiles().ranks));
        QVERIFY(backUpNow(""));
        QVERIFY(!QFile::exists(backupFolder()));
        QVERIFY(backUpNow("a") && backUpNow("b") && backUpNow("a"));
        QCOMPARE(contents(),
            QList<QByteArray>() << "a"
                                << "b");
    }

    void theOldestOfTooManyGoes()
    {
        for (const char* bytes : {"a", "b", "c", "d", "e", "f"})
            QVERIFY(backUpNow(bytes));
        QCOMPARE(contents(),
            QList<QByteArray>() << "b"
                                << "c"
                                << "d"
                                << "e"
                                << "f");
    }

    void theIndexHasTwo()
    {
        for (const char* bytes : {"a", "b", "c"})
            QVERIFY(backUpNow(bytes, kIndexGenerations));
        QCOMPARE(contents(),
            QList<QByteArray>() << "b"
                                << "c");
    }

    void aPoorerCopyNeverPushesOutAFullerOne()
    {
        for (const char* bytes : {"aaaa", "b", "cccc"})
            QVERIFY(backUpNow(bytes, 3));
        QVERIFY(backUpNow("dd", 3)); // takes the place of b
        QCOMPARE(contents(),
            QList<QByteArray>() << "aaaa"
                                << "cccc"
                                << "dd");
        QVERIFY(backUpNow("e", 3)); // has none to take
        QCOMPARE(contents(),
            QList<QByteArray>() << "aaaa"
                                << "cccc"
                                << "dd");
    }

    // Which of two poses has more bytes says nothing; the last one is wanted.
    void ofPosesTheOldestGoesHoweverFull()
    {
        const QString path = dataFiles().folder + "reference.duf";
        for (const char* bytes : {"aaaa", "bbb", "c"}) {
            writeFile(path, bytes);
            QVERIFY(backUp(path, 2));
        }
        QCOMPARE(contents(),
            QList<QByteArray>() << "bbb"
                                << "c");
    }

    void tablesWithoutRecordsAndDefaultSettingsAreNotCopied()
    {
        const QByteArray none = QByteArray::fromHex("0100000000000000");
        QVERIFY(backUpNow(none));
        writeFile(dataFiles().poseIndex, none);
        QVERIFY(backUp(dataFiles().poseIndex));
        pluginSettings() = PluginSettings();
        QVERIFY(saveSettings());
        QVERIFY(backUp(dataFiles().settings));
        QCOMPARE(copies(), QStringList());
        QVERIFY(setAside(dataFiles().settings));
        QVERIFY(!QFile::exists(dataFiles().settings));
        QVERIFY(backUpNow(none + "a record"));
        QCOMPARE(copies().size(), 1);
    }

    // As the guide tells it.
    void bringingACopyBackIsCopyingIt()
    {
        const QString paths[] = {dataFiles().settings, dataFiles().ranks, dataFiles().ranksKept,
            dataFiles().poseIndex, dataFiles().folder + "reference.duf"};
        for (const QString& path : paths) {
            writeFile(path, path.toUtf8());
            QVERIFY(setAside(path));
            QVERIFY(!QFile::exists(path));
        }
        const QStringList names = copies();
        QCOMPARE(names.size(), 5);
        for (const QString& name : names) {
            const int date = name.indexOf(QRegExp("\\.\\d{8}-\\d{6}-\\d{3}\\.bak$"));
            QVERIFY(QFile::copy(backupFolder() + name, dataFiles().folder + name.left(date)));
        }
        for (const QString& path : paths)
            QCOMPARE(fileBytes(path), path.toUtf8());
    }

    // A large index leaves the copies of ranks alone, and takes the place of its like.
    void ofAllCopiesTheFullestThatIsNotFullerGoes()
    {
        QVERIFY(backUpNow("ranks"));
        writeFile(dataFiles().folder + "poseIndex_old.dat", QByteArray(40 << 20, 'x'));
        QVERIFY(backUp(dataFiles().folder + "poseIndex_old.dat"));
        writeFile(dataFiles().poseIndex, QByteArray(41 << 20, 'y'));
        QVERIFY(backUp(dataFiles().poseIndex));
        QList<int> sizes;
        for (const QByteArray& each : contents())
            sizes << each.size();
        QCOMPARE(sizes, QList<int>() << 5 << (41 << 20));
    }

    void theIndexLeavesRoomToTheOthers()
    {
        const QString path = dataFiles().poseIndex;
        writeFile(path, QByteArray(29 << 20, 'x'));
        QVERIFY(backUp(path, kIndexGenerations));
        writeFile(path, QByteArray(28 << 20, 'y')); // the room is enough, but for what is left
        QVERIFY(backUp(path, kIndexGenerations));
        QCOMPARE(copies().size(), 1);
        QVERIFY(backUpNow("ranks"));
        QCOMPARE(copies().size(), 2);
    }

    void otherFilesCopiesAreNotCounted()
    {
        writeFile(dataFiles().settings, "s");
        QVERIFY(backUp(dataFiles().settings, 1));
        QVERIFY(backUpNow("a", 1) && backUpNow("b", 1));
        QCOMPARE(contents(),
            QList<QByteArray>() << "b"
                                << "s");
    }

    void allCopiesTogetherHaveALimit()
    {
        const QByteArray half(int(kBackupBytes / 2), 'x');
        QVERIFY(backUpNow(half));
        writeFile(dataFiles().settings, half);
        QVERIFY(backUp(dataFiles().settings));
        QCOMPARE(copies().size(), 2);
        QVERIFY(backUpNow(QByteArray(half.size(), 'y'))); // one of the two goes
        QCOMPARE(copies().size(), 2);
        QVERIFY(backUpNow(QByteArray("poor"))); // both are fuller
        QCOMPARE(copies().size(), 2);
        QVERIFY(backUpNow(QByteArray(int(kBackupBytes + 1), 'z')));
        QCOMPARE(copies().size(), 2);
    }

    void settingAsideTakesTheFileAway()
    {
        writeFile(dataFiles().ranks, "r");
        QVERIFY(setAside(dataFiles().ranks));
        QVERIFY(!QFile::exists(dataFiles().ranks));
        QCOMPARE(contents(), QList<QByteArray>() << "r");
        QVERIFY(setAside(dataFiles().ranks)); // nothing there
    }

    void whereNoCopyCanBeMadeNothingIsTakenAway()
    {
        writeFile(dataFiles().folder + "backup", "in the way");
        QVERIFY(!backUpNow("a"));
        QVERIFY(!setAside(dataFiles().ranks));
        QCOMPARE(fileBytes(dataFiles().ranks), QByteArray("a"));
    }
};

QUILLON_TEST(TestBackupFolder)
#include "test_backup_folder.moc"
