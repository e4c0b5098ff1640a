// What becomes of files when the system refuses a call: for a moment, for good, or half way.
#include "frame_fixture.h"
#include "refused_calls.h"
#include "room_tests.h"
#include "without_rights.h"

#include "ground/backup_folder.h"
#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/file_lock.h"
#include "ground/plugin_settings.h"
#include "ground/system_files.h"
#include "ground/whole_file.h"

#include <QtTest>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace quillon;

class TestRefusedCalls : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TempFolder> m_folder, m_keep;
    QString m_file; // holds "old"

private slots:
    void init();

    // for a moment
    void replacingIsTriedAgain_data();
    void replacingIsTriedAgain();
    void patienceEnds();
    void otherRefusalsAreNotWaitedFor();
    void aLockIsTriedAgain();
    void aFileSystemWithoutLocksIsNotWaitedFor();
    void aLockWhoseFileWasRemovedIsNone_data();
    void aLockWhoseFileWasRemovedIsNone();

    // for good
    void aNewFileIsWholeOrNotThere_data();
    void aNewFileIsWholeOrNotThere();
    void bytesInPlaceArePutBack();
    void whatCannotBePutBackStaysInTheKeepFolder();
    void withoutItsPermissionsAFileIsWrittenInPlace();
    void oldBytesThatCannotBeReadAreNotWrittenOver();

    // reading
    void aDataFileThatCannotBeReadIsNotWhole();
    void settingsThatCannotBeReadAreNotReplaced();
    void whatCannotBeReadIsNotBackedUp();
    void aCopyThatCannotBeReadIsAnotherOne();

    void aTableThatCannotBeReadCountsByItsLength();

    void whatIsNotOpenHasNoName();
    void othersProcessesLive();
};

void TestRefusedCalls::init()
{
    m_folder.reset(new TempFolder);
    m_keep.reset(new TempFolder);
    m_file = m_folder->path("file");
    writeFile(m_file, "old");
    lostLock.clear();
}

void TestRefusedCalls::replacingIsTriedAgain_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("another process has it open") << EBUSY;
    QTest::newRow("a signal came") << EINTR;
}

void TestRefusedCalls::replacingIsTriedAgain()
{
    QFETCH(int, error);
    const Refused refused(Rename, error, 2);
    QVERIFY(writeWholeFile(m_file, "new"));
    QCOMPARE(refused.seen(), 3);
    QCOMPARE(fileBytes(m_file), QByteArray("new"));
}

void TestRefusedCalls::patienceEnds()
{
    const Refused refused(Rename, EBUSY);
    QVERIFY(!writeWholeFile(m_file, "new"));
    QCOMPARE(restedMs, long(kPatienceMs));
    QCOMPARE(fileBytes(m_file), QByteArray("old"));
    QCOMPARE(filesIn(m_folder->path()), QStringList("file"));
}

void TestRefusedCalls::otherRefusalsAreNotWaitedFor()
{
    const Refused refused(Rename, EACCES);
    QVERIFY(!writeWholeFile(m_file, "new"));
    QCOMPARE(refused.seen(), 1);
    QCOMPARE(restedMs, 0L);
    QCOMPARE(filesIn(m_folder->path()), QStringList("file"));
}

void TestRefusedCalls::aLockIsTriedAgain()
{
    const Refused refused(Lock, EINTR, 2);
    QVERIFY(FileLock(m_folder->path("x.lock"), kPatienceMs).isHeld());
    QCOMPARE(refused.seen(), 3);
}

void TestRefusedCalls::aFileSystemWithoutLocksIsNotWaitedFor()
{
    const Refused refused(Lock, ENOLCK);
    const FileLock lock(m_folder->path("x.lock"), kPatienceMs);
    QVERIFY(!lock.isHeld());
    QVERIFY(!lock.isOthers());
    QCOMPARE(refused.seen(), 1);
}

void TestRefusedCalls::aLockWhoseFileWasRemovedIsNone_data()
{
    QTest::addColumn<bool>("isMadeAgain");
    QTest::newRow("removed") << false;
    QTest::newRow("and made again") << true;
}

// The process that had the lock removes the file while this one waits for it.
void TestRefusedCalls::aLockWhoseFileWasRemovedIsNone()
{
    QFETCH(bool, isMadeAgain);
    isLostLockMadeAgain = isMadeAgain;
    const QString path = m_folder->path("x.lock");
    restedMs = 0;
    lostLock = path; // up to the fourth rest
    {
        const FileLock lock(path, kPatienceMs);
        QVERIFY(lock.isHeld());
        QCOMPARE(restedMs, 20L);
        QCOMPARE(filesIn(m_folder->path()),
            QStringList() << "file"
                          << "x.lock");
    }
    lostLock = path;
    QVERIFY(FileLock(path, 0).isOthers());
}

void TestRefusedCalls::aNewFileIsWholeOrNotThere_data()
{
    QTest::addColumn<int>("call");
    QTest::newRow("the disk does not take it") << int(Flush);
    QTest::newRow("its length cannot be set") << int(Cut);
    QTest::newRow("it cannot be put in its place") << int(Rename);
}

void TestRefusedCalls::aNewFileIsWholeOrNotThere()
{
    QFETCH(int, call);
    const Refused refused(Call(call), EIO);
    QVERIFY(!writeWholeFile(m_file, "new"));
    QVERIFY(!writeWholeFile(m_folder->path("another"), "new"));
    QCOMPARE(refused.seen(), 2);
    QCOMPARE(fileBytes(m_file), QByteArray("old"));
    QCOMPARE(filesIn(m_folder->path()), QStringList("file"));
}

void TestRefusedCalls::bytesInPlaceArePutBack()
{
    QVERIFY(::link(qPrintable(m_file), qPrintable(m_folder->path("other name"))) == 0);
    const Refused refused(Flush, EIO);
    QVERIFY(!overwriteFile(m_file, "newer and longer", m_keep->path()));
    QCOMPARE(fileBytes(m_file), QByteArray("old"));
    QCOMPARE(filesIn(m_keep->path()), QStringList());
}

void TestRefusedCalls::whatCannotBePutBackStaysInTheKeepFolder()
{
    QVERIFY(::link(qPrintable(m_file), qPrintable(m_folder->path("other name"))) == 0);
    const Refused refused(Cut, EIO);
    QVERIFY(!overwriteFile(m_file, "newer and longer", m_keep->path()));
    const QStringList kept = filesIn(m_keep->path());
    QCOMPARE(kept.size(), 1);
    QCOMPARE(fileBytes(m_keep->path(kept.at(0))), QByteArray("old"));
}

void TestRefusedCalls::withoutItsPermissionsAFileIsWrittenInPlace()
{
    struct stat before = {}, after = {};
    QVERIFY(::stat(qPrintable(m_file), &before) == 0);
    const Refused refused(Permit, EPERM);
    QVERIFY(overwriteFile(m_file, "new", m_keep->path()));
    QVERIFY(refused.seen() > 0);
    QVERIFY(::stat(qPrintable(m_file), &after) == 0);
    QCOMPARE(after.st_ino, before.st_ino);
    QCOMPARE(fileBytes(m_file), QByteArray("new"));
    QCOMPARE(filesIn(m_folder->path()), QStringList("file"));
}

void TestRefusedCalls::oldBytesThatCannotBeReadAreNotWrittenOver()
{
    QVERIFY(::link(qPrintable(m_file), qPrintable(m_folder->path("other name"))) == 0);
    {
        const Refused refused(Read, EIO);
        QVERIFY(!overwriteFile(m_file, "new", m_keep->path()));
        QVERIFY(refused.seen() > 0);
    }
    QCOMPARE(fileBytes(m_file), QByteArray("old"));
}

void TestRefusedCalls::aDataFileThatCannotBeReadIsNotWhole()
{
    const Refused refused(Read, EIO);
    const DatReader in(m_file);
    QVERIFY(in.isOpen());
    QVERIFY(!in.isWhole());
    QCOMPARE(in.bytesLeft(), qint64(0));
}

void TestRefusedCalls::settingsThatCannotBeReadAreNotReplaced()
{
    const HostFixture host;
    locateDataFiles();
    pluginSettings() = PluginSettings();
    QVERIFY(saveSettings());
    const QByteArray before = fileBytes(dataFiles().settings);
    pluginSettings().muteUpdateNotice = !pluginSettings().muteUpdateNotice;
    {
        const Refused refused(Read, EIO);
        QVERIFY(!loadSettings());
        QVERIFY(!saveSettings());
    }
    QCOMPARE(fileBytes(dataFiles().settings), before);
}

void TestRefusedCalls::whatCannotBeReadIsNotBackedUp()
{
    const HostFixture host;
    locateDataFiles();
    writeFile(dataFiles().ranks, "ranks");
    {
        const Refused refused(Read, EIO);
        QVERIFY(!backUp(dataFiles().ranks));
        QVERIFY(!QFile::exists(backupFolder()));
        QVERIFY(setAside(dataFiles().ranks)); // under another name
    }
    QVERIFY(!QFile::exists(dataFiles().ranks));
    const QStringList aside = filesIn(backupFolder());
    QCOMPARE(aside.size(), 1);
    QCOMPARE(fileBytes(backupFolder() + aside.at(0)), QByteArray("ranks"));
}

// Only what is there for sure makes a new copy needless.
void TestRefusedCalls::aCopyThatCannotBeReadIsAnotherOne()
{
    const HostFixture host;
    locateDataFiles();
    const QString path = dataFiles().folder + "reference.duf";
    writeFile(path, "pose");
    QVERIFY(backUp(path));
    QVERIFY(backUp(path));
    QCOMPARE(filesIn(backupFolder()).size(), 1);
    QVERIFY(giveToChild(dataFiles().folder) && giveToChild(backupFolder()) && giveToChild(path));
    const QString copy = backupFolder() + filesIn(backupFolder()).at(0);
    QVERIFY(setMode(copy, 0));
    QCOMPARE(runWithoutRights([&path] { return backUp(path); }), 1);
    QVERIFY(setMode(copy, 0644));
    const QStringList copies = filesIn(backupFolder());
    QCOMPARE(copies.size(), 2);
    QCOMPARE(fileBytes(backupFolder() + copies.at(1)), QByteArray("pose"));
}

// A copy that may be the fullest is not pushed out for what else is known of it.
void TestRefusedCalls::aTableThatCannotBeReadCountsByItsLength()
{
    const HostFixture host;
    locateDataFiles();
    const QString path = dataFiles().ranks;
    const auto table = [](char records, char fill) {
        QByteArray bytes("\1\0\0\0\0\0\0\0", 8);
        bytes[4] = records;
        return bytes + QByteArray(8 * records, fill);
    };
    writeFile(path, table(5, 'a'));
    QVERIFY(backUp(path, 1));
    const QString fullest = backupFolder() + filesIn(backupFolder()).at(0);
    QVERIFY(giveToChild(dataFiles().folder) && giveToChild(backupFolder()) && giveToChild(path));
    QVERIFY(setMode(fullest, 0));
    writeFile(path, table(3, 'b'));
    QCOMPARE(runWithoutRights([&path] { return backUp(path, 1); }), 1);
    QVERIFY(setMode(fullest, 0644));
    QCOMPARE(fileBytes(fullest), table(5, 'a'));
}

void TestRefusedCalls::whatIsNotOpenHasNoName()
{
    QVERIFY(!hasOneName(-1));
    QVERIFY(!flushToDisk(-1));
}

void TestRefusedCalls::othersProcessesLive()
{
    QCOMPARE(runWithoutRights([] { return processLives(1); }), 1); // who may not be signalled
    QVERIFY(!processLives(0));
    QVERIFY(!processLives(-1));
}

QUILLON_TEST(TestRefusedCalls)
#include "test_refused_calls.moc"
