#include "frame_fixture.h"
#include "room_tests.h"
#include "qt_test_compat.h"

#include "ground/whole_file.h"

#include <QtTest>

#ifdef Q_OS_UNIX
#include "refused_calls.h"

#include <cerrno>
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

class TestWholeFile : public QObject {
    Q_OBJECT

private slots:
    void eachReplacingGivesAnotherMark()
    {
        TempFolder folder;
        const QString path = folder.path("x");
        const FileMark none = markOf(path);
        QVERIFY(isSameMark(none, markOf(folder.path("y"))));
        QVERIFY(writeWholeFile(path, "a"));
        const FileMark first = markOf(path);
        QVERIFY(!isSameMark(first, none));
        QVERIFY(isSameMark(first, markOf(path)));
        QVERIFY(writeWholeFile(path, "b"));
        QVERIFY(!isSameMark(first, markOf(path)));
    }

    void eachPartOfAMarkCounts()
    {
        const FileMark mark = {1, 2, 3, 4};
        QVERIFY(isSameMark(mark, FileMark {1, 2, 3, 4}));
        QVERIFY(!isSameMark(mark, FileMark {9, 2, 3, 4})); // another disk
        QVERIFY(!isSameMark(mark, FileMark {1, 9, 3, 4})); // another file
        QVERIFY(!isSameMark(mark, FileMark {1, 2, 9, 4})); // another length
        QVERIFY(!isSameMark(mark, FileMark {1, 2, 3, 9})); // another time
    }

    void onlyWhatIsKnownToBeMissingIsNothing()
    {
        TempFolder folder;
        writeFile(folder.path("x"), "a");
        QCOMPARE(int(whatIsAt(folder.path("x"))), int(At::PlainFile));
        QCOMPARE(int(whatIsAt(folder.path())), int(At::SomethingElse));
        for (const QString& none : {folder.path("y"), folder.path("x") + "/y", QString()}) {
            QCOMPARE(int(whatIsAt(none)), int(At::Nothing));
            QVERIFY(isMissing(none));
        }
#ifdef Q_OS_UNIX
        for (const char* target : {"x", "y", "to itself"}) {
            const QString link = folder.path("to itself");
            QFile::remove(link);
            QVERIFY(QFile::link(folder.path(target), link));
            const At expected = *target == 'x' ? At::PlainFile
                : *target == 'y'               ? At::Nothing
                                               : At::NotTold;
            QCOMPARE(int(whatIsAt(link)), int(expected));
            QCOMPARE(isMissing(link), expected == At::Nothing);
        }
#endif
    }

    void aShorterFileReplacesALongerOne()
    {
        TempFolder folder;
        writeFile(folder.path("x.dat"), QByteArray(100000, 'x'));
        QVERIFY(writeWholeFile(folder.path("x.dat"), "y"));
        QCOMPARE(fileBytes(folder.path("x.dat")), QByteArray("y"));
        QCOMPARE(filesIn(folder.path()), QStringList("x.dat"));
    }

    // Else a crash of the machine could leave a name without bytes.
    void noFileTakesAPathBeforeItIsOnTheDisk()
    {
#ifdef Q_OS_UNIX
        TempFolder folder, keep;
        writeFile(folder.path("x"), "old");
        writeFile(folder.path("y"), "old");
        const QByteArray linked = QFile::encodeName(folder.path("y")); // it is written in place
        const QByteArray other = QFile::encodeName(folder.path("z"));
        QCOMPARE(::link(linked.constData(), other.constData()), 0);
        for (const bool fails : {true, false}) {
            const Refused flushes(Flush, EIO, fails ? kEveryTime : 0);
            const bool whole = writeWholeFile(folder.path("x"), "new");
            const bool beside = overwriteFile(folder.path("x"), "newer", keep.path());
            const int beforeInPlace = flushes.seen();
            const bool inPlace = overwriteFile(folder.path("y"), "new", keep.path());
            QCOMPARE(whole || beside || inPlace, !fails);
            QCOMPARE(whole && beside && inPlace, !fails);
            QVERIFY(beforeInPlace >= 2 && flushes.seen() > beforeInPlace);
            QCOMPARE(fileBytes(folder.path("x")), QByteArray(fails ? "old" : "newer"));
            QCOMPARE(fileBytes(folder.path("y")), QByteArray(fails ? "old" : "new"));
            QCOMPARE(filesIn(folder.path()).size(), 3);
        }
#endif
    }

    void whatCannotBeWrittenIsAFailureAndLeavesNothing()
    {
        TempFolder folder;
        QVERIFY(!writeWholeFile(folder.path("missing/x"), "y"));
        QVERIFY(!writeWholeFile(folder.path(), "y")); // a folder
        QVERIFY(filesIn(folder.path()).isEmpty());
        QVERIFY(!writePlainFile(folder.path("missing/x"), "y"));
        QVERIFY(!writePlainFile(folder.path(), "y"));
    }

    void everyProcessHasANameOfItsOwnForNewBytes()
    {
        const QString number = QString::number(QCoreApplication::applicationPid());
        QCOMPARE(besideName("a/x.dat"), "a/x.dat." + number + ".new");
    }

    void leftoversOfDeadProcessesGo()
    {
        const QString number = QString::number(QCoreApplication::applicationPid());
        QProcess ended; // one whose number nobody has any more
        ended.start("true", QStringList());
        QVERIFY(ended.waitForStarted());
        const QString dead = QString::number(processIdOf(ended));
        QVERIFY(ended.waitForFinished());
        TempFolder folder;
        const QStringList kept = QStringList() << "a." + dead + ".new.dat"
                                               << "a." + number + ".new"
                                               << "a.1.new"
                                               << "a.new"
                                               << "a.x" + dead + ".new" << dead + ".new";
        for (const QString& name : kept + QStringList("a.dat." + dead + ".new"))
            writeFile(folder.path(name), "half");
        QVERIFY(QDir().mkpath(folder.path("b." + dead + ".new"))); // a folder is nobody's leftover
        writeFile(folder.path("b.dat." + dead + ".new"), "somebody's");
        removeLeftoversOf(folder.path("a.dat"));
        QVERIFY(!QFile::exists(folder.path("a.dat." + dead + ".new")));
        QVERIFY(QFile::exists(folder.path("b.dat." + dead + ".new"))); // the name of another file
        removeLeftovers(folder.path());
        QStringList left = filesIn(folder.path());
        left.sort();
        QStringList wanted = kept;
        wanted.sort();
        QCOMPARE(left, wanted);
        QVERIFY(QDir(folder.path("b." + dead + ".new")).exists());
    }

    void aPlainFileIsWrittenInItsPlace()
    {
        TempFolder folder;
        writeFile(folder.path("x.duf"), "a longer text");
        QVERIFY(writePlainFile(folder.path("x.duf"), "y"));
        QCOMPARE(fileBytes(folder.path("x.duf")), QByteArray("y"));
        QCOMPARE(filesIn(folder.path()), QStringList("x.duf"));
    }

    void fullDiskKeepsTheOlderFile_data()
    {
#ifdef Q_OS_UNIX
        QTest::addColumn<int>("bytes");
        QTest::newRow("less than the file buffer") << 4000;
        QTest::newRow("more than the file buffer") << 400000;
#endif
    }
    void fullDiskKeepsTheOlderFile()
    {
#ifdef Q_OS_UNIX
        QFETCH(int, bytes);
        TempFolder folder;
        writeFile(folder.path("x.dat"), "older");
        {
            FullDisk full(2000);
            QVERIFY(!writeWholeFile(folder.path("x.dat"), QByteArray(bytes, 'n')));
            QVERIFY(!writePlainFile(folder.path("plain"), QByteArray(bytes, 'n')));
        }
        QCOMPARE(fileBytes(folder.path("x.dat")), QByteArray("older"));
        QVERIFY(!QFile::exists(besideName(folder.path("x.dat"))));
#endif
    }

    void writesThroughALink()
    {
#ifdef Q_OS_UNIX
        TempFolder folder;
        writeFile(folder.path("real.dat"), "older");
        QVERIFY(QFile::link(folder.path("real.dat"), folder.path("link.dat")));
        QVERIFY(writeWholeFile(folder.path("link.dat"), "y"));
        QVERIFY(QFileInfo(folder.path("link.dat")).isSymLink());
        QCOMPARE(fileBytes(folder.path("real.dat")), QByteArray("y"));
#endif
    }
};

QUILLON_TEST(TestWholeFile)
#include "test_whole_file.moc"
