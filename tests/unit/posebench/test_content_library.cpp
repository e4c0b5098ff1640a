#include "room_tests.h"

#include "bench_window_fixture.h"

#include "host/posebench/content_library_pane.h"
#include "host/posebench/content_view.h"
#include "host/posebench/preset_thumbnail.h"
#include "host/posebench/thumbnail_files.h"
#include "host/posebench/thumbnail_store.h"

#include "dzcontentmgr.h"
#include "dzpane.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"

#include <QComboBox>
#include <QDateTime>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>

#include <memory>

using namespace quillon;

static void write(const QString& path, const QByteArray& bytes, qint64 secondsAgo = 0)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    const bool open = file.open(QIODevice::WriteOnly);
    Q_ASSERT(open);
    Q_UNUSED(open);
    file.write(bytes);
    file.flush();
    file.setFileTime(
        QDateTime::currentDateTime().addSecs(-secondsAgo), QFileDevice::FileModificationTime);
}

static QByteArray bend(int degrees)
{
    return QString(
        "{ \"asset_info\" : { \"type\" : \"preset_pose\" }, \"scene\" : { \"animations\" : "
        "[ { \"url\" : \"name://@selection/lThighBend:?rotation/x/value\", \"keys\" : "
        "[ [ 0, %1 ] ] } ] } }")
        .arg(degrees)
        .toUtf8();
}

static void writePicture(const QString& path, const QSize& size, Qt::GlobalColor color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    image.save(path, "PNG");
}

// Folders, search, order, pictures.
class TestContentLibrary : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void listsFoldersBeforePresets();
    void sortsByNameIgnoringCase();
    void sortsByTime();
    void timesStayUntilAFolderIsReadAnew();
    void aSearchAsksEachFileOnceForItsTime();
    void findsByAllWordsInAllDirectories();
    void aLinkThatLeadsBackIsWalkedOnce();
    void anEmptyListTellsWhy();
    void whatIsShownEndsTheSearch_data();
    void whatIsShownEndsTheSearch();
    void readingAgainShowsPicturesAnew();
    void pathLineOpensWhatIsTyped();
    void recentFoldersAreRememberedOnce();
    void theLastTenFoldersAreRecent();
    void enterOpensAndBackspaceGoesUp();
    void showingAFolderLeavesTheOtherTabInSight();
    void takesThePictureBesideThePreset();
    void cacheKnowsAChangedPreset();
    void oldestUsedPicturesGo();
    void pictureShowsThePose();
    void pictureNeedsTheFigureOfThePath();
    void listsThousandsOfPresets();

private:
    QStringList shown() const;
    QListView* view() const;
    DzContentLibraryPane* pane() const;
    QString dir(const QString& name) const;

    std::unique_ptr<BenchWindow> m_bench;
};

void TestContentLibrary::init()
{
    m_bench.reset(new BenchWindow);
}

void TestContentLibrary::cleanup()
{
    m_bench.reset();
}

DzContentLibraryPane* TestContentLibrary::pane() const
{
    return m_bench->window->contentPane();
}

QListView* TestContentLibrary::view() const
{
    return pane()->findChild<QListView*>("contentList");
}

QStringList TestContentLibrary::shown() const
{
    QStringList names;
    for (int i = 0; i < view()->model()->rowCount(); ++i)
        names << view()->model()->index(i, 0).data().toString();
    return names;
}

QString TestContentLibrary::dir(const QString& name) const
{
    return m_bench->home.path() + '/' + name;
}

// ---- lists ---------------------------------------------------------------------------------

void TestContentLibrary::listsFoldersBeforePresets()
{
    for (const char* name : {"p/b.duf", "p/a.DUF", "p/note.txt", "p/.hidden.duf", "p/z/in.duf"})
        write(dir(name), bend(1));
    QFile::link(dir("p/z"), dir("p/link"));
    QFile::link(dir("p/b.duf"), dir("p/c.duf"));
    pane()->browseToNativeFolder(dir("p"));
    QCOMPARE(shown(), QStringList({"link", "z", "a", "b", "c"}));
}

void TestContentLibrary::sortsByNameIgnoringCase()
{
    for (const char* name : {"p/Bee.duf", "p/apple.duf", "p/cat.duf", "p/Ant.duf"})
        write(dir(name), bend(1));
    pane()->browseToNativeFolder(dir("p"));
    QCOMPARE(shown(), QStringList({"Ant", "apple", "Bee", "cat"}));
}

void TestContentLibrary::sortsByTime()
{
    write(dir("p/old.duf"), bend(1), 3000);
    write(dir("p/new.duf"), bend(1), 10);
    write(dir("p/middle.duf"), bend(1), 200);
    pane()->browseToNativeFolder(dir("p"));
    pane()->findChild<QComboBox*>("contentOrder")->setCurrentIndex(1);
    QCOMPARE(shown(), QStringList({"new", "middle", "old"}));
    pane()->findChild<QComboBox*>("contentOrder")->setCurrentIndex(0);
    QCOMPARE(shown(), QStringList({"middle", "new", "old"}));
}

// A time that changes between two looks tells whether it was asked for again.
void TestContentLibrary::timesStayUntilAFolderIsReadAnew()
{
    write(dir("p/old.duf"), bend(1), 3000);
    write(dir("p/new.duf"), bend(1), 10);
    QComboBox* order = pane()->findChild<QComboBox*>("contentOrder");
    order->setCurrentIndex(1);
    pane()->browseToNativeFolder(dir("p"));
    const QStringList first {"new", "old"}, anew {"old", "new"};
    QCOMPARE(shown(), first);
    write(dir("p/old.duf"), bend(1), 1);
    order->setCurrentIndex(0);
    order->setCurrentIndex(1);
    QCOMPARE(shown(), first);
    QVERIFY(QMetaObject::invokeMethod(pane(), "refresh"));
    QCOMPARE(shown(), anew);
    write(dir("p/new.duf"), bend(1), 0);
    pane()->browseToNativeFolder(dir("p"));
    QCOMPARE(shown(), first);
}

void TestContentLibrary::aSearchAsksEachFileOnceForItsTime()
{
    for (const char* name : {"p/chair.duf", "q/chairs.duf", "p/table.duf"})
        write(dir(name), bend(1), name[0] == 'p' ? 3000 : 10);
    pane()->findChild<QComboBox*>("contentOrder")->setCurrentIndex(1);
    QLineEdit* search = pane()->findChild<QLineEdit*>("contentSearch");
    search->setText("cha");
    const QStringList first {"chairs", "chair"}, anew {"chair", "chairs"};
    QTRY_COMPARE(shown(), first);
    write(dir("p/chair.duf"), bend(1), 1);
    QTest::keyClick(search, Qt::Key_I);
    QCOMPARE(shown(), first);
    write(dir("p/table.duf"), bend(1), -60); // was not asked for yet: it had no word of the search
    search->setText("a");
    QCOMPARE(shown(), QStringList({"table", "chairs", "chair"}));
    search->setText("chair");
    QVERIFY(QMetaObject::invokeMethod(pane(), "refresh"));
    QTRY_COMPARE(shown(), anew);
}

void TestContentLibrary::findsByAllWordsInAllDirectories()
{
    QTemporaryDir second;
    m_bench->app.getContentMgr()->setContentDirectories({m_bench->home.path(), second.path()});
    write(dir("People/a/Sit on Chair.duf"), bend(1));
    write(dir("People/b/deep/er/chair sitting.duf"), bend(1));
    write(dir("People/b/stand.duf"), bend(1));
    write(second.path() + "/x/Sit by a CHAIR.duf", bend(1));
    QLineEdit* search = pane()->findChild<QLineEdit*>("contentSearch");
    QTest::keyClicks(search, "chair");
    const QStringList chairs {"chair sitting", "Sit by a CHAIR", "Sit on Chair"};
    QTRY_COMPARE(shown(), chairs);
    QTest::keyClicks(search, " sit b");
    QCOMPARE(shown(), QStringList({"Sit by a CHAIR"})); // at once: the names are known
    search->clear();
    QCOMPARE(shown().size(), 2); // the directories again
}

void TestContentLibrary::aLinkThatLeadsBackIsWalkedOnce()
{
    write(dir("p/q/one.duf"), bend(1));
    QFile::link(dir("p"), dir("p/q/back"));
    ContentWalk walk({dir("p")});
    for (int i = 0; i < 1000 && !walk.isDone(); ++i)
        walk.goOn(1);
    QVERIFY(walk.isDone());
    QCOMPARE(walk.found().size(), size_t(1));
}

void TestContentLibrary::anEmptyListTellsWhy()
{
    const auto why = [this] { return static_cast<ContentView*>(view())->textWhenEmpty(); };
    QDir().mkpath(dir("p"));
    pane()->browseToNativeFolder(dir("p"));
    QCOMPARE(why(), QString("No folders and no poses here"));
    pane()->browseToNativeFolder(dir("none"));
    QCOMPARE(why(), QString("There is no folder ") + dir("none"));
    pane()->findChild<QComboBox*>("contentOrder")->setCurrentIndex(1);
    QCOMPARE(why(), QString("There is no folder ") + dir("none"));
    pane()->findChild<QLineEdit*>("contentSearch")->setText("nothing of that name");
    QTRY_COMPARE(why(), QString("No pose has all these words in its name"));
    QCOMPARE(shown(), QStringList());
}

void TestContentLibrary::whatIsShownEndsTheSearch_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("a product's folder") << "browse" << QStringList({"sit", "stand"});
    QTest::newRow("the folder typed") << "type" << QStringList({"sit", "stand"});
    QTest::newRow("the folder above") << "goUp" << QStringList({"q"});
}

void TestContentLibrary::whatIsShownEndsTheSearch()
{
    QFETCH(QString, way);
    QFETCH(QStringList, names);
    write(dir("p/q/sit.duf"), bend(1));
    write(dir("p/q/stand.duf"), bend(1));
    pane()->browseToNativeFolder(dir("p/q"));
    QLineEdit* search = pane()->findChild<QLineEdit*>("contentSearch");
    QTest::keyClicks(search, "sit"); // the walk through the directories begins
    QLineEdit* path = pane()->findChild<QComboBox*>("contentPath")->lineEdit();
    path->setText(dir("p/q"));
    if (way == "type")
        QTest::keyClick(path, Qt::Key_Return);
    else if (way == "browse")
        pane()->browseToNativeFolder(dir("p/q"));
    else
        QVERIFY(QMetaObject::invokeMethod(pane(), "goUp"));
    QCOMPARE(search->text(), QString());
    QCOMPARE(shown(), names);
    for (const QTimer* timer : pane()->findChildren<QTimer*>())
        QVERIFY(!timer->isActive());
    QVERIFY(QMetaObject::invokeMethod(pane(), "refresh"));
    QCOMPARE(shown(), names);
}

void TestContentLibrary::readingAgainShowsPicturesAnew()
{
    write(dir("p/sit.duf"), bend(1));
    writePicture(dir("p/sit.png"), QSize(91, 91), Qt::green);
    pane()->browseToNativeFolder(dir("p"));
    const auto color = [this] {
        const QVariant shown = view()->model()->index(0, 0).data(Qt::DecorationRole);
        return shown.value<QPixmap>().toImage().pixelColor(40, 40);
    };
    QTRY_COMPARE(color(), QColor(Qt::green));
    writePicture(dir("p/sit.png"), QSize(91, 91), Qt::red);
    QVERIFY(QMetaObject::invokeMethod(pane(), "refresh"));
    QTRY_COMPARE(color(), QColor(Qt::red));
}

void TestContentLibrary::pathLineOpensWhatIsTyped()
{
    write(dir("p/one.duf"), bend(1));
    QLineEdit* line = pane()->findChild<QComboBox*>("contentPath")->lineEdit();
    line->setText(dir("p"));
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(pane()->currentFolder(), dir("p"));
    QCOMPARE(shown(), QStringList({"one"}));
    line->setText(dir("none"));
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(pane()->currentFolder(), dir("p"));
    QVERIFY(QMetaObject::invokeMethod(pane(), "showRoots"));
    const QString title = line->text();
    for (const QString& text : {title, QString()}) {
        pane()->browseToNativeFolder(dir("p"));
        line->setText(text);
        QTest::keyClick(line, Qt::Key_Return);
        QCOMPARE(pane()->currentFolder(), QString()); // the content directories
        QCOMPARE(line->text(), title);
    }
}

void TestContentLibrary::recentFoldersAreRememberedOnce()
{
    for (const char* name : {"a", "b", "c"})
        QDir().mkpath(dir(name));
    for (const char* name : {"a", "b", "a", "c", "none"})
        pane()->browseToNativeFolder(dir(name));
    const QStringList recent {dir("c"), dir("a"), dir("b")};
    QCOMPARE(pane()->recentFolders(), recent);
    PoseBenchWindow later; // of the next run
    const QComboBox* path = later.contentPane()->findChild<QComboBox*>("contentPath");
    QCOMPARE(path->count(), 3);
    QCOMPARE(path->itemText(0), dir("c"));
}

void TestContentLibrary::theLastTenFoldersAreRecent()
{
    for (int i = 0; i < 12; ++i) {
        QDir().mkpath(dir(QString::number(i)));
        pane()->browseToNativeFolder(dir(QString::number(i)));
    }
    QCOMPARE(pane()->recentFolders().size(), 10);
    QCOMPARE(pane()->recentFolders().last(), dir("2"));
}

void TestContentLibrary::enterOpensAndBackspaceGoesUp()
{
    write(dir("p/q/one.duf"), bend(1));
    pane()->browseToNativeFolder(dir("p"));
    view()->setCurrentIndex(view()->model()->index(0, 0));
    QTest::keyClick(view(), Qt::Key_Return);
    QCOMPARE(pane()->currentFolder(), dir("p/q"));
    QTest::keyClick(view(), Qt::Key_Backspace);
    QCOMPARE(pane()->currentFolder(), dir("p"));
}

void TestContentLibrary::showingAFolderLeavesTheOtherTabInSight()
{
    DzPaneGroup* group = m_bench->window->getPaneMgr()->getPaneGroup(0);
    DzPane* other = new DzPane("Plug-in");
    m_bench->window->getPaneMgr()->addPane(other);
    other->moveToGroup(group);
    group->showPane(other);
    QVERIFY(other->isVisible() && !pane()->isVisible());
    QDir().mkpath(dir("p"));
    pane()->browseToNativeFolder(dir("p"));
    QVERIFY(other->isVisible());
    QVERIFY(pane()->isVisible());
    QCOMPARE(pane()->currentFolder(), dir("p"));
    DzPaneGroup* second = pane()->getPaneGroup();
    pane()->browseToNativeFolder(m_bench->home.path());
    QCOMPARE(pane()->getPaneGroup(), second); // it stays there
}

// ---- pictures ------------------------------------------------------------------------------

void TestContentLibrary::takesThePictureBesideThePreset()
{
    write(dir("p/sit.duf"), bend(1));
    writePicture(dir("p/sit.tip.png"), QSize(91, 91), Qt::green);
    ThumbnailStore store({dir("thumbnails"), QString(), kThumbnailBytes});
    QVERIFY(store.thumbnail(dir("p/sit.duf")).isNull());
    QTRY_VERIFY(!store.thumbnail(dir("p/sit.duf")).isNull());
    QCOMPARE(store.thumbnail(dir("p/sit.duf")).toImage().pixelColor(40, 40), QColor(Qt::green));
    QCOMPARE(store.made(), 0);
}

void TestContentLibrary::cacheKnowsAChangedPreset()
{
    const QString preset = dir("p/sit.duf"), folder = dir("thumbnails");
    write(preset, bend(1), 500);
    const QString first = thumbnailFile(folder, preset);
    QCOMPARE(thumbnailFile(folder, preset), first);
    write(preset, bend(1), 400); // another time
    const QString second = thumbnailFile(folder, preset);
    QVERIFY(second != first);
    write(preset, bend(123), 400); // another size
    QVERIFY(thumbnailFile(folder, preset) != second);
    write(dir("q/sit.duf"), bend(123), 400); // another path
    QVERIFY(thumbnailFile(folder, dir("q/sit.duf")) != thumbnailFile(folder, preset));
    QVERIFY(thumbnailFile(folder, dir("none.duf")).isEmpty());
}

void TestContentLibrary::oldestUsedPicturesGo()
{
    const QByteArray kilobyte(1024, 'x');
    for (int i = 0; i < 10; ++i)
        write(dir(QString("t/%1.png").arg(i)), kilobyte, 1000 - i);
    markUsed(dir("t/0.png")); // the oldest one, but used now
    QCOMPARE(trimThumbnails(dir("t"), 10 * 1024), qint64(10 * 1024)); // at the limit: all stay
    QVERIFY(trimThumbnails(dir("t"), 5 * 1024) <= 5 * 1024);
    QVERIFY(QFileInfo(dir("t/0.png")).exists());
    QVERIFY(QFileInfo(dir("t/9.png")).exists());
    QVERIFY(!QFileInfo(dir("t/1.png")).exists());
    QCOMPARE(QDir(dir("t")).entryList(QDir::Files).size(), 4); // nine tenths of the limit
}

void TestContentLibrary::pictureShowsThePose()
{
    write(dir("p/rest.duf"), bend(0));
    write(dir("p/bent.duf"), bend(-80));
    const QSize size(kThumbnailPx, kThumbnailPx);
    QString why;
    const QImage rest = presetThumbnail(dir("p/rest.duf"), size, &why);
    const QImage bent = presetThumbnail(dir("p/bent.duf"), size, &why);
    QCOMPARE(rest.size(), size);
    QVERIFY(rest != bent);
    QVERIFY(presetThumbnail(dir("p/rest.duf"), size, &why) == rest); // nothing of the other is left
    QVERIFY(presetThumbnail(dir("p/none.duf"), size, &why).isNull());
    QVERIFY(why.contains("none.duf"));
}

void TestContentLibrary::pictureNeedsTheFigureOfThePath()
{
    QCOMPARE(figureForPreset("/c/People/Genesis 8 Male/Poses/a.duf"), QString("Genesis8Male"));
    QCOMPARE(
        figureForPreset("/c/People/Genesis 8.1 Female/Poses/a.duf"), QString("Genesis8_1Female"));
    QCOMPARE(figureForPreset("/c/anything/a.duf"), QString("Genesis8Female"));
}

// ---- many ----------------------------------------------------------------------------------

void TestContentLibrary::listsThousandsOfPresets()
{
    QDir().mkpath(dir("many"));
    for (int i = 0; i < 5000; ++i) {
        QFile file(dir("many/pose %1.duf").arg(i * 7919 % 5000));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    pane()->browseToNativeFolder(dir("many"));
    QCOMPARE(view()->model()->rowCount(), 5000);
    QCOMPARE(shown().first(), QString("pose 0"));
    view()->scrollToBottom();
    QCoreApplication::processEvents();
    QVERIFY(view()->indexAt(QPoint(20, view()->viewport()->height() / 2)).row() > 4950);
}

QUILLON_TEST(TestContentLibrary)
#include "test_content_library.moc"
