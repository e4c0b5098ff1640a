// What presses on the browsing page leave of rank and counts, with and without a figure.
#include "browse_fixture.h"
#include "button_numbers.h"
#include "room_tests.h"

#include "finder/browse_commands.h"
#include "pane/command_dispatch.h"
#include "pane/hover.h"
#include "pane/page_layout.h"
#include "pane/page_state.h"
#include "pane/page_texts.h"

using namespace quillon;

static const QSize kPane(512, 1024);

class TestFinderCommands : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<WindowedBrowseFixture> m_finder;

    static void press(int number, ClickKind kind = LeftClick)
    {
        leaveHover(kPane);
        if (const ButtonRow* row = buttonOf(currentPage(), number))
            return dispatchPress(kPane, plainRect(kPane, *row).center(), kind);
        QFAIL("the page has no such button");
    }
    void openCategory(int category) const
    {
        pageState().picker = true;
        press(FirstCategoryButton + category);
        QCOMPARE(browseSession().type, category);
    }
    // Two of women, one of a man, one of the custom library; the first is shown.
    void browseFour()
    {
        m_finder->addFiles(2);
        m_finder->addFile("man.duf", PoseValues(), kMaleCode);
        m_finder->addFile("data/Brannoc/Quillon/custom/mine.duf");
        openCategory(AllPoses);
        press(PreviousButton, MiddleClick);
        QCOMPARE(counterText(), QString("POSE 1 of 4"));
    }
    void deselect() const
    {
        m_finder->rig.scene.selectAllNodes(false);
        m_finder->rig.scene.setPrimarySelection(nullptr);
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

    // ---- the rank ----------------------------------------------------------------------------

    void rankIsThatOfThePoseThatTookADeletedOnesPlace_data()
    {
        QTest::addColumn<bool>("figure");
        QTest::newRow("a figure selected") << true;
        QTest::newRow("no figure selected") << false;
    }
    void rankIsThatOfThePoseThatTookADeletedOnesPlace()
    {
        QFETCH(bool, figure);
        browseFour();
        m_finder->hide(0);
        press(NextButton, MiddleClick);
        QCOMPARE(m_finder->currentTitle(), QString("mine"));
        QCOMPARE(pluginSettings().currentRank, qint32(CustomLibraryPose));
        if (!figure)
            deselect();
        const BoxAnswers boxes(QMessageBox::Yes);
        press(FolderButton);
        QCOMPARE(boxes.boxes.size(), figure ? 1 : 2); // the question, and that no figure is there
        QCOMPARE(m_finder->position(), 0);
        QCOMPARE(pluginSettings().currentRank, qint32(Hidden));
        QCOMPARE(counterText(), QString("POSE 1 of 3"));
        QCOMPARE(browseSession().matchCount, 3);
        press(RankButton); // hidden, then unranked
        QCOMPARE(pluginSettings().currentRank, qint32(Unranked));
        QCOMPARE(rankOf(0), int(Unranked));
    }

    void aRefusedDeletionMakesUpForACountThatWasDue()
    {
        browseFour();
        press(NextButton, MiddleClick);
        QCOMPARE(m_finder->currentTitle(), QString("mine"));
        deselect();
        {
            const BoxAnswers boxes;
            press(FirstRankFilterButton);
        }
        QCOMPARE(browseSession().matchCount, 4);
        m_finder->selectFigure();
        const BoxAnswers boxes(QMessageBox::No);
        press(FolderButton);
        QCOMPARE(boxes.boxes.size(), 1);
        QCOMPARE(browseSession().matchCount, 1);
    }

    void filterThatLeavesNoMatchLeavesNoRank()
    {
        m_finder->addFiles(1);
        openCategory(AllPoses);
        press(PreviousButton, MiddleClick);
        press(RankButton);
        QCOMPARE(pluginSettings().currentRank, qint32(Favorite));
        press(IncludeFemaleButton);
        QCOMPARE(m_finder->position(), -1);
        QCOMPARE(pluginSettings().currentRank, qint32(Unranked));
        press(IncludeFemaleButton);
        QCOMPARE(pluginSettings().currentRank, qint32(Favorite));
    }

    // ---- the counts --------------------------------------------------------------------------

    void bothFigureTogglesOffShowsThatNothingMatches()
    {
        browseFour();
        press(IncludeFemaleButton);
        QCOMPARE(counterText(), QString("POSE 3 of 4"));
        press(IncludeMaleButton);
        QCOMPARE(counterText(), QString("NO MATCHING POSES FOUND"));
        press(NextButton);
        QCOMPARE(counterText(), QString("NO MATCHING POSES FOUND"));
        press(IncludeMaleButton);
        press(NextButton);
        QCOMPARE(counterText(), QString("POSE 3 of 4"));
    }

    void filterWithoutAFigureIsCountedByTheNextPress_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<int>("matches"); // of the three without the man
        QTest::newRow("next") << int(NextButton) << 3;
        QTest::newRow("previous") << int(PreviousButton) << 3;
        QTest::newRow("another filter") << FirstRankFilterButton + 3 << 2;
        QTest::newRow("mirror") << int(MirrorButton) << 3;
        QTest::newRow("rank") << int(RankButton) << 3;
        QTest::newRow("a lock") << FirstLockButton + 4 << 3;
        QTest::newRow("folder") << int(FolderButton) << 3;
        QTest::newRow("reference pose") << int(ReferenceButton) << 3;
    }
    void filterWithoutAFigureIsCountedByTheNextPress()
    {
        QFETCH(int, button);
        browseFour();
        const FigureState before = stateOf(m_finder->figure);
        deselect();
        const BoxAnswers boxes;
        press(IncludeMaleButton);
        QCOMPARE(boxes.boxes.size(), 1);
        QCOMPARE(browseSession().matchCount, 4);
        QCOMPARE(browseSession().matchOrdinal, 1);
        QCOMPARE(counterText(), QString("POSE 1 of 4"));
        QCOMPARE(m_finder->position(), 0);
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
        m_finder->selectFigure();
        press(button);
        QCOMPARE(boxes.boxes.size(), 1);
        QTEST(browseSession().matchCount, "matches");
    }

    // The pose that is applied again may make the search follow the figure, or be gone.
    void mirroringCountsAnew_data()
    {
        QTest::addColumn<bool>("vanished");
        QTest::newRow("the figure was laid down") << false;
        QTest::newRow("the file vanished") << true;
    }
    void mirroringCountsAnew()
    {
        QFETCH(bool, vanished);
        m_finder->addPose("stand.duf");
        m_finder->addPose("stand, turned.duf", values({{"hip/y", 30}}));
        m_finder->addPose("back.duf", values({{"hip/x", -90}}));
        m_finder->memorize(PoseValues());
        for (bool& each : pluginSettings().similarity)
            each = false;
        pluginSettings().similarity[AreaHip] = true;
        openCategory(ReferencePose);
        press(NextButton, MiddleClick);
        QCOMPARE(m_finder->currentTitle(), QString("stand, turned"));
        QCOMPARE(counterText(), QString("MATCHING POSE 2 of 2"));
        if (vanished)
            QFile::remove(poseEntry(1)->path);
        else
            m_finder->bone("hip")->getXRotControl()->setValue(-90);
        press(MirrorButton);
        QCOMPARE(browseSession().matchCount, 1);
        QCOMPARE(browseSession().matchOrdinal, vanished ? kOrdinalUnknown : 1);
    }

    void countersReadAsToldByTheCategory()
    {
        m_finder->addPose("stand.duf");
        m_finder->addPose("sit.duf", sittingValues());
        m_finder->addPose("sit again.duf", sittingValues());
        pluginSettings().currentPose = 0;
        m_finder->browse(Sitting);
        countedMatches();
        QCOMPARE(counterText(), QString("MATCHING POSES FOUND: 2"));
        m_finder->next();
        countedMatches();
        QCOMPARE(counterText(), QString("MATCHING POSE 1 of 2"));
        m_finder->next();
        countedMatches();
        QCOMPARE(counterText(), QString("MATCHING POSE 2 of 2"));
        m_finder->browse(AllPoses);
        m_finder->next();
        countedMatches();
        QCOMPARE(counterText(), QString("POSE 1 of 3"));
    }

    // ---- what cannot be saved ----------------------------------------------------------------

    void aSaveThatFailsIsReturned_data()
    {
        QTest::addColumn<bool>("settings");
        QTest::addColumn<bool>("ranks");
        QTest::newRow("neither fails") << false << false;
        QTest::newRow("the settings") << true << false;
        QTest::newRow("the ranks") << false << true;
    }
    void aSaveThatFailsIsReturned()
    {
        QFETCH(bool, settings);
        QFETCH(bool, ranks);
        browseFour();
        if (settings) // a folder in the file's place
            QVERIFY(QDir().mkpath(dataFiles().settings));
        if (ranks)
            QVERIFY(QDir().mkpath(dataFiles().ranks));
        QCOMPARE(advanceCurrentRank(m_finder->figure), !ranks);
        QCOMPARE(leaveCategory(), !settings && !ranks);
        QCOMPARE(QFileInfo(dataFiles().settings).isFile(), !settings); // each is tried
        QCOMPARE(QFileInfo(dataFiles().ranks).isFile(), !ranks);
    }
};

QUILLON_TEST(TestFinderCommands)
#include "test_finder_commands.moc"
