#include "browse_fixture.h"

#include "finder/pose_similarity.h"
#include "pane/page_texts.h"

using namespace quillon;

class TestPoseBrowser : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<BrowseFixture> m_finder;

    void addFiles(int count)
    {
        for (int i = 0; i < count; ++i)
            m_finder->addFile(QString("People/%1.duf").arg(i));
    }
    // One file per word: "A0 B0" is 0.duf in folder A and 0.duf in folder B; "-A0" is left out by
    // the rank filter.
    void addProducts(const QString& words)
    {
        pluginSettings().rankFilter = ShowUnranked;
        for (const QString& word : words.split(QLatin1Char(' '))) {
            const bool hidden = word.startsWith(QLatin1Char('-'));
            const QString name = hidden ? word.mid(1) : word;
            const int entry = m_finder->addFile(name.left(1) + QLatin1Char('/') + name + ".duf");
            if (hidden)
                hide(entry);
        }
    }
    void hide(int entry)
    {
        const int before = pluginSettings().currentPose;
        pluginSettings().currentPose = entry;
        setCurrentRank(Hidden);
        pluginSettings().currentPose = before;
    }
    QString currentTitle() const
    {
        const PoseIndexEntry* e = poseEntry(m_finder->position());
        return e ? QFileInfo(e->path).completeBaseName() : QString("none");
    }
    static BrowseState count()
    {
        findPose(0, false, true);
        return browseState();
    }

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
        addFiles(3);
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 2;
        m_finder->next();
        QCOMPARE(m_finder->position(), 0);
    }

    void stepsBackwardsFromTheFirstEntryToTheLast()
    {
        addFiles(3);
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
        addFiles(entries);
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
        addProducts("-A0 A1 -A2 -A3 A4 -A5");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 2;
        findPose(step, false, false);
        QTEST(currentTitle(), "expected");
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
        addProducts("-A0 A1 -A2");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 1;
        findPose(step, false, false);
        QCOMPARE(m_finder->position(), 1);
        QCOMPARE(m_finder->steps(), 1);
    }

    // ---- filters -----------------------------------------------------------------------------

    void nothingMatchesWithoutAnyFigureIncluded()
    {
        addFiles(3);
        m_finder->addFile("People/male.duf", PoseValues(), kMaleCode);
        m_finder->browse(AllPoses);
        m_finder->next();
        pluginSettings().includeFemale = pluginSettings().includeMale = false;
        const FigureState before = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        m_finder->next();
        QCOMPARE(m_finder->position(), -1);
        QCOMPARE(browseState().matchCount, 0);
        QCOMPARE(counterText(), QString("NO MATCHING POSES FOUND"));
        QCOMPARE(m_finder->steps(), 0);
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
        QCOMPARE(count().matchCount, 0);
        QCOMPARE(count().matchOrdinal, kOrdinalUnknown);
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
        QTEST(count().matchCount, "expected");
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
        addFiles(3);
        m_finder->addFile("data/Brannoc/Quillon/custom/mine.duf");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 1;
        setCurrentRank(Favorite);
        hide(2);
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
        QCOMPARE(count().matchCount, 4);
        pluginSettings().ignorePosePairs = true;
        QCOMPARE(count().matchCount, 2);
        m_finder->next();
        QCOMPARE(m_finder->position(), 2);
    }

    void poseWithoutSignatureNeverMatches()
    {
        addFiles(3);
        poseEntry(1)->hasSignature = false;
        m_finder->browse(AllPoses);
        QCOMPARE(count().matchCount, 2);
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
            QCOMPARE(count().matchCount, type == AllPoses ? 7 : 1);
            pluginSettings().currentPose = -1;
            m_finder->next();
            QCOMPARE(currentTitle(), QString(expected[type]));
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
        addProducts("-A0 A1 -A2 A3 -A4");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = position;
        QCOMPARE(count().matchCount, 2);
        QTEST(browseState().matchOrdinal, "ordinal");
        QCOMPARE(m_finder->position(), position);
        QCOMPARE(m_finder->steps(), 0);
    }

    void emptyIndexCountsNothing()
    {
        addFiles(1);
        m_finder->browse(AllPoses);
        m_finder->next();
        QCOMPARE(count().matchCount, 1);
        removeEntry(0);
        const BoxAnswers boxes;
        QCOMPARE(count().matchCount, 0);
        QCOMPARE(browseState().matchOrdinal, kOrdinalUnknown);
        QCOMPARE(m_finder->position(), -1);
        QCOMPARE(counterText(), QString("NO MATCHING POSES FOUND"));
        QVERIFY(boxes.boxes.isEmpty());
    }

    void countersReadAsToldByTheCategory()
    {
        m_finder->addPose("stand.duf");
        m_finder->addPose("sit.duf", sittingValues());
        m_finder->addPose("sit again.duf", sittingValues());
        pluginSettings().currentPose = 0;
        m_finder->browse(Sitting);
        count();
        QCOMPARE(counterText(), QString("MATCHING POSES FOUND: 2"));
        m_finder->next();
        count();
        QCOMPARE(counterText(), QString("MATCHING POSE 1 of 2"));
        m_finder->next();
        count();
        QCOMPARE(counterText(), QString("MATCHING POSE 2 of 2"));
        m_finder->browse(AllPoses);
        m_finder->next();
        count();
        QCOMPARE(counterText(), QString("POSE 1 of 3"));
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
        addProducts(poses);
        m_finder->browse(AllPoses);
        for (int i = 0; i < poseCount(); ++i) {
            if (QFileInfo(poseEntry(i)->path).completeBaseName() == from)
                pluginSettings().currentPose = i;
        }
        findPose(step, true, false);
        QTEST(currentTitle(), "expected");
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
        addProducts("A0 A1 A2");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 1;
        findPose(0, false, false);
        count();
        m_finder->rig.undoStack.clearAll();
        const FigureState before = stateOf(m_finder->figure);
        findPose(step, true, false);
        QCOMPARE(m_finder->position(), 1);
        QCOMPARE(browseState().matchCount, 3);
        QCOMPARE(browseState().matchOrdinal, 2);
        QCOMPARE(m_finder->steps(), 0);
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
    }

    void skipWithoutAPoseIsAPlainStep()
    {
        addProducts("A0 A1 B0 B1 B2");
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
        addFiles(2);
        pluginSettings().currentPose = 1;
        browseState().matchCount = 7;
        const BoxAnswers boxes;
        QVERIFY(!m_finder->next());
        QVERIFY(!findPose(0, false, true));
        QCOMPARE(m_finder->position(), 1);
        QCOMPARE(browseState().matchCount, 7);
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
        addFiles(2);
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

    void selectedBoneStandsForItsFigure()
    {
        addFiles(2);
        m_finder->browse(AllPoses);
        m_finder->selectBones(QStringList("lHand"));
        pluginSettings().currentPose = 0;
        m_finder->next();
        QCOMPARE(m_finder->position(), 1);
        QCOMPARE(m_finder->steps(), 1);
    }

    // ---- choosing a type ---------------------------------------------------------------------

    void choosingATypeClearsThePose()
    {
        addFiles(1);
        Random random(3);
        poseAtRandom(&random, m_finder->figure);
        const FigureState posed = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        const unsigned applied = appliedPoseCount();
        selectPoseType(Standing);
        QCOMPARE(pageState().browsingCategory, int(Standing));
        QVERIFY(!pageState().tablesValid);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 0.f);
        QCOMPARE(m_finder->rotationDeg("hip", 'x'), 0.f);
        QCOMPARE(m_finder->steps(), 1);
        QCOMPARE(m_finder->rig.undoStack.getUndoCaption(), QString("quillon_stack"));
        QVERIFY(appliedPoseCount() != applied);
        m_finder->rig.undoStack.undo();
        VERIFY_SAME_STATE(posed, stateOf(m_finder->figure));
    }

    void choosingATypeKeepsThePlace()
    {
        addFiles(1);
        m_finder->figure->setWSPos(DzVec3(30, 4, -7));
        m_finder->figure->setWSRot(turn(0, 1, 0, 90));
        m_finder->bone("hip")->setLocalPos(m_finder->time(), DzVec3(0, 10, 0));
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        selectPoseType(AllPoses);
        QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-4);
        QCOMPARE(m_finder->bone("hip")->getYPosControl()->getValue(), 10.f);
    }

    void clearFigureAddsNoStepWhenATypeIsChosen()
    {
        addFiles(1);
        m_finder->rig.undoStack.clearAll();
        const unsigned applied = appliedPoseCount();
        const FigureState before = stateOf(m_finder->figure);
        selectPoseType(Sitting);
        QCOMPARE(m_finder->steps(), 0);
        QCOMPARE(appliedPoseCount(), applied);
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
    }

    void lockedPartsAreKeptWhenATypeIsChosen()
    {
        addFiles(1);
        m_finder->bone("lEye")->getXRotControl()->setValue(5);
        m_finder->bone("lHand")->getZRotControl()->setValue(20);
        pluginSettings().partLocks[3] = true; // expression
        selectPoseType(AllPoses);
        QCOMPARE(m_finder->rotationDeg("lEye", 'x'), 5.f);
        QCOMPARE(m_finder->rotationDeg("lHand", 'z'), 0.f);
    }

    void choosingATypeSetsTheFilters()
    {
        addFiles(1);
        m_finder->browse(LyingBellyUp);
        QVERIFY(similarityFilters().on[HipSlot] && similarityFilters().on[TorsoSlot]);
        QVERIFY(!similarityFilters().on[LeftThighSlot]);
        m_finder->browse(AllPoses);
        QVERIFY(!similarityFilters().on[HipSlot]);
        m_finder->browse(ReferencePose);
        QVERIFY(similarityFilters().on[HipSlot] && !similarityFilters().on[LeftShinSlot]);
        pluginSettings().similarity[AreaHip] = false;
        pluginSettings().similarity[AreaLeftShin] = true;
        refreshFilters();
        QVERIFY(!similarityFilters().on[HipSlot] && similarityFilters().on[LeftShinSlot]);
    }

    void setUpWaitsForAFigure()
    {
        m_finder->addPose("stand.duf");
        m_finder->addPose("sit.duf", sittingValues());
        m_finder->rig.scene.selectAllNodes(false);
        m_finder->bone("head")->getYRotControl()->setValue(15);
        const BoxAnswers boxes;
        m_finder->browse(Sitting);
        QVERIFY(boxes.boxes.isEmpty()); // the count has the box
        count();
        QCOMPARE(boxes.boxes.size(), 1);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 15.f);
        m_finder->selectFigure();
        m_finder->next();
        QCOMPARE(currentTitle(), QString("sit"));
        m_finder->next();
        QCOMPARE(currentTitle(), QString("sit"));
    }

    void setUpWaitsWhenThePickerIsNotShown()
    {
        addFiles(1);
        pageState().picker = false;
        m_finder->bone("head")->getYRotControl()->setValue(15);
        selectPoseType(AllPoses);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 15.f);
        count();
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 0.f);
    }

    void countingSetsUpOnlyOnce()
    {
        addFiles(1);
        m_finder->browse(AllPoses);
        m_finder->bone("head")->getYRotControl()->setValue(15);
        count();
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 15.f);
    }

    void emptyIndexAsksForAScan()
    {
        const BoxAnswers no(QMessageBox::No);
        m_finder->bone("head")->getYRotControl()->setValue(15);
        m_finder->rig.undoStack.clearAll();
        selectPoseType(UpsideDown);
        QCOMPARE(no.boxes.size(), 1);
        QCOMPARE(no.boxes.first().title, QString("Quillon - Pose Finder Tool"));
        QCOMPARE(no.boxes.first().buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(pageState().browsingCategory, int(UpsideDown));
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 15.f);
        QCOMPARE(m_finder->steps(), 0);
        QCOMPARE(count().matchCount, 0);
    }

    void scanThatWasAgreedToIsBrowsedAtOnce()
    {
        writeFile(m_finder->file("library/stand.duf"), poseFileText(PoseValues()));
        PoseValues sitting = sittingValues();
        sitting["lForearmBend/y"] = -60; // a symmetric one would count as a mirror of the other
        writeFile(m_finder->file("library/sit.duf"), poseFileText(sitting));
        m_finder->setContent(QStringList(m_finder->file("library")));
        m_finder->bone("head")->getYRotControl()->setValue(15);
        const FigureState posed = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        const unsigned applied = appliedPoseCount();
        const BoxAnswers yes(QMessageBox::Yes);
        selectPoseType(Sitting);
        QCOMPARE(yes.boxes.size(), 2); // the question and the outcome
        QCOMPARE(poseCount(), 2);
        QVERIFY(appliedPoseCount() != applied); // there is something to undo
        QCOMPARE(count().matchCount, 1);
        pluginSettings().currentPose = 0;
        m_finder->next();
        QVERIFY(currentTitle() == "sit");
        while (m_finder->rig.undoStack.undo()) { }
        VERIFY_SAME_STATE(posed, stateOf(m_finder->figure));
    }

    // ---- the reference type ------------------------------------------------------------------

    void referenceTypeLooksForPosesLikeTheReference()
    {
        m_finder->addPose("stand.duf");
        m_finder->addPose("sit.duf", sittingValues());
        PoseValues turned = sittingValues();
        turned["hip/y"] = 130;
        m_finder->addPose("sit, turned.duf", turned);
        PoseValues onBack = sittingValues();
        onBack["hip/x"] = -90;
        m_finder->addPose("sit, on the back.duf", onBack);
        m_finder->memorize(sittingValues());
        m_finder->bone("hip")->getYRotControl()->setValue(40);
        m_finder->browse(ReferencePose);
        QCOMPARE(m_finder->rotationDeg("lShin", 'x'), 90.f); // the reference is shown
        QCOMPARE(m_finder->rotationDeg("hip", 'y'), 0.f);
        QCOMPARE(count().matchCount, 2);
        pluginSettings().currentPose = -1;
        m_finder->next();
        QCOMPARE(currentTitle(), QString("sit"));
        m_finder->next();
        QCOMPARE(currentTitle(), QString("sit, turned"));
    }

    void referenceTypeWithoutAReferenceTakesTheFigureAsItStands()
    {
        m_finder->addPose("stand.duf");
        m_finder->addPose("sit.duf", sittingValues());
        for (const char* name : {"lThighBend", "rThighBend"})
            m_finder->bone(name)->getXRotControl()->setValue(-90);
        const FigureState posed = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        selectPoseType(ReferencePose);
        VERIFY_SAME_STATE(posed, stateOf(m_finder->figure));
        QCOMPARE(m_finder->steps(), 0);
        QCOMPARE(count().matchCount, 1);
        m_finder->next();
        QCOMPARE(currentTitle(), QString("sit"));
    }

    void referencePoseIsLikeItselfBeyondTheLimits()
    {
        PoseValues wide = sittingValues();
        wide["lShldrBend/z"] = -140; // the limit is -40
        m_finder->addPose("wide.duf", wide);
        m_finder->addPose("sit.duf", sittingValues());
        m_finder->memorize(wide);
        pluginSettings().similarity[AreaLeftArm] = true;
        m_finder->browse(ReferencePose);
        QCOMPARE(count().matchCount, 1);
        pluginSettings().currentPose = 1;
        m_finder->next();
        QCOMPARE(currentTitle(), QString("wide"));
    }

    // ---- a figure that moves -----------------------------------------------------------------

    void tellsThatTheHipHasMoved()
    {
        addFiles(2);
        m_finder->browse(AllPoses);
        QVERIFY(!m_finder->next());
        QVERIFY(!m_finder->next());
        m_finder->figure->setWSPos(DzVec3(100, 0, 0));
        QVERIFY(m_finder->next());
        QVERIFY(!m_finder->next());
    }

    void referenceTypeFollowsATurnedHip()
    {
        m_finder->addPose("stand.duf");
        m_finder->addPose("back.duf", values({{"hip/x", -90}}));
        m_finder->memorize(PoseValues());
        for (bool& each : pluginSettings().similarity)
            each = false;
        pluginSettings().similarity[AreaHip] = true;
        m_finder->browse(ReferencePose);
        pluginSettings().currentPose = -1;
        m_finder->next();
        QCOMPARE(currentTitle(), QString("stand"));
        m_finder->bone("hip")->getXRotControl()->setValue(-90);
        QVERIFY(m_finder->next());
        QCOMPARE(currentTitle(), QString("back"));
        QCOMPARE(count().matchCount, 1);
        QCOMPARE(browseState().matchOrdinal, 1);
    }

    // A standing figure stays the stored type while poses of other types are applied.
    void storedTypeIsThatOfTheSetUp()
    {
        m_finder->addPose("stand.duf");
        m_finder->addPose("belly.duf", values({{"hip/x", 90}}));
        m_finder->browse(AllPoses);
        QCOMPARE(figureFacing().currentType, int(Standing));
        pluginSettings().currentPose = 0;
        m_finder->next();
        QCOMPARE(currentTitle(), QString("belly"));
        QCOMPARE(figureFacing().currentType, int(Standing));
        // Belly down after standing: the head, not the feet, shows where the figure faces.
        const DzVec3 head = m_finder->bone("hip")->getWSRot().multVec(DzVec3(0, 1, 0));
        QVERIFY(distance(head, DzVec3(0, 0, 1)) < 1e-5);
        QVERIFY(!m_finder->next());
    }

    void otherFigureIsBrowsedWhereItStands()
    {
        addFiles(2);
        m_finder->browse(AllPoses);
        m_finder->next();
        QString why;
        DzFigure* other = loadFigure(QLatin1String("Genesis8Male"), &why);
        QVERIFY2(other, qPrintable(why));
        m_finder->rig.scene.addNode(other);
        other->setWSPos(DzVec3(-50, 0, 20));
        m_finder->rig.scene.selectAllNodes(false);
        other->select(true);
        m_finder->rig.scene.setPrimarySelection(other);
        const DzVec3 before = other->getWSPos();
        QVERIFY(m_finder->next());
        QVERIFY(distance(other->getWSPos(), before) < 1e-5);
        QVERIFY(!m_finder->next());
    }

    // ---- positions ---------------------------------------------------------------------------

    void stalePositionIsDropped_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("expected");
        QTest::newRow("none") << -1 << -1;
        QTest::newRow("first") << 0 << 0;
        QTest::newRow("last") << 1 << 1;
        QTest::newRow("behind the last") << 2 << -1;
        QTest::newRow("below none") << -5 << -1;
    }
    void stalePositionIsDropped()
    {
        QFETCH(int, position);
        addFiles(2);
        pluginSettings().currentPose = position;
        dropStalePosition();
        QTEST(m_finder->position(), "expected");
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
        addProducts("A0 A1 A2 A3");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = from;
        QFile::remove(poseEntry(vanished)->path);
        findPose(step, false, false);
        QTEST(currentTitle(), "position");
        QCOMPARE(poseCount(), 3);
        QCOMPARE(count().matchCount, 3);
        findPose(step, false, false);
        QTEST(currentTitle(), "after");
    }

    void lastPoseThatVanishesLeavesNone()
    {
        addFiles(1);
        m_finder->browse(AllPoses);
        QFile::remove(poseEntry(0)->path);
        m_finder->next();
        QCOMPARE(poseCount(), 0);
        QCOMPARE(m_finder->position(), -1);
        count();
        QCOMPARE(counterText(), QString("NO MATCHING POSES FOUND"));
    }
};

QTEST_MAIN(TestPoseBrowser)
#include "test_pose_browser.moc"
