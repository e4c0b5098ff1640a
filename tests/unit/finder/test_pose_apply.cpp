// Applying the found pose: locks, the reference pose, mirroring; and over whole collections of
// poses, the real ones among them where they lie beside the project. The rows' names say which.
#include "browse_fixture.h"
#include "full_pipe.h"
#include "room_tests.h"
#include "mirror_fixture.h"
#include "pose_corpora.h"

using namespace quillon;

static PoseValues shinBent(double degrees)
{
    PoseValues values;
    values["lShin/x"] = degrees;
    return values;
}

class TestPoseApply : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<BrowseFixture> m_finder;
    std::unique_ptr<TempFolder> m_made; // with the pose files made here
    QList<PoseCorpus> m_corpora;

    void addCorpusRow(const PoseCorpus& corpus, const char* figure)
    {
        QVERIFY2(corpus.files.size() >= corpus.least, corpus.name);
        QTest::newRow(qPrintable(QString("%1, %2").arg(corpus.name, figure)))
            << QString(figure) << corpus.files;
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
    void initTestCase()
    {
        m_made.reset(new TempFolder);
        m_corpora = poseCorpora(m_made->path("bodies"));
        tellPoseCorpora(m_corpora);
    }
    void cleanupTestCase()
    {
        m_made.reset();
    }
    void init()
    {
        m_finder.reset(new BrowseFixture);
    }
    void cleanup()
    {
        m_finder.reset();
    }

    // ---- files that are none -----------------------------------------------------------------

    void aPipeInPlaceOfAPoseIsDroppedUnread()
    {
        const int entry = m_finder->addPose("People/a.duf", shinBent(40));
        m_finder->addPose("People/b.duf", shinBent(20));
        m_finder->browse(AllPoses);
        const FullPipe pipe(
            poseEntry(entry)->path, presetOf(valueEntry("/lShin:?rotation/x", "5")));
        m_finder->apply(entry);
        QVERIFY(pipe.isUntouched());
        QCOMPARE(poseCount(), 1);
        QVERIFY(poseEntry(0)->path.endsWith("b.duf"));
    }

    // ---- locks -------------------------------------------------------------------------------

    void lockedPartKeepsTheReferencePose_data()
    {
        QTest::addColumn<int>("lock");
        QTest::newRow("upper body") << int(LockUpper);
        QTest::newRow("lower body") << int(LockLower);
        QTest::newRow("feet") << int(LockFeet);
        QTest::newRow("expression") << int(LockFace);
        QTest::newRow("left hand") << int(LockLeftHand);
        QTest::newRow("right hand") << int(LockRightHand);
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
        m_finder->apply(0);
        for (int i = 0; i < kPartLockCount; ++i)
            QVERIFY2(
                nearly(m_finder->rotationDeg(rows[i].bone, rows[i].axis), i == lock ? 7 : -3, 1e-4),
                rows[i].bone);
        QCOMPARE(lockedChannels(m_finder->figure), locked);
    }

    void feetStayThoughOtherControlsDriveThem_data()
    {
        addFigureRows();
    }
    void feetStayThoughOtherControlsDriveThem()
    {
        QFETCH(QString, figure);
        m_finder.reset();
        m_finder.reset(new BrowseFixture(figure));
        m_finder->memorize(values({{"lFoot/x", 9}, {"rFoot/x", -4}}),
            QList<QByteArray>() << valueEntry("#pCTRLlFootTipToes:?value", "0.25")
                                << valueEntry("#pCTRLrFootTwist:?value", "-0.5"));
        m_finder->addFile("a.duf", values({{"lFoot/x", 20}}), kFemaleCode,
            QList<QByteArray>() << valueEntry("#pCTRLKneesUp:?value", "1")
                                << valueEntry("#pCTRLlFootTipToes:?value", "0.75")
                                << valueEntry("#pCTRLrFootTipToes:?value", "1"));
        m_finder->browse(AllPoses);
        QVERIFY(applyPoseFile(referencePosePath(), true));
        QVERIFY(m_finder->rotationDeg("lFoot", 'x') > 10); // its own 9 and the control's share
        std::vector<float> feet;
        for (const char* name : {"lFoot", "rFoot", "lMetatarsals", "lToe", "rToe"}) {
            for (DzFloatProperty* each : poseChannelsOf(m_finder->bone(name)).channel)
                feet.push_back(each->getValue());
        }
        pluginSettings().partLocks[LockFeet] = true;
        m_finder->apply(0);
        QCOMPARE(m_finder->control("pCTRLKneesUp")->getValue(), 1.f);
        QCOMPARE(m_finder->control("pCTRLlFootTipToes")->getValue(), 0.25f);
        QCOMPARE(m_finder->control("pCTRLrFootTipToes")->getValue(), 0.f);
        QCOMPARE(m_finder->control("pCTRLrFootTwist")->getValue(), -0.5f);
        size_t i = 0;
        for (const char* name : {"lFoot", "rFoot", "lMetatarsals", "lToe", "rToe"}) {
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
        m_finder->apply(0);
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
        m_finder->apply(0);
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
        m_finder->apply(0);
        QCOMPARE(lockedChannels(m_finder->figure), locked);
        mirrorCurrentPose(&browseSession(), m_finder->figure, m_finder->time());
        QCOMPARE(lockedChannels(m_finder->figure), locked);
    }

    // ---- the reference pose in the found pose's stead ------------------------------------------

    void overlayShowsTheReferencePose()
    {
        m_finder->memorize(values({{"head/y", 9}}));
        m_finder->addFile("a.duf", values({{"head/y", -20}, {"lHand/z", 12}}));
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        browseSession().referenceOverlay = true;
        m_finder->apply(0);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 9.f);
        QCOMPARE(m_finder->rotationDeg("lHand", 'z'), 0.f);
        browseSession().referenceOverlay = false;
        m_finder->apply(0);
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
        pluginSettings().currentPose = 0;
        QVERIFY(searchPose(m_finder->figure, m_finder->time(), 0, false).changed);
        QCOMPARE(m_finder->position(), 0);
        QCOMPARE(m_finder->steps(), 1);
        QCOMPARE(m_finder->rig.undoStack.getUndoCaption(), QString("quillon_stack"));
        QVERIFY(browseSession().tablesState == Applied);
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
            m_finder->apply(entry);
            QCOMPARE(int(pluginSettings().currentRank), expected[entry]);
        }
    }

    // ---- again, and mirrored -----------------------------------------------------------------

    void reapplyingLooksForNoOtherPose()
    {
        m_finder->addFile("a.duf", values({{"head/y", 12}}));
        m_finder->addFile("b.duf", values({{"head/y", 20}}));
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        pluginSettings().includeFemale = false; // it would not be found any more
        m_finder->bone("head")->getYRotControl()->setValue(0);
        m_finder->rig.undoStack.clearAll();
        reapplyCurrentPose(&browseSession(), m_finder->figure, m_finder->time());
        QCOMPARE(m_finder->position(), 0);
        QCOMPARE(m_finder->rotationDeg("head", 'y'), 12.f);
        QCOMPARE(m_finder->steps(), 1);
        pluginSettings().currentPose = -1;
        reapplyCurrentPose(&browseSession(), m_finder->figure, m_finder->time());
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
        m_finder->apply(0);
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        const DzVec3 before = facingDirection(slotRotation(m_finder->figure, HipSlot, 0));
        m_finder->rig.undoStack.clearAll();
        mirrorCurrentPose(&browseSession(), m_finder->figure, m_finder->time());
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

    void mirroredPoseIsItsReflectionInTheWorld_data()
    {
        addFigureRows();
    }
    // In a mirror that stands upright along the line of sight, through the hip: pose controls, the
    // turn of the whole hip and the figure's own place included.
    void mirroredPoseIsItsReflectionInTheWorld()
    {
        QFETCH(QString, figure);
        m_finder.reset();
        m_finder.reset(new BrowseFixture(figure));
        m_finder->addFile("a.duf",
            values({{"hip/x", 15}, {"hip/y", 20}, {"hip/z", 25}, {"lThighBend/x", -40},
                {"rShldrBend/z", 30}, {"head/y", 10}}),
            kFemaleCode,
            QList<QByteArray>() << valueEntry("#pCTRLWaistTwist:?value", "0.4")
                                << valueEntry("#pCTRLKneesUpLeft:?value", "0.5")
                                << valueEntry("#pCTRLArmsUpRight:?value", "0.3")
                                << valueEntry("#pCTRLlHandFist:?value", "0.6")
                                << valueEntry("#pCTRLrFootTwist:?value", "-0.7")
                                << valueEntry("#pCTRLNeckHeadSide-Side:?value", "0.5"));
        m_finder->figure->getYRotControl()->setValue(70);
        m_finder->figure->setWSPos(DzVec3(30, 4, -20));
        m_finder->bone("hip")->setLocalPos(DzVec3(5, 10, -3));
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        QVERIFY(!nearly(m_finder->rotationDeg("lShin", 'x'), 0, 5)); // a control bends it
        const DzVec3 facing = facingDirection(slotRotation(m_finder->figure, HipSlot, 0));
        const Mirror mirror = {m_finder->hipCm_world(), DzVec3(facing.m_z, 0, -facing.m_x)};
        const std::vector<WorldPlace> before = worldPlaces(m_finder->figure);
        QVERIFY(mirrorCurrentPose(&browseSession(), m_finder->figure, m_finder->time()));
        VERIFY_NONE(firstUnlikeReflection(m_finder->figure, mirror, before));
    }

    // Neither the pose again, in place of what the user has changed since, nor a step, nor a move
    // that the next search would follow.
    void mirroringThatFailsChangesNothing()
    {
        m_finder->addFile("a.duf", values({{"hip/y", 100}, {"head/y", 12}}));
        m_finder->addFile("b.duf", values({{"lThighBend/x", -20}}));
        m_finder->figure->getYRotControl()->setValue(33);
        m_finder->bone("hip")->getYPosControl()->setValue(10);
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        m_finder->bone("lShin")->getXRotControl()->setValue(25);
        m_finder->bone("hip")->getXRotControl()->setValue(40);
        const QString temp = m_finder->app.getTempPath();
        QDir().rmdir(temp);
        writeFile(temp, "a regular file");
        m_finder->rig.scene.setTime(1600);
        m_finder->rig.undoStack.clearAll();
        const FigureState before = stateOf(m_finder->figure);
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        QVERIFY(!mirrorCurrentPose(&browseSession(), m_finder->figure, m_finder->time()));
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
        QVERIFY(!reapplyCurrentPoseMirrored(&browseSession(), m_finder->figure, m_finder->time()));
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
        QCOMPARE(m_finder->steps(), 0);
        QVERIFY(!hipChanged(m_finder->figure, CompareHip, m_finder->time()));
        QFile::remove(temp);
        QDir().mkpath(temp);
        QVERIFY(reapplyCurrentPoseMirrored(&browseSession(), m_finder->figure, m_finder->time()));
        QCOMPARE(m_finder->steps(), 1);
        QVERIFY(nearly(m_finder->rotationDeg("head", 'y'), -12, 1e-4));
        QVERIFY(!m_finder->next());
        QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-3);
    }

    void mirroringThatFailsLeavesTheTablesAsTheyWere()
    {
        m_finder->addFile("a.duf", values({{"hip/y", 100}}));
        pluginSettings().currentPose = 0;
        m_finder->browse(AllPoses);
        const TablesState before = browseSession().tablesState;
        QVERIFY(before != Applied);
        const QString temp = m_finder->app.getTempPath();
        QDir().rmdir(temp);
        writeFile(temp, "a regular file");
        QVERIFY(!reapplyCurrentPoseMirrored(&browseSession(), m_finder->figure, m_finder->time()));
        QCOMPARE(int(browseSession().tablesState), int(before));
    }

    void mirroredPoseKeepsLockedParts()
    {
        m_finder->memorize(values({{"lHand/z", 6}}));
        m_finder->addFile("a.duf", values({{"lHand/z", 12}, {"lFoot/x", 8}, {"rFoot/x", -2}}));
        pluginSettings().partLocks[LockLeftHand] = true;
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        mirrorCurrentPose(&browseSession(), m_finder->figure, m_finder->time());
        QVERIFY(nearly(m_finder->rotationDeg("lHand", 'z'), 6, 1e-4));
        QVERIFY(nearly(m_finder->rotationDeg("rHand", 'z'), -6, 1e-4));
        QVERIFY(nearly(m_finder->rotationDeg("lFoot", 'x'), -2, 1e-4));
        QVERIFY(nearly(m_finder->rotationDeg("rFoot", 'x'), 8, 1e-4));
    }

    // ---- collections of poses ----------------------------------------------------------------

    // The pose that is shown is the one that the scan has judged; a yaw makes no difference.
    void shownPoseHasTheSignatureOfTheScan_data()
    {
        QTest::addColumn<QString>("figure");
        QTest::addColumn<QStringList>("files");
        for (const PoseCorpus& each : m_corpora)
            addCorpusRow(each, kTestFigures[0]);
    }
    void shownPoseHasTheSignatureOfTheScan()
    {
        QFETCH(QStringList, files);
        Random random(9);
        for (int i = 0; i < 25; ++i)
            m_finder->takePose(addEntry(files.at(random.below(files.size())), quint32(i + 1)));
        m_finder->figure->getYRotControl()->setValue(77);
        m_finder->browse(AllPoses);
        for (int i = 0; i < poseCount(); ++i) {
            m_finder->apply(i);
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
        QTest::addColumn<QString>("figure");
        QTest::addColumn<QStringList>("files");
        for (const PoseCorpus& each : m_corpora) {
            for (const char* figure : kTestFigures)
                addCorpusRow(each, figure);
        }
    }
    void anyPoseKeepsPlaceFacingAndLocks()
    {
        QFETCH(QString, figure);
        QFETCH(QStringList, files);
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
        const DzVec3 facing = browseSession().facing.direction;
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

QUILLON_TEST(TestPoseApply)
#include "test_pose_apply.moc"
