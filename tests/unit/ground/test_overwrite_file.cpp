// How a file gets new bytes: what stays of it, what is never made, and what a failure leaves.
#include "frame_fixture.h"
#include "room_tests.h"
#include "without_rights.h"

#include "ground/whole_file.h"

#include <QtTest>

#include <csignal>

using namespace quillon;

class TestOverwriteFile : public QObject {
    Q_OBJECT
private slots:
    void init();

    // beside
    void aReaderKeepsTheOldBytes();
    void permissionsStay_data();
    void permissionsStay();
    void aLinkAtTheNewNameIsNotWrittenThrough_data();
    void aLinkAtTheNewNameIsNotWrittenThrough();
    void aLeftoverIsReplaced();
    void bytesInTurnLeaveTheLastOnes_data();
    void bytesInTurnLeaveTheLastOnes();
    void aTargetThatCannotBeReplacedLeavesNothingBeside();

    void theFirstDescriptorIsWrittenToo();

    // in place
    void linkedNamesStayTogether();
    void theOwnerStays_data();
    void theOwnerStays();
    void aFolderAtTheNewNameStays();
    void shorterBytesCutTheFile();

    // never
    void nothingIsCreatedThatWasNotThere();
    void otherKindsAreLeftAlone();

    // without rights
    void aFolderThatTakesNoFileIsNoObstacle_data();
    void aFolderThatTakesNoFileIsNoObstacle();
    void aLinkInAFolderThatTakesNoFileIsNotWrittenThrough();
    void aWriteOnlyFileIsWritten_data();
    void aWriteOnlyFileIsWritten();
    void aReadOnlyFileIsSkipped();
    void aReadOnlyFileIsNotReplaced();
    void whatCannotBeKeptIsNotWrittenInPlace();
    void withoutAHandleToSpareNothingIsWrittenInPlace();

    // failures
    void aFailedWriteLeavesTheOldBytes_data();
    void aFailedWriteLeavesTheOldBytes();
    void aFailedWriteDoesNotEmptyAFileThatMayNotBeRead();
    void aCrashInPlaceLeavesTheOldBytesInTheKeepFolder();
    void aCrashBesideLeavesTheFile_data();
    void aCrashBesideLeavesTheFile();

private:
    bool overwrite(const QByteArray& bytes = "new") const
    {
        return overwriteFile(file, bytes, keep->path());
    }
    std::unique_ptr<TempFolder> folder, keep;
    QString file; // in folder, holds "old"
};

static const unsigned kLimit = 1000; // of a file's size where writing is to fail
static const QByteArray kTooMuch(5000, 'n');
static const QByteArray kFits(100, 'o');

static ino_t inodeOf(const QString& path)
{
    struct stat status = {};
    ::stat(QFile::encodeName(path).constData(), &status);
    return status.st_ino;
}

static bool linkHard(const QString& path, const QString& name)
{
    return ::link(QFile::encodeName(path).constData(), QFile::encodeName(name).constData()) == 0;
}

void TestOverwriteFile::init()
{
    folder.reset(new TempFolder);
    keep.reset(new TempFolder);
    QVERIFY(giveToChild(keep->path()));
    file = folder->path("file");
    writeFile(file, "old");
}

void TestOverwriteFile::aReaderKeepsTheOldBytes()
{
    QFile reader(file);
    QVERIFY(reader.open(QIODevice::ReadOnly));
    QVERIFY(overwrite());
    QCOMPARE(reader.readAll(), QByteArray("old"));
    QCOMPARE(fileBytes(file), QByteArray("new"));
    QCOMPARE(filesIn(folder->path()), QStringList("file"));
}

void TestOverwriteFile::permissionsStay_data()
{
    QTest::addColumn<int>("mode");
    for (int mode : {0600, 0640, 0644, 0755, 0222, 0606})
        QTest::newRow(qPrintable(QString::number(mode, 8))) << mode;
}

void TestOverwriteFile::permissionsStay()
{
    QFETCH(int, mode);
    QVERIFY(setMode(file, unsigned(mode)));
    QVERIFY(overwrite());
    struct stat status;
    QCOMPARE(::stat(qPrintable(file), &status), 0);
    QCOMPARE(int(status.st_mode & 07777), mode);
    QVERIFY(setMode(file, 0644));
    QCOMPARE(fileBytes(file), QByteArray("new"));
}

void TestOverwriteFile::aLinkAtTheNewNameIsNotWrittenThrough_data()
{
    QTest::addColumn<bool>("exists");
    QTest::newRow("to a file") << true;
    QTest::newRow("to nothing") << false;
}

void TestOverwriteFile::aLinkAtTheNewNameIsNotWrittenThrough()
{
    QFETCH(bool, exists);
    const QString victim = keep->path("victim");
    for (bool overwriting : {true, false}) {
        if (exists)
            writeFile(victim, "precious");
        QVERIFY(QFile::link(victim, besideName(file)));
        QVERIFY(overwriting ? overwrite("1st") : writeWholeFile(file, "2nd"));
        QCOMPARE(fileBytes(victim), QByteArray(exists ? "precious" : ""));
        QCOMPARE(QFile::exists(victim), exists);
        QCOMPARE(fileBytes(file), QByteArray(overwriting ? "1st" : "2nd"));
        QVERIFY(!QFileInfo(file).isSymLink());
    }
}

void TestOverwriteFile::aLeftoverIsReplaced()
{
    writeFile(besideName(file), "longer than what is written");
    QVERIFY(overwrite());
    QCOMPARE(fileBytes(file), QByteArray("new"));
    QCOMPARE(filesIn(folder->path()), QStringList("file"));
}

void TestOverwriteFile::bytesInTurnLeaveTheLastOnes_data()
{
    QTest::addColumn<bool>("hasTwoNames"); // it is written in place then
    QTest::newRow("beside") << false;
    QTest::newRow("in place") << true;
}

void TestOverwriteFile::bytesInTurnLeaveTheLastOnes()
{
    QFETCH(bool, hasTwoNames);
    if (hasTwoNames)
        QVERIFY(linkHard(file, folder->path("other name")));
    const QList<QByteArray> inTurn = QList<QByteArray>() << "the longest"
                                                         << "short"
                                                         << "middle";
    QVERIFY(overwriteFile(file, inTurn, keep->path()));
    QCOMPARE(fileBytes(file), QByteArray("middle"));
    for (int which = 0; which < 2; ++which) { // of the two that does not fit
        QList<QByteArray> tooMuch = QList<QByteArray>() << "the longest";
        tooMuch.insert(which, kTooMuch);
        const auto write = [&] {
            ::signal(SIGXFSZ, SIG_IGN);
            return limitFileSize(kLimit) && overwriteFile(file, tooMuch, keep->path());
        };
        QCOMPARE(runInChild(write), 0);
        QCOMPARE(fileBytes(file), QByteArray("middle"));
    }
    QCOMPARE(filesIn(folder->path()).size(), hasTwoNames ? 2 : 1);
    QCOMPARE(filesIn(keep->path()), QStringList());
}

// A host that was started without standard input gets its descriptor.
void TestOverwriteFile::theFirstDescriptorIsWrittenToo()
{
    const auto write = [this] {
        ::close(0);
        return overwrite() && writeWholeFile(folder->path("other"), "new");
    };
    QCOMPARE(runInChild(write), 1);
    QCOMPARE(fileBytes(file), QByteArray("new"));
    QCOMPARE(fileBytes(folder->path("other")), QByteArray("new"));
}

void TestOverwriteFile::aTargetThatCannotBeReplacedLeavesNothingBeside()
{
    const QString full = folder->path("full");
    QVERIFY(QDir().mkpath(full + "/below"));
    QVERIFY(!writeWholeFile(full, "new"));
    QCOMPARE(filesIn(folder->path()), QStringList("file"));
    QVERIFY(QFileInfo(full + "/below").isDir());
}

void TestOverwriteFile::linkedNamesStayTogether()
{
    const QString other = keep->path("other name");
    QVERIFY(linkHard(file, other));
    const ino_t inode = inodeOf(file);
    QVERIFY(overwrite());
    QCOMPARE(fileBytes(file), QByteArray("new"));
    QCOMPARE(fileBytes(other), QByteArray("new"));
    QCOMPARE(inodeOf(file), inode);
    QCOMPARE(inodeOf(other), inode);
    QCOMPARE(filesIn(keep->path()), QStringList("other name"));
    QCOMPARE(filesIn(folder->path()), QStringList("file"));
}

void TestOverwriteFile::theOwnerStays_data()
{
    QTest::addColumn<int>("owner"); // -1: who runs the test
    QTest::addColumn<int>("group");
    QTest::newRow("another user's") << int(kNobody) << -1;
    QTest::newRow("another group's") << -1 << int(kNobody);
}

// Root writes a user's file, and it stays the user's. A user's own is his before and after.
void TestOverwriteFile::theOwnerStays()
{
    QFETCH(int, owner);
    QFETCH(int, group);
    if (::geteuid() == 0)
        QCOMPARE(::chown(qPrintable(file), uid_t(owner), gid_t(group)), 0);
    struct stat before, after;
    QCOMPARE(::stat(qPrintable(file), &before), 0);
    QVERIFY(overwrite());
    QCOMPARE(::stat(qPrintable(file), &after), 0);
    QCOMPARE(after.st_uid, before.st_uid);
    QCOMPARE(after.st_gid, before.st_gid);
    QCOMPARE(fileBytes(file), QByteArray("new"));
}

void TestOverwriteFile::aFolderAtTheNewNameStays()
{
    const ino_t inode = inodeOf(file);
    QVERIFY(QDir().mkpath(besideName(file) + "/full"));
    QVERIFY(!writeWholeFile(file, "beside"));
    QCOMPARE(fileBytes(file), QByteArray("old"));
    QVERIFY(overwrite());
    QCOMPARE(fileBytes(file), QByteArray("new"));
    QCOMPARE(inodeOf(file), inode);
    QVERIFY(QFileInfo(besideName(file) + "/full").isDir());
    QCOMPARE(filesIn(keep->path()), QStringList());
}

void TestOverwriteFile::shorterBytesCutTheFile()
{
    QVERIFY(linkHard(file, folder->path("other name")));
    QVERIFY(overwrite("x"));
    QCOMPARE(fileBytes(file), QByteArray("x"));
    QVERIFY(overwrite(""));
    QCOMPARE(QFileInfo(file).size(), qint64(0));
    QVERIFY(overwrite("more"));
    QCOMPARE(fileBytes(file), QByteArray("more"));
}

void TestOverwriteFile::nothingIsCreatedThatWasNotThere()
{
    QVERIFY(QFile::remove(file));
    QVERIFY(!overwrite());
    QVERIFY(!overwriteFile(folder->path("no folder/file"), "new", keep->path()));
    QCOMPARE(QDir(folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 0);
    QCOMPARE(filesIn(keep->path()), QStringList());
    QVERIFY(writeWholeFile(file, "new")); // this one may
    QCOMPARE(fileBytes(file), QByteArray("new"));
}

void TestOverwriteFile::otherKindsAreLeftAlone()
{
    const QString link = folder->path("link"), pipe = folder->path("pipe");
    QVERIFY(QFile::link(file, link));
    QVERIFY(QFile::link(folder->path("gone"), folder->path("dangling")));
    QCOMPARE(::mkfifo(qPrintable(pipe), 0644), 0);
    for (const char* name : {"link", "dangling", "pipe", "."})
        QVERIFY2(!overwriteFile(folder->path(name), "new", keep->path()), name);
    QCOMPARE(fileBytes(file), QByteArray("old"));
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(!QFile::exists(folder->path("gone")));
}

void TestOverwriteFile::aFolderThatTakesNoFileIsNoObstacle_data()
{
    QTest::addColumn<bool>("owned"); // by the child
    QTest::newRow("one's own file") << true;
    QTest::newRow("a file that anybody may write") << false;
}

void TestOverwriteFile::aFolderThatTakesNoFileIsNoObstacle()
{
    QFETCH(bool, owned);
    QVERIFY(setMode(file, 0666) && (!owned || giveToChild(file)));
    const ino_t inode = inodeOf(file);
    const ClosedFolder closed(folder->path());
    QCOMPARE(runWithoutRights([this] { return overwrite(); }), 1);
    QCOMPARE(fileBytes(file), QByteArray("new"));
    QCOMPARE(inodeOf(file), inode);
    QCOMPARE(filesIn(folder->path()), QStringList("file"));
    QCOMPARE(filesIn(keep->path()), QStringList());
}

void TestOverwriteFile::aLinkInAFolderThatTakesNoFileIsNotWrittenThrough()
{
    const QString victim = keep->path("victim");
    writeFile(victim, "precious");
    QVERIFY(setMode(victim, 0666) && setMode(file, 0666));
    QVERIFY(QFile::link(victim, besideName(file)));
    const ClosedFolder closed(folder->path()); // the link cannot be removed, either
    QCOMPARE(runWithoutRights([this] { return overwrite(); }), 1);
    QCOMPARE(runWithoutRights([this] { return writeWholeFile(file, "2nd"); }), 0);
    QCOMPARE(fileBytes(victim), QByteArray("precious"));
    QCOMPARE(fileBytes(file), QByteArray("new"));
}

void TestOverwriteFile::aWriteOnlyFileIsWritten_data()
{
    QTest::addColumn<bool>("closed");
    QTest::addColumn<bool>("linked");
    QTest::newRow("in a folder that takes new files") << false << false;
    QTest::newRow("in one that takes none") << true << false;
    QTest::newRow("with several links") << false << true;
}

void TestOverwriteFile::aWriteOnlyFileIsWritten()
{
    QFETCH(bool, closed);
    QFETCH(bool, linked);
    QVERIFY(giveToChild(file) && giveToChild(folder->path()) && setMode(file, 0222));
    QVERIFY(!linked || linkHard(file, folder->path("other name")));
    setMode(folder->path(), closed ? 0555 : 0755);
    QCOMPARE(runWithoutRights([this] { return overwrite(); }), 1);
    setMode(folder->path(), 0755);
    struct stat status;
    QCOMPARE(::stat(qPrintable(file), &status), 0);
    QCOMPARE(int(status.st_mode & 07777), 0222);
    QCOMPARE(int(status.st_nlink), linked ? 2 : 1);
    QVERIFY(setMode(file, 0644));
    QCOMPARE(fileBytes(file), QByteArray("new"));
}

void TestOverwriteFile::aReadOnlyFileIsSkipped()
{
    QVERIFY(giveToChild(file) && giveToChild(folder->path()) && setMode(file, 0444));
    QCOMPARE(runWithoutRights([this] { return overwrite(); }), 0);
    QCOMPARE(fileBytes(file), QByteArray("old"));
    QCOMPARE(filesIn(folder->path()), QStringList("file"));
}

// Its folder would let it be.
void TestOverwriteFile::aReadOnlyFileIsNotReplaced()
{
    QVERIFY(giveToChild(file) && giveToChild(folder->path()) && setMode(file, 0444));
    QCOMPARE(runWithoutRights([this] { return writeWholeFile(file, "new"); }), 0);
    QCOMPARE(fileBytes(file), QByteArray("old"));
    QCOMPARE(filesIn(folder->path()), QStringList("file"));
}

void TestOverwriteFile::whatCannotBeKeptIsNotWrittenInPlace()
{
    QVERIFY(linkHard(file, folder->path("other name")));
    for (const QString& bad : {QString(), file, folder->path("missing")})
        QVERIFY2(!overwriteFile(file, "new", bad), qPrintable(bad));
    QCOMPARE(fileBytes(file), QByteArray("old"));
    QCOMPARE(filesIn(folder->path()),
        QStringList() << "file"
                      << "other name");
}

// The only one is that of the file which keeps the old bytes.
void TestOverwriteFile::withoutAHandleToSpareNothingIsWrittenInPlace()
{
    QVERIFY(linkHard(file, folder->path("other name")));
    const int lowestFree = ::dup(0);
    QVERIFY(lowestFree >= 0 && ::close(lowestFree) == 0);
    rlimit before;
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit one = {rlim_t(lowestFree) + 1, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &one);
    const bool written = overwrite();
    setrlimit(RLIMIT_NOFILE, &before);
    QVERIFY(!written);
    QCOMPARE(fileBytes(file), QByteArray("old"));
    QCOMPARE(filesIn(keep->path()), QStringList());
}

void TestOverwriteFile::aFailedWriteLeavesTheOldBytes_data()
{
    QTest::addColumn<QByteArray>("old");
    QTest::addColumn<bool>("linked");
    QTest::newRow("beside") << kFits << false;
    QTest::newRow("in place") << kFits << true;
    QTest::newRow("in place, old ones empty") << QByteArray("") << true;
    QTest::newRow("while the old ones are kept") << kTooMuch.left(3000) << true;
}

void TestOverwriteFile::aFailedWriteLeavesTheOldBytes()
{
    QFETCH(QByteArray, old);
    QFETCH(bool, linked);
    writeFile(file, old);
    QVERIFY(!linked || linkHard(file, keep->path("other name")));
    const QStringList kept = filesIn(keep->path());
    const auto fail = [this] {
        ::signal(SIGXFSZ, SIG_IGN);
        return limitFileSize(kLimit) && (writeWholeFile(file, kTooMuch) || overwrite(kTooMuch));
    };
    QCOMPARE(runInChild(fail), 0);
    QCOMPARE(fileBytes(file), old);
    QCOMPARE(filesIn(folder->path()), QStringList("file"));
    QCOMPARE(filesIn(keep->path()), kept);
}

// Its old bytes cannot be put back; those that were not reached yet stay all the same.
void TestOverwriteFile::aFailedWriteDoesNotEmptyAFileThatMayNotBeRead()
{
    writeFile(file, kTooMuch.left(3000));
    QVERIFY(linkHard(file, folder->path("other name")));
    QVERIFY(giveToChild(file) && setMode(file, 0222));
    const auto fail = [this] {
        ::signal(SIGXFSZ, SIG_IGN);
        return limitFileSize(kLimit) && overwrite(kTooMuch);
    };
    QCOMPARE(runWithoutRights(fail), 0);
    QCOMPARE(QFileInfo(file).size(), qint64(3000));
}

// The first bytes beyond the limit end the process.
void TestOverwriteFile::aCrashInPlaceLeavesTheOldBytesInTheKeepFolder()
{
    writeFile(file, kFits);
    QVERIFY(linkHard(file, folder->path("other name")));
    QCOMPARE(runInChild([this] { return limitFileSize(kLimit) && overwrite(kTooMuch); }), -SIGXFSZ);
    QCOMPARE(fileBytes(file), kTooMuch.left(kLimit));
    const QStringList kept = filesIn(keep->path());
    QCOMPARE(kept.size(), 1);
    QVERIFY2(kept.at(0).startsWith("file."), qPrintable(kept.at(0)));
    QCOMPARE(fileBytes(keep->path(kept.at(0))), kFits);
}

void TestOverwriteFile::aCrashBesideLeavesTheFile_data()
{
    QTest::addColumn<bool>("linkedSince"); // it is written in place then
    QTest::newRow("replaced next") << false;
    QTest::newRow("written in place next") << true;
}

void TestOverwriteFile::aCrashBesideLeavesTheFile()
{
    QFETCH(bool, linkedSince);
    QCOMPARE(runInChild([this] { return limitFileSize(kLimit) && overwrite(kTooMuch); }), -SIGXFSZ);
    QCOMPARE(fileBytes(file), QByteArray("old"));
    QCOMPARE(filesIn(folder->path()).size(), 2);
    if (linkedSince)
        QVERIFY(linkHard(file, keep->path("other name")));
    QVERIFY(overwrite()); // the next one clears up
    QCOMPARE(filesIn(folder->path()), QStringList("file"));
}

QUILLON_TEST(TestOverwriteFile)
#include "test_overwrite_file.moc"
