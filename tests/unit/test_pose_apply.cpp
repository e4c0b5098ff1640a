#include "browse_fixture.h"

#include "finder/pose_similarity.h"
#include "posefile/part_locks.h"

using namespace quillon;

class TestPoseApply : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<BrowseFixture> m_finder;

    enum PartLock { LockUpper, LockLower, LockFeet, LockFace, LockLeftHand, LockRightHand };

    void apply(int entry)
    {
        pluginSettings().currentPose = entry;
        findPose(0, false, false);
        QCOMPARE(m_finder->position(), entry);
    }
    static RawPose withFigure(const DzNode* figure)
    {
        RawPose pose = rawPose(figure);
        for (DzFloatProperty* each : poseChannelsOf(figure).channel)
            pose.push_back(std::make_pair(each, each->getRawValue()));
        return pose;
    }
    // Empty when all raw values are the same to the bit.
    static QString firstChange(const RawPose& a, const RawPose& b)
    {
        for (size_t i = 0; i < a.size(); ++i) {
            if (a[i].second != b[i].second)
                return QString("%1: %2, was %3")
                    .arg(channelPath(a[i].first))
                    .arg(double(b[i].second), 0, 'g', 9)
                    .arg(double(a[i].second), 0, 'g', 9);
        }
        return QString();
    }
    // A pose that turns, bends and expresses a little of everything.
    static QList<QByteArray> ownEntries(const char* sign)
    {
        const QByteArray minus(sign);
        return QList<QByteArray>()
            << valueEntry("/hip:?rotation/y", (minus + "25").constData())
            << valueEntry("/lFoot:?rotation/x", (minus + "12").constData())
            << valueEntry("/head:?rotation/y", (minus + "8").constData())
            << valueEntry("/lHand:?rotation/z", (minus + "14").constData())
            << valueEntry("/rHand:?rotation/z", (minus + "16").constData())
            << valueEntry("/lThighBend:?rotation/x", (minus + "18").constData())
            << valueEntry("/lShldrBend:?rotation/z", (minus + "20").constData());
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

    // ---- the order of things -----------------------------------------------------------------

    void samePoseAgainGivesTheSameChannels_data()
    {
        QTest::addColumn<double>("yawDeg");
        QTest::addColumn<double>("hipYawDeg");
        QTest::newRow("at rest") << 0.0 << 0.0;
        QTest::newRow("turned by 90") << 90.0 << 0.0;
        QTest::newRow("turned by more than half a circle") << 200.0 << 0.0;
        QTest::newRow("pose turned by 170") << 30.0 << 170.0;
    }
    void samePoseAgainGivesTheSameChannels()
    {
        QFETCH(double, yawDeg);
        QFETCH(double, hipYawDeg);
        m_finder->addFile("a.duf", values({{"hip/y", hipYawDeg}, {"lShin/x", 40}}));
        m_finder->addFile("b.duf", values({{"hip/y", -160}, {"hip/x", 30}, {"chestLower/z", 5}}));
        m_finder->figure->getYRotControl()->setValue(float(yawDeg));
        m_finder->figure->setWSPos(DzVec3(12, 3, -8));
        m_finder->browse(AllPoses);
        apply(0);
        const RawPose first = withFigure(m_finder->figure);
        apply(1);
        QVERIFY(!firstChange(first, withFigure(m_finder->figure)).isEmpty());
        apply(0);
        VERIFY_NONE(firstChange(first, withFigure(m_finder->figure)));
    }

    void hipTurnsAsInTheFile()
    {
        m_finder->addFile("a.duf", values({{"hip/x", 20}, {"hip/y", 75}, {"hip/z", -10}}));
        m_finder->figure->getYRotControl()->setValue(40);
        m_finder->browse(AllPoses);
        apply(0);
        QCOMPARE(m_finder->rotationDeg("hip", 'x'), 20.f);
        QCOMPARE(m_finder->rotationDeg("hip", 'y'), 75.f);
        QCOMPARE(m_finder->rotationDeg("hip", 'z'), -10.f);
    }

    // The figure takes its own rotation back; what the file turned goes into the hip, and then the
    // figure turns until it faces as before.
    void fileThatTurnsTheFigureTurnsOnlyThePose()
    {
        m_finder->addFile("a.duf", PoseValues(), kFemaleCode,
            QList<QByteArray>() << valueEntry(":?rotation/y", "50")
                                << valueEntry(":?rotation/x", "20")
                                << valueEntry(":?translation/x", "300"));
        m_finder->figure->setWSPos(DzVec3(12, 0, -8));
        m_finder->browse(AllPoses);
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        apply(0);
        const DzVec3 up = m_finder->bone("hip")->getWSRot().multVec(DzVec3(0, 1, 0));
        QVERIFY(nearly(up.m_y, std::cos(20 * kPi / 180), 1e-6)); // it leans as in the file
        QVERIFY(nearly(headingBetween(0, m_finder->headingDeg()), 0, 1e-3));
        QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-4);
        const DzVec3 figureUp = m_finder->figure->getWSRot().multVec(DzVec3(0, 1, 0));
        QVERIFY(nearly(figureUp.m_y, 1, 1e-6)); // and the figure does not
        const DzVec3 fromFileRad(float(20 * kPi / 180), float(50 * kPi / 180), 0);
        const DzQuat fromFile(m_finder->figure->getRotationOrder().order(), fromFileRad);
        QVERIFY(angleDeg(m_finder->bone("hip")->getLocalRot(), fromFile) < 1e-3);
    }

    // ---- place, facing, size -----------------------------------------------------------------

    void figureStaysWhereItStandsAndFaces_data()
    {
        QTest::addColumn<double>("hipYawDeg");
        for (double yawDeg : {-179.0, -135.0, -90.0, -1.0, 0.0, 1.0, 45.0, 90.0, 179.0})
            QTest::newRow(qPrintable(QString::number(yawDeg))) << yawDeg;
    }
    void figureStaysWhereItStandsAndFaces()
    {
        QFETCH(double, hipYawDeg);
        m_finder->addFile("a.duf", values({{"hip/y", hipYawDeg}, {"hip/x", 15}}));
        m_finder->figure->getYRotControl()->setValue(90);
        m_finder->figure->setWSPos(DzVec3(210, 7, -130));
        m_finder->figure->getScaleControl()->setValue(1.25f);
        m_finder->browse(AllPoses);
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        apply(0);
        QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-3);
        QVERIFY(nearly(headingBetween(90, m_finder->headingDeg()), 0, 1e-3));
        const DzVec3 figureUp = m_finder->figure->getWSRot().multVec(DzVec3(0, 1, 0));
        QVERIFY(nearly(figureUp.m_y, 1, 1e-6)); // turned about the vertical alone
        QCOMPARE(m_finder->figure->getScaleControl()->getValue(), 1.25f);
        QVERIFY(!m_finder->next()); // and it is no move of the user's
    }

    // Lying, the feet show where the figure faces: the head where its back would be.
    void lyingFigureLiesAlongItsFacing_data()
    {
        QTest::addColumn<double>("hipX");
        QTest::addColumn<double>("hipZ");
        QTest::addColumn<double>("hipY");
        QTest::newRow("on the back") << -90.0 << 0.0 << 0.0;
        QTest::newRow("on the back, turned") << -90.0 << 0.0 << 70.0;
        QTest::newRow("on the left side") << 0.0 << -90.0 << 0.0;
        QTest::newRow("on the right side") << 0.0 << 90.0 << 0.0;
    }
    void lyingFigureLiesAlongItsFacing()
    {
        QFETCH(double, hipX);
        QFETCH(double, hipY);
        QFETCH(double, hipZ);
        m_finder->addFile("a.duf", values({{"hip/x", hipX}, {"hip/y", hipY}, {"hip/z", hipZ}}));
        m_finder->figure->getYRotControl()->setValue(90); // faces +X
        m_finder->browse(AllPoses);
        apply(0);
        const DzVec3 head = m_finder->bone("hip")->getWSRot().multVec(DzVec3(0, 1, 0));
        QVERIFY(distance(head, DzVec3(-1, 0, 0)) < 1e-5);
    }

    void movedFigureIsBrowsedWhereItIsNow()
    {
        m_finder->addFile("a.duf", values({{"lShin/x", 30}}));
        m_finder->addFile("b.duf", values({{"lShin/x", 60}}));
        m_finder->bone("hip")->setLocalPos(m_finder->time(), DzVec3(1, 2, 3));
        m_finder->browse(AllPoses);
        apply(0);
        m_finder->figure->getXPosControl()->setValue(100);
        m_finder->figure->getZRotControl()->setValue(10);
        apply(1);
        QCOMPARE(m_finder->figure->getXPosControl()->getValue(), 100.f);
        QCOMPARE(m_finder->bone("hip")->getLocalPos(), DzVec3(1, 2, 3));
        apply(0);
        QCOMPARE(m_finder->figure->getXPosControl()->getValue(), 100.f);
    }

    void figureMovedBeforeTheFirstPoseIsBrowsedWhereItIsNow()
    {
        m_finder->addFile("a.duf", values({{"lShin/x", 30}}));
        m_finder->browse(AllPoses);
        m_finder->figure->getXPosControl()->setValue(100);
        m_finder->figure->getYRotControl()->setValue(90);
        apply(0);
        QCOMPARE(m_finder->figure->getXPosControl()->getValue(), 100.f);
        QVERIFY(nearly(headingBetween(90, m_finder->headingDeg()), 0, 1e-4));
    }

    void hipKeepsItsTranslation()
    {
        m_finder->addFile("a.duf", values({{"hip/y", 120}}), kFemaleCode,
            QList<QByteArray>() << valueEntry("/hip:?translation/y", "55"));
        m_finder->addFile("b.duf", values({{"hip/x", 50}}));
        m_finder->bone("hip")->getYPosControl()->setValue(10);
        m_finder->browse(AllPoses);
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        for (int entry : {0, 1, 0}) {
            apply(entry);
            QCOMPARE(m_finder->bone("hip")->getLocalPos(), DzVec3(0, 10, 0));
            QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-4);
        }
    }

    void sizesArePutBack()
    {
        m_finder->addFile("a.duf", values({{"lShin/x", 30}}));
        m_finder->figure->getXScaleControl()->setValue(1.5f);
        m_finder->bone("hip")->getScaleControl()->setValue(0.9f);
        m_finder->browse(AllPoses);
        apply(0);
        m_finder->figure->getXScaleControl()->setValue(2); // moves neither hip nor heading
        m_finder->bone("hip")->getScaleControl()->setValue(1);
        apply(0);
        QCOMPARE(m_finder->figure->getXScaleControl()->getValue(), 1.5f);
        QCOMPARE(m_finder->bone("hip")->getScaleControl()->getValue(), 0.9f);
    }

    // A pose's turn of the figure is taken back, not taken for the way that the user faces it.
    void otherTypeFindsTheFigureFacingAsBefore()
    {
        m_finder->addPose("a.duf", values({{"hip/y", 130}}));
        m_finder->figure->getYRotControl()->setValue(90);
        m_finder->browse(AllPoses);
        for (int type : {Standing, AllPoses, Standing}) {
            pluginSettings().currentPose = 0;
            m_finder->next();
            QVERIFY(nearly(m_finder->figure->getYRotControl()->getValue(), -40, 1e-3));
            m_finder->browse(type);
            QCOMPARE(m_finder->figure->getYRotControl()->getValue(), 90.f);
            QVERIFY(nearly(headingBetween(90, m_finder->headingDeg()), 0, 1e-4));
        }
    }

    void otherTypeKeepsAFigureThatTheUserTurned()
    {
        m_finder->addPose("a.duf", values({{"hip/y", 130}}));
        m_finder->browse(AllPoses);
        apply(0);
        m_finder->figure->getYRotControl()->setValue(30);
        m_finder->browse(Standing);
        QCOMPARE(m_finder->figure->getYRotControl()->getValue(), 30.f);
    }

    // ---- limits and translations -------------------------------------------------------------

    void poseMayGoBeyondTheLimitsWhereAllowed_data()
    {
        QTest::addColumn<bool>("allowed");
        QTest::newRow("allowed") << true;
        QTest::newRow("not allowed") << false;
    }
    void poseMayGoBeyondTheLimitsWhereAllowed()
    {
        QFETCH(bool, allowed);
        pluginSettings().allowPoseViolation = allowed;
        const DzFloatProperty* bend = m_finder->bone("lThighBend")->getXRotControl();
        DzFloatProperty* const control = m_finder->control("pCTRLKneesUp");
        QVERIFY(bend->isClamped() && control->isClamped() && bend->getMin() > -170);
        m_finder->addFile("a.duf", values({{"lThighBend/x", -170}}), kFemaleCode,
            QList<QByteArray>() << valueEntry("#pCTRLKneesUp:?value", "3"));
        control->setMax(2);
        m_finder->browse(AllPoses);
        const FigureState before = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        apply(0);
        QCOMPARE(bend->isClamped(), !allowed);
        QCOMPARE(control->isClamped(), !allowed);
        QCOMPARE(control->getValue(), allowed ? 3.f : 2.f);
        if (allowed)
            QVERIFY(bend->getRawValue() == -170.f);
        else
            QVERIFY(bend->getValue() >= bend->getMin() && bend->getRawValue() > -170);
        QVERIFY(m_finder->bone("lEye")->getXRotControl()->isClamped()); // no part of this
        m_finder->rig.undoStack.undo();
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
    }

    void limitsThatTheUserLiftedAreSetWhereNotAllowed()
    {
        pluginSettings().allowPoseViolation = false;
        m_finder->addFile("a.duf", values({{"lThighBend/x", -170}}));
        liftAllLimits(m_finder->figure);
        m_finder->browse(AllPoses);
        apply(0);
        const DzFloatProperty* bend = m_finder->bone("lThighBend")->getXRotControl();
        QVERIFY(bend->isClamped());
        QCOMPARE(bend->getRawValue(), bend->getMin());
    }

    void faceMayGoBeyondTheLimitsWhereAllowed_data()
    {
        poseMayGoBeyondTheLimitsWhereAllowed_data();
    }
    void faceMayGoBeyondTheLimitsWhereAllowed()
    {
        QFETCH(bool, allowed);
        pluginSettings().allowFaceViolation = allowed;
        DzFloatProperty* const smile = m_finder->control("eCTRLMouthSmile");
        const DzFloatProperty* jaw = m_finder->bone("lowerJaw")->getXRotControl();
        QVERIFY(smile && smile->isClamped() && jaw->isClamped() && jaw->getMax() < 90);
        m_finder->addFile("a.duf", values({{"lowerJaw/x", 90}}), kFemaleCode,
            QList<QByteArray>() << valueEntry("#eCTRLMouthSmile:?value", "4"));
        m_finder->browse(AllPoses);
        const FigureState before = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        apply(0);
        QCOMPARE(jaw->isClamped(), !allowed);
        QCOMPARE(smile->isClamped(), !allowed);
        QCOMPARE(smile->getValue(), allowed ? 4.f : smile->getMax());
        QCOMPARE(jaw->getRawValue() == 90.f, allowed);
        QVERIFY(!m_finder->bone("lThighBend")->getXRotControl()->isClamped()); // allowed itself
        m_finder->rig.undoStack.undo();
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
    }

    void translationsAreZeroedUnlessAllowed_data()
    {
        poseMayGoBeyondTheLimitsWhereAllowed_data();
    }
    void translationsAreZeroedUnlessAllowed()
    {
        QFETCH(bool, allowed);
        pluginSettings().allowTranslations = allowed;
        clearAllLocks(m_finder->figure);
        m_finder->addFile("a.duf", PoseValues(), kFemaleCode,
            QList<QByteArray>() << valueEntry("/lShin:?translation/x", "0.5")
                                << valueEntry("/head:?translation/y", "-0.25")
                                << valueEntry("/lEar:?translation/z", "0.75"));
        m_finder->bone("hip")->getYPosControl()->setValue(10);
        m_finder->browse(AllPoses);
        apply(0);
        QCOMPARE(m_finder->bone("lShin")->getXPosControl()->getValue(), allowed ? 0.5f : 0.f);
        QCOMPARE(m_finder->bone("head")->getYPosControl()->getValue(), allowed ? -0.25f : 0.f);
        QCOMPARE(m_finder->bone("lEar")->getZPosControl()->getValue(), 0.75f); // not of the 26
        QCOMPARE(m_finder->bone("hip")->getYPosControl()->getValue(), 10.f);
        QVERIFY(!isStatusMessageShown());
    }

    void translationsOfLockedPartsStay()
    {
        pluginSettings().allowTranslations = false;
        pluginSettings().partLocks[LockLower] = true;
        clearAllLocks(m_finder->figure);
        const QList<QByteArray> entries = QList<QByteArray>() << valueEntry("/lShin:?translation/x",
                                              "0.5") << valueEntry("/lHand:?translation/x", "0.5");
        m_finder->memorize(PoseValues(), entries);
        m_finder->addFile("a.duf", PoseValues(), kFemaleCode, entries);
        m_finder->browse(AllPoses);
        apply(0);
        QCOMPARE(m_finder->bone("lShin")->getXPosControl()->getValue(), 0.5f);
        QCOMPARE(m_finder->bone("lHand")->getXPosControl()->getValue(), 0.f);
    }

    // ---- locks -------------------------------------------------------------------------------

    void lockedPartKeepsTheReferencePose_data()
    {
        QTest::addColumn<int>("lock");
        QTest::addColumn<QString>("bone");
        QTest::addColumn<QChar>("axis");
        QTest::newRow("upper body") << int(LockUpper) << "lShldrBend" << QChar('z');
        QTest::newRow("lower body") << int(LockLower) << "lThighBend" << QChar('x');
        QTest::newRow("feet") << int(LockFeet) << "lFoot" << QChar('x');
        QTest::newRow("expression") << int(LockFace) << "lowerJaw" << QChar('x');
        QTest::newRow("left hand") << int(LockLeftHand) << "lIndex1" << QChar('z');
        QTest::newRow("right hand") << int(LockRightHand) << "rIndex1" << QChar('z');
    }
    void lockedPartKeepsTheReferencePose()
    {
        QFETCH(int, lock);
        const struct {
            const char* bone;
            char axis;
        } rows[] = {{"lShldrBend", 'z'}, {"lThighBend", 'x'}, {"lFoot", 'x'}, {"lowerJaw", 'x'},
            {"lIndex1", 'z'}, {"rIndex1", 'z'}};
        PoseValues reference, candidate;
        for (const auto& row : rows) {
            const QByteArray key = QByteArray(row.bone) + '/' + row.axis;
            reference[key] = 7;
            candidate[key] = -3;
        }
        m_finder->memorize(reference);
        m_finder->addFile("a.duf", candidate);
        m_finder->browse(AllPoses);
        liftEveryLimit(m_finder->figure);
        pluginSettings().partLocks[lock] = true;
        const QStringList locked = lockedChannels(m_finder->figure);
        apply(0);
        for (int i = 0; i < kPartLockCount; ++i)
            QVERIFY2(
                nearly(m_finder->rotationDeg(rows[i].bone, rows[i].axis), i == lock ? 7 : -3, 1e-4),
                rows[i].bone);
        QCOMPARE(lockedChannels(m_finder->figure), locked);
    }

    void feetStayThoughOtherControlsDriveThem()
    {
        m_finder->memorize(values({{"lFoot/x", 9}, {"rFoot/x", -4}}),
            QList<QByteArray>() << valueEntry("#pCTRLlFoot:?value", "0.25"));
        m_finder->addFile("a.duf", values({{"lFoot/x", 20}}), kFemaleCode,
            QList<QByteArray>() << valueEntry("#pCTRLKneesUp:?value", "1"));
        m_finder->browse(AllPoses);
        QVERIFY(applyPoseFile(referencePosePath(), true));
        std::vector<float> feet;
        for (const char* name : {"lFoot", "rFoot", "lMetatarsals", "lToe"}) {
            for (DzFloatProperty* each : poseChannelsOf(m_finder->bone(name)).channel)
                feet.push_back(each->getValue());
        }
        pluginSettings().partLocks[LockFeet] = true;
        apply(0);
        QCOMPARE(m_finder->control("pCTRLKneesUp")->getValue(), 1.f);
        size_t i = 0;
        for (const char* name : {"lFoot", "rFoot", "lMetatarsals", "lToe"}) {
            for (DzFloatProperty* each : poseChannelsOf(m_finder->bone(name)).channel)
                QVERIFY2(nearly(each->getValue(), feet[i++], 1e-4), qPrintable(channelPath(each)));
        }
    }

    void lockedFaceStaysWithoutAReferencePose()
    {
        m_finder->addFile("a.duf", values({{"lowerJaw/x", 11}, {"lHand/z", 12}}));
        m_finder->browse(AllPoses);
        m_finder->bone("lowerJaw")->getXRotControl()->setValue(4);
        m_finder->control("eCTRLMouthSmile")->setValue(0.5f);
        m_finder->bone("lHand")->getZRotControl()->setValue(30);
        const float jawDeg = m_finder->rotationDeg("lowerJaw", 'x');
        pluginSettings().partLocks[LockFace] = true;
        apply(0);
        QVERIFY(jawDeg != 0 && nearly(m_finder->rotationDeg("lowerJaw", 'x'), jawDeg, 1e-4));
        QCOMPARE(m_finder->control("eCTRLMouthSmile")->getValue(), 0.5f);
        QCOMPARE(m_finder->rotationDeg("lHand", 'z'), 12.f);
    }

    void referencePoseIsNotShownWithoutALock()
    {
        m_finder->memorize(values({{"lFoot/x", 9}, {"head/y", 9}}),
            QList<QByteArray>() << valueEntry(":?rotation/y", "50"));
        m_finder->addFile("a.duf", values({{"lHand/z", 12}}));
        m_finder->browse(AllPoses);
        apply(0);
        QCOMPARE(m_finder->rotationDeg("hip", 'y'), 0.f); // no turn of the figure got into it
        QCOMPARE(m_finder->rotationDeg("lFoot", 'x'), 0.f);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 0.f);
    }

    void noLockChangesWithAllPartsLocked()
    {
        m_finder->memorize(PoseValues(), ownEntries("-"));
        m_finder->addFile("a.duf", PoseValues(), kFemaleCode, ownEntries(""));
        Random random(11);
        lockAtRandom(&random, m_finder->figure, 60);
        m_finder->browse(AllPoses);
        for (bool& each : pluginSettings().partLocks)
            each = true;
        const QStringList locked = lockedChannels(m_finder->figure);
        apply(0);
        QCOMPARE(lockedChannels(m_finder->figure), locked);
        mirrorCurrentPose(m_finder->figure, m_finder->time());
        QCOMPARE(lockedChannels(m_finder->figure), locked);
    }

    // ---- the reference pose in the found pose's stead ------------------------------------------

    void overlayShowsTheReferencePose()
    {
        m_finder->memorize(values({{"head/y", 9}}));
        m_finder->addFile("a.duf", values({{"head/y", -20}, {"lHand/z", 12}}));
        m_finder->browse(AllPoses);
        apply(0);
        pageState().referenceOverlay = true;
        apply(0);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 9.f);
        QCOMPARE(m_finder->rotationDeg("lHand", 'z'), 0.f);
        pageState().referenceOverlay = false;
        apply(0);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), -20.f);
    }

    void unreadablePoseLeavesTheIndexForTheReference()
    {
        m_finder->memorize(values({{"head/y", 9}}));
        for (const char* name : {"a.duf", "b.duf", "c.duf"})
            m_finder->addFile(name, values({{"head/y", -20}}));
        m_finder->browse(AllPoses);
        const QString gone = poseEntry(1)->path;
        QFile::remove(gone);
        pluginSettings().currentPose = 0;
        m_finder->next();
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 9.f);
        QCOMPARE(poseCount(), 2);
        QVERIFY(!indexedPaths().contains(gone));
        const QStringList left = indexedPaths();
        createPoseIndex();
        QVERIFY(readPoseIndex()); // for good
        QCOMPARE(indexedPaths(), left);
        QCOMPARE(m_finder->steps(), 1);
    }

    void unreadablePoseOnLockedPartsToo()
    {
        m_finder->memorize(values({{"head/y", 9}, {"lHand/z", 6}}));
        m_finder->addFile("a.duf");
        m_finder->addFile("b.duf");
        m_finder->browse(AllPoses);
        pluginSettings().partLocks[LockLeftHand] = true;
        const QStringList locked = lockedChannels(m_finder->figure);
        QFile::remove(poseEntry(0)->path);
        pluginSettings().currentPose = 1;
        m_finder->next();
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 9.f);
        QCOMPARE(m_finder->rotationDeg("lHand", 'z'), 6.f);
        QCOMPARE(lockedChannels(m_finder->figure), locked);
    }

    // ---- one step ----------------------------------------------------------------------------

    void applyingIsOneUndoStep()
    {
        m_finder->addFile("a.duf", values({{"hip/y", 100}, {"head/y", 12}}));
        m_finder->figure->getYRotControl()->setValue(33);
        m_finder->browse(AllPoses);
        const FigureState before = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        const unsigned applied = appliedPoseCount();
        apply(0);
        QCOMPARE(appliedPoseCount(), applied + 1);
        QCOMPARE(m_finder->steps(), 1);
        QCOMPARE(m_finder->rig.undoStack.getUndoCaption(), QString("quillon_stack"));
        QVERIFY(pageState().tablesValid);
        m_finder->rig.undoStack.undo();
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
    }

    void appliedPoseGivesItsRank()
    {
        m_finder->addFile("a.duf");
        m_finder->addFile("b.duf");
        m_finder->addFile("data/Brannoc/Quillon/custom/c.duf");
        m_finder->browse(AllPoses);
        pluginSettings().currentPose = 1;
        setCurrentRank(Hidden);
        const int expected[] = {Unranked, Hidden, CustomLibraryPose};
        for (int entry = 0; entry < 3; ++entry) {
            apply(entry);
            QCOMPARE(int(pluginSettings().currentRank), expected[entry]);
        }
    }

    // ---- again, and mirrored -----------------------------------------------------------------

    void reapplyingLooksForNoOtherPose()
    {
        m_finder->addFile("a.duf", values({{"head/y", 12}}));
        m_finder->addFile("b.duf", values({{"head/y", 20}}));
        m_finder->browse(AllPoses);
        apply(0);
        pluginSettings().includeFemale = false; // it would not be found any more
        m_finder->bone("head")->getYRotControl()->setValue(0);
        m_finder->rig.undoStack.clearAll();
        reapplyCurrentPose(m_finder->figure, m_finder->time());
        QCOMPARE(m_finder->position(), 0);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 12.f);
        QCOMPARE(m_finder->steps(), 1);
        pluginSettings().currentPose = -1;
        reapplyCurrentPose(m_finder->figure, m_finder->time());
        QCOMPARE(m_finder->steps(), 1);
    }

    void mirroredPoseFacesTheSameWay()
    {
        m_finder->addFile(
            "a.duf", values({{"hip/y", 20}, {"hip/z", 25}, {"lThighBend/x", -40}, {"head/y", 10}}));
        m_finder->addFile("b.duf", values({{"lShin/x", 20}}));
        m_finder->figure->getYRotControl()->setValue(90);
        m_finder->bone("hip")->getYPosControl()->setValue(10);
        m_finder->browse(AllPoses);
        apply(0);
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        const DzVec3 before = facingDirection(slotRotation(m_finder->figure, HipSlot, 0));
        m_finder->rig.undoStack.clearAll();
        mirrorCurrentPose(m_finder->figure, m_finder->time());
        QCOMPARE(m_finder->steps(), 1);
        QCOMPARE(m_finder->rotationDeg("lThighBend", 'x'), 0.f);
        QVERIFY(nearly(m_finder->rotationDeg("rThighBend", 'x'), -40, 1e-4));
        QVERIFY(nearly(m_finder->rotationDeg("head", 'y'), -10, 1e-4));
        const DzVec3 after = facingDirection(slotRotation(m_finder->figure, HipSlot, 0));
        QVERIFY(distance(after, before) < 1e-5);
        QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-3);
        QVERIFY(!m_finder->next()); // the mirroring was no move of the user's
        QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-3);
        QVERIFY(
            distance(facingDirection(slotRotation(m_finder->figure, HipSlot, 0)), before) < 1e-5);
        QCOMPARE(m_finder->bone("hip")->getYPosControl()->getValue(), 10.f);
    }

    void mirroredPoseKeepsLockedParts()
    {
        m_finder->memorize(values({{"lHand/z", 6}}));
        m_finder->addFile("a.duf", values({{"lHand/z", 12}, {"lFoot/x", 8}, {"rFoot/x", -2}}));
        pluginSettings().partLocks[LockLeftHand] = true;
        m_finder->browse(AllPoses);
        apply(0);
        mirrorCurrentPose(m_finder->figure, m_finder->time());
        QVERIFY(nearly(m_finder->rotationDeg("lHand", 'z'), 6, 1e-4));
        QVERIFY(nearly(m_finder->rotationDeg("rHand", 'z'), -6, 1e-4));
        QVERIFY(nearly(m_finder->rotationDeg("lFoot", 'x'), -2, 1e-4));
        QVERIFY(nearly(m_finder->rotationDeg("rFoot", 'x'), 8, 1e-4));
    }

    // ---- real poses --------------------------------------------------------------------------

    // The pose that is shown is the one that the scan has judged; a yaw makes no difference.
    void shownPoseHasTheSignatureOfTheScan()
    {
        const QStringList files = presetsIn(sharedPoses() + QLatin1String("/mocap"));
        if (files.isEmpty())
            QSKIP("the corpus of poses is not here");
        Random random(9);
        for (int i = 0; i < 25; ++i)
            m_finder->takePose(addEntry(files.at(random.below(files.size())), quint32(i + 1)));
        m_finder->figure->getYRotControl()->setValue(77);
        m_finder->browse(AllPoses);
        for (int i = 0; i < poseCount(); ++i) {
            apply(i);
            for (int slot = HipSlot; slot < kSignatureSlots; ++slot) {
                const DzQuat& judged = poseEntry(i)->signature[slot];
                const DzQuat shown = slotRotation(m_finder->figure, SignatureSlot(slot), 0);
                if (slot != HipSlot) {
                    QVERIFY2(angleDeg(shown, judged) < 1e-3, qPrintable(QString::number(slot)));
                    continue;
                }
                const DzVec3 axis = (judged.inverse() * shown).multVec(DzVec3(0, 1, 0));
                QVERIFY(distance(axis, DzVec3(0, 1, 0)) < 1e-5);
            }
        }
    }

    // Whatever is applied, in whatever order, hip and facing stay, and so do all locks.
    void anyPoseKeepsPlaceFacingAndLocks_data()
    {
        addFigureRows();
    }
    void anyPoseKeepsPlaceFacingAndLocks()
    {
        QFETCH(QString, figure);
        const QStringList files = presetsIn(sharedPoses() + QLatin1String("/mocap"));
        if (files.isEmpty())
            QSKIP("the corpus of poses is not here");
        m_finder.reset();
        m_finder.reset(new BrowseFixture(figure));
        Random random(5);
        for (int i = 0; i < 40; ++i)
            addEntry(files.at(random.below(files.size())), quint32(i + 1));
        m_finder->figure->getYRotControl()->setValue(float(random.between(-180, 180)));
        m_finder->figure->setWSPos(DzVec3(40, -12, 90));
        m_finder->bone("hip")->setLocalPos(m_finder->time(), DzVec3(3, -4, 5));
        m_finder->browse(AllPoses);
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        const DzVec3 facing = figureFacing().direction;
        const QStringList locked = lockedChannels(m_finder->figure);
        for (int i = 0; i < poseCount(); ++i) {
            pluginSettings().partLocks[random.below(kPartLockCount)] = random.below(2) == 0;
            QVERIFY(!m_finder->next());
            QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-3);
            const DzVec3 now = facingDirection(slotRotation(m_finder->figure, HipSlot, 0));
            QVERIFY(distance(now, facing) < 1e-4);
            QCOMPARE(m_finder->bone("hip")->getLocalPos(), DzVec3(3, -4, 5));
            QCOMPARE(lockedChannels(m_finder->figure), locked);
        }
        QCOMPARE(m_finder->steps(), poseCount());
    }
};

QTEST_MAIN(TestPoseApply)
#include "test_pose_apply.moc"
