// Panes, groups and docking, with real windows of the offscreen platform.
#include "frame_fixture.h"
#include "room_tests.h"

#include "dzclassfactory.h"
#include "dzpane.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"

#include <QDockWidget>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QtTest>

Q_DECLARE_METATYPE(DzPaneGroup*)

class OnePane : public DzPane {
    Q_OBJECT
public:
    OnePane()
        : DzPane("One")
    {
    }
};

class OtherPane : public DzPane {
    Q_OBJECT
public:
    OtherPane()
        : DzPane("Other")
    {
    }
};

// Docks itself into the first group from inside its first show event, as plug-ins do.
class SelfDockingPane : public DzPane {
    Q_OBJECT
public:
    explicit SelfDockingPane(DzPaneMgr* panes)
        : DzPane("Self")
        , m_panes(panes)
    {
    }
    int moves = 0;

protected:
    void showEvent(QShowEvent* event) override
    {
        DzPane::showEvent(event);
        if (m_docked)
            return;
        m_docked = true;
        ++moves;
        moveToGroup(m_panes->getPaneGroup(0));
        if (getPaneGroup()->isMinimized())
            getPaneGroup()->restore();
    }

private:
    DzPaneMgr* m_panes;
    bool m_docked = false;
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

// A window with a group docked on the left that holds one pane.
struct DockFixture : HostFixture {
    DzPaneMgr* panes;
    DzPaneGroup* left;
    OnePane* one;

    DockFixture()
        : panes(window.getPaneMgr())
        , left(panes->createEmptyPaneGroup())
        , one(new OnePane)
    {
        window.QWidget::resize(1000, 700);
        window.setCentralWidget(new QLabel);
        window.show();
        left->dock(Qt::LeftDockWidgetArea);
        one->moveToGroup(left);
        QCoreApplication::processEvents();
    }
};

class TestPanesDocking : public QObject {
    Q_OBJECT
private slots:
    void aNewPaneHasNoGroup();
    void showingAPaneGivesItAFloatingGroup();
    void anExplicitSizeSurvivesTheFirstShow();
    void panesAreFoundByClassName();
    void hiddenGroupsCount();
    void anEmptyGroupIsHiddenUntilAPaneComes();
    void groupsMadeForOnePaneGoWithIt();
    void tabsAppearForASecondPane();
    void hidingAPaneTakesItsTabOnly();
    void hidingTheLastPaneHidesTheGroup();
    void movingEmitsTheGroupsBeforeAndNow();
    void movingToNowhereOrToTheSameGroupDoesNothing();
    void visibilityFollowsTheTabInFront();
    void dockedGroupsLieInTheirArea();
    void undockedGroupsFloat();
    void resizeActsOnFloatingGroupsOnly();
    void resizeWorksBeforeTheFirstShow();
    void minimisingCollapsesAColumnAndRestoringGivesItsWidthBack();
    void minimisingAFloatingGroupLeavesAStrip();
    void theStripRestores();
    void showPaneRestoresAMinimisedGroup();
    void movingIntoAMinimisedGroupLeavesItMinimised();
    void aPaneMayMoveItselfFromItsShowEvent();
    void aPaneMayMoveItselfIntoAMinimisedGroup();
    void aPaneMayMoveItselfOnSwitchingTabs();
    void labelsAreTitles();
    void panesByNameComeFromFactories();
    void unknownPanesAreErrors();
    void aDeletedPaneLeavesEverything();
    void theWindowDestroysItsPanes();
    void aPaneWithoutAWindowShowsItself();
    void failsWhenTheHostCallIsToldTo();
};

void TestPanesDocking::aNewPaneHasNoGroup()
{
    HostFixture host;
    OnePane pane;
    QVERIFY(!pane.getPaneGroup());
    QCOMPARE(host.window.getPaneMgr()->getNumPanes(), 0);
}

void TestPanesDocking::showingAPaneGivesItAFloatingGroup()
{
    DockFixture host;
    OtherPane* pane = new OtherPane;
    QCOMPARE(host.panes->showPane(pane), 0);
    DzPaneGroup* group = pane->getPaneGroup();
    QVERIFY(group);
    QVERIFY(!group->isDocked());
    QVERIFY(group->isShown());
    QVERIFY(pane->isVisible());
    QCOMPARE(host.panes->getNumPaneGroups(), 2);
    QCOMPARE(host.panes->getPaneGroup(0), host.left);
    QCOMPARE(host.panes->getPaneGroup(1), group);
    QVERIFY(!host.panes->getPaneGroup(2));
    QVERIFY(!host.panes->getPaneGroup(-1));
}

void TestPanesDocking::anExplicitSizeSurvivesTheFirstShow()
{
    DockFixture host;
    OtherPane* pane = new OtherPane;
    pane->resize(450, 850);
    pane->showPane();
    QCoreApplication::processEvents();
    QCOMPARE(pane->getPaneGroup()->width(), 450);
    QCOMPARE(pane->getPaneGroup()->height(), 850);
}

void TestPanesDocking::panesAreFoundByClassName()
{
    DockFixture host;
    QCOMPARE(host.panes->findPane("OnePane"), static_cast<DzPane*>(host.one));
    QVERIFY(!host.panes->findPane("OtherPane"));
    QVERIFY(!host.panes->findPane("One"));
    QVERIFY(!host.panes->findPane("DzPane"));
    OnePane* second = new OnePane;
    second->moveToGroup(host.left);
    QCOMPARE(host.panes->findPane("OnePane"), static_cast<DzPane*>(host.one)); // the oldest
}

void TestPanesDocking::hiddenGroupsCount()
{
    DockFixture host;
    host.panes->createEmptyPaneGroup();
    host.one->hidePane();
    QVERIFY(!host.left->isShown());
    QCOMPARE(host.panes->getNumPaneGroups(), 2);
}

void TestPanesDocking::anEmptyGroupIsHiddenUntilAPaneComes()
{
    DockFixture host;
    DzPaneGroup* group = host.panes->createEmptyPaneGroup();
    QVERIFY(!group->isShown());
    QVERIFY(!group->getCurrentPane());
    OtherPane* pane = new OtherPane;
    pane->moveToGroup(group);
    QVERIFY(group->isShown());
    QVERIFY(pane->isVisible());
    pane->moveToGroup(host.left);
    QVERIFY(!group->isShown());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(host.panes->getNumPaneGroups(), 2); // it stays
}

void TestPanesDocking::groupsMadeForOnePaneGoWithIt()
{
    DockFixture host;
    OtherPane* pane = new OtherPane;
    pane->showPane();
    QCOMPARE(host.panes->getNumPaneGroups(), 2);
    QPointer<DzPaneGroup> own = pane->getPaneGroup();
    QPointer<QDockWidget> frame = own->getFrame();
    pane->moveToGroup(host.left);
    QCOMPARE(host.panes->getNumPaneGroups(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!own);
    QVERIFY(!frame);
}

static QTabBar* tabBarOf(DzPaneGroup* group)
{
    return group->findChild<QTabBar*>();
}

void TestPanesDocking::tabsAppearForASecondPane()
{
    DockFixture host;
    QVERIFY(!tabBarOf(host.left)->isVisible());
    OtherPane* other = new OtherPane;
    other->moveToGroup(host.left);
    QVERIFY(tabBarOf(host.left)->isVisible());
    QCOMPARE(tabBarOf(host.left)->count(), 2);
    QCOMPARE(host.left->getNumPanes(), 2);
    QCOMPARE(host.left->getPane(0), static_cast<DzPane*>(host.one));
    QCOMPARE(host.left->getPane(1), static_cast<DzPane*>(other));
    QVERIFY(!host.left->getPane(2));
    QCOMPARE(host.left->getCurrentPane(), static_cast<DzPane*>(other)); // the newcomer is in front
}

void TestPanesDocking::hidingAPaneTakesItsTabOnly()
{
    DockFixture host;
    OtherPane* other = new OtherPane;
    other->moveToGroup(host.left);
    QCOMPARE(host.panes->hidePane("OtherPane"), 0);
    QVERIFY(!other->isVisible());
    QVERIFY(!host.left->hasTab(other));
    QCOMPARE(other->getPaneGroup(), host.left);
    QVERIFY(host.one->isVisible());
    QCOMPARE(host.panes->showPane("OtherPane"), 0);
    QVERIFY(other->isVisible());
    QVERIFY(!host.one->isVisible());
}

void TestPanesDocking::hidingTheLastPaneHidesTheGroup()
{
    DockFixture host;
    host.one->hidePane();
    QVERIFY(!host.left->isShown());
    QVERIFY(!host.one->isVisible());
    host.one->showPane();
    QVERIFY(host.left->isShown());
    QVERIFY(host.one->isVisible());
    QVERIFY(host.left->isDocked());
}

void TestPanesDocking::movingEmitsTheGroupsBeforeAndNow()
{
    qRegisterMetaType<DzPaneGroup*>("DzPaneGroup*");
    DockFixture host;
    QSignalSpy spy(host.one, SIGNAL(paneGroupChanged(DzPaneGroup*, DzPaneGroup*)));
    DzPaneGroup* group = host.panes->createEmptyPaneGroup();
    host.one->moveToGroup(group);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).value<DzPaneGroup*>(), host.left);
    QCOMPARE(spy.at(0).at(1).value<DzPaneGroup*>(), group);
}

void TestPanesDocking::movingToNowhereOrToTheSameGroupDoesNothing()
{
    qRegisterMetaType<DzPaneGroup*>("DzPaneGroup*");
    DockFixture host;
    QSignalSpy moved(host.one, SIGNAL(paneGroupChanged(DzPaneGroup*, DzPaneGroup*)));
    host.one->moveToGroup(nullptr);
    host.one->moveToGroup(host.left);
    QCOMPARE(host.one->getPaneGroup(), host.left);
    QCOMPARE(host.left->getNumPanes(), 1);
    QCOMPARE(moved.count(), 0);
}

void TestPanesDocking::visibilityFollowsTheTabInFront()
{
    DockFixture host;
    QSignalSpy one(host.one, SIGNAL(visibilityChanged(bool)));
    OtherPane* other = new OtherPane;
    QSignalSpy another(other, SIGNAL(visibilityChanged(bool)));
    other->moveToGroup(host.left);
    QCOMPARE(one.count(), 1);
    QCOMPARE(one.takeFirst().at(0).toBool(), false);
    QCOMPARE(another.count(), 1);
    QCOMPARE(another.takeFirst().at(0).toBool(), true);
    host.panes->showPane(host.one);
    QCOMPARE(one.count(), 1);
    QCOMPARE(one.takeFirst().at(0).toBool(), true);
    QCOMPARE(another.count(), 1);
    another.clear();
    // A move from one visible place to another is no change of visibility.
    host.one->moveToGroup(host.panes->createEmptyPaneGroup());
    QVERIFY(host.one->isVisible());
    QCOMPARE(one.count(), 0);
    QCOMPARE(another.count(), 1);
    QCOMPARE(another.takeFirst().at(0).toBool(), true);
}

void TestPanesDocking::dockedGroupsLieInTheirArea()
{
    DockFixture host;
    QVERIFY(host.left->isDocked());
    QCOMPARE(host.left->getDockArea(), Qt::LeftDockWidgetArea);
    QCOMPARE(host.window.dockWidgetArea(host.left->getFrame()), Qt::LeftDockWidgetArea);
    QCOMPARE(host.left->window(), static_cast<QWidget*>(&host.window));
    QVERIFY(host.left->mapTo(&host.window, QPoint()).x() < 20);
    host.left->dock(Qt::BottomDockWidgetArea);
    QCOMPARE(host.left->getDockArea(), Qt::BottomDockWidgetArea);
    QVERIFY(host.left->isShown());
}

void TestPanesDocking::undockedGroupsFloat()
{
    DockFixture host;
    QSignalSpy spy(host.left, SIGNAL(dockedChanged(bool)));
    host.left->undock();
    QVERIFY(!host.left->isDocked());
    QCOMPARE(host.left->getDockArea(), Qt::NoDockWidgetArea);
    QVERIFY(host.left->window() != &host.window);
    QVERIFY(host.one->isVisible());
    host.left->dock();
    QCOMPARE(host.left->getDockArea(), Qt::LeftDockWidgetArea);
    QCOMPARE(spy.count(), 2);
}

void TestPanesDocking::resizeActsOnFloatingGroupsOnly()
{
    DockFixture host;
    const QSize docked = host.left->size();
    host.left->resize(400, 800);
    QCOMPARE(host.left->size(), docked);
    host.left->undock();
    host.left->resize(400, 800);
    QCOMPARE(host.left->size(), QSize(400, 800));
    QCoreApplication::processEvents();
    QCOMPARE(host.left->width(), 400);
    QCOMPARE(host.left->height(), 800);
    QCOMPARE(host.one->width(), 400); // the pane fills its group
}

void TestPanesDocking::resizeWorksBeforeTheFirstShow()
{
    DockFixture host;
    DzPaneGroup* group = host.panes->createEmptyPaneGroup();
    group->resize(420, 810);
    QCOMPARE(group->width(), 420);
    QCOMPARE(group->height(), 810);
    host.one->moveToGroup(group);
    QCoreApplication::processEvents();
    QCOMPARE(group->size(), QSize(420, 810));
    QCOMPARE(host.one->width(), 420);
}

void TestPanesDocking::minimisingCollapsesAColumnAndRestoringGivesItsWidthBack()
{
    DockFixture host;
    host.left->setMinimumWidth(260); // as if the user had drawn it wider
    QCoreApplication::processEvents();
    host.left->setMinimumWidth(0);
    const int before = host.left->width();
    QCOMPARE(before, 260);
    QSignalSpy spy(host.left, SIGNAL(minimizedChanged(bool)));
    host.left->minimize();
    host.left->minimize(); // twice is once
    QCoreApplication::processEvents();
    QVERIFY(host.left->isMinimized());
    QVERIFY(!host.one->isVisible());
    QVERIFY2(host.left->width() < 40, qPrintable(QString::number(host.left->width())));
    host.left->restore();
    host.left->restore();
    QCoreApplication::processEvents();
    QVERIFY(!host.left->isMinimized());
    QVERIFY(host.one->isVisible());
    QCOMPARE(host.left->width(), before);
    QCOMPARE(spy.count(), 2);
}

void TestPanesDocking::minimisingAFloatingGroupLeavesAStrip()
{
    DockFixture host;
    host.left->undock();
    host.left->resize(350, 500);
    host.left->toggleMinimized();
    QCoreApplication::processEvents();
    QVERIFY2(host.left->height() < 40, qPrintable(QString::number(host.left->height())));
    host.left->resize(400, 600); // taken when it is restored
    QVERIFY(host.left->height() < 40);
    host.left->toggleMinimized();
    QCoreApplication::processEvents();
    QCOMPARE(host.left->size(), QSize(400, 600));
}

void TestPanesDocking::theStripRestores()
{
    DockFixture host;
    host.left->minimize();
    QCoreApplication::processEvents();
    QAbstractButton* strip = nullptr;
    const QList<QAbstractButton*> buttons = host.left->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (button->parentWidget() == host.left && button->isVisible())
            strip = button;
    }
    QVERIFY(strip);
    QCOMPARE(strip->text(), QString("One"));
    QTest::mouseClick(strip, Qt::LeftButton);
    QVERIFY(!host.left->isMinimized());
}

void TestPanesDocking::showPaneRestoresAMinimisedGroup()
{
    DockFixture host;
    host.left->minimize();
    host.one->showPane();
    QVERIFY(!host.left->isMinimized());
    QVERIFY(host.one->isVisible());
}

void TestPanesDocking::movingIntoAMinimisedGroupLeavesItMinimised()
{
    DockFixture host;
    host.left->minimize();
    OtherPane* other = new OtherPane;
    other->moveToGroup(host.left);
    QVERIFY(host.left->isMinimized());
    QVERIFY(!other->isVisible());
    host.left->restore();
    QVERIFY(other->isVisible());
}

void TestPanesDocking::aPaneMayMoveItselfFromItsShowEvent()
{
    DockFixture host;
    SelfDockingPane* pane = new SelfDockingPane(host.panes);
    QSignalSpy shown(pane, SIGNAL(visibilityChanged(bool)));
    host.panes->showPane(pane);
    QCOMPARE(pane->getPaneGroup(), host.left);
    QVERIFY(pane->isVisible());
    QCOMPARE(host.left->getCurrentPane(), static_cast<DzPane*>(pane));
    QCOMPARE(pane->window(), static_cast<QWidget*>(&host.window));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QCOMPARE(host.panes->getNumPaneGroups(), 1); // its own floating group is gone
    const QList<QDockWidget*> frames = host.window.findChildren<QDockWidget*>();
    QCOMPARE(frames.size(), 1);
    QCOMPARE(tabBarOf(host.left)->count(), 2);
    QCOMPARE(shown.count(), 1);
    QCOMPARE(shown.at(0).at(0).toBool(), true);
    QCOMPARE(pane->moves, 1);
}

void TestPanesDocking::aPaneMayMoveItselfIntoAMinimisedGroup()
{
    DockFixture host;
    host.left->minimize();
    SelfDockingPane* pane = new SelfDockingPane(host.panes);
    host.panes->showPane(pane);
    QVERIFY(!host.left->isMinimized());
    QVERIFY(pane->isVisible());
    QCOMPARE(pane->getPaneGroup(), host.left);
}

void TestPanesDocking::aPaneMayMoveItselfOnSwitchingTabs()
{
    DockFixture host;
    DzPaneGroup* group = host.panes->createEmptyPaneGroup();
    OtherPane* other = new OtherPane;
    other->moveToGroup(group);
    SelfDockingPane* pane = new SelfDockingPane(host.panes);
    pane->moveToGroup(group); // comes into a visible group and leaves it at once
    QCOMPARE(pane->getPaneGroup(), host.left);
    QVERIFY(pane->isVisible());
    QVERIFY(other->isVisible());
    QCOMPARE(group->getNumPanes(), 1);
    QCOMPARE(tabBarOf(group)->count(), 1);
    QCOMPARE(group->getCurrentPane(), static_cast<DzPane*>(other));
}

void TestPanesDocking::labelsAreTitles()
{
    DockFixture host;
    QCOMPARE(host.left->getFrame()->windowTitle(), QString("One"));
    QSignalSpy spy(host.one, SIGNAL(labelChanged(QString)));
    host.one->setLabel("Renamed");
    host.one->setLabel("Renamed");
    QCOMPARE(spy.count(), 1);
    QCOMPARE(host.left->getFrame()->windowTitle(), QString("Renamed"));
    OtherPane* other = new OtherPane;
    other->moveToGroup(host.left);
    QCOMPARE(tabBarOf(host.left)->tabText(0), QString("Renamed"));
    QCOMPARE(host.left->getFrame()->windowTitle(), QString("Other"));
}

void TestPanesDocking::panesByNameComeFromFactories()
{
    DockFixture host;
    FactoryOf<OtherPane> factory;
    host.app.addClassFactory(&factory);
    QCOMPARE(host.panes->togglePane("OtherPane"), 0);
    DzPane* other = host.panes->findPane("OtherPane");
    QVERIFY(other);
    QVERIFY(other->isVisible());
    QCOMPARE(host.panes->togglePane("OtherPane"), 0);
    QVERIFY(!other->isVisible());
    QCOMPARE(host.panes->togglePane("OtherPane"), 0);
    QVERIFY(other->isVisible());
    QCOMPARE(host.panes->getNumPanes(), 2); // never a second one
}

void TestPanesDocking::unknownPanesAreErrors()
{
    DockFixture host;
    OtherPane stranger;
    QVERIFY(host.panes->showPane("NoSuchPane") != 0);
    QVERIFY(host.panes->togglePane("NoSuchPane") != 0);
    QVERIFY(host.panes->hidePane("NoSuchPane") != 0);
    QVERIFY(host.panes->hidePane(&stranger) != 0);
    QVERIFY(host.panes->showPane(static_cast<DzPane*>(nullptr)) != 0);
    QVERIFY(!host.panes->createPane("NoSuchPane"));
}

void TestPanesDocking::aDeletedPaneLeavesEverything()
{
    DockFixture host;
    OtherPane* other = new OtherPane;
    other->moveToGroup(host.left);
    delete other;
    QCOMPARE(host.left->getNumPanes(), 1);
    QCOMPARE(tabBarOf(host.left)->count(), 1);
    QCOMPARE(host.panes->getNumPanes(), 1);
    QVERIFY(host.one->isVisible());
    QPointer<DzPaneGroup> own;
    host.panes->showPane(other = new OtherPane);
    own = other->getPaneGroup();
    delete other;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!own);
}

void TestPanesDocking::theWindowDestroysItsPanes()
{
    QPointer<DzPane> docked, floating, unplaced;
    {
        DockFixture host;
        docked = host.one;
        floating = new OtherPane;
        host.panes->showPane(floating);
        unplaced = new OtherPane;
        host.panes->addPane(unplaced);
    }
    QVERIFY(!docked);
    QVERIFY(!floating);
    QVERIFY(!unplaced);
}

void TestPanesDocking::aPaneWithoutAWindowShowsItself()
{
    QVERIFY(!dzApp);
    OnePane pane;
    QSignalSpy spy(&pane, SIGNAL(visibilityChanged(bool)));
    pane.showPane();
    QVERIFY(pane.isVisible());
    pane.hidePane();
    QVERIFY(!pane.isVisible());
    QCOMPARE(spy.count(), 2);
}

static QByteArray g_failing; // the call that failNamed fails

static bool failNamed(const char* name, const void*)
{
    return g_failing == name;
}

void TestPanesDocking::failsWhenTheHostCallIsToldTo()
{
    DockFixture host;
    DzPaneGroup* group = host.panes->createEmptyPaneGroup();
    dzHostCallHook = failNamed;
    g_failing = "moveToGroup";
    host.one->moveToGroup(group);
    g_failing = "findPane";
    DzPane* found = host.panes->findPane("OnePane");
    g_failing = "createEmptyPaneGroup";
    DzPaneGroup* created = host.panes->createEmptyPaneGroup();
    g_failing = "getNumPaneGroups";
    const int groups = host.panes->getNumPaneGroups();
    dzHostCallHook = nullptr;
    QCOMPARE(host.one->getPaneGroup(), host.left);
    QVERIFY(!found);
    QVERIFY(!created);
    QCOMPARE(groups, 0);
    QCOMPARE(host.panes->getNumPaneGroups(), 2);
}

QUILLON_TEST(TestPanesDocking)
#include "test_panes_docking.moc"
