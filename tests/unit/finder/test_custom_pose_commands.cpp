#include "browse_fixture.h"
#include "room_tests.h"

#include "finder/custom_pose_commands.h"
#include "posefile/custom_library.h"

#include "dzpane.h"
#include "dzpanemgr.h"

using namespace quillon;

// Scripts find the content library by this name.
class DzContentLibraryPane : public DzPane {
    Q_OBJECT
public:
    DzContentLibraryPane()
        : DzPane(QLatin1String("Content Library"))
    {
    }
    Q_INVOKABLE void browseToNativeFolder(const QString& folder)
    {
        folders << folder;
    }
    QStringList folders;
};

class TestCustomPoseCommands : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<WindowedBrowseFixture> m_finder;

    int addCustom(const QString& name)
    {
        const QString path = customLibraryFolder() + name;
        writeFile(path, presetText(QList<QByteArray>()));
        return addEntry(path, quint32(poseCount() + 1));
    }

private slots:
    void init()
    {
        m_finder.reset(new WindowedBrowseFixture);
    }
    void cleanup()
    {
        m_finder.reset();
    }

    // ---- deleting ----------------------------------------------------------------------------

    void customPoseIsDeletedOnYes_data()
    {
        QTest::addColumn<bool>("yes");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }
    void customPoseIsDeletedOnYes()
    {
        QFETCH(bool, yes);
        addCustom("a.duf");
        addCustom("sit down.duf");
        const QString path = poseEntry(1)->path;
        const BoxAnswers boxes(yes ? QMessageBox::Yes : QMessageBox::No);
        QCOMPARE(deleteCustomPose(1), yes);
        QCOMPARE(boxes.boxes.size(), 1);
        const SeenBox& box = boxes.boxes.first();
        QCOMPARE(box.title, QString("Quillon - Delete Custom Pose"));
        QCOMPARE(
            box.text, QString("Pose named 'sit down' will be permanently deleted. Are you sure?"));
        QVERIFY(!box.parent);
        QCOMPARE(QFile::exists(path), !yes);
        QCOMPARE(poseCount(), yes ? 1 : 2);
        createPoseIndex();
        QCOMPARE(readPoseIndex(), yes);
        QCOMPARE(poseCount(), yes ? 1 : 0);
    }

    void deletedPoseLeavesThePosition_data()
    {
        QTest::addColumn<int>("deleted");
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("expected");
        QTest::newRow("the first of three") << 0 << 0 << 0;
        QTest::newRow("the second of three") << 1 << 1 << 1;
        QTest::newRow("the last of three") << 2 << 2 << 0;
        QTest::newRow("one before the position") << 0 << 2 << 1;
        QTest::newRow("none applied") << 1 << -1 << -1;
    }
    void deletedPoseLeavesThePosition()
    {
        QFETCH(int, deleted);
        QFETCH(int, position);
        for (const char* name : {"a.duf", "b.duf", "c.duf"})
            addCustom(name);
        pluginSettings().currentPose = position;
        const BoxAnswers boxes(QMessageBox::Yes);
        QVERIFY(deleteCustomPose(deleted));
        QTEST(m_finder->position(), "expected");
    }

    void lastPoseThatIsDeletedLeavesNone()
    {
        addCustom("a.duf");
        pluginSettings().currentPose = 0;
        const BoxAnswers boxes(QMessageBox::Yes);
        QVERIFY(deleteCustomPose(0));
        QCOMPARE(m_finder->position(), -1);
    }

    // With or without a figure; nothing is searched.
    void rankAndCountsFollowADeletedPose()
    {
        addCustom("a.duf");
        m_finder->addFile("People/b.duf");
        addCustom("c.duf");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 1;
        setCurrentRank(Favorite);
        m_finder->apply(0);
        countedMatches();
        QCOMPARE(pluginSettings().currentRank, qint32(CustomLibraryPose));
        m_finder->rig.scene.selectAllNodes(false);
        const BoxAnswers boxes(QMessageBox::Yes);
        QVERIFY(deleteCustomPose(0));
        QCOMPARE(pluginSettings().currentRank, qint32(Favorite)); // b took its place
        QCOMPARE(browseSession().matchCount, 2);
        QCOMPARE(browseSession().matchOrdinal, 1);
        pluginSettings().currentPose = 1;
        QVERIFY(deleteCustomPose(1));
        QCOMPARE(pluginSettings().currentRank, qint32(Favorite)); // round to the first
        QCOMPARE(browseSession().matchCount, 1);
        QCOMPARE(browseSession().matchOrdinal, 1);
    }

    void deletedPoseThatDidNotMatchLeavesTheCount()
    {
        addCustom("a.duf");
        m_finder->addFile("People/b.duf");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 0;
        pluginSettings().rankFilter = ShowUnranked;
        QCOMPARE(countedMatches().matchCount, 1);
        const BoxAnswers boxes(QMessageBox::Yes);
        QVERIFY(deleteCustomPose(0));
        QCOMPARE(browseSession().matchCount, 1);
        QCOMPARE(browseSession().matchOrdinal, 1);
    }

    void undeletableFileKeepsItsEntry()
    {
        const int entry = addCustom("a.duf");
        QFile::remove(poseEntry(entry)->path);
        QDir().mkpath(poseEntry(entry)->path); // a folder, which no file deletion takes
        const BoxAnswers boxes(QMessageBox::Yes);
        QVERIFY(deleteCustomPose(entry));
        QCOMPARE(poseCount(), 1);
        QVERIFY(!QFile::exists(dataFiles().poseIndex));
    }

    void onlyCustomPosesAreDeleted()
    {
        m_finder->addFile("People/a.duf");
        const BoxAnswers boxes(QMessageBox::Yes);
        for (int entry : {-1, 0, 1})
            QVERIFY(!deleteCustomPose(entry));
        QVERIFY(boxes.boxes.isEmpty());
        QCOMPARE(poseCount(), 1);
    }

    // As a forged index may name them: contained in their path is what makes a custom pose.
    void filesOutsideTheLibraryAreNotDeleted_data()
    {
        QTest::addColumn<QString>("name"); // below the library
        QTest::newRow("by dots") << "../../../victim.duf";
        QTest::newRow("by a link") << "way/victim.duf";
        QTest::newRow("another kind of file") << "notes.txt";
    }
    void filesOutsideTheLibraryAreNotDeleted()
    {
        QFETCH(QString, name);
        addCustom("a.duf");
        const QString outside = m_finder->home.path("data/victim.duf");
        writeFile(outside, "precious");
        QVERIFY(QFile::link(m_finder->home.path("data"), customLibraryFolder() + "way"));
        writeFile(customLibraryFolder() + "notes.txt", "precious");
        const int entry = addEntry(customLibraryFolder() + name, 77);
        const BoxAnswers boxes(QMessageBox::Yes);
        QVERIFY(!deleteCustomPose(entry));
        QVERIFY(boxes.boxes.isEmpty()); // nothing to ask about
        QCOMPARE(fileBytes(customLibraryFolder() + name), QByteArray("precious"));
        QCOMPARE(poseCount(), 2);
        QVERIFY(!QFile::exists(dataFiles().poseIndex));
        QVERIFY(deleteCustomPose(0)); // one of the library still goes
        QCOMPARE(poseCount(), 1);
    }

    // ---- the folder --------------------------------------------------------------------------

    void browsesToTheFolderOfThePose_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QStringList>("folders");
        QTest::newRow("a pose") << "C:/Content/People/Poses/sit.duf"
                                << QStringList("C:/Content/People/Poses");
        QTest::newRow("no folder") << "sit.duf" << QStringList();
        for (const char* name : {"\"quoted\"", "\\", "back\\slash\\", "\\\"", "line\nend", "\r\n",
                 "\"); throw \"run", "%1", "\\u0041", "\xe2\x80\xa8", "\xe2\x80\xa9"}) {
            const QString folder = "/c/" + QString::fromUtf8(name);
            QTest::newRow(name) << folder + "/sit.duf" << QStringList(folder);
        }
        QTest::newRow("an unknown product of the maker's")
            << "/c/data/Brannoc/poses/099/003f.duf" << QStringList("/c/data/Brannoc/poses/099");
    }
    void browsesToTheFolderOfThePose()
    {
        QFETCH(QString, path);
        DzContentLibraryPane* const library = new DzContentLibraryPane;
        m_finder->window.getPaneMgr()->addPane(library);
        browseToPoseFolder(path);
        QTEST(library->folders, "folders");
        QVERIFY(library->getPaneGroup()); // it is shown
    }

    void posePairProductsHaveAFolderOfTheirOwn_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("folder");
        QTest::newRow("a pair") << "012f0.duf"
                                << "Genesis 8 Female";
        QTest::newRow("a pair, the man") << "012m0.duf"
                                         << "Genesis 8 Male";
        QTest::newRow("no pair") << "012f.duf"
                                 << "Genesis 8 Female";
    }
    void posePairProductsHaveAFolderOfTheirOwn()
    {
        QFETCH(QString, file);
        QFETCH(QString, folder);
        DzContentLibraryPane* const library = new DzContentLibraryPane;
        m_finder->window.getPaneMgr()->addPane(library);
        browseToPoseFolder(QLatin1String("/c/data/Brannoc/poses/001/") + file);
        QCOMPARE(library->folders.size(), 1);
        const QString start = "/c/People/" + folder + "/Poses/Brannoc/";
        QVERIFY2(library->folders.first().startsWith(start), qPrintable(library->folders.first()));
        QCOMPARE(library->folders.first().count(QLatin1Char('/')), start.count(QLatin1Char('/')));
        QVERIFY(library->folders.first().size() > start.size());
    }

    void theContentLibraryIsBroughtIntoView()
    {
        DzContentLibraryPane* const library = new DzContentLibraryPane;
        m_finder->window.getPaneMgr()->addPane(library);
        library->hide();
        browseToPoseFolder("C:/Content/People/Poses/sit.duf");
        QVERIFY(!library->isHidden());
    }

    void hostWithoutAContentLibraryIsLeftAlone()
    {
        browseToPoseFolder("C:/Content/People/Poses/sit.duf");
        QCOMPARE(m_finder->window.getPaneMgr()->getNumPanes(), 0);
    }
};

QUILLON_TEST(TestCustomPoseCommands)
#include "test_custom_pose_commands.moc"
