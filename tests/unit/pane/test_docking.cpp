#include "frame_fixture.h"
#include "room_tests.h"

#include "pane/docking.h"
#include "pane/dzquillonpane.h"

#include "dzappsettings.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"

#include <QtTest>

using namespace quillon;

static bool hostSaysDocked()
{
    return DzAppSettings("QUILLON_settings").getBoolValue("docked", false);
}

static void tellHostDocked(bool docked)
{
    DzAppSettings("QUILLON_settings").setBoolValue("docked", docked);
}

class TestDocking : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> m_host;
    DzPaneMgr* m_panes = nullptr;

    // Known to the manager but in no group yet; deleted with the window.
    DzQuillonPane* newPane()
    {
        DzQuillonPane* pane = new DzQuillonPane;
        m_panes->addPane(pane);
        return pane;
    }
    DzPaneGroup* newGroup(int width, int height)
    {
        DzPaneGroup* group = m_panes->createEmptyPaneGroup();
        group->resize(width, height);
        return group;
    }

private slots:
    void init()
    {
        m_host.reset(new HostFixture);
        m_panes = m_host->window.getPaneMgr();
        m_host->window.show();
    }
    void cleanup()
    {
        m_host.reset();
    }

    void firstShowMovesASmallGroupsPaneIntoTheFirstGroup()
    {
        DzPaneGroup* first = newGroup(500, 900);
        DzPaneGroup* slim = newGroup(399, 900);
        first->minimize();
        DzQuillonPane* pane = newPane();
        pane->moveToGroup(slim);
        QCOMPARE(pane->getPaneGroup(), first);
        QVERIFY(!first->isMinimized());
        QVERIFY(isDocked());
    }

    void firstShowMovesOnce()
    {
        newGroup(500, 900);
        DzPaneGroup* slim = newGroup(100, 100);
        DzQuillonPane* pane = newPane();
        HostCallLog calls;
        pane->moveToGroup(slim);
        QCOMPARE(HostCallLog::names().count("moveToGroup"), 2); // the host's own and the pane's
    }

    void firstShowLeavesARoomyGroupAlone_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<bool>("roomy");
        QTest::newRow("just enough") << 400 << 800 << true;
        QTest::newRow("too narrow") << 399 << 800 << false;
        QTest::newRow("too low") << 400 << 799 << false;
        QTest::newRow("large") << 600 << 900 << true;
    }
    void firstShowLeavesARoomyGroupAlone()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(bool, roomy);
        DzPaneGroup* first = newGroup(500, 900);
        DzPaneGroup* group = newGroup(width, height);
        DzQuillonPane* pane = newPane();
        pane->moveToGroup(group);
        QCOMPARE(pane->getPaneGroup(), roomy ? group : first);
        QVERIFY(isDocked());
    }

    void withoutAnyGroupTheFirstShowOnlySetsTheFlag()
    {
        DzQuillonPane* pane = newPane();
        QCOMPARE(m_panes->getNumPaneGroups(), 0);
        pane->show();
        QVERIFY(isDocked());
        QVERIFY(!pane->getPaneGroup());
        delete pane;
        QVERIFY(hostSaysDocked());
    }

    void aPaneInNoGroupMovesIntoTheFirst()
    {
        DzPaneGroup* first = newGroup(200, 300);
        DzQuillonPane* pane = newPane();
        pane->show();
        QCOMPARE(pane->getPaneGroup(), first);
        QCOMPARE(first->width(), 200); // the first show resizes nothing
    }

    void aLaterShowGrowsASmallGroupThatIsNotTheFirst_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<bool>("grows");
        QTest::newRow("narrow") << 399 << 900 << true;
        QTest::newRow("low") << 600 << 799 << true;
        QTest::newRow("just enough") << 400 << 800 << false;
        QTest::newRow("large") << 600 << 900 << false;
    }
    void aLaterShowGrowsASmallGroupThatIsNotTheFirst()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(bool, grows);
        tellHostDocked(true);
        newGroup(100, 100);
        DzPaneGroup* group = newGroup(width, height);
        DzQuillonPane* pane = newPane();
        pane->moveToGroup(group);
        QCOMPARE(pane->getPaneGroup(), group);
        QCOMPARE(
            QSize(group->width(), group->height()), grows ? QSize(400, 800) : QSize(width, height));
    }

    void aLaterShowLeavesTheFirstGroupAsItIs()
    {
        tellHostDocked(true);
        DzPaneGroup* first = newGroup(200, 300);
        DzQuillonPane* pane = newPane();
        pane->moveToGroup(first);
        QCOMPARE(QSize(first->width(), first->height()), QSize(200, 300));
    }

    void aLaterShowWithoutAGroupDoesNothing()
    {
        tellHostDocked(true);
        DzPaneGroup* first = newGroup(200, 300);
        DzQuillonPane* pane = newPane();
        pane->show();
        QVERIFY(!pane->getPaneGroup());
        QCOMPARE(first->getNumPanes(), 0);
    }

    void dockedGoesBackToTheHostAtTheEnd()
    {
        newGroup(500, 900);
        DzQuillonPane* pane = newPane();
        pane->show();
        QVERIFY(isDocked() && !hostSaysDocked());
        delete pane;
        QVERIFY(hostSaysDocked());
        newPane();
        QVERIFY(isDocked());
    }

    void aPaneNeverShownStaysUndocked()
    {
        delete newPane();
        QVERIFY(!hostSaysDocked());
    }
};

QUILLON_TEST(TestDocking)
#include "test_docking.moc"
