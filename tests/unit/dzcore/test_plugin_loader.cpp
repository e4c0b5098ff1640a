// Loading plug-in files: what is refused and why, and what a loaded one brings.
#include "frame_fixture.h"
#include "room_tests.h"

#include "dzaction.h"
#include "dzactionmgr.h"
#include "dzclassfactory.h"
#include "dzplugin.h"
#include "dzpluginloader.h"

#include <QtTest>

static const char kModule[] = QUILLON_BINARY_DIR "/tests/modules/sample_plugin.so";
static const char kFutureModule[] = QUILLON_BINARY_DIR "/tests/modules/future_plugin.so";
static const char kPlainLibrary[] = QUILLON_BINARY_DIR "/lib/libdzcore.so";

class TestPluginLoader : public QObject {
    Q_OBJECT
private slots:
    void refusesWithOneLine_data();
    void refusesWithOneLine();
    void loadsAModule();
    void loadsWithoutAnApplication();
    void itsActionsAreMade();
    void unloadsAndLoadsAgain();
    void aRefusedFileIsNotKnownToTheApplication();
};

void TestPluginLoader::refusesWithOneLine_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("content"); // null: as it is
    QTest::addColumn<QString>("reason"); // the text after the file name begins so
    QTest::newRow("missing file") << "absent.so" << QByteArray() << "no such file";
    QTest::newRow("a folder") << "." << QByteArray() << "not a file";
    QTest::newRow("text file") << "text.so" << QByteArray("no library at all\n")
                               << "not a library that can be loaded (";
    QTest::newRow("empty file") << "empty.so" << QByteArray("")
                                << "not a library that can be loaded (";
    QTest::newRow("library without entries")
        << kPlainLibrary << QByteArray() << "not a plug-in, it has no getSDKVersion()";
    QTest::newRow("newer interface") << kFutureModule << QByteArray()
                                     << "made for version 4.5.0.101 of the interface, this is "
                                        "4.5.0.100";
}

void TestPluginLoader::refusesWithOneLine()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    TempFolder folder;
    const QString path = QDir::cleanPath(QDir(folder.path()).absoluteFilePath(file));
    if (!content.isNull())
        writeFile(path, content);
    DzPluginLoader loader(path);
    QString why;
    QVERIFY(!loader.load(&why));
    QVERIFY2(why.startsWith("plug-in " + path + ": " + reason), qPrintable(why));
    QVERIFY(!why.contains('\n'));
    QVERIFY(!loader.getPlugin());
    QVERIFY(!loader.unload());
    QVERIFY(!loader.load(nullptr)); // nobody asks why
}

void TestPluginLoader::loadsAModule()
{
    HostFixture host;
    DzPluginLoader loader(kModule);
    QString why;
    QVERIFY2(loader.load(&why), qPrintable(why));
    QVERIFY(loader.load(&why)); // again is no error
    DzPlugin* plugin = loader.getPlugin();
    QCOMPARE(plugin->getName(), QString("Sample"));
    QCOMPARE(plugin->getAuthor(), QString("Somebody"));
    QCOMPARE(plugin->getVersionString(), QString("1.2.3.4"));
    QCOMPARE(plugin->getFilename(), loader.getFile());
    QCOMPARE(int(plugin->getStatus()), int(DzPlugin::Loaded));
    QVERIFY(loader.getSDKVersion() == DzVersion(4, 5, 0, 100));
    QCOMPARE(host.app.getNumPlugins(), 1);
    QCOMPARE(host.app.getPlugin(0), plugin);
    const DzClassFactory* factory = host.app.findClassFactory("SampleAction");
    QVERIFY(factory);
    QCOMPARE(factory->getGuid().toString(), QString("0b0f6f7e-5a3c-4d21-9d60-3f2f3f8b9c11"));
    QVERIFY(!host.app.findClassFactory("DzAction"));
    QVERIFY(loader.unload());
}

void TestPluginLoader::loadsWithoutAnApplication()
{
    QVERIFY(!dzApp);
    DzPluginLoader loader(kModule);
    QString why;
    QVERIFY2(loader.load(&why), qPrintable(why));
    QVERIFY(loader.unload());
}

void TestPluginLoader::itsActionsAreMade()
{
    HostFixture host;
    DzPluginLoader loader(kModule);
    QVERIFY(loader.load(nullptr));
    DzActionMgr* actions = host.window.getActionMgr();
    QCOMPARE(actions->addPluginActions(loader.getPlugin()), 1);
    DzAction* action = actions->findAction("SampleAction");
    QVERIFY(action);
    QCOMPARE(action->getDescription(), QString("An action from a module"));
    actions->removePluginActions(loader.getPlugin());
    QVERIFY(!actions->findAction("SampleAction"));
    QVERIFY(loader.unload());
}

void TestPluginLoader::unloadsAndLoadsAgain()
{
    HostFixture host;
    DzPluginLoader loader(kModule);
    for (int i = 0; i < 3; ++i) {
        QVERIFY(loader.load(nullptr));
        QVERIFY(host.app.findClassFactory("SampleAction"));
        QVERIFY(loader.unload());
        QVERIFY(!loader.getPlugin());
        QCOMPARE(host.app.getNumPlugins(), 0);
        QVERIFY(!host.app.findClassFactory("SampleAction"));
    }
}

void TestPluginLoader::aRefusedFileIsNotKnownToTheApplication()
{
    HostFixture host;
    DzPluginLoader loader(kFutureModule);
    QVERIFY(!loader.load(nullptr));
    QCOMPARE(host.app.getNumPlugins(), 0);
    QVERIFY(loader.getSDKVersion() == DzVersion());
}

QUILLON_TEST(TestPluginLoader)
#include "test_plugin_loader.moc"
