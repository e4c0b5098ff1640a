#include "frame_fixture.h"
#include "room_tests.h"

#include "ground/data_folder.h"
#include "ground/file_lock.h"
#include "ground/save_lock.h"
#include "ground/system_files.h"

#include <QtTest>

#ifdef Q_OS_UNIX
#include "refused_calls.h"
#include "without_rights.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace quillon;

class TestFileLock : public QObject {
    Q_OBJECT

private slots:
    void oneHolderAtATime()
    {
        TempFolder folder;
        const QString path = folder.path("x.lock");
        {
            FileLock first(path, 0);
            QVERIFY(first.isHeld());
            QVERIFY(!FileLock(path, 0).isHeld());
            QVERIFY(!FileLock(path, 20).isHeld());
            QVERIFY(FileLock(folder.path("y.lock"), 0).isHeld());
        }
        QVERIFY(FileLock(path, 0).isHeld());
    }

    void nothingStaysBehind()
    {
        TempFolder folder;
        {
            FileLock lock(folder.path("x.lock"), 0);
            QVERIFY(!FileLock(folder.path("x.lock"), 0).isHeld());
            QCOMPARE(filesIn(folder.path()), QStringList("x.lock"));
        }
        QCOMPARE(filesIn(folder.path()), QStringList());
    }

    void withoutAFolderNothingIsHeld()
    {
        TempFolder folder;
        QVERIFY(!FileLock(folder.path("missing/x.lock"), 0).isHeld());
        QVERIFY(!FileLock(folder.path(), 0).isHeld());
        QVERIFY(!QFile::exists(folder.path("missing")));
    }

    void anOldFileIsNoLock()
    {
        TempFolder folder;
        writeFile(folder.path("x.lock"), "from a host that was killed");
        QVERIFY(FileLock(folder.path("x.lock"), 0).isHeld());
        QCOMPARE(filesIn(folder.path()), QStringList());
    }

    // The child tells by a pipe that it has the lock, and is killed while it waits for its end.
    void theLockOfAKilledProcessIsFree()
    {
#ifdef Q_OS_UNIX
        TempFolder folder;
        const QString path = folder.path("x.lock");
        int told[2];
        QCOMPARE(::pipe(told), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            const FileLock lock(path, 0);
            const char held = lock.isHeld() ? 'y' : 'n';
            const bool sent = ::write(told[1], &held, 1) == 1;
            while (sent)
                ::pause();
            ::_exit(1);
        }
        char held = 'n';
        QCOMPARE(::read(told[0], &held, 1), ssize_t(1));
        QCOMPARE(held, 'y');
        QVERIFY(!FileLock(path, 0).isHeld());
        QVERIFY(processLives(child));
        ::kill(child, SIGKILL);
        QCOMPARE(::waitpid(child, nullptr, 0), child);
        ::close(told[0]);
        ::close(told[1]);
        QVERIFY(!processLives(child));
        QVERIFY(!processLives(0)); // which asks about all of this one's group
        QVERIFY(FileLock(path, 0).isHeld());
#endif
    }

    // A host that was started without standard input gets its descriptor.
    void theFirstDescriptorIsALockToo()
    {
#ifdef Q_OS_UNIX
        TempFolder folder;
        const QString path = folder.path("x.lock");
        const auto lockTwice = [&path] {
            ::close(0);
            errno = EWOULDBLOCK; // of an earlier call
            const FileLock lock(path, 0);
            return lock.isHeld() && ::fcntl(0, F_GETFD) != -1 && FileLock(path, 0).isOthers();
        };
        QCOMPARE(runInChild(lockTwice), 1);
        QCOMPARE(filesIn(folder.path()), QStringList());
#endif
    }

    void whoeverIsPatientWaits()
    {
        TempFolder folder;
        const FileLock held(folder.path("x.lock"), 0);
#ifdef Q_OS_UNIX
        restedMs = 0;
#endif
        QVERIFY(FileLock(folder.path("x.lock"), 40).isOthers());
#ifdef Q_OS_UNIX
        QCOMPARE(restedMs, 40L); // a turn that comes in time is taken
#endif
    }

    void whoHasItIsTold()
    {
        TempFolder folder;
        const FileLock held(folder.path("x.lock"), 0);
        QVERIFY(held.isHeld() && !held.isOthers());
        const FileLock second(folder.path("x.lock"), 0);
        QVERIFY(!second.isHeld() && second.isOthers());
        const FileLock none(folder.path("missing/x.lock"), 0);
        QVERIFY(!none.isHeld() && !none.isOthers());
    }

    void aLeftSaveLockIsRemovedUnlessItIsHeld()
    {
        HostFixture host;
        locateDataFiles();
        removeLeftSaveLock(); // nothing is there
        QVERIFY(!QFile::exists(dataFiles().folder));
        writeFile(dataFiles().saveLock, ""); // of a host that was killed
        removeLeftSaveLock();
        QVERIFY(!QFile::exists(dataFiles().saveLock));
        const FileLock held(dataFiles().saveLock, 0);
        removeLeftSaveLock();
        QVERIFY(QFile::exists(dataFiles().saveLock));
        QVERIFY(!SaveLock().mayGoOn());
    }

    // A file system may have no locks, or the folder may be missing: whoever saves finds out.
    void whereThereCanBeNoLockSavingGoesOn()
    {
        HostFixture host;
        locateDataFiles();
        QVERIFY(SaveLock().mayGoOn());
        QVERIFY(QDir().mkpath(dataFiles().saveLock));
        QVERIFY(SaveLock().mayGoOn());
    }

    void aLinkIsNotFollowed()
    {
#ifdef Q_OS_UNIX
        TempFolder folder;
        QVERIFY(QFile::link(folder.path("elsewhere"), folder.path("x.lock")));
        QVERIFY(!FileLock(folder.path("x.lock"), 0).isHeld());
        QVERIFY(!QFile::exists(folder.path("elsewhere")));
#endif
    }
};

QUILLON_TEST(TestFileLock)
#include "test_file_lock.moc"
