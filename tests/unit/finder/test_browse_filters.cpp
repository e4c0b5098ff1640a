#include "browse_fixture.h"
#include "room_tests.h"

using namespace quillon;

class TestBrowseFilters : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<BrowseFixture> m_finder;

private slots:
    void init()
    {
        m_finder.reset(new BrowseFixture);
    }
    void cleanup()
    {
        m_finder.reset();
    }

    // ---- filters -----------------------------------------------------------------------------

    void nothingMatchesWithoutAnyFigureIncluded()
    {
        m_finder->addFiles(3);
        m_finder->addFile("People/male.duf", PoseValues(), kMaleCode);
        m_finder->browse(AllPoses);
        m_finder->next();
        pluginSettings().includeFemale = pluginSettings().includeMale = false;
        const FigureState before = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        m_finder->next();
        QCOMPARE(m_finder->position(), -1);
        QCOMPARE(browseSession().matchCount, 0);
        QCOMPARE(m_finder->steps(), 0);
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
        QCOMPARE(countedMatches().matchCount, 0);
        QCOMPARE(countedMatches().matchOrdinal, kOrdinalUnknown);
    }

    void includeTogglesTellTheFigures_data()
    {
        QTest::addColumn<bool>("female");
        QTest::addColumn<bool>("male");
        QTest::addColumn<int>("expected");
        QTest::newRow("both") << true << true << 3;
        QTest::newRow("women") << true << false << 1;
        QTest::newRow("men") << false << true << 2;
        QTest::newRow("none") << false << false << 0;
    }
    void includeTogglesTellTheFigures()
    {
        QFETCH(bool, female);
        QFETCH(bool, male);
        m_finder->addFile("a.duf", PoseValues(), kFemaleCode);
        m_finder->addFile("b.duf", PoseValues(), kMaleCode);
        m_finder->addFile("c.duf", PoseValues(), kMaleCode);
        m_finder->addFile("other generation.duf", PoseValues(), 3);
        m_finder->addFile("not told.duf", PoseValues(), kFigureNotIdentified);
        m_finder->browse(AllPoses);
        pluginSettings().includeFemale = female;
        pluginSettings().includeMale = male;
        QTEST(countedMatches().matchCount, "expected");
    }

    void rankBitsTellTheRanks_data()
    {
        QTest::addColumn<int>("bits");
        QTest::addColumn<int>("expected"); // entries as bits
        QTest::newRow("unranked") << int(ShowUnranked) << 1;
        QTest::newRow("favorite") << int(ShowFavorite) << 2;
        QTest::newRow("hidden") << int(ShowHidden) << 4;
        QTest::newRow("custom library") << int(ShowCustomLibrary) << 8;
        QTest::newRow("favorite and custom") << int(ShowFavorite | ShowCustomLibrary) << 10;
        QTest::newRow("all") << 15 << 15;
        QTest::newRow("none") << 0 << 0;
    }
    void rankBitsTellTheRanks()
    {
        QFETCH(int, bits);
        QFETCH(int, expected);
        m_finder->addFiles(3);
        m_finder->addFile("data/Brannoc/Quillon/custom/mine.duf");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 1;
        setCurrentRank(Favorite);
        m_finder->hide(2);
        pluginSettings().rankFilter = bits;
        int met = 0;
        for (int from = 0; from < 4; ++from) {
            pluginSettings().currentPose = from;
            findPose(0, false, false);
            if (m_finder->position() >= 0)
                met |= 1 << m_finder->position();
        }
        QCOMPARE(met, expected);
    }

    void pairProductsAreIgnoredOnDemand()
    {
        m_finder->addFile("data/Brannoc/poses/001/012f0.duf");
        m_finder->addFile("data/Brannoc/poses/001/012fa.duf");
        m_finder->addFile("data/Brannoc/poses/001/012f.duf");
        m_finder->addFile("People/0.duf");
        m_finder->browse(AllPoses);
        QCOMPARE(countedMatches().matchCount, 4);
        pluginSettings().ignorePosePairs = true;
        QCOMPARE(countedMatches().matchCount, 2);
        m_finder->next();
        QCOMPARE(m_finder->position(), 2);
    }

    void poseWithoutSignatureNeverMatches()
    {
        m_finder->addFiles(3);
        entryToChange(1)->hasSignature = false;
        m_finder->browse(AllPoses);
        QCOMPARE(countedMatches().matchCount, 2);
        pluginSettings().currentPose = 0;
        m_finder->next();
        QCOMPARE(m_finder->position(), 2);
    }

    void typeTellsThePoses()
    {
        m_finder->addPose("stand.duf");
        m_finder->addPose("sit.duf", sittingValues());
        m_finder->addPose("back.duf", values({{"hip/x", -90}}));
        m_finder->addPose("belly.duf", values({{"hip/x", 90}}));
        m_finder->addPose("left.duf", values({{"hip/z", -90}}));
        m_finder->addPose("right.duf", values({{"hip/z", 90}}));
        m_finder->addPose("head down.duf", values({{"hip/x", 180}}));
        const char* const expected[]
            = {"stand", "sit", "stand", "back", "belly", "left", "right", "head down"};
        for (int type = AllPoses; type <= UpsideDown; ++type) {
            m_finder->browse(type);
            QCOMPARE(countedMatches().matchCount, type == AllPoses ? 7 : 1);
            pluginSettings().currentPose = -1;
            m_finder->next();
            QCOMPARE(m_finder->currentTitle(), QString(expected[type]));
        }
    }

    // ---- counting ----------------------------------------------------------------------------

    void ordinalIsThatOfTheFirstMatchNotBefore_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("ordinal");
        QTest::newRow("none") << -1 << 1;
        QTest::newRow("before the first match") << 0 << 1;
        QTest::newRow("the first match") << 1 << 1;
        QTest::newRow("between") << 2 << 2;
        QTest::newRow("the second match") << 3 << 2;
        QTest::newRow("behind the last match") << 4 << kOrdinalUnknown;
    }
    void ordinalIsThatOfTheFirstMatchNotBefore()
    {
        QFETCH(int, position);
        m_finder->addProducts("-A0 A1 -A2 A3 -A4");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = position;
        QCOMPARE(countedMatches().matchCount, 2);
        QTEST(browseSession().matchOrdinal, "ordinal");
        QCOMPARE(m_finder->position(), position);
        QCOMPARE(m_finder->steps(), 0);
    }

    void emptyIndexCountsNothing()
    {
        m_finder->addFiles(1);
        m_finder->browse(AllPoses);
        m_finder->next();
        QCOMPARE(countedMatches().matchCount, 1);
        removeEntry(0);
        const BoxAnswers boxes;
        QCOMPARE(countedMatches().matchCount, 0);
        QCOMPARE(browseSession().matchOrdinal, kOrdinalUnknown);
        QCOMPARE(m_finder->position(), -1);
        QVERIFY(boxes.boxes.isEmpty());
    }

    void countsStayWithoutAFigure()
    {
        m_finder->addFiles(2);
        m_finder->addFile("m.duf", PoseValues(), kMaleCode);
        m_finder->browse(AllPoses);
        m_finder->apply(1);
        countedMatches();
        pluginSettings().includeMale = false;
        m_finder->rig.scene.selectAllNodes(false);
        const BoxAnswers boxes;
        countedMatches();
        countIfDue(selectedFigure()); // there is still none
        QCOMPARE(boxes.boxes.size(), 1);
        QCOMPARE(browseSession().matchCount, 3);
        QCOMPARE(browseSession().matchOrdinal, 2);
        m_finder->selectFigure();
        countIfDue(selectedFigure());
        QCOMPARE(browseSession().matchCount, 2);
        pluginSettings().includeMale = true;
        countIfDue(selectedFigure()); // once
        QCOMPARE(browseSession().matchCount, 2);
    }

    void anotherCategoryForgetsTheCounts()
    {
        m_finder->addFiles(3);
        m_finder->browse(AllPoses);
        countedMatches();
        m_finder->rig.scene.selectAllNodes(false);
        const BoxAnswers boxes;
        m_finder->browse(Sitting);
        QCOMPARE(countedMatches().matchCount, 0);
        m_finder->selectFigure();
        m_finder->bone("head")->getYRotControl()->setValue(15);
        countIfDue(selectedFigure()); // the figure would have to be cleared first
        QCOMPARE(browseSession().matchCount, 0);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 15.f);
    }
};

QUILLON_TEST(TestBrowseFilters)
#include "test_browse_filters.moc"
