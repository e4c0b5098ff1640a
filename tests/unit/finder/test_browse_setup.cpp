#include "browse_fixture.h"
#include "room_tests.h"

#include "finder/pose_similarity.h"

using namespace quillon;

class TestBrowseSetup : public QObject {
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

    // ---- choosing a type ---------------------------------------------------------------------

    void choosingATypeClearsThePose()
    {
        m_finder->addFiles(1);
        Random random(3);
        poseAtRandom(&random, m_finder->figure);
        const FigureState posed = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        QVERIFY(chooseCategory(Standing, m_finder->figure, m_finder->time(), true));
        QCOMPARE(browseSession().type, int(Standing));
        QVERIFY(browseSession().tablesState != Applied);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 0.f);
        QCOMPARE(m_finder->rotationDeg("hip", 'x'), 0.f);
        QCOMPARE(m_finder->steps(), 1);
        QCOMPARE(m_finder->rig.undoStack.getUndoCaption(), QString("quillon_stack"));
        m_finder->rig.undoStack.undo();
        VERIFY_SAME_STATE(posed, stateOf(m_finder->figure));
    }

    void choosingATypeKeepsThePlace()
    {
        m_finder->addFiles(1);
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
        m_finder->addFiles(1);
        m_finder->rig.undoStack.clearAll();
        const FigureState before = stateOf(m_finder->figure);
        QVERIFY(!chooseCategory(Sitting, m_finder->figure, m_finder->time(), true));
        QCOMPARE(m_finder->steps(), 0);
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
    }

    void lockedPartsAreKeptWhenATypeIsChosen()
    {
        m_finder->addFiles(1);
        m_finder->bone("lEye")->getXRotControl()->setValue(5);
        m_finder->bone("lHand")->getZRotControl()->setValue(20);
        pluginSettings().partLocks[3] = true; // expression
        selectPoseType(AllPoses);
        QCOMPARE(m_finder->rotationDeg("lEye", 'x'), 5.f);
        QCOMPARE(m_finder->rotationDeg("lHand", 'z'), 0.f);
    }

    void choosingATypeSetsTheFilters()
    {
        m_finder->addFiles(1);
        m_finder->browse(LyingBellyUp);
        QVERIFY(browseSession().tables.filters.on(HipSlot)
            && browseSession().tables.filters.on(TorsoSlot));
        QVERIFY(!browseSession().tables.filters.on(LeftThighSlot));
        m_finder->browse(AllPoses);
        QVERIFY(!browseSession().tables.filters.on(HipSlot));
        m_finder->browse(ReferencePose);
        QVERIFY(browseSession().tables.filters.on(HipSlot)
            && !browseSession().tables.filters.on(LeftShinSlot));
        pluginSettings().similarity[AreaHip] = false;
        pluginSettings().similarity[AreaLeftShin] = true;
        refreshFilters();
        QVERIFY(!browseSession().tables.filters.on(HipSlot)
            && browseSession().tables.filters.on(LeftShinSlot));
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
        countedMatches();
        QCOMPARE(boxes.boxes.size(), 1);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 15.f);
        m_finder->selectFigure();
        m_finder->next();
        QCOMPARE(m_finder->currentTitle(), QString("sit"));
        m_finder->next();
        QCOMPARE(m_finder->currentTitle(), QString("sit"));
    }

    void setUpWaitsWhenThePickerIsNotShown()
    {
        m_finder->addFiles(1);
        m_finder->bone("head")->getYRotControl()->setValue(15);
        QVERIFY(!chooseCategory(AllPoses, m_finder->figure, m_finder->time(), false));
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 15.f);
        countedMatches();
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 0.f);
    }

    void countingSetsUpOnlyOnce()
    {
        m_finder->addFiles(1);
        m_finder->browse(AllPoses);
        m_finder->bone("head")->getYRotControl()->setValue(15);
        countedMatches();
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
        QCOMPARE(browseSession().type, int(UpsideDown));
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 15.f);
        QCOMPARE(m_finder->steps(), 0);
        QCOMPARE(countedMatches().matchCount, 0);
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
        const BoxAnswers yes(QMessageBox::Yes);
        const bool changed = chooseCategory(Sitting, m_finder->figure, m_finder->time(), true);
        QCOMPARE(yes.boxes.size(), 2); // the question and the outcome
        QCOMPARE(poseCount(), 2);
        QVERIFY(changed); // there is something to undo
        QCOMPARE(countedMatches().matchCount, 1);
        pluginSettings().currentPose = 0;
        m_finder->next();
        QVERIFY(m_finder->currentTitle() == "sit");
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
        QCOMPARE(countedMatches().matchCount, 2);
        pluginSettings().currentPose = -1;
        m_finder->next();
        QCOMPARE(m_finder->currentTitle(), QString("sit"));
        m_finder->next();
        QCOMPARE(m_finder->currentTitle(), QString("sit, turned"));
    }

    // The turn is the reference's, not that of the figure that was cleared for it.
    void referenceThatLiesOrLeansFindsItsLike_data()
    {
        QTest::addColumn<QByteArray>("channel");
        QTest::addColumn<double>("deg");
        QTest::newRow("on the back") << QByteArray("hip/x") << -90.0;
        QTest::newRow("on the belly") << QByteArray("hip/x") << 90.0;
        QTest::newRow("on the left side") << QByteArray("hip/z") << -90.0;
        QTest::newRow("leaning forwards") << QByteArray("hip/x") << 35.0;
        QTest::newRow("leaning to the right") << QByteArray("hip/z") << 35.0;
        QTest::newRow("upside down") << QByteArray("hip/x") << 180.0;
    }
    void referenceThatLiesOrLeansFindsItsLike()
    {
        QFETCH(QByteArray, channel);
        QFETCH(double, deg);
        const double away = deg < 0 ? 1 : -1; // towards upright and beyond; 44 degrees still match
        const auto like = [&](double by) {
            PoseValues turned = values({{"hip/y", 70}}); // any yaw does
            turned[channel] = deg + by;
            return turned;
        };
        m_finder->addPose("same.duf", like(0));
        m_finder->addPose("near.duf", like(away * 30));
        m_finder->addPose("far.duf", like(away * 60));
        m_finder->addPose("near beyond.duf", like(-away * 30));
        m_finder->addPose("far beyond.duf", like(-away * 60));
        m_finder->memorize(like(0));
        for (bool& each : pluginSettings().similarity)
            each = false;
        pluginSettings().similarity[AreaHip] = true;
        m_finder->browse(ReferencePose);
        QStringList found;
        pluginSettings().currentPose = -1;
        for (int n = countedMatches().matchCount; n > 0; --n) {
            m_finder->next();
            found << m_finder->currentTitle();
        }
        found.sort();
        QCOMPARE(found,
            QStringList() << "near"
                          << "near beyond"
                          << "same");
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
        QCOMPARE(countedMatches().matchCount, 1);
        m_finder->next();
        QCOMPARE(m_finder->currentTitle(), QString("sit"));
    }

    void referenceTypeWithoutAReferenceLeavesABrowsedFigureAlone()
    {
        m_finder->addPose("turned.duf", values({{"hip/y", 40}}));
        m_finder->browse(AllPoses);
        m_finder->next();
        QVERIFY(m_finder->figure->getYRotControl()->getValue() != 0); // turned back by the finder
        const FigureState shown = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        m_finder->browse(ReferencePose);
        VERIFY_SAME_STATE(shown, stateOf(m_finder->figure));
        QCOMPARE(m_finder->steps(), 0);
    }

    void referenceTypeKeepsTheFacingOfTheFigure()
    {
        m_finder->addFiles(1);
        PoseValues turned = sittingValues();
        turned["hip/y"] = 130;
        m_finder->memorize(turned);
        m_finder->figure->setWSRot(turn(0, 1, 0, 90));
        m_finder->browse(ReferencePose);
        QVERIFY(distance(browseSession().facing.direction, DzVec3(1, 0, 0)) < 1e-4);
        const DzVec3 front = m_finder->bone("hip")->getWSRot().multVec(DzVec3(0, 0, 1));
        QVERIFY(distance(front, DzVec3(1, 0, 0)) < 1e-4); // the reference is shown facing there
    }

    void smallChangesOfThePlaceSurviveANewType()
    {
        m_finder->addPose("turned.duf", values({{"hip/y", 40}}));
        m_finder->browse(AllPoses);
        m_finder->next();
        DzFloatProperty* yaw = m_finder->figure->getYRotControl();
        const float own = yaw->getValue() + 3; // too little for the search to notice
        yaw->setValue(own);
        m_finder->bone("hip")->getScaleControl()->setValue(1.2f);
        m_finder->browse(Standing);
        QVERIFY(nearly(yaw->getValue(), own, 1e-3));
        QCOMPARE(m_finder->bone("hip")->getScaleControl()->getValue(), 1.2f);
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
        QCOMPARE(countedMatches().matchCount, 1);
        pluginSettings().currentPose = 1;
        m_finder->next();
        QCOMPARE(m_finder->currentTitle(), QString("wide"));
    }

    // ---- a figure that moves -----------------------------------------------------------------

    void tellsThatTheHipHasMoved()
    {
        m_finder->addFiles(2);
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
        QCOMPARE(m_finder->currentTitle(), QString("stand"));
        m_finder->bone("hip")->getXRotControl()->setValue(-90);
        QVERIFY(m_finder->next());
        QCOMPARE(m_finder->currentTitle(), QString("back"));
        QCOMPARE(countedMatches().matchCount, 1);
        QCOMPARE(browseSession().matchOrdinal, 1);
    }

    // A standing figure stays the stored type while poses of other types are applied.
    void storedTypeIsThatOfTheSetUp()
    {
        m_finder->addPose("stand.duf");
        m_finder->addPose("belly.duf", values({{"hip/x", 90}}));
        m_finder->browse(AllPoses);
        QCOMPARE(browseSession().facing.currentType, int(Standing));
        pluginSettings().currentPose = 0;
        m_finder->next();
        QCOMPARE(m_finder->currentTitle(), QString("belly"));
        QCOMPARE(browseSession().facing.currentType, int(Standing));
        // Belly down after standing: the head, not the feet, shows where the figure faces.
        const DzVec3 head = m_finder->bone("hip")->getWSRot().multVec(DzVec3(0, 1, 0));
        QVERIFY(distance(head, DzVec3(0, 0, 1)) < 1e-5);
        QVERIFY(!m_finder->next());
    }

    // Though the press in between found no pose: the tables were taken from the figure all the
    // same.
    void aFigureTurnedAwayAndBackFacesAsBefore()
    {
        m_finder->addFiles(2);
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        const double headingDeg = m_finder->headingDeg();
        const auto turnAboutHip = [this](double deg) {
            const DzVec3 hipCm_world = m_finder->hipCm_world();
            DzFigure* figure = m_finder->figure;
            figure->getYRotControl()->setValue(figure->getYRotControl()->getValue() + float(deg));
            figure->setWSPos(figure->getWSPos() + hipCm_world - m_finder->hipCm_world());
        };
        const int shown = pluginSettings().rankFilter;
        turnAboutHip(90);
        pluginSettings().rankFilter = 0;
        QVERIFY(m_finder->next());
        QCOMPARE(m_finder->position(), -1);
        pluginSettings().rankFilter = shown;
        turnAboutHip(-90);
        QVERIFY(m_finder->next()); // the figure was moved
        QVERIFY(
            nearly(headingBetween(headingDeg, m_finder->headingDeg()), 0, 1e-3)); // float angles
        QVERIFY(!m_finder->next());
    }

    void otherFigureIsBrowsedWhereItStands()
    {
        m_finder->addFiles(2);
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
};

QUILLON_TEST(TestBrowseSetup)
#include "test_browse_setup.moc"
