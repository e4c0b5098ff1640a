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

    // ---- what may be deleted -----------------------------------------------------------------

    // Below one folder: lib/ with data/Brannoc/Quillon/custom/ and a folder sub/ in it, alias/,
    // which is a link to lib/, out/, which lies outside, and custom/way/, which is a link to out/.
    void onlyPosesInALibraryCanBeDeleted_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("expected");
        const QString custom = "lib/data/Brannoc/Quillon/custom/";
        QTest::newRow("a pose of the library") << custom + "x.duf" << true;
        QTest::newRow("capitals") << custom + "x.DUF" << true;
        QTest::newRow("in a folder of it") << custom + "sub/x.duf" << true;
        QTest::newRow("two dots in a name") << custom + "x..duf" << true;
        QTest::newRow("behind a link") << "alias/data/Brannoc/Quillon/custom/x.duf" << true;
        QTest::newRow("a link within it") << custom + "sub/back/x.duf" << true;
        QTest::newRow("a library that is a link")
            << "else/data/Brannoc/Quillon/custom/x.duf" << true;
        QTest::newRow("no pose preset") << custom + "x.txt" << false;
        QTest::newRow("no suffix") << custom + "duf" << false;
        QTest::newRow("out by dots") << custom + "../../../../../out/x.duf" << false;
        QTest::newRow("in by dots") << custom + "sub/../x.duf" << false;
        QTest::newRow("out by a link") << custom + "way/x.duf" << false;
        QTest::newRow("longer name of a folder")
            << "lib/data/Brannoc/Quillon/customs/x.duf" << false;
        QTest::newRow("longer name of its start")
            << "lib/mydata/Brannoc/Quillon/custom/x.duf" << false;
        QTest::newRow("a folder that is not there") << custom + "gone/x.duf" << false;
        QTest::newRow("the folder itself as a file")
            << "lib/data/Brannoc/Quillon/custom.duf" << false;
        QTest::newRow("elsewhere") << "out/x.duf" << false;
        QTest::newRow("no folder") << "x.duf" << false;
        QTest::newRow("empty") << "" << false;
    }
    void onlyPosesInALibraryCanBeDeleted()
    {
        QFETCH(QString, path);
        const TempFolder home;
        const QString custom = home.path("lib/data/Brannoc/Quillon/custom");
        for (const QString& folder :
            {custom + "/sub", home.path("out"), home.path("else/data/Brannoc/Quillon"),
                home.path("lib/data/Brannoc/Quillon/customs"),
                home.path("lib/mydata/Brannoc/Quillon/custom")})
            QVERIFY(QDir().mkpath(folder));
        QVERIFY(QFile::link(home.path("lib"), home.path("alias")));
        QVERIFY(QFile::link(home.path("out"), custom + "/way"));
        QVERIFY(QFile::link(custom, custom + "/sub/back"));
        QVERIFY(QFile::link(home.path("out"), home.path("else/data/Brannoc/Quillon/custom")));
        const bool isWhole = path.contains(QLatin1Char('/'));
        QTEST(isDeletableCustomPose(isWhole ? home.path(path) : path), "expected");
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
