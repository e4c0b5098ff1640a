// What reaches the index on disk, and what stays there: poses on drives that are offline, after a
// cancelled scan, of another host.
#include "browse_fixture.h"
#include "room_tests.h"
#include "scan_fixture.h"

#include "finder/custom_pose_commands.h"
#include "finder/index_saves.h"
#include "ground/backup_folder.h"
#include "ground/file_lock.h"
#include "ground/whole_file.h"
#include "posefile/custom_library.h"

using namespace quillon;

namespace {

struct SavesFixture : BrowseFixture {
    SavesFixture()
    {
        setContent(QStringList() << content());
    }
    QString content() const
    {
        return home.path("content");
    }
    QByteArray onDisk() const
    {
        return fileBytes(dataFiles().poseIndex);
    }
    // As a scan leaves it.
    void indexFiles(int count)
    {
        addFiles(count);
        QVERIFY(saveScannedIndex());
    }
    QStringList pathsOnDisk() const
    {
        QStringList paths;
        QByteArray bytes = onDisk();
        for (int at = 8; at < bytes.size();) {
            qint32 length = 0;
            memcpy(&length, bytes.constData() + at, 4);
            paths << QString::fromUtf8(bytes.mid(at + 4, length));
            at += 4 + length + 169;
        }
        return paths;
    }
    // What another host, which knows what is on disk, makes of it.
    void otherHostEdits(const QString& path, bool removes)
    {
        QByteArray bytes = onDisk(), record = recordOf(0);
        qint32 length = path.toUtf8().size(), old = 0;
        memcpy(&old, record.constData(), 4);
        record = QByteArray(reinterpret_cast<const char*>(&length), 4) + path.toUtf8()
            + record.mid(4 + old);
        applyEdits({{path.toUtf8(), removes ? QByteArray() : record}}, &bytes);
        QVERIFY(writeWholeFile(dataFiles().poseIndex, bytes));
    }
    QString addCustomFile(const char* name)
    {
        const QString path = customLibraryFolder() + name;
        writeFile(path, presetText(QList<QByteArray>()));
        return path;
    }
    qint32 positionOnDisk() const
    {
        qint32 position = 0;
        memcpy(&position, fileBytes(dataFiles().settings).constData() + 54, 4);
        return position;
    }
};

} // namespace

static QStringList indexCopies()
{
    return filesIn(backupFolder()).filter("poseIndex");
}

class TestIndexSaves : public QObject {
    Q_OBJECT

private slots:
    // ---- poses that vanished

    void aDriveThatIsOfflineLosesNothing_data()
    {
        QTest::addColumn<bool>("emptyFolderIsThere");
        QTest::newRow("its folder is missing") << false;
        QTest::newRow("its folder is empty") << true;
    }
    void aDriveThatIsOfflineLosesNothing()
    {
        QFETCH(bool, emptyFolderIsThere);
        SavesFixture f;
        f.indexFiles(6);
        f.browse(AllPoses);
        const QByteArray before = f.onDisk();
        QVERIFY(QDir().rename(f.content(), f.home.path("offline")));
        if (emptyFolderIsThere)
            QDir().mkpath(f.content());
        for (int n = 0; n < 4; ++n)
            f.next();
        QCOMPARE(poseCount(), 2);
        QVERIFY(f.onDisk() == before);
        QCOMPARE(statusMessage(), QString());
        QCOMPARE(indexCopies(), QStringList());
    }

    void aPoseThatIsGoneLeavesTheDiskAfterACopy()
    {
        SavesFixture f;
        f.indexFiles(6);
        f.browse(AllPoses);
        const QByteArray before = f.onDisk();
        for (const int entry : {1, 2}) {
            QFile::remove(poseEntry(entry)->path);
            pluginSettings().currentPose = entry - 1;
            f.next();
        }
        QCOMPARE(f.pathsOnDisk(), indexedPaths());
        QCOMPARE(poseCount(), 4);
        QCOMPARE(indexCopies().size(), 1); // once in a session
        QVERIFY(fileBytes(backupFolder() + indexCopies().first()) == before);
    }

    void withoutACopyNothingLeavesTheDisk()
    {
        SavesFixture f;
        f.indexFiles(3);
        f.browse(AllPoses);
        const QByteArray before = f.onDisk();
        writeFile(dataFiles().folder + "backup", "in the way");
        QFile::remove(poseEntry(1)->path);
        pluginSettings().currentPose = 0;
        f.next();
        QCOMPARE(poseCount(), 2);
        QVERIFY(f.onDisk() == before);
        QVERIFY2(statusMessage().startsWith("ERROR"), qPrintable(statusMessage()));
    }

    void aPoseOfNoContentDirectoryIsGoneWithItsFolderThere()
    {
        SavesFixture f;
        f.setContent(QStringList());
        f.indexFiles(3);
        const QString path = poseEntry(1)->path;
        removeEntry(1);
        QVERIFY(saveVanishing(path));
        QCOMPARE(f.pathsOnDisk().size(), 2);
    }

    void theInnermostContentDirectoryCounts()
    {
        SavesFixture f;
        f.indexFiles(3);
        f.setContent(QStringList() << f.content() << f.content() + "/People");
        const QString path = poseEntry(1)->path;
        QVERIFY(QDir().rename(f.content() + "/People", f.content() + "/offline"));
        removeEntry(1);
        QVERIFY(saveVanishing(path));
        QCOMPARE(f.pathsOnDisk().size(), 3);
        f.setContent(QStringList() << f.content() << f.content() + "/Peop");
        QVERIFY(saveVanishing(path)); // no directory but the outer one, which is there
        QCOMPARE(f.pathsOnDisk().size(), 2);
    }

    // ---- after a scan that was cancelled

    void whatIsSavedAfterACancelledScanJoinsTheIndexOnDisk()
    {
        SavesFixture f;
        f.indexFiles(4);
        const QStringList before = f.pathsOnDisk();
        resetPoseIndex();
        const QString path = f.addCustomFile("new.duf");
        QVERIFY(saveEntry(addEntry(path, 77)));
        QCOMPARE(indexedPaths(), QStringList(path));
        QCOMPARE(f.pathsOnDisk(), QStringList(before) << path);
        // Again, over it; and of one that the table does not know.
        const QByteArray withIt = f.onDisk();
        entryToChange(0)->contentHash = 78;
        QVERIFY(saveEntry(0));
        QCOMPARE(f.pathsOnDisk(), QStringList(before) << path);
        QVERIFY(f.onDisk() != withIt);
        QVERIFY(saveDeletion(before.at(1)));
        QVERIFY(saveDeletion(path));
        QCOMPARE(f.pathsOnDisk(), QStringList() << before.at(0) << before.at(2) << before.at(3));
    }

    void aCancelledScanKeepsTheIndexWhateverIsSavedThen()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        f.add("b.duf", poseNumber(11));
        scanPoses();
        QCOMPARE(poseCount(), 2);
        const QByteArray before = f.indexBytes();
        {
            ProgressLog log;
            ProgressLog::cancelAt() = "Identifying";
            scanPoses();
        }
        QCOMPARE(poseCount(), 0);
        QVERIFY(f.indexBytes() == before);
        QVERIFY(saveEntry(addEntry("/c.duf", 5)));
        createPoseIndex();
        QVERIFY(readPoseIndex());
        QCOMPARE(poseCount(), 3);
    }

    // ---- what is on disk

    void whereThereIsNoIndexTheTableIsWritten()
    {
        SavesFixture f;
        f.addFiles(2);
        QVERIFY(saveEntry(1));
        QCOMPARE(f.pathsOnDisk(), indexedPaths());
    }

    void anIndexOfAnotherVersionIsCopiedFirst()
    {
        SavesFixture f;
        const QByteArray other = QByteArray::fromHex("02000000") + "of tomorrow";
        writeFile(dataFiles().poseIndex, other);
        f.addFiles(2);
        QVERIFY(saveEntry(1));
        QCOMPARE(f.pathsOnDisk(), indexedPaths());
        QCOMPARE(fileBytes(backupFolder() + indexCopies().value(0)), other);
        QCOMPARE(dzApp->getLogLines().filter("another version").size(), 1);
    }

    void whatCannotBeReadIsNotReplaced()
    {
        SavesFixture f;
        f.addFiles(2);
        QVERIFY(QDir().mkpath(dataFiles().poseIndex + "/full"));
        QVERIFY(!saveEntry(1));
        QVERIFY(QFileInfo(dataFiles().poseIndex + "/full").isDir());
    }

    void whatCouldNotBeSavedGoesWithTheNextChange()
    {
        SavesFixture f;
        f.indexFiles(3);
        const QString gone = poseEntry(0)->path;
        QVERIFY(QDir().mkpath(besideName(dataFiles().poseIndex))); // where the new file is made
        f.addFile("new.duf");
        QVERIFY(!saveEntry(3));
        removeEntry(0);
        QVERIFY(!saveDeletion(gone));
        QCOMPARE(f.pathsOnDisk().size(), 3);
        QVERIFY(QDir().rmdir(besideName(dataFiles().poseIndex)));
        f.addFile("newer.duf");
        QVERIFY(saveEntry(3));
        QCOMPARE(f.pathsOnDisk(), indexedPaths());
    }

    void aScanThatCouldNotBeSavedGoesWithTheNextChange()
    {
        SavesFixture f;
        f.indexFiles(3);
        const QByteArray old = f.onDisk();
        resetPoseIndex();
        QVERIFY(QDir().mkpath(besideName(dataFiles().poseIndex)));
        f.addFile("People/new.duf");
        QVERIFY(!saveScannedIndex());
        QVERIFY(QDir().rmdir(besideName(dataFiles().poseIndex)));
        f.addFile("People/newer.duf");
        QVERIFY(saveEntry(1));
        QCOMPARE(f.pathsOnDisk(), indexedPaths());
        QVERIFY(fileBytes(backupFolder() + indexCopies().value(0)) == old);
    }

    // ---- two hosts

    void whatAnotherHostSavedStays()
    {
        SavesFixture f;
        f.indexFiles(4);
        const QStringList before = indexedPaths();
        f.otherHostEdits("/other.duf", false);
        f.otherHostEdits(before.at(1), true);
        f.addFile("mine.duf");
        QVERIFY(saveEntry(4));
        const QString gone = poseEntry(2)->path;
        removeEntry(2);
        QVERIFY(saveDeletion(gone));
        QCOMPARE(f.pathsOnDisk(),
            QStringList() << before.at(0) << before.at(3) << "/other.duf"
                          << f.home.path("content/mine.duf"));
    }

    void whatWasSavedOnceIsNotSavedAgain()
    {
        SavesFixture f;
        f.indexFiles(2);
        f.addFile("mine.duf");
        QVERIFY(saveEntry(2));
        f.otherHostEdits(poseEntry(2)->path, true);
        f.addFile("newer.duf");
        QVERIFY(saveEntry(3));
        QCOMPARE(f.pathsOnDisk(),
            QStringList() << poseEntry(0)->path << poseEntry(1)->path << poseEntry(3)->path);
    }

    void aHostThatSavesMakesTheOtherWait()
    {
        SavesFixture f;
        f.indexFiles(2);
        const QByteArray before = f.onDisk();
        f.addFile("mine.duf");
        {
            const FileLock other(dataFiles().saveLock, 0);
            QVERIFY(other.isHeld());
            QVERIFY(!saveEntry(2));
            QVERIFY(!saveScannedIndex());
            QVERIFY(f.onDisk() == before);
        }
        QVERIFY(saveEntry(2));
        QCOMPARE(f.pathsOnDisk(), indexedPaths());
        QVERIFY(!QFile::exists(dataFiles().saveLock));
    }

    void whatIsPendingIsSavedAtTheEnd()
    {
        SavesFixture f;
        f.indexFiles(2);
        QVERIFY(saveWhatIsPending());
        const QByteArray before = f.onDisk();
        for (int wholeScan = 0; wholeScan < 2; ++wholeScan) {
            f.addFile(wholeScan ? "scanned.duf" : "mine.duf");
            {
                const FileLock other(dataFiles().saveLock, 0);
                QVERIFY(!(wholeScan ? saveScannedIndex() : saveEntry(2)));
                QVERIFY(!saveWhatIsPending());
            }
            QVERIFY(saveWhatIsPending());
            QCOMPARE(f.pathsOnDisk(), indexedPaths());
        }
        QVERIFY(f.onDisk().size() > before.size());
    }

    // ---- the position

    // The file was removed by hand and saved again: the table has it twice, the file once.
    void thePositionIsRightBehindAPathThatIsThereTwice()
    {
        SavesFixture f;
        f.indexFiles(3);
        QVERIFY(appendPose(poseEntry(0)->path) == 3);
        QVERIFY(saveEntry(3));
        pluginSettings().currentPose = 3;
        QVERIFY(saveSettingsAndPosition());
        QCOMPARE(f.positionOnDisk(), 0);
    }

    void thePositionFollowsItsPath()
    {
        SavesFixture f;
        f.indexFiles(4);
        const QStringList before = indexedPaths();
        pluginSettings().currentPose = 2;
        QVERIFY(saveSettingsAndPosition());
        QCOMPARE(f.positionOnDisk(), 2);
        f.otherHostEdits(before.at(0), true);
        QVERIFY(saveSettingsAndPosition());
        QCOMPARE(f.positionOnDisk(), 1);
        QCOMPARE(pluginSettings().currentPose, qint32(2)); // of the table
        f.otherHostEdits(before.at(2), true);
        QVERIFY(saveSettingsAndPosition());
        QCOMPARE(f.positionOnDisk(), -1);
    }

    void thePositionFollowsItsPathPastPosesThatAreOffline()
    {
        SavesFixture f;
        f.indexFiles(4);
        QVERIFY(QDir().rename(f.content(), f.home.path("offline")));
        const QString gone = poseEntry(0)->path;
        removeEntry(0);
        QVERIFY(saveVanishing(gone));
        pluginSettings().currentPose = 1;
        QVERIFY(saveSettingsAndPosition());
        QCOMPARE(f.positionOnDisk(), 2);
    }

    // An own change makes the table no more like the file than it was.
    void thePositionFollowsItsPathBehindOwnChanges_data()
    {
        QTest::addColumn<bool>("byAnotherHost"); // the difference; else a pose that is offline
        QTest::addColumn<int>("position");
        QTest::newRow("with a pose that is offline") << false << 4;
        QTest::newRow("without one that another host removed") << true << 3;
    }
    void thePositionFollowsItsPathBehindOwnChanges()
    {
        QFETCH(bool, byAnotherHost);
        QFETCH(int, position);
        SavesFixture f;
        f.indexFiles(4);
        const QString first = poseEntry(0)->path;
        if (byAnotherHost) {
            f.otherHostEdits(first, true);
        } else {
            QVERIFY(QDir().rename(f.content(), f.home.path("offline")));
            removeEntry(0);
            QVERIFY(saveVanishing(first));
        }
        const int mine = addEntry(f.addCustomFile("mine.duf"), 77);
        QVERIFY(saveEntry(mine));
        QCOMPARE(f.pathsOnDisk().value(position), poseEntry(mine)->path);
        pluginSettings().currentPose = mine;
        QVERIFY(saveSettingsAndPosition());
        QCOMPARE(f.positionOnDisk(), position);
    }

    void thePositionFollowsItsPathWhenAChangeCouldNotBeSaved()
    {
        SavesFixture f;
        f.indexFiles(4);
        QVERIFY(QDir().mkpath(besideName(dataFiles().poseIndex))); // where the new file is made
        const QString gone = poseEntry(0)->path;
        removeEntry(0);
        QVERIFY(!saveDeletion(gone));
        pluginSettings().currentPose = 2;
        QVERIFY(saveSettingsAndPosition());
        QCOMPARE(f.positionOnDisk(), 3);
    }

    void withoutAnAppliedPoseThereIsNoPosition()
    {
        SavesFixture f;
        f.indexFiles(3);
        f.otherHostEdits(poseEntry(0)->path, true);
        pluginSettings().currentPose = -1;
        QVERIFY(saveSettingsAndPosition());
        QCOMPARE(f.positionOnDisk(), -1);
    }

    void inAnIndexOfAnotherVersionNoPositionIsLookedFor()
    {
        SavesFixture f;
        f.indexFiles(3);
        writeFile(dataFiles().poseIndex, QByteArray::fromHex("02000000") + "of tomorrow");
        pluginSettings().currentPose = 1;
        QVERIFY(saveSettingsAndPosition());
        QCOMPARE(f.positionOnDisk(), 1);
    }

    void ownChangesKeepTheTablesPosition()
    {
        SavesFixture f;
        f.indexFiles(4);
        f.addFile("mine.duf");
        QVERIFY(saveEntry(4));
        const QString gone = poseEntry(0)->path;
        removeEntry(0);
        QVERIFY(saveDeletion(gone));
        QVERIFY(indexOnDisk().isMirrored);
        pluginSettings().currentPose = 3;
        QVERIFY(saveSettingsAndPosition());
        QCOMPARE(f.positionOnDisk(), 3);
        QCOMPARE(f.pathsOnDisk().at(3), poseEntry(3)->path);
    }
};

QUILLON_TEST(TestIndexSaves)
#include "test_index_saves.moc"
