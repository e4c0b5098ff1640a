// What the patcher writes, where, and what it never touches.
#include "frame_fixture.h"
#include "room_tests.h"
#include "without_rights.h"

#include "finder/pose_pair_products.h"
#include "ground/whole_file.h"
#include "services/patch_table.h"
#include "services/product_patcher.h"

#include "dzcontentmgr.h"
#include "dzprogresswatch.h"

#include <QProcess>
#include <QSet>
#include <QCryptographicHash>
#include <QtTest>

#include <csignal>
#include <sys/inotify.h>

using namespace quillon;

class TestProductPatcher : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    // the table
    void rowsAreThoseDescribed();
    void namesAreNumberedAndUnique();
    void everyProductHasABlockOfItsOwn();
    void theBlocksAreThoseDelivered();

    // overwriting
    void endsAreMatchedBehindASlash_data();
    void endsAreMatchedBehindASlash();
    void everyContentDirectoryIsSearched();
    void aContentDirectoryThatIsGoneIsPassedOver();
    void withoutAnApplicationNothingIsWritten();
    void nothingIsCreated();
    void permissionsStay();
    void linksThatLeadOutAreNotFollowed_data();
    void linksThatLeadOutAreNotFollowed();
    void aFolderOfTheSameBeginningLiesOutside();
    void linksWithinAContentDirectoryAreFollowed_data();
    void linksWithinAContentDirectoryAreFollowed();
    void circlesOfLinksEnd();
    void noFolderIsReadTwice();
    void aFolderThatOnlyALinkLeadsToIsRead();
    void contentDirectoriesInEachOtherAreOne_data();
    void contentDirectoriesInEachOtherAreOne();
    void aFileThatCannotBeOpenedIsSkipped();
    void whatStandsBesideAScriptIsNoObstacle();
    void aLinkInPlaceOfTheNewFileIsNotWrittenThrough();
    void otherKindsOfFilesAreSkipped();

    // the patch
    void installedScriptsGetTheProductsOwnBlock();
    void aScriptIsReplacedOnce();
    void otherFilesAreLeftAlone();
    void nothingInstalledMeansFalse();
    void aScriptDeletedMeanwhileIsNotCreated();
    void aFailedWriteOfEitherBlockLeavesTheScript_data();
    void aFailedWriteOfEitherBlockLeavesTheScript();
    void theNextPatchTidiesUpAfterAKilledOne();
    void linkedScriptsInAClosedFolderAreWritten();

private:
    QString installed(const QString& name, const QByteArray& bytes = "old") // in the first one
    {
        writeFile(content->path(name), bytes);
        return content->path(name);
    }
    std::unique_ptr<HostFixture> host;
    std::unique_ptr<TempFolder> content, second;
};

static QByteArray bytesOf(PatchScript script)
{
    const ScriptBlock& block = scriptBlock(script);
    return QByteArray(block.bytes, block.length);
}

static int overwrite(const QString& name, const QByteArray& bytes)
{
    return overwriteScripts(name, bytes.constData(), bytes.size());
}

void TestProductPatcher::init()
{
    host.reset(new HostFixture);
    content.reset(new TempFolder);
    second.reset(new TempFolder);
    dzApp->getContentMgr()->setContentDirectories(
        QStringList() << content->path() << second->path());
}

void TestProductPatcher::cleanup()
{
    dzProgressHook = nullptr;
    host.reset();
}

void TestProductPatcher::rowsAreThoseDescribed()
{
    const int counts[] = {26, 33, 31, 73, 25, 25, 73, 25, 25, 25, 25};
    for (int i = 0; i < 11; ++i) {
        const QString number = QString("%1").arg(i + 1, 3, 10, QLatin1Char('0'));
        QCOMPARE(QString(kPatchRows[i].product), number);
        QCOMPARE(kPatchRows[i].scripts, counts[i]);
        QCOMPARE(scriptName(kPatchRows[i], 7), productPath(number) + "007.dse");
        QVERIFY(productPath(number).startsWith("Brannoc/"));
    }
    for (int i = 11; i < 16; ++i) {
        QVERIFY(!kPatchRows[i].product);
        QVERIFY2(scriptName(kPatchRows[i], 7).endsWith(" 007.dse"), kPatchRows[i].name);
        QCOMPARE(int(kPatchRows[i].own), int(kPatchRows[11].own)); // families of one product
    }
    QCOMPARE(kPatchRows[16].scripts, 1);
    QVERIFY(!scriptName(kPatchRows[16], 0).contains('%'));
    QCOMPARE(scriptName(kPatchRows[0], 0), QString("Brannoc/First Dance/FD01 000.dse"));
}

void TestProductPatcher::namesAreNumberedAndUnique()
{
    QSet<QString> names;
    int count = 0;
    for (const PatchRow& row : kPatchRows)
        for (int i = 0; i < row.scripts; ++i, ++count) {
            names += scriptName(row, i);
            QVERIFY(scriptName(row, i).startsWith("Brannoc/"));
            QVERIFY(scriptName(row, i).endsWith(".dse"));
        }
    QCOMPARE(names.size(), count);
}

void TestProductPatcher::everyProductHasABlockOfItsOwn()
{
    QSet<QByteArray> blocks;
    QSet<int> products;
    blocks += bytesOf(PatchScript::Shared);
    for (const PatchRow& row : kPatchRows) {
        blocks += bytesOf(row.own);
        products += int(row.own);
        QCOMPARE(int(scriptBlock(row.own).script), int(row.own));
        QVERIFY(scriptBlock(row.own).length > 0);
    }
    QCOMPARE(products.size(), 13);
    QCOMPARE(blocks.size(), 14);
}

// A release that puts in other blocks puts in their checksum, too.
void TestProductPatcher::theBlocksAreThoseDelivered()
{
    QCryptographicHash sum(QCryptographicHash::Sha1);
    for (int i = 0; i <= int(PatchScript::CameraAids); ++i)
        sum.addData(bytesOf(PatchScript(i)));
    QCOMPARE(sum.result().toHex(), QByteArray("5a9a513c2c593103af27d6f8f66a90104d74e23e"));
}

void TestProductPatcher::endsAreMatchedBehindASlash_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("written");
    QTest::newRow("at the top") << "Brannoc/Try/A 000.dse" << true;
    QTest::newRow("deep below") << "People/Poses/More/Brannoc/Try/A 000.dse" << true;
    QTest::newRow("hidden folder") << ".store/Brannoc/Try/A 000.dse" << true;
    QTest::newRow("another maker whose name ends so") << "XBrannoc/Try/A 000.dse" << false;
    QTest::newRow("other case") << "brannoc/Try/A 000.dse" << false;
    QTest::newRow("other case of the extension") << "Brannoc/Try/A 000.DSE" << false;
    QTest::newRow("other number") << "Brannoc/Try/A 001.dse" << false;
    QTest::newRow("longer name") << "Brannoc/Try/A 000.dse.bak" << false;
    QTest::newRow("folder between") << "Brannoc/Old/Try/A 000.dse" << false;
}

void TestProductPatcher::endsAreMatchedBehindASlash()
{
    QFETCH(QString, path);
    QFETCH(bool, written);
    const QString file = installed(path);
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), int(written));
    QCOMPARE(fileBytes(file), QByteArray(written ? "new" : "old"));
}

void TestProductPatcher::everyContentDirectoryIsSearched()
{
    const QString one = installed("a/Brannoc/Try/A 000.dse");
    const QString two = installed("b/Brannoc/Try/A 000.dse");
    const QString three = second->path("Brannoc/Try/A 000.dse");
    writeFile(three, "old");
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", QByteArray("n\0w", 3)), 3);
    for (const QString& file : {one, two, three})
        QCOMPARE(fileBytes(file), QByteArray("n\0w", 3));
}

void TestProductPatcher::aContentDirectoryThatIsGoneIsPassedOver()
{
    const QString script = installed("a/Brannoc/Try/A 000.dse");
    dzApp->getContentMgr()->setContentDirectories(
        QStringList() << second->path("gone") << content->path());
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 1);
    QCOMPARE(fileBytes(script), QByteArray("new"));
}

void TestProductPatcher::withoutAnApplicationNothingIsWritten()
{
    const QString script = installed("a/Brannoc/Try/A 000.dse");
    const QByteArray before = fileBytes(script);
    host.reset();
    QVERIFY(!dzApp);
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 0);
    QCOMPARE(fileBytes(script), before);
}

void TestProductPatcher::nothingIsCreated()
{
    QDir().mkpath(content->path("Brannoc/Try"));
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 0);
    QCOMPARE(filesIn(content->path("Brannoc/Try")), QStringList());
    QCOMPARE(filesIn(content->path()), QStringList());
}

void TestProductPatcher::permissionsStay()
{
    const QString file = installed("Brannoc/Try/A 000.dse");
    QCOMPARE(::chmod(qPrintable(file), 0640), 0);
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 1);
    struct stat status;
    QCOMPARE(::stat(qPrintable(file), &status), 0);
    QCOMPARE(int(status.st_mode & 0777), 0640);
    QCOMPARE(filesIn(content->path("Brannoc/Try")), QStringList("A 000.dse"));
}

void TestProductPatcher::linksThatLeadOutAreNotFollowed_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("target"); // below the outside folder
    QTest::newRow("file") << "Brannoc/Try/A 000.dse"
                          << "Brannoc/Try/A 000.dse";
    QTest::newRow("product folder") << "Brannoc/Try"
                                    << "Brannoc/Try";
    QTest::newRow("maker folder") << "Brannoc"
                                  << "Brannoc";
    QTest::newRow("folder of folders") << "more" << QString();
}

void TestProductPatcher::linksThatLeadOutAreNotFollowed()
{
    QFETCH(QString, link);
    QFETCH(QString, target);
    TempFolder outside;
    const QString file = outside.path("Brannoc/Try/A 000.dse");
    writeFile(file, "old");
    const QString path = content->path(link);
    QDir().mkpath(path.section('/', 0, -2));
    QVERIFY(QFile::link(outside.path(target), path));
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 0);
    QCOMPARE(fileBytes(file), QByteArray("old"));
    QVERIFY(QFileInfo(path).isSymLink());
}

void TestProductPatcher::aFolderOfTheSameBeginningLiesOutside()
{
    TempFolder around;
    const QString inside = around.path("content~"), file = around.path("content~2/A 000.dse");
    writeFile(file, "old");
    QDir().mkpath(inside);
    QVERIFY(QFile::link(around.path("content~2"), inside + "/more"));
    dzApp->getContentMgr()->setContentDirectories(QStringList(inside));
    QCOMPARE(overwrite("A 000.dse", "new"), 0);
    QCOMPARE(fileBytes(file), QByteArray("old"));
}

void TestProductPatcher::linksWithinAContentDirectoryAreFollowed_data()
{
    QTest::addColumn<QString>("real"); // the file
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("target");
    QTest::newRow("file") << "store/script.dse"
                          << "Brannoc/Try/A 000.dse"
                          << "store/script.dse";
    QTest::newRow("folder") << "store/A 000.dse"
                            << "Brannoc/Try"
                            << "store";
}

void TestProductPatcher::linksWithinAContentDirectoryAreFollowed()
{
    QFETCH(QString, real);
    QFETCH(QString, link);
    QFETCH(QString, target);
    const QString file = installed(real);
    const QString path = content->path(link);
    QDir().mkpath(path.section('/', 0, -2));
    QVERIFY(QFile::link(content->path(target), path));
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 1);
    QCOMPARE(fileBytes(file), QByteArray("new"));
    QVERIFY(QFileInfo(path).isSymLink()); // the link itself is not replaced
    QVERIFY(!QFileInfo(file).isSymLink());
}

void TestProductPatcher::circlesOfLinksEnd()
{
    const QString file = installed("Brannoc/Try/A 000.dse");
    QVERIFY(QFile::link(content->path(), content->path("Brannoc/again")));
    QVERIFY(QFile::link(content->path("Brannoc"), content->path("Brannoc/Try/up")));
    QVERIFY(QFile::link(content->path("Brannoc/Try"), content->path("Brannoc/Try/here")));
    QVERIFY(overwrite("Brannoc/Try/A 000.dse", "new") >= 1);
    QCOMPARE(fileBytes(file), QByteArray("new"));
}

// How often a folder has been listed since the watch began.
namespace {
struct ListingWatch {
    explicit ListingWatch(const QString& folder)
        : queue(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        // Closing stands between two openings, which else would be told as one.
        inotify_add_watch(queue, qPrintable(folder), IN_OPEN | IN_CLOSE_NOWRITE);
    }
    ~ListingWatch()
    {
        ::close(queue);
    }
    int listings() const
    {
        alignas(inotify_event) char buffer[16384];
        const ssize_t length = ::read(queue, buffer, sizeof buffer);
        int count = 0;
        for (ssize_t at = 0; at < length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            count += event->len == 0 && event->mask == (IN_OPEN | IN_ISDIR);
            at += ssize_t(sizeof *event + event->len);
        }
        return count;
    }
    int queue;
};
}

void TestProductPatcher::noFolderIsReadTwice()
{
    const QString file = installed("Brannoc/Try/A 000.dse");
    for (const char* link : {"1", "2", "Brannoc/3", "Brannoc/Try/4"})
        QVERIFY(QFile::link(content->path(), content->path(link)));
    QVERIFY(QFile::link(content->path("Brannoc/Try"), content->path("Brannoc/Again")));
    dzApp->getContentMgr()->setContentDirectories(
        QStringList() << content->path() << content->path("2"));
    const ListingWatch top(content->path()), deep(content->path("Brannoc/Try"));
    QCOMPARE(overwrite("Brannoc/Try/B 000.dse", "new"), 0); // there is none to be written
    QCOMPARE(top.listings(), 1);
    QCOMPARE(deep.listings(), 1);
    QCOMPARE(overwrite("Brannoc/Again/A 000.dse", "new"), 1); // by its other name
    QCOMPARE(fileBytes(file), QByteArray("new"));
}

void TestProductPatcher::aFolderThatOnlyALinkLeadsToIsRead()
{
    const QString file = installed("closed/Brannoc/Try/A 000.dse");
    QVERIFY(QFile::link(content->path("closed/Brannoc"), content->path("Brannoc")));
    QVERIFY(giveToChild(dzApp->getTempPath()));
    QVERIFY(setMode(file, 0666) && setMode(content->path("closed"), 0711)); // nobody may list it
    QVERIFY(giveToChild(file) && giveToChild(content->path("closed/Brannoc/Try")));
    const auto patch = [] { return overwrite("Brannoc/Try/A 000.dse", "new"); };
    QVERIFY(setMode(content->path("closed"), 0311));
    const int written = runWithoutRights(patch);
    QVERIFY(setMode(content->path("closed"), 0755));
    QCOMPARE(written, 1);
    QCOMPARE(fileBytes(file), QByteArray("new"));
}

void TestProductPatcher::contentDirectoriesInEachOtherAreOne_data()
{
    QTest::addColumn<QStringList>("directories");
    QTest::newRow("the outer first") << (QStringList() << QString() << "/inner");
    QTest::newRow("the inner first") << (QStringList() << "/inner" << QString());
    QTest::newRow("one twice") << (QStringList() << QString() << QString());
}

// The link leads out of the inner one, but not of the outer.
void TestProductPatcher::contentDirectoriesInEachOtherAreOne()
{
    QFETCH(QStringList, directories);
    const QString file = installed("store/A 000.dse"), other = installed("inner/Brannoc/B.dse");
    QVERIFY(QFile::link(content->path("store"), content->path("inner/Brannoc/Try")));
    for (QString& directory : directories)
        directory.prepend(content->path());
    dzApp->getContentMgr()->setContentDirectories(directories);
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 1);
    QCOMPARE(overwrite("Brannoc/B.dse", "new"), 1);
    QCOMPARE(fileBytes(file), QByteArray("new"));
    QCOMPARE(fileBytes(other), QByteArray("new"));
}

// A program that runs cannot be opened for writing by anybody, whatever the permissions say.
void TestProductPatcher::aFileThatCannotBeOpenedIsSkipped()
{
    const QString running = content->path("Brannoc/Try/A 000.dse");
    QDir().mkpath(content->path("Brannoc/Try"));
    QVERIFY(QFile::copy("/bin/sleep", running));
    const QByteArray before = fileBytes(running);
    const QString other = second->path("Brannoc/Try/A 000.dse");
    writeFile(other, "old");
    QProcess process;
    process.start(running, QStringList("60"));
    QVERIFY(process.waitForStarted());
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 1);
    process.kill();
    process.waitForFinished();
    QCOMPARE(fileBytes(other), QByteArray("new"));
    QVERIFY(fileBytes(running) == before);
    QCOMPARE(filesIn(content->path("Brannoc/Try")), QStringList("A 000.dse"));
}

void TestProductPatcher::whatStandsBesideAScriptIsNoObstacle()
{
    const QString file = installed("Brannoc/Try/A 000.dse");
    QDir().mkpath(besideName(file) + "/full"); // in the way of a file written beside
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 1);
    QCOMPARE(fileBytes(file), QByteArray("new"));
    QCOMPARE(filesIn(dzApp->getTempPath()), QStringList());
}

void TestProductPatcher::aLinkInPlaceOfTheNewFileIsNotWrittenThrough()
{
    TempFolder outside;
    const QString victim = outside.path("victim");
    writeFile(victim, "precious");
    const QString file = installed("Brannoc/Try/A 000.dse");
    QVERIFY(QFile::link(victim, besideName(file)));
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 1);
    QCOMPARE(fileBytes(victim), QByteArray("precious"));
    QCOMPARE(fileBytes(file), QByteArray("new"));
    QVERIFY(!QFileInfo(file).isSymLink());
}

void TestProductPatcher::otherKindsOfFilesAreSkipped()
{
    QDir().mkpath(content->path("Brannoc/Try/A 000.dse")); // a folder
    QDir().mkpath(content->path("b/Brannoc/Try"));
    QCOMPARE(::mkfifo(qPrintable(content->path("b/Brannoc/Try/A 000.dse")), 0644), 0);
    QVERIFY(QFile::link(content->path("gone"), content->path("b/Brannoc/Try/B 000.dse")));
    QCOMPARE(overwrite("Brannoc/Try/A 000.dse", "new"), 0);
    QCOMPARE(overwrite("Brannoc/Try/B 000.dse", "new"), 0);
    QVERIFY(!QFile::exists(content->path("gone")));
}

void TestProductPatcher::installedScriptsGetTheProductsOwnBlock()
{
    for (const PatchRow& row : kPatchRows)
        for (int i : {0, row.scripts - 1})
            installed("Scripts/" + scriptName(row, i));
    QVERIFY(patchProducts());
    for (const PatchRow& row : kPatchRows)
        for (int i : {0, row.scripts - 1})
            QVERIFY2(fileBytes(content->path("Scripts/" + scriptName(row, i))) == bytesOf(row.own),
                qPrintable(scriptName(row, i)));
}

// How often a file of that name was put in place, and written in place, since the watch began.
namespace {
struct FolderWatch {
    explicit FolderWatch(const QString& folder)
        : queue(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        inotify_add_watch(queue, qPrintable(folder), IN_MOVED_TO | IN_MODIFY);
    }
    ~FolderWatch()
    {
        ::close(queue);
    }
    void count(const QByteArray& name, int* replaced, int* modified) const
    {
        alignas(inotify_event) char buffer[16384];
        const ssize_t length = ::read(queue, buffer, sizeof buffer);
        *replaced = *modified = 0;
        for (ssize_t at = 0; at < length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            if (event->len > 0 && name == event->name)
                ++*(event->mask & IN_MOVED_TO ? replaced : modified);
            at += ssize_t(sizeof *event + event->len);
        }
    }
    int queue;
};
}

// Whoever reads it in between finds no shared block without the product's own.
void TestProductPatcher::aScriptIsReplacedOnce()
{
    const QString file = installed(scriptName(kPatchRows[4], 12));
    const FolderWatch watch(QFileInfo(file).path());
    QVERIFY(patchProducts());
    int replaced, modified;
    watch.count(QFile::encodeName(QFileInfo(file).fileName()), &replaced, &modified);
    QCOMPARE(replaced, 1);
    QCOMPARE(modified, 0);
    QCOMPARE(fileBytes(file), bytesOf(kPatchRows[4].own));
}

void TestProductPatcher::otherFilesAreLeftAlone()
{
    installed(scriptName(kPatchRows[2], 3));
    const QString beyond = installed(scriptName(kPatchRows[2], kPatchRows[2].scripts));
    const QString other = installed("Brannoc/First Dance/FD01 000.dsa");
    const QString foreign = installed("X" + scriptName(kPatchRows[0], 0));
    QVERIFY(patchProducts());
    for (const QString& file : {beyond, other, foreign})
        QCOMPARE(fileBytes(file), QByteArray("old"));
}

void TestProductPatcher::nothingInstalledMeansFalse()
{
    installed("Brannoc/Unknown/U 000.dse");
    QVERIFY(!patchProducts());
}

static QString g_doomed; // deleted once the first script has been handled

static bool deleteMeanwhile(const DzProgressRecord& record)
{
    if (record.calls == 1)
        QFile::remove(g_doomed);
    return false;
}

void TestProductPatcher::aScriptDeletedMeanwhileIsNotCreated()
{
    const QString first = installed(scriptName(kPatchRows[0], 0));
    g_doomed = installed(scriptName(kPatchRows[0], 5));
    const QString last = installed(scriptName(kPatchRows[0], 6));
    dzProgressHook = deleteMeanwhile;
    QVERIFY(patchProducts());
    QVERIFY(!QFile::exists(g_doomed));
    QCOMPARE(filesIn(QFileInfo(first).path()).size(), 2);
    for (const QString& file : {first, last})
        QCOMPARE(fileBytes(file), bytesOf(kPatchRows[0].own));
}

void TestProductPatcher::aFailedWriteOfEitherBlockLeavesTheScript_data()
{
    QTest::addColumn<int>("room"); // bytes that a file may have
    QTest::addColumn<bool>("isWritten");
    const int shared = scriptBlock(PatchScript::Shared).length;
    const int own = scriptBlock(kPatchRows[0].own).length;
    QVERIFY(own < shared); // else the shared block cannot fail alone
    QTest::newRow("neither fits") << own - 1 << false;
    QTest::newRow("the product's own fits, the shared block does not") << shared - 1 << false;
    QTest::newRow("both fit") << shared << true;
}

void TestProductPatcher::aFailedWriteOfEitherBlockLeavesTheScript()
{
    QFETCH(int, room);
    QFETCH(bool, isWritten);
    const QString file = installed(scriptName(kPatchRows[0], 0));
    const auto patch = [room] {
        ::signal(SIGXFSZ, SIG_IGN);
        return limitFileSize(unsigned(room)) && patchProducts();
    };
    QCOMPARE(runInChild(patch), int(isWritten));
    QCOMPARE(fileBytes(file), isWritten ? bytesOf(kPatchRows[0].own) : QByteArray("old"));
    QCOMPARE(filesIn(QFileInfo(file).path()), QStringList(QFileInfo(file).fileName()));
    QCOMPARE(filesIn(dzApp->getTempPath()), QStringList());
}

// Killed while it writes a script's new file.
void TestProductPatcher::theNextPatchTidiesUpAfterAKilledOne()
{
    const QString file = installed(scriptName(kPatchRows[0], 0));
    const QString name = QFileInfo(file).fileName(), folder = QFileInfo(file).path();
    QCOMPARE(runInChild([] { return limitFileSize(100) && patchProducts(); }), -SIGXFSZ);
    QCOMPARE(fileBytes(file), QByteArray("old"));
    QCOMPARE(filesIn(folder).size(), 2);
    writeFile(file + ".1.new", "of a process that lives");
    QVERIFY(patchProducts());
    QCOMPARE(fileBytes(file), bytesOf(kPatchRows[0].own));
    QCOMPARE(filesIn(folder), QStringList() << name << name + ".1.new");
}

void TestProductPatcher::linkedScriptsInAClosedFolderAreWritten()
{
    const QString name = scriptName(kPatchRows[6], 72);
    const QString file = installed(name), other = second->path("kept by somebody");
    QVERIFY(setMode(file, 0666) && giveToChild(dzApp->getTempPath()));
    QCOMPARE(::link(qPrintable(file), qPrintable(other)), 0);
    const ClosedFolder closed(QFileInfo(file).path());
    QCOMPARE(runWithoutRights(patchProducts), 1);
    QCOMPARE(fileBytes(file), bytesOf(kPatchRows[6].own));
    QCOMPARE(fileBytes(other), bytesOf(kPatchRows[6].own));
    QCOMPARE(filesIn(dzApp->getTempPath()), QStringList());
}

QUILLON_TEST(TestProductPatcher)
#include "test_product_patcher.moc"
