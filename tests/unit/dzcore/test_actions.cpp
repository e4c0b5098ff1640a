// Actions: triggering, finding, icons, and the action that shows a pane.
#include "frame_fixture.h"
#include "room_tests.h"

#include "dzaction.h"
#include "dzactionmgr.h"
#include "dzclassfactory.h"
#include "dzpane.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"
#include "dzplugin.h"

#include <QtTest>

class CountingAction : public DzAction {
    Q_OBJECT
public:
    CountingAction()
        : DzAction("&Count", "Counts what it is asked to")
    {
    }
    int executed = 0;

protected:
    void executeAction() override
    {
        ++executed;
    }
};

class SamplePane : public DzPane {
    Q_OBJECT
public:
    SamplePane()
        : DzPane("Sample")
    {
    }
};

class SamplePaneAction : public DzPaneAction {
    Q_OBJECT
public:
    SamplePaneAction()
        : DzPaneAction("SamplePane")
    {
    }
};

template <class T> class FactoryOf : public DzClassFactory {
public:
    FactoryOf()
        : DzClassFactory(&T::staticMetaObject, DzGuid())
    {
    }
    using DzClassFactory::createInstance;
    QObject* createInstance() const override
    {
        return new T;
    }
};

struct ActionFixture : HostFixture {
    DzActionMgr* actions;
    DzPaneMgr* panes;
    FactoryOf<SamplePane> paneFactory;

    ActionFixture()
        : actions(window.getActionMgr())
        , panes(window.getPaneMgr())
    {
        app.addClassFactory(&paneFactory);
        window.show();
    }
};

class TestActions : public QObject {
    Q_OBJECT
private slots:
    void triggeringExecutes();
    void aDisabledActionDoesNotExecute();
    void tellsWhatItIsFor();
    void anIconFileIsTheIcon();
    void actionsAreFoundByClassName();
    void aDeletedActionIsForgotten();
    void thePaneActionMakesItsPaneAndToggles();
    void thePaneActionShowsATabFromBehind();
    void theCheckMarkAndTheTextFollowThePane();
    void thePaneActionWaitsForANewPane();
    void thePaneActionOfAnUnknownPaneDoesNothing();
    void aPluginsActionsAreMadeFromItsFactories();
    void failsWhenTheHostCallIsToldTo();
};

void TestActions::triggeringExecutes()
{
    CountingAction action;
    action.trigger();
    action.trigger();
    QCOMPARE(action.executed, 2);
}

void TestActions::aDisabledActionDoesNotExecute()
{
    CountingAction action;
    action.setEnabled(false);
    action.trigger();
    QCOMPARE(action.executed, 0);
}

void TestActions::tellsWhatItIsFor()
{
    CountingAction action;
    QCOMPARE(action.text(), QString("&Count"));
    QCOMPARE(action.getDescription(), QString("Counts what it is asked to"));
    QCOMPARE(action.className(), QString("CountingAction"));
    QVERIFY(action.getDefaultMenuPath().isEmpty()); // in no menu unless it says so
    QVERIFY(action.getActionGroup().isEmpty());
    QVERIFY(!SamplePaneAction().getDefaultMenuPath().isEmpty());
}

void TestActions::anIconFileIsTheIcon()
{
    TempFolder folder;
    QImage image(24, 24, QImage::Format_ARGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(folder.path("icon.png")));
    CountingAction action;
    QVERIFY(action.icon().isNull());
    action.setIconFile(folder.path("icon.png"));
    QCOMPARE(action.getIconFile(), folder.path("icon.png"));
    QCOMPARE(action.icon().pixmap(24, 24).toImage().pixel(12, 12), qRgb(255, 0, 0));
    QVERIFY(action.setProperty("iconFile", QString())); // scripts write the property
    QVERIFY(action.icon().isNull());
}

void TestActions::actionsAreFoundByClassName()
{
    ActionFixture host;
    QCOMPARE(host.actions->getNumActions(), 0);
    CountingAction* action = new CountingAction;
    host.actions->registerAction(action);
    host.actions->registerAction(action);
    QCOMPARE(host.actions->getNumActions(), 1);
    QCOMPARE(host.actions->getAction(0), static_cast<DzAction*>(action));
    QVERIFY(!host.actions->getAction(1));
    QVERIFY(!host.actions->getAction(-1));
    QCOMPARE(host.actions->findAction("CountingAction"), static_cast<DzAction*>(action));
    QVERIFY(!host.actions->findAction("DzAction"));
    QVERIFY(!host.actions->findAction("&Count"));
}

void TestActions::aDeletedActionIsForgotten()
{
    ActionFixture host;
    CountingAction* action = new CountingAction;
    host.actions->registerAction(action);
    QSignalSpy spy(host.actions, SIGNAL(actionListChanged()));
    delete action;
    QCOMPARE(spy.count(), 1);
    QCOMPARE(host.actions->getNumActions(), 0);
    QVERIFY(!host.actions->findAction("CountingAction"));
}

void TestActions::thePaneActionMakesItsPaneAndToggles()
{
    ActionFixture host;
    SamplePaneAction* action = new SamplePaneAction;
    host.actions->registerAction(action);
    QVERIFY(!host.panes->findPane("SamplePane"));
    action->trigger();
    DzPane* pane = host.panes->findPane("SamplePane");
    QVERIFY(pane);
    QVERIFY(pane->isVisible());
    QVERIFY(action->isChecked());
    action->trigger();
    QVERIFY(!pane->isVisible());
    QVERIFY(!action->isChecked());
    action->trigger();
    QVERIFY(pane->isVisible());
    QCOMPARE(host.panes->getNumPanes(), 1);
}

void TestActions::thePaneActionShowsATabFromBehind()
{
    ActionFixture host;
    SamplePaneAction* action = new SamplePaneAction;
    host.actions->registerAction(action);
    action->trigger();
    DzPane* pane = host.panes->findPane("SamplePane");
    DzPane* front = new DzPane("Front");
    front->moveToGroup(pane->getPaneGroup());
    QVERIFY(!pane->isVisible());
    QVERIFY(!action->isChecked());
    action->trigger();
    QVERIFY(pane->isVisible());
    QVERIFY(action->isChecked());
}

void TestActions::theCheckMarkAndTheTextFollowThePane()
{
    ActionFixture host;
    DzPane* pane = host.panes->createPane("SamplePane");
    SamplePaneAction* action = new SamplePaneAction;
    host.actions->registerAction(action);
    QCOMPARE(action->text(), QString("Sample"));
    QVERIFY(!action->isChecked());
    pane->showPane();
    QVERIFY(action->isChecked());
    pane->hidePane();
    QVERIFY(!action->isChecked());
    pane->setLabel("Renamed");
    QCOMPARE(action->text(), QString("Renamed"));
}

void TestActions::thePaneActionWaitsForANewPane()
{
    ActionFixture host;
    SamplePaneAction* action = new SamplePaneAction;
    host.actions->registerAction(action);
    action->trigger();
    delete host.panes->findPane("SamplePane");
    QVERIFY(!action->isChecked());
    DzPane* second = host.panes->createPane("SamplePane");
    second->showPane();
    QVERIFY(action->isChecked());
}

void TestActions::thePaneActionOfAnUnknownPaneDoesNothing()
{
    ActionFixture host;
    DzPaneAction* action = new DzPaneAction("NoSuchPane");
    host.actions->registerAction(action);
    action->trigger();
    QVERIFY(!action->isChecked());
    QCOMPARE(host.panes->getNumPanes(), 0);
}

void TestActions::aPluginsActionsAreMadeFromItsFactories()
{
    ActionFixture host;
    DzPlugin plugin("Sample");
    FactoryOf<SamplePane> pane;
    FactoryOf<SamplePaneAction> paneAction;
    FactoryOf<CountingAction> action;
    plugin.addClassFactory(&pane);
    plugin.addClassFactory(&paneAction);
    plugin.addClassFactory(&action);
    plugin.addClassFactory(&action);
    plugin.addClassFactory(nullptr);
    QCOMPARE(plugin.getNumClassFactories(), 3);
    QCOMPARE(host.actions->addPluginActions(&plugin), 2);
    QVERIFY(host.actions->findAction("SamplePaneAction"));
    QVERIFY(host.actions->findAction("CountingAction"));
    host.actions->registerAction(new DzPaneAction("Another"));
    host.actions->removePluginActions(&plugin);
    QCOMPARE(host.actions->getNumActions(), 1);
    QVERIFY(host.actions->findAction("DzPaneAction"));
}

static bool failFindAction(const char* name, const void*)
{
    return qstrcmp(name, "findAction") == 0;
}

void TestActions::failsWhenTheHostCallIsToldTo()
{
    ActionFixture host;
    host.actions->registerAction(new CountingAction);
    dzHostCallHook = failFindAction;
    DzAction* found = host.actions->findAction("CountingAction");
    dzHostCallHook = nullptr;
    QVERIFY(!found);
    QVERIFY(host.actions->findAction("CountingAction"));
}

QUILLON_TEST(TestActions)
#include "test_actions.moc"
