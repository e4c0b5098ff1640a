// What becomes of files when the system refuses a call: for a moment, for good, or half way. The
// calls of the C library that are refused are defined here, before those of the library.
#include "frame_fixture.h"
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
#include <cstdio>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace quillon;

enum Call { Rename, Flush, Cut, Lock, Read, Permit, kCalls };

struct Refusal {
    int error;
    int times; // still to be refused
    int seen; // calls in all
};
static Refusal g_refusals[kCalls];
static long g_restedMs; // what was asked for; nobody sleeps
static QString g_lostLock; // a file that goes just before it is locked
static bool g_isMadeAgain; // by the next process

static bool isRefused(Call call)
{
    Refusal& refusal = g_refusals[call];
    ++refusal.seen;
    if (refusal.times <= 0)
        return false;
    --refusal.times;
    errno = refusal.error;
    return true;
}

template <typename Function> static Function* next(Function*, const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}
#define PASS_ON(function) (*next(&::function, #function))

#pragma GCC visibility push(default) // the toolkit's calls come here, too
extern "C" {

int rename(const char* from, const char* to) noexcept
{
    return isRefused(Rename) ? -1 : PASS_ON(rename)(from, to);
}

int fsync(int file)
{
    return isRefused(Flush) ? -1 : PASS_ON(fsync)(file);
}

int ftruncate64(int file, off64_t length) noexcept
{
    return isRefused(Cut) ? -1 : PASS_ON(ftruncate64)(file, length);
}

int flock(int file, int operation) noexcept
{
    if (!g_lostLock.isEmpty())
        QFile::remove(g_lostLock);
    if (!g_lostLock.isEmpty() && g_isMadeAgain)
        writeFile(g_lostLock, "another's");
    return isRefused(Lock) ? -1 : PASS_ON(flock)(file, operation);
}

ssize_t read(int file, void* bytes, size_t count)
{
    return isRefused(Read) ? -1 : PASS_ON(read)(file, bytes, count);
}

int chmod(const char* path, mode_t mode) noexcept
{
    return isRefused(Permit) ? -1 : PASS_ON(chmod)(path, mode);
}

int nanosleep(const timespec* span, timespec*)
{
    g_restedMs += span->tv_sec * 1000 + span->tv_nsec / 1000000;
    if (g_restedMs >= 20)
        g_lostLock.clear();
    return 0;
}

} // extern "C"
#pragma GCC visibility pop

static const int kEveryTime = 1000000;

// While it lives, the call is refused so often.
class Refused {
public:
    Refused(Call call, int error, int times = kEveryTime)
        : m_call(call)
    {
        g_refusals[call] = {error, times, 0};
        g_restedMs = 0;
    }
    ~Refused()
    {
        g_refusals[m_call].times = 0;
    }
    int seen() const
    {
        return g_refusals[m_call].seen;
    }

private:
    Q_DISABLE_COPY(Refused)
    Call m_call;
};

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
    for (Refusal& each : g_refusals)
        each = Refusal();
    g_lostLock.clear();
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
    QCOMPARE(g_restedMs, long(kPatienceMs));
    QCOMPARE(fileBytes(m_file), QByteArray("old"));
    QCOMPARE(filesIn(m_folder->path()), QStringList("file"));
}

void TestRefusedCalls::otherRefusalsAreNotWaitedFor()
{
    const Refused refused(Rename, EACCES);
    QVERIFY(!writeWholeFile(m_file, "new"));
    QCOMPARE(refused.seen(), 1);
    QCOMPARE(g_restedMs, 0L);
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
    g_isMadeAgain = isMadeAgain;
    const QString path = m_folder->path("x.lock");
    g_restedMs = 0;
    g_lostLock = path; // up to the fourth rest
    {
        const FileLock lock(path, kPatienceMs);
        QVERIFY(lock.isHeld());
        QCOMPARE(g_restedMs, 20L);
        QCOMPARE(filesIn(m_folder->path()),
            QStringList() << "file"
                          << "x.lock");
    }
    g_lostLock = path;
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
