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

    // A rank file of so many records, all with the same fill byte.
    static QByteArray table(int records, char fill)
    {
        QByteArray bytes("\1\0\0\0\0\0\0\0", 8);
        bytes[4] = char(records);
        return bytes + QByteArray(8 * records, fill);
    }
    // "8a 7b": records and fill byte of each copy, oldest first.
    QString tables() const
    {
        QStringList found;
        for (const QString& name : copies()) {
            const QByteArray bytes = fileBytes(backupFolder() + name);
            found << QString::number(int(bytes.at(4))) + QLatin1Char(bytes.at(8));
        }
        return found.join(" ");
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

    // Until two are of one second.
    void copiesOfOneSecondAreNumberedInTurn()
    {
        QList<int> numbers;
        for (int fill = 0; numbers.size() < 2 && fill < 100; ++fill) {
            QVERIFY(backUpNow(table(1, char(fill)), 1000));
            const QString fresh = copies().last();
            const QString start = fresh.left(fresh.size() - QString("000.bak").size());
            numbers.clear();
            for (const QString& name : copies().filter(start))
                numbers += name.mid(start.size(), 3).toInt();
        }
        QCOMPARE(numbers, QList<int>() << 0 << 1);
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

    void aPoorerCopyNeverPushesOutTheFullest()
    {
        QVERIFY(backUpNow(table(4, 'a'), 3));
        QVERIFY(backUpNow(table(1, 'b'), 3));
        QVERIFY(backUpNow(table(3, 'c'), 3));
        QVERIFY(backUpNow(table(2, 'd'), 3));
        QCOMPARE(tables(), QString("4a 3c 2d")); // the one that is poorer went
        QVERIFY(backUpNow(table(1, 'e'), 3));
        QCOMPARE(tables(), QString("4a 2d 1e")); // where none is, the oldest of the others
        QVERIFY(backUpNow(table(4, 'f'), 3));
        QVERIFY(backUpNow(table(4, 'g'), 3));
        QCOMPARE(tables(), QString("1e 4f 4g")); // one that is as full takes the fullest's place
    }

    void ofEqualsTheLastIsTheFullest()
    {
        QVERIFY(backUpNow(table(4, 'a'), 2));
        QVERIFY(backUpNow(table(4, 'b'), 2));
        QVERIFY(backUpNow(table(1, 'c'), 2));
        QCOMPARE(tables(), QString("4b 1c"));
    }

    void whereOnlyTheFullestMayGoThereIsOneMore()
    {
        QVERIFY(backUpNow(table(4, 'a'), 1));
        QVERIFY(backUpNow(table(2, 'b'), 1));
        QCOMPARE(tables(), QString("4a 2b"));
        QVERIFY(backUpNow(table(1, 'c'), 1));
        QCOMPARE(tables(), QString("4a 1c"));
        QVERIFY(backUpNow(table(5, 'd'), 1));
        QCOMPARE(tables(), QString("5d"));
    }

    void theLastOfEverPoorerFilesIsCopied()
    {
        for (int records = 9; records >= 1; --records)
            QVERIFY(backUpNow(table(records, 'r')));
        QCOMPARE(tables(), QString("9r 4r 3r 2r 1r"));
    }

    // A damaged head that promises more than there is.
    void recordsAreCountedAsFarAsTheFileGoes()
    {
        QByteArray lying = table(2, 'l');
        lying[4] = 100;
        QVERIFY(backUpNow(table(3, 'a'), 2));
        QVERIFY(backUpNow(lying, 2));
        QVERIFY(backUpNow(table(1, 'b'), 2));
        QCOMPARE(tables(), QString("3a 1b"));
        QByteArray behind = table(1, 'm') + QByteArray(1000, 'x'); // which nobody reads
        QVERIFY(backUpNow(behind, 2));
        QCOMPARE(tables(), QString("3a 1m"));
        QVERIFY(backUpNow(table(2, 'c'), 2));
        QCOMPARE(tables(), QString("3a 2c"));
    }

    void aForeignFileTooLongForACopyIsPutAway()
    {
        const QString path = dataFiles().ranks;
        QVERIFY(ensureDataFolder());
        writeFile(path, "ranks");
        QVERIFY(QFile::resize(path, kLargestDatFile + 1));
        QVERIFY(backUpForeign(path));
        QVERIFY(!QFile::exists(path));
        QCOMPARE(contents().size(), 1);
        QCOMPARE(contents().at(0).size(), int(kLargestDatFile) + 1);
    }

    void aForeignFileThatIsNotThereIsNotTold()
    {
        QVERIFY(backUpForeign(dataFiles().ranks));
        QCOMPARE(dzApp->getLogLines(), QStringList());
        QVERIFY(!QFile::exists(backupFolder()));
    }

    void ofAnotherVersionTheLengthCounts()
    {
        QByteArray tomorrows = table(3, 't');
        tomorrows[0] = 2;
        tomorrows[4] = 0;
        QVERIFY(backUpNow(tomorrows, 2));
        QVERIFY(backUpNow(table(1, 'a'), 2));
        QVERIFY(backUpNow(table(2, 'b'), 2));
        QCOMPARE(tables(), QString("0t 2b"));
    }

    // Which of two poses has more bytes says nothing; the last one is wanted.
    void aSmallerReferenceIsKeptToo()
    {
        const QString path = dataFiles().folder + "reference.duf";
        QByteArray reference(2000, 'x');
        for (int n = 0; n < 8; ++n) {
            reference.chop(9);
            writeFile(path, reference);
            QVERIFY(setAside(path));
            QVERIFY(!QFile::exists(path));
            QVERIFY(contents().contains(reference));
        }
        QCOMPARE(copies().size(), kGenerations);
        QVERIFY(!contents().contains(QByteArray(1991, 'x')));
    }

    void whatMayHaveContentIsCopied()
    {
        pluginSettings() = PluginSettings();
        pluginSettings().muteUpdateNotice = true;
        QVERIFY(saveSettings());
        QVERIFY(backUp(dataFiles().settings));
        QCOMPARE(copies().size(), 1);
        QVERIFY(backUpNow(table(1, 'a')));
        QVERIFY(backUpNow(table(0, 0) + "?")); // too little for a record, but something
        QVERIFY(backUpNow(table(0, 0).left(7)));
        QCOMPARE(copies().size(), 4);
        writeFile(dataFiles().folder + "reference.duf", "8 bytes.");
        QVERIFY(backUp(dataFiles().folder + "reference.duf"));
        QCOMPARE(copies().size(), 5);
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
        QVERIFY(backUpNow(QByteArray(half.size(), 'y'))); // the one before of its file goes
        QCOMPARE(contents(), QList<QByteArray>() << half << QByteArray(half.size(), 'y'));
        QVERIFY(backUpNow(QByteArray(int(kBackupBytes + 1), 'z'))); // too long for any
        QCOMPARE(copies().size(), 2);
    }

    // The longest, so that few go; of the other files never the last one.
    void overTheLimitTheLongestGoes()
    {
        for (const char* bytes : {"ranks", "more"})
            QVERIFY(backUpNow(bytes));
        writeFile(dataFiles().poseIndex, QByteArray(30 << 20, 'x'));
        QVERIFY(backUp(dataFiles().poseIndex, kIndexGenerations));
        writeFile(dataFiles().poseIndex, QByteArray(40 << 20, 'y'));
        QVERIFY(backUp(dataFiles().poseIndex, kIndexGenerations));
        QList<int> sizes;
        for (const QByteArray& each : contents())
            sizes << each.size();
        QCOMPARE(sizes, QList<int>() << 4 << 5 << (40 << 20));
    }

    // What goes would be lost without making room.
    void theLimitYieldsToTheFullestOfEachFile()
    {
        for (const char* bytes : {"ranks", "more"})
            QVERIFY(backUpNow(bytes));
        for (const int megabytes : {40, 39, 38}) {
            writeFile(dataFiles().poseIndex, QByteArray(megabytes << 20, 'x'));
            QVERIFY(backUp(dataFiles().poseIndex, kIndexGenerations));
        }
        QList<int> sizes;
        for (const QByteArray& each : contents())
            sizes << each.size();
        std::sort(sizes.begin(), sizes.end());
        QCOMPARE(sizes, QList<int>() << 4 << 5 << (38 << 20) << (40 << 20));
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
        QVERIFY(QFile::resize(dataFiles().ranks, kLargestDatFile + 1)); // to be renamed
        QVERIFY(!setAside(dataFiles().ranks));
        QVERIFY(!backUpForeign(dataFiles().ranks));
        QCOMPARE(dzApp->getLogLines(), QStringList());
        QCOMPARE(QFileInfo(dataFiles().ranks).size(), kLargestDatFile + 1);
    }
};

QUILLON_TEST(TestBackupFolder)
#include "test_backup_folder.moc"
