// Scripts: what they see of the host, results, errors with their lines, calls.
#include "frame_fixture.h"
#include "room_tests.h"

#include "dzaction.h"
#include "dzactionmgr.h"
#include "dzclassfactory.h"
#include "dzpane.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"
#include "dzscript.h"

#include <QLabel>
#include <QtTest>

class ScriptedPane : public DzPane {
    Q_OBJECT
    Q_ENUMS(Side)
public:
    enum Side { LeftSide = 3, RightSide = 5 };
    ScriptedPane()
        : DzPane("Scripted")
    {
    }
    QStringList browsed;

public slots:
    void browseToNativeFolder(const QString& path)
    {
        browsed.append(path);
    }
};

class ScriptedAction : public DzAction {
    Q_OBJECT
public:
    ScriptedAction()
        : DzAction("Scripted", QString())
    {
    }
    int executed = 0;

protected:
    void executeAction() override
    {
        ++executed;
    }
};

// Registers its class as the host's documentation shows it.
class ScriptedPaneFactory : public DzClassFactory {
public:
    ScriptedPaneFactory()
        : DzClassFactory(&ScriptedPane::staticMetaObject, DzGuid())
    {
    }
    using DzClassFactory::createInstance;
    QObject* createInstance() const override
    {
        return new ScriptedPane;
    }
    void registerClass(QScriptEngine* engine) const override
    {
        DzClassFactory::registerClass(engine);
        QScriptValue meta = engine->newQMetaObject(&ScriptedPane::staticMetaObject);
        engine->globalObject().setProperty("ScriptedPane", meta, QScriptValue::KeepExistingFlags);
        ++registered;
    }
    mutable int registered = 0;
};

struct ScriptFixture : HostFixture {
    ScriptedPaneFactory factory;
    ScriptedPane* pane;
    ScriptedAction* action;
    DzScript script;

    ScriptFixture()
        : pane(new ScriptedPane)
        , action(new ScriptedAction)
    {
        app.addClassFactory(&factory);
        window.setCentralWidget(new QLabel);
        window.show();
        window.getPaneMgr()->addPane(pane);
        window.getActionMgr()->registerAction(action);
    }
    QVariant run(const char* text)
    {
        script.clear();
        script.addLine(QString::fromLatin1(text));
        return script.execute() ? script.result() : QVariant(script.errorMessage());
    }
};

class TestScript : public QObject {
    Q_OBJECT
private slots:
    void linesAreIndentedAndRunTogether();
    void aSyntaxErrorNamesItsLine();
    void anExceptionNamesItsLine();
    void successClearsTheError();
    void clearForgetsEverything();
    void takesArguments();
    void callsAFunction();
    void callingWhatIsNoFunctionFails();
    void everyRunHasAFreshEngine();
    void reachesThePaneThroughTheMainWindow();
    void absentObjectsAreNull();
    void triggersActions();
    void worksWithPaneGroups();
    void groupSizesAreFunctions();
    void movesPanesBetweenGroups();
    void readsTheContentDirectories();
    void asksTheApplication();
    void theSameObjectIsTheSameWrapper();
    void registeredClassesAreGlobals();
    void printGoesToTheLog();
    void runsWithoutAnApplication();
    void failsWhenTheHostCallIsToldTo();
};

void TestScript::linesAreIndentedAndRunTogether()
{
    DzScript script;
    script.addLine("var sum = 0;");
    script.addLine("for (var i = 1; i <= 4; ++i)");
    script.addLine("sum += i;", 1);
    script.addLine("sum");
    QCOMPARE(script.getCode(),
        QString("var sum = 0;\nfor (var i = 1; i <= 4; ++i)\n    sum += i;\nsum"));
    QVERIFY(script.execute());
    QCOMPARE(script.result().toInt(), 10);
    QCOMPARE(script.errorLine(), -1);
    QVERIFY(script.errorMessage().isEmpty());
}

void TestScript::aSyntaxErrorNamesItsLine()
{
    DzScript script;
    script.addLine("var a = 1;");
    script.addLine("var b = (;");
    QVERIFY(!script.execute());
    QCOMPARE(script.errorLine(), 2);
    QVERIFY2(script.errorMessage().startsWith("SyntaxError"), qPrintable(script.errorMessage()));
    QVERIFY(!script.result().isValid());
}

void TestScript::anExceptionNamesItsLine()
{
    DzScript script;
    script.addLine("function f() {");
    script.addLine("throw new Error(\"no luck\");", 1);
    script.addLine("}");
    script.addLine("f();");
    QVERIFY(!script.execute());
    QCOMPARE(script.errorLine(), 2);
    QCOMPARE(script.errorMessage(), QString("Error: no luck"));
}

void TestScript::successClearsTheError()
{
    ScriptFixture host;
    host.run("nothing.at.all");
    QVERIFY(!host.script.errorMessage().isEmpty());
    QVERIFY(host.app.getLogLines().last().contains("line 1"));
    QCOMPARE(host.run("1 + 1").toInt(), 2);
    QVERIFY(host.script.errorMessage().isEmpty());
    QCOMPARE(host.script.errorLine(), -1);
}

void TestScript::clearForgetsEverything()
{
    ScriptFixture host;
    host.run("throw 7");
    host.script.clear();
    QVERIFY(host.script.getCode().isEmpty());
    QVERIFY(host.script.errorMessage().isEmpty());
    QVERIFY(host.script.execute()); // an empty script is fine
}

void TestScript::takesArguments()
{
    DzScript script;
    script.addLine("args[0] + \"/\" + args[1] + \"/\" + args.length");
    QVERIFY(script.execute(QVariantList() << "a" << 2));
    QCOMPARE(script.result().toString(), QString("a/2/2"));
}

void TestScript::callsAFunction()
{
    DzScript script;
    script.addLine("function add(a, b) { return a + b; }");
    QVERIFY(script.call("add", QVariantList() << 3 << 4));
    QCOMPARE(script.result().toInt(), 7);
}

void TestScript::callingWhatIsNoFunctionFails()
{
    DzScript script;
    script.addLine("var add = 5;");
    QVERIFY(!script.call("add", QVariantList()));
    QCOMPARE(script.errorMessage(), QString("add is not a function"));
    QVERIFY(!script.call("absent", QVariantList()));
}

void TestScript::everyRunHasAFreshEngine()
{
    ScriptFixture host;
    host.run("leak = 5");
    QCOMPARE(host.run("typeof leak").toString(), QString("undefined"));
    QCOMPARE(host.factory.registered, 2);
    QVERIFY(!host.factory.getScriptEngine()); // the engine is gone
}

void TestScript::reachesThePaneThroughTheMainWindow()
{
    ScriptFixture host;
    host.run(
        "MainWindow.getPaneMgr().findPane(\"ScriptedPane\").browseToNativeFolder(\"/a b/c\");");
    QVERIFY2(host.script.errorMessage().isEmpty(), qPrintable(host.script.errorMessage()));
    QCOMPARE(host.pane->browsed, QStringList("/a b/c"));
}

void TestScript::absentObjectsAreNull()
{
    ScriptFixture host;
    QCOMPARE(host.run("MainWindow.getPaneMgr().findPane(\"Absent\") === null").toBool(), true);
    QCOMPARE(host.run("MainWindow.getActionMgr().findAction(\"Absent\") === null").toBool(), true);
    QCOMPARE(host.run("Scene === null && UndoStack === null").toBool(), true);
}

void TestScript::triggersActions()
{
    ScriptFixture host;
    host.run("var m = MainWindow.getActionMgr(); m.findAction(\"ScriptedAction\").trigger();"
             "m.getAction(m.getNumActions() - 1).trigger();");
    QCOMPARE(host.action->executed, 2);
}

void TestScript::worksWithPaneGroups()
{
    ScriptFixture host;
    const QVariant result = host.run(
        "var m = MainWindow.getPaneMgr(); var before = m.getNumPaneGroups();"
        "var g = m.createEmptyPaneGroup(); g.resize(410, 805);"
        "m.findPane(\"ScriptedPane\").moveToGroup(g); g.minimize(); var min = g.isMinimized();"
        "g.restore();"
        "[before, m.getNumPaneGroups(), g.width(), g.height(), min, g.isMinimized(),"
        " m.getPaneGroup(0) === g, g.getNumPanes(), m.getPaneGroup(5) === null].join(\" \")");
    QCOMPARE(result.toString(), QString("0 1 410 805 true false true 1 true"));
}

void TestScript::groupSizesAreFunctions()
{
    ScriptFixture host;
    host.window.getPaneMgr()->createEmptyPaneGroup()->resize(321, 654);
    QCOMPARE(host.run("var g = MainWindow.getPaneMgr().getPaneGroup(0); typeof g.width +"
                      " \" \" + g.width() + \" \" + g.height()")
                 .toString(),
        QString("function 321 654"));
}

void TestScript::movesPanesBetweenGroups()
{
    ScriptFixture host;
    host.run("var m = MainWindow.getPaneMgr(); var p = m.findPane(\"ScriptedPane\"); p.showPane();"
             "p.moveToGroup(m.createEmptyPaneGroup()); m.showPane(\"ScriptedPane\");"
             "m[\"showPane(DzPane*)\"](p);"); // a pane is a name, too, to an older engine
    QVERIFY2(host.script.errorMessage().isEmpty(), qPrintable(host.script.errorMessage()));
    QVERIFY(host.pane->isVisible());
    QCOMPARE(host.run("var p = MainWindow.getPaneMgr().findPane(\"ScriptedPane\");"
                      "p.hidePane(); p.getPaneGroup().getPane(0) === p")
                 .toBool(),
        true);
    QVERIFY(!host.pane->isVisible());
}

void TestScript::readsTheContentDirectories()
{
    DzAppSetup setup;
    setup.contentDirectories << "/content/first/"
                             << "C:\\second"
                             << "/third//x";
    DzApp app(setup);
    DzScript script;
    script.addLine(
        "var list = []; for (var i = 0; i < ContentMgr.getNumContentDirectories(); ++i)");
    script.addLine("list.push(ContentMgr.getContentDirectoryPath(i));", 1);
    script.addLine("list.push(ContentMgr.getContentDirectoryPath(9)); list.join(\"|\")");
    QVERIFY(script.execute());
#ifdef Q_OS_WIN
    QCOMPARE(script.result().toString(), QString("/content/first|C:/second|/third/x|"));
#else
    QCOMPARE(script.result().toString(), QString("/content/first|C:\\second|/third/x|"));
#endif
}

void TestScript::asksTheApplication()
{
    ScriptFixture host;
    QCOMPARE(host.run("App.getTempPath()").toString(), host.home.path("temp"));
    QCOMPARE(host.run("App.getInterface() === MainWindow").toBool(), true);
    host.run("App.showURL(\"https://example.com/a?b=c\"); App.showURL(\"no address\");");
    QCOMPARE(host.app.getShownUrls(), QStringList("https://example.com/a?b=c"));
}

void TestScript::theSameObjectIsTheSameWrapper()
{
    ScriptFixture host;
    host.run("var m = MainWindow.getPaneMgr(); m.findPane(\"ScriptedPane\").note = 5;"
             "if (m.findPane(\"ScriptedPane\").note !== 5) throw \"another wrapper\"");
    QVERIFY2(host.script.errorMessage().isEmpty(), qPrintable(host.script.errorMessage()));
}

void TestScript::registeredClassesAreGlobals()
{
    ScriptFixture host;
    QCOMPARE(host.run("ScriptedPane.LeftSide + ScriptedPane.RightSide").toInt(), 8);
    QCOMPARE(host.run("ScriptedPane.LeftSide = 7; ScriptedPane.LeftSide").toInt(), 3);
}

void TestScript::printGoesToTheLog()
{
    ScriptFixture host;
    host.run("print(\"one\", 2, true)");
    QCOMPARE(host.app.getLogLines().last(), QString("one 2 true"));
}

void TestScript::runsWithoutAnApplication()
{
    QVERIFY(!dzApp);
    DzScript script;
    script.addLine("print(\"unheard\"); MainWindow === null && App === null");
    QVERIFY(script.execute());
    QCOMPARE(script.result().toBool(), true);
}

static bool failExecute(const char* name, const void*)
{
    return qstrcmp(name, "execute") == 0;
}

void TestScript::failsWhenTheHostCallIsToldTo()
{
    DzScript script;
    script.addLine("1");
    dzHostCallHook = failExecute;
    const bool ran = script.execute();
    dzHostCallHook = nullptr;
    QVERIFY(!ran);
    QVERIFY(!script.errorMessage().isEmpty());
    QVERIFY(script.execute());
}

QUILLON_TEST(TestScript)
#include "test_script.moc"
