#include "browse_fixture.h"
#include "room_tests.h"

#include "finder/browse_commands.h"

using namespace quillon;

class TestPoseBrowser : public QObject {
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

    // ---- steps -------------------------------------------------------------------------------

    void stepsForwardsFromTheLastEntryToTheFirst()
    {
        m_finder->addFiles(3);
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 2;
        m_finder->next();
        QCOMPARE(m_finder->position(), 0);
    }

    void stepsBackwardsFromTheFirstEntryToTheLast()
    {
        m_finder->addFiles(3);
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 0;
        m_finder->previous();
        QCOMPARE(m_finder->position(), 2);
    }

    void stepBeginsAtItsCandidate_data()
    {
        QTest::addColumn<int>("entries");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("step");
        QTest::addColumn<int>("expected");
        const struct {
            int entries, from, step, expected;
        } rows[] = {
            {1, -1, 0, 0},
            {1, -1, +1, 0},
            {1, -1, -1, 0},
            {1, -1, +2, 0},
            {1, -1, -2, 0},
            {1, 0, +1, 0},
            {1, 0, -1, 0},
            {2, -1, 0, 0},
            {2, -1, +1, 0},
            {2, -1, -1, 0},
            {2, -1, +2, 1},
            {2, -1, -2, 0},
            {2, 0, -1, 1},
            {5, -1, 0, 0},
            {5, -1, +1, 0},
            {5, -1, -1, 3},
            {5, -1, +2, 4},
            {5, -1, -2, 0},
            {5, 2, 0, 2},
            {5, 2, +1, 3},
            {5, 2, -1, 1},
            {5, 2, +2, 4},
            {5, 2, -2, 0},
            {5, 4, +1, 0},
            {5, 0, -1, 4},
        };
        for (const auto& row : rows)
            QTest::newRow(qPrintable(
                QString("%1 of %2, step %3").arg(row.from).arg(row.entries).arg(row.step)))
                << row.entries << row.from << row.step << row.expected;
    }
    void stepBeginsAtItsCandidate()
    {
        QFETCH(int, entries);
        QFETCH(int, from);
        QFETCH(int, step);
        m_finder->addFiles(entries);
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = from;
        findPose(step, false, false);
        QTEST(m_finder->position(), "expected");
    }

    // The walk goes on in its direction: first forwards, last backwards, the pose itself forwards.
    void walksOnToTheNearestMatch_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<QString>("expected");
        QTest::newRow("first") << -2 << "A1";
        QTest::newRow("last") << +2 << "A4";
        QTest::newRow("next") << +1 << "A4";
        QTest::newRow("previous") << -1 << "A1";
        QTest::newRow("the pose itself, which does not match") << 0 << "A4";
    }
    void walksOnToTheNearestMatch()
    {
        QFETCH(int, step);
        m_finder->addProducts("-A0 A1 -A2 -A3 A4 -A5");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 2;
        findPose(step, false, false);
        QTEST(m_finder->currentTitle(), "expected");
    }

    void singleMatchIsAppliedAgain_data()
    {
        QTest::addColumn<int>("step");
        QTest::newRow("next") << +1;
        QTest::newRow("previous") << -1;
    }
    void singleMatchIsAppliedAgain()
    {
        QFETCH(int, step);
        m_finder->addProducts("-A0 A1 -A2");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 1;
        findPose(step, false, false);
        QCOMPARE(m_finder->position(), 1);
        QCOMPARE(m_finder->steps(), 1);
    }

    // ---- product skip ------------------------------------------------------------------------

    void skipsToAnotherProduct_data()
    {
        QTest::addColumn<QString>("poses");
        QTest::addColumn<QString>("from");
        QTest::addColumn<int>("step");
        QTest::addColumn<QString>("expected");
        const struct {
            const char *what, *poses, *from;
            int step;
            const char* expected;
        } rows[] = {
            {"to the next product", "A0 A1 B0 B1 C0", "A0", +1, "B0"},
            {"from the last to the first", "A0 A1 B0 B1 C0", "C0", +1, "A0"},
            {"forwards over what does not match", "A0 -B0 B1 C0", "A0", +1, "B1"},
            {"forwards over a product that does not match", "A0 -B0 -B1 C0", "A0", +1, "C0"},
            {"to the first of the product before", "A0 A1 B0 B1 C0", "C0", -1, "B0"},
            {"from within a product", "A0 A1 B0 B1 C0", "B1", -1, "A0"},
            {"backwards round the beginning", "A0 A1 B0 B1 C0 C1", "A1", -1, "C0"},
            {"two products, from the first", "A0 A1 B0 B1", "A1", -1, "B0"},
            {"two products, from the second", "A0 A1 B0 B1", "B1", -1, "A0"},
            {"to the first that matches", "-A0 A1 A2 B0", "B0", -1, "A1"},
            {"a product in two runs", "A0 B0 A1", "A1", -1, "B0"},
            {"backwards over what does not match", "A0 A1 -B0 C0", "C0", -1, "A0"},
            {"one other product, the pose does not match", "B0 B1 -A0", "A0", -1, "B0"},
            {"one other product, forwards", "B0 B1 -A0", "A0", +1, "B0"},
            {"only the pose itself matches", "A0 -B0", "A0", +1, "A0"},
            {"only the pose itself matches, backwards", "A0 -B0", "A0", -1, "A0"},
            {"nothing matches", "-A0 -A1", "A0", +1, "none"},
            {"nothing matches, backwards", "-A0 -A1", "A0", -1, "none"},
        };
        for (const auto& row : rows)
            QTest::newRow(row.what) << row.poses << row.from << row.step << row.expected;
    }
    void skipsToAnotherProduct()
    {
        QFETCH(QString, poses);
        QFETCH(QString, from);
        QFETCH(int, step);
        m_finder->addProducts(poses);
        m_finder->browse(AllPoses);
        for (int i = 0; i < poseCount(); ++i) {
            if (QFileInfo(poseEntry(i)->path).completeBaseName() == from)
                pluginSettings().currentPose = i;
        }
        findPose(step, true, false);
        QTEST(m_finder->currentTitle(), "expected");
    }

    void oneProductOnlyIsLeftAlone_data()
    {
        QTest::addColumn<int>("step");
        QTest::newRow("forwards") << +1;
        QTest::newRow("backwards") << -1;
    }
    void oneProductOnlyIsLeftAlone()
    {
        QFETCH(int, step);
        m_finder->addProducts("A0 A1 A2");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 1;
        findPose(0, false, false);
        countedMatches();
        m_finder->rig.undoStack.clearAll();
        const FigureState before = stateOf(m_finder->figure);
        findPose(step, true, false);
        QCOMPARE(m_finder->position(), 1);
        QCOMPARE(browseSession().matchCount, 3);
        QCOMPARE(browseSession().matchOrdinal, 2);
        QCOMPARE(m_finder->steps(), 0);
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
    }

    void skipWithoutAPoseIsAPlainStep()
    {
        m_finder->addProducts("A0 A1 B0 B1 B2");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = -1;
        findPose(+1, true, false);
        QCOMPARE(m_finder->position(), 0);
        pluginSettings().currentPose = -1;
        findPose(-1, true, false);
        QCOMPARE(m_finder->position(), 3);
    }

    // ---- refusals ----------------------------------------------------------------------------

    void nothingIsFoundOutsideACategory()
    {
        m_finder->addFiles(2);
        pluginSettings().currentPose = 1;
        browseSession().matchCount = 7;
        const BoxAnswers boxes;
        QVERIFY(!m_finder->next());
        QVERIFY(!findPose(0, false, true));
        QCOMPARE(m_finder->position(), 1);
        QCOMPARE(browseSession().matchCount, 7);
        QCOMPARE(m_finder->steps(), 0);
        QVERIFY(boxes.boxes.isEmpty());
    }

    void searchNeedsAFigureWithAHip_data()
    {
        QTest::addColumn<QString>("selection");
        for (const char* row : {"nothing", "a prop", "no hip", "below another node"})
            QTest::newRow(row) << row;
    }
    void searchNeedsAFigureWithAHip()
    {
        QFETCH(QString, selection);
        m_finder->addFiles(2);
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 1;
        DzNode* const node = new DzNode("Group");
        m_finder->rig.scene.addNode(node);
        if (selection == "nothing") {
            m_finder->rig.scene.selectAllNodes(false);
        } else if (selection == "a prop") {
            node->select(true);
            m_finder->rig.scene.setPrimarySelection(node);
        } else if (selection == "no hip") {
            m_finder->figure->removeBone(m_finder->bone("hip"));
        } else {
            node->addNodeChild(m_finder->figure);
        }
        m_finder->rig.undoStack.clearAll();
        const BoxAnswers boxes;
        QVERIFY(!m_finder->next());
        QCOMPARE(boxes.boxes.size(), 1);
        QCOMPARE(boxes.boxes.first().title, QString("Error"));
        QCOMPARE(boxes.boxes.first().text, QString("Please select a Genesis 8 figure first."));
        QCOMPARE(m_finder->position(), 1);
        QCOMPARE(m_finder->steps(), 0);
    }

    void mirroringNeedsAFigureWithAHip()
    {
        m_finder->addFiles(1);
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 0;
        browseSession().mirrored = true;
        m_finder->figure->removeBone(m_finder->bone("hip"));
        m_finder->rig.undoStack.clearAll();
        const BoxAnswers boxes;
        toggleMirroredPose(m_finder->figure, m_finder->time());
        QVERIFY(browseSession().mirrored);
        QVERIFY(boxes.boxes.isEmpty());
        QCOMPARE(m_finder->steps(), 0);
    }

    void selectedBoneStandsForItsFigure()
    {
        m_finder->addFiles(2);
        m_finder->browse(AllPoses);
        m_finder->selectBones(QStringList("lHand"));
        pluginSettings().currentPose = 0;
        m_finder->next();
        QCOMPARE(m_finder->position(), 1);
        QCOMPARE(m_finder->steps(), 1);
    }

    // ---- positions ---------------------------------------------------------------------------

    void stalePositionIsDropped_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("expected");
        QTest::addColumn<int>("rank");
        QTest::newRow("none") << -1 << -1 << int(CustomLibraryPose); // as it was read
        QTest::newRow("first") << 0 << 0 << int(Unranked);
        QTest::newRow("last") << 1 << 1 << int(Hidden);
        QTest::newRow("behind the last") << 2 << -1 << int(Unranked);
        QTest::newRow("below none") << -5 << -1 << int(Unranked);
    }
    void stalePositionIsDropped()
    {
        QFETCH(int, position);
        m_finder->addFiles(2);
        m_finder->hide(1);
        pluginSettings().currentPose = position;
        pluginSettings().currentRank = CustomLibraryPose; // as an older run has left it
        dropStalePosition();
        QTEST(m_finder->position(), "expected");
        QTEST(int(pluginSettings().currentRank), "rank");
    }

    void positionWithoutAPoseHasNoRank_data()
    {
        QTest::addColumn<bool>("emptyIndex");
        QTest::newRow("no match") << false;
        QTest::newRow("an empty index") << true;
    }
    void positionWithoutAPoseHasNoRank()
    {
        QFETCH(bool, emptyIndex);
        m_finder->addFiles(1);
        m_finder->hide(0);
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        QCOMPARE(pluginSettings().currentRank, qint32(Hidden));
        pluginSettings().rankFilter = ShowUnranked;
        if (emptyIndex)
            removeEntry(0);
        m_finder->next();
        QCOMPARE(m_finder->position(), -1);
        QCOMPARE(pluginSettings().currentRank, qint32(Unranked));
    }

    void countsFollowAVanishedFile()
    {
        m_finder->addProducts("A0 -A1 A2 A3 A4");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 2;
        countedMatches();
        QFile::remove(poseEntry(3)->path);
        m_finder->next();
        QCOMPARE(m_finder->currentTitle(), QString("A2"));
        QCOMPARE(browseSession().matchCount, 3);
        QCOMPARE(browseSession().matchOrdinal, 2);
        QFile::remove(poseEntry(3)->path);
        m_finder->previous();
        m_finder->previous(); // A4, the last one
        QCOMPARE(m_finder->currentTitle(), QString("A0"));
        QCOMPARE(browseSession().matchCount, 2);
        QCOMPARE(browseSession().matchOrdinal, 1);
    }

    // With the step's direction, so that nothing is skipped by the next one.
    void vanishedFileLeavesTheNeighbour_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("step");
        QTest::addColumn<int>("vanished");
        QTest::addColumn<QString>("position");
        QTest::addColumn<QString>("after"); // the same step again
        const struct {
            const char* what;
            int from, step, vanished;
            const char *position, *after;
        } rows[] = {
            {"next", 1, +1, 2, "A1", "A3"},
            {"next round the end", 3, +1, 0, "A3", "A1"},
            {"previous", 2, -1, 1, "A2", "A0"},
            {"previous round the beginning", 0, -1, 3, "A0", "A2"},
            {"the pose itself", 1, 0, 1, "A2", "A2"},
            {"the last, itself", 3, 0, 3, "A0", "A0"},
        };
        for (const auto& row : rows)
            QTest::newRow(row.what)
                << row.from << row.step << row.vanished << row.position << row.after;
    }
    void vanishedFileLeavesTheNeighbour()
    {
        QFETCH(int, from);
        QFETCH(int, step);
        QFETCH(int, vanished);
        m_finder->addProducts("A0 A1 A2 A3");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = from;
        QFile::remove(poseEntry(vanished)->path);
        findPose(step, false, false);
        QTEST(m_finder->currentTitle(), "position");
        QCOMPARE(poseCount(), 3);
        QCOMPARE(countedMatches().matchCount, 3);
        findPose(step, false, false);
        QTEST(m_finder->currentTitle(), "after");
    }

    void lastPoseThatVanishesLeavesNone()
    {
        m_finder->addFiles(1);
        m_finder->browse(AllPoses);
        QFile::remove(poseEntry(0)->path);
        m_finder->next();
        QCOMPARE(poseCount(), 0);
        QCOMPARE(m_finder->position(), -1);
        QCOMPARE(countedMatches().matchCount, 0);
    }
};

QUILLON_TEST(TestPoseBrowser)
#include "test_pose_browser.moc"
