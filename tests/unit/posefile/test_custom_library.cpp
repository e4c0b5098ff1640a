#include "frame_fixture.h"
#include "room_tests.h"

#include "ground/data_folder.h"
#include "posefile/custom_library.h"

#include <QtTest>

using namespace quillon;

class TestCustomLibrary : public QObject {
    Q_OBJECT

private slots:
    void cleanup()
    {
        locateDataFiles(); // of no application
    }

    void liesInTheDataFolder()
    {
        const HostFixture host;
        locateDataFiles();
        QCOMPARE(customLibraryFolder(), host.dataFolder() + QLatin1String("custom/"));
        QVERIFY(isCustomLibraryPath(customLibraryFolder() + QLatin1String("x.duf")));
    }

    void isCreatedWithAllParents()
    {
        const HostFixture host;
        locateDataFiles();
        QVERIFY(!QDir(host.home.path("data")).exists());
        QVERIFY(ensureCustomLibraryFolder());
        QVERIFY(QDir(host.dataFolder() + "custom").exists());
        QVERIFY(ensureCustomLibraryFolder()); // is there already
    }

    void cannotBeCreatedBelowAFile()
    {
        const HostFixture host;
        locateDataFiles();
        writeFile(host.home.path("data"), "a file");
        QVERIFY(!ensureCustomLibraryFolder());
    }

    void isNowhereWithoutAnApplication()
    {
        locateDataFiles();
        QVERIFY(customLibraryFolder().isEmpty());
        QVERIFY(!ensureCustomLibraryFolder());
    }

    void pathTellsACustomPose_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("expected");
        QTest::newRow("in the library") << "C:/Content/data/Brannoc/Quillon/custom/x.duf" << true;
        QTest::newRow("in a folder of it") << "/c/data/Brannoc/Quillon/custom/a/x.duf" << true;
        QTest::newRow("other case") << "C:/Content/data/brannoc/Quillon/custom/x.duf" << false;
        QTest::newRow("beside it") << "C:/Content/data/Brannoc/Quillon/x.duf" << false;
        QTest::newRow("elsewhere") << "C:/Content/People/custom/x.duf" << false;
        QTest::newRow("empty") << "" << false;
    }
    void pathTellsACustomPose()
    {
        QFETCH(QString, path);
        QTEST(isCustomLibraryPath(path), "expected");
    }

    void fileNameEndsInDuf_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("expected");
        QTest::newRow("without") << "/c/x"
                                 << "/c/x.duf";
        QTest::newRow("with") << "/c/x.duf"
                              << "/c/x.duf";
        QTest::newRow("capitals") << "/c/X.DUF"
                                  << "/c/X.DUF";
        QTest::newRow("another one") << "/c/x.json"
                                     << "/c/x.json.duf";
        QTest::newRow("a dot in the name") << "/c/sit v1.2"
                                           << "/c/sit v1.2.duf";
    }
    void fileNameEndsInDuf()
    {
        QFETCH(QString, chosen);
        QTEST(customPoseFileName(chosen), "expected");
    }
};

QUILLON_TEST(TestCustomLibrary)
#include "test_custom_library.moc"
