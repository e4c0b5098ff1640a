// Loads the module as a host does. Nothing of the plug-in is linked into this program.
#include "frame_fixture.h"
#include "room_tests.h"

#include "dzclassfactory.h"
#include "dzplugin.h"
#include "dzversion.h"

#include <QLibrary>
#include <QProcess>
#include <QScriptEngine>
#include <QtTest>

#define QUILLON_MODULE QUILLON_BINARY_DIR "/plugins/Quillon.so"

typedef DzVersion (*SdkVersionFunction)();
typedef DzPlugin* (*DefinitionFunction)();

// A copy of the module under a name of its own, so that it is another library to the loader.
class LoadedModule {
public:
    explicit LoadedModule(const TempFolder& folder)
    {
        static int made = 0;
        const QString path = folder.path(QString::fromLatin1("Quillon%1.so").arg(++made));
        QFile::copy(QLatin1String(QUILLON_MODULE), path);
        m_library.setFileName(path);
        m_library.load();
    }
    QString error() const
    {
        return m_library.errorString();
    }
    DzPlugin* plugin()
    {
        DefinitionFunction f = DefinitionFunction(m_library.resolve("getPluginDefinition"));
        return f ? f() : nullptr;
    }
    DzVersion sdkVersion()
    {
        SdkVersionFunction f = SdkVersionFunction(m_library.resolve("getSDKVersion"));
        return f ? f() : DzVersion();
    }

private:
    QLibrary m_library; // stays loaded
};

class TestPluginDefinition : public QObject {
    Q_OBJECT

private:
    TempFolder m_folder;

private slots:
    void loadsWithoutAnApplication()
    {
        QVERIFY(!dzApp);
        LoadedModule module(m_folder);
        DzPlugin* plugin = module.plugin();
        QVERIFY2(plugin, qPrintable(module.error()));
        QCOMPARE(plugin->getDescription(),
            QString("<a href=\"/Quillon/index.htm\">Documentation</a><br><br>"
                    "This is the Quillon plugin."));
        QVERIFY(module.plugin() == plugin);
    }

    void tellsNameAuthorVersionAndDescription()
    {
        HostFixture host;
        LoadedModule module(m_folder);
        DzPlugin* plugin = module.plugin();
        QVERIFY2(plugin, qPrintable(module.error()));
        QCOMPARE(plugin->getName(), QString("Quillon"));
        QCOMPARE(plugin->getAuthor(), QString("Brannoc Ltd"));
        QCOMPARE(plugin->getVersionString(), QString("0.93.0.0"));
        QCOMPARE(plugin->getDescription(),
            QString("<a href=\"%1/Quillon/index.htm\">Documentation</a><br><br>"
                    "This is the Quillon plugin.")
                .arg(host.home.path("docs")));
    }

    void isBuiltAgainstSdk4_5_0_100()
    {
        LoadedModule module(m_folder);
        QVERIFY(module.sdkVersion() == DzVersion(4, 5, 0, 100));
    }

    void bringsThreeFactoriesInOrder()
    {
        LoadedModule module(m_folder);
        DzPlugin* plugin = module.plugin();
        QCOMPARE(plugin->getNumClassFactories(), 3);
        QCOMPARE(plugin->getClassFactory(0)->className(), QString("DzQuillonPane"));
        QCOMPARE(plugin->getClassFactory(1)->className(), QString("DzQuillonPaneAction"));
        QCOMPARE(plugin->getClassFactory(2)->className(), QString("QuillonAboutAction"));
    }

    void loadingTwiceKeepsTheIdsOfThePointerTypes()
    {
        LoadedModule first(m_folder);
        LoadedModule second(m_folder);
        QVERIFY(first.plugin() && second.plugin() && first.plugin() != second.plugin());
        QScriptEngine engine;
        for (int i = 0; i < 3; ++i)
            first.plugin()->getClassFactory(i)->registerClass(&engine);
        const int id = QMetaType::type("DzQuillonPane*");
        QVERIFY(id != 0);
        for (int i = 0; i < 3; ++i)
            second.plugin()->getClassFactory(i)->registerClass(&engine);
        QCOMPARE(QMetaType::type("DzQuillonPane*"), id);
    }

    void exportsTheTwoEntryPointsAndNothingElse()
    {
        QProcess nm;
        nm.start("nm",
            QStringList() << "-D"
                          << "--defined-only" << QUILLON_MODULE);
        QVERIFY(nm.waitForFinished());
        QCOMPARE(nm.exitCode(), 0);
        QStringList names;
        foreach (const QString& line, QString::fromLatin1(nm.readAllStandardOutput()).split('\n'))
            if (!line.isEmpty())
                names.append(line.section(' ', -1));
        names.sort();
        QCOMPARE(names,
            QStringList() << "getPluginDefinition"
                          << "getSDKVersion");
    }
};

QUILLON_TEST(TestPluginDefinition)
#include "test_plugin_definition.moc"
