// Reset: which channels and controls go to 0, and that everything else stays where it was.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/reset_pose.h"

#include "dzerclink.h"

#include <QtTest>

using namespace quillon;

static const float kZeroThreshold = 1.1920929e-07f;
// Of the run with random locks, which is about the locks: a locked control goes on driving its
// bones, and a channel that it drives holds the opposite of its share, up to some 100 degrees in
// single precision. Without locks every value has to be exactly 0.
static const float kLockedShareTolerance = 1e-5f;

class TestResetPose : public QObject {
    Q_OBJECT
private slots:
    // parts and channels
    void partsOfTheModes_data();
    void partsOfTheModes();
    void smallValuesStayUnwritten();
    void aChannelAtZeroIsNotWritten();
    void resetBoneZeroesTheControlsThatDriveIt();
    void resetBoneZeroesAControlThatIsAMorph();
    void resetBoneLeavesOtherPropertiesThatDriveIt();
    void correctivesOfTheBone_data();
    void correctivesOfTheBone();
    void facsMorphsOutsideTheTableAreZeroed();

    // whole figure
    void wholeFigureGoesToZero_data();
    void wholeFigureGoesToZero();
    void aSecondResetChangesNothing_data();
    void aSecondResetChangesNothing();
    void chainsOfControlsGoToZero();
    void limitsDoNotHideAnOldShare();
    void facsMorphsAreZeroedIn81Only();

    // damage, locks, undo
    void aResetIsOfTheTimeGiven();
    void locksHold_data();
    void locksHold();
    void mutilatedFiguresAreSurvived_data();
    void mutilatedFiguresAreSurvived();
    void oneUndoRestoresBitForBit_data();
    void oneUndoRestoresBitForBit();
};

static bool allZero(const DzNode* bone)
{
    for (DzFloatProperty* channel : poseChannelsOf(bone).channel) {
        if (channel->getValue() != 0)
            return false;
    }
    return true;
}

static QString firstUnlockedNotZero(const DzFigure* figure, float tolerance = 0)
{
    for (const FigureBone& each : bonesOf(figure)) {
        for (DzFloatProperty* channel : poseChannelsOf(each.bone).channel) {
            if (!channel->isLocked() && std::fabs(channel->getValue()) > tolerance)
                return each.bone->getName() + QLatin1Char('/') + channel->getName();
        }
    }
    for (const FigureControl& each : controlsOf(figure)) {
        if (!each.property->isLocked() && std::fabs(each.property->getValue()) > tolerance)
            return controlName(each.number);
    }
    return QString();
}

static void pose(const FigureFixture& f, unsigned seed)
{
    Random random(seed);
    poseAtRandom(&random, f.figure);
}

// ---- parts and channels

void TestResetPose::partsOfTheModes_data()
{
    QTest::addColumn<QString>("bone");
    QTest::addColumn<bool>("extremity");
    QTest::newRow("hip") << "hip" << false;
    QTest::newRow("shin") << "lShin" << false;
    QTest::newRow("head") << "head" << false;
    QTest::newRow("eye") << "rEye" << true;
    QTest::newRow("hand") << "lHand" << true;
    QTest::newRow("carpal") << "rCarpal4" << true;
    QTest::newRow("foot") << "rFoot" << true;
    QTest::newRow("toe joint") << "lSmallToe4_2" << true;
    QTest::newRow("not in the table") << "lHandProp" << false;
}

void TestResetPose::partsOfTheModes()
{
    QFETCH(QString, bone);
    QFETCH(bool, extremity);
    const DzBone node(bone);
    QCOMPARE(inResetPart(&node, ResetBody), !extremity);
    QCOMPARE(inResetPart(&node, ResetExtremities), extremity);
    QVERIFY(inResetPart(&node, ResetSelected));
    QVERIFY(!inResetPart(&node, ResetWholeFigure));
    QVERIFY(!inResetPart(&node, 0));
    QVERIFY(!inResetPart(&node, 4));
}

void TestResetPose::smallValuesStayUnwritten()
{
    DzBone bone(QLatin1String("b"));
    bone.getXRotControl()->setValue(kZeroThreshold);
    bone.getYRotControl()->setValue(kZeroThreshold * 1.01f);
    bone.getZRotControl()->setValue(-kZeroThreshold * 1.01f);
    bone.getXPosControl()->setValue(-kZeroThreshold);
    bone.getZPosControl()->setValue(3);
    zeroBoneChannels(&bone, 0);
    QCOMPARE(bone.getXRotControl()->getValue(), kZeroThreshold);
    QCOMPARE(bone.getYRotControl()->getValue(), 0.f);
    QCOMPARE(bone.getZRotControl()->getValue(), 0.f);
    QCOMPARE(bone.getXPosControl()->getValue(), -kZeroThreshold);
    QCOMPARE(bone.getYPosControl()->getNumKeys(), 0);
    QCOMPARE(bone.getZPosControl()->getValue(), 0.f);
}

void TestResetPose::aChannelAtZeroIsNotWritten()
{
    FigureFixture f;
    f.bone("lShin")->getXRotControl()->setValue(40);
    resetPose(f.figure, ResetWholeFigure);
    QCOMPARE(f.bone("lShin")->getXRotControl()->getNumKeys(), 1);
    QCOMPARE(f.bone("rShin")->getXRotControl()->getNumKeys(), 0);
    QCOMPARE(f.control("pCTRLHipBend")->getNumKeys(), 0);
}

void TestResetPose::resetBoneZeroesTheControlsThatDriveIt()
{
    FigureFixture f;
    f.bone("lThighBend")->getXRotControl()->setValue(-20);
    f.control("pCTRLHipBend")->setValue(0.5f);
    f.control("pCTRLKneesUp")->setValue(0.25f);
    f.control("pCTRLWaistBend")->setValue(0.75f);
    resetBone(f.bone("lThighBend"), 0);
    QVERIFY(allZero(f.bone("lThighBend")));
    QCOMPARE(f.bone("lThighBend")->getXRotControl()->getRawValue(), 0.f);
    QCOMPARE(f.control("pCTRLHipBend")->getValue(), 0.f);
    QCOMPARE(f.control("pCTRLKneesUp")->getValue(), 0.f);
    QCOMPARE(f.control("pCTRLWaistBend")->getValue(), 0.75f); // drives the torso only
}

// A body control that is a morph: its channel is called "Value", the morph's name counts.
void TestResetPose::resetBoneZeroesAControlThatIsAMorph()
{
    FigureFixture f;
    QVERIFY(f.figure->removeProperty(f.control("pCTRLlFootRoll")));
    auto* morph = new DzMorph(QLatin1String("pCTRLlFootRoll"));
    QVERIFY(f.figure->getObject()->addModifier(morph));
    DzFloatProperty* roll = f.bone("lFoot")->getXRotControl();
    roll->insertController(new DzERCLink(morph->getValueChannel(), DzERCLink::ERCDeltaAdd0, 25));
    morph->getValueChannel()->setValue(1);
    QCOMPARE(roll->getValue(), 25.f);
    resetBone(f.bone("lFoot"), 0);
    QCOMPARE(morph->getValueChannel()->getValue(), 0.f);
    QCOMPARE(roll->getValue(), 0.f);
    QCOMPARE(roll->getRawValue(), 0.f);
}

void TestResetPose::resetBoneLeavesOtherPropertiesThatDriveIt()
{
    FigureFixture f;
    auto* own = new DzFloatProperty(QLatin1String("MyOwnSlider"));
    f.figure->addProperty(own);
    DzFloatProperty* turn = f.bone("head")->getYRotControl();
    turn->insertController(new DzERCLink(own, DzERCLink::ERCDeltaAdd0, 10));
    own->setValue(1);
    resetBone(f.bone("head"), 0);
    QCOMPARE(own->getValue(), 1.f);
    QCOMPARE(turn->getValue(), 0.f); // against the slider
}

void TestResetPose::correctivesOfTheBone_data()
{
    QTest::addColumn<QString>("bone");
    QTest::addColumn<QString>("corrective");
    QTest::addColumn<bool>("zeroed");
    QTest::newRow("thigh, left") << "lThighBend"
                                 << "pJCMFlexQuad_L" << true;
    QTest::newRow("thigh, right") << "rThighBend"
                                  << "pJCMFlexGluteClench_R" << true;
    QTest::newRow("thigh, other side") << "lThighBend"
                                       << "pJCMFlexQuad_R" << false;
    QTest::newRow("pectoral, left") << "lPectoral"
                                    << "pPBMlBreastsFlatten" << true;
    QTest::newRow("pectoral, right") << "rPectoral"
                                     << "pPBMrBreastsHangForward" << true;
    QTest::newRow("pectoral, other side") << "rPectoral"
                                          << "pPBMlBreastsFlatten" << false;
    QTest::newRow("face crease") << "lEye"
                                 << "ePHMCheekCreaseL" << true;
    QTest::newRow("tongue") << "Chin"
                            << "eCTRLTongueIn-Out" << true;
    QTest::newRow("face, of another bone") << "head"
                                           << "eCTRLTongueIn-Out" << false;
    QTest::newRow("twist is no bend") << "lThighTwist"
                                      << "pJCMFlexQuad_L" << false;
}

void TestResetPose::correctivesOfTheBone()
{
    QFETCH(QString, bone);
    QFETCH(QString, corrective);
    QFETCH(bool, zeroed);
    FigureFixture f;
    DzFloatProperty* control = findControl(corrective, f.figure);
    control->setValue(0.5f);
    resetBone(findBone(bone, f.figure), 0);
    QCOMPARE(control->getValue(), zeroed ? 0.f : 0.5f);
}

void TestResetPose::facsMorphsOutsideTheTableAreZeroed()
{
    FigureFixture f(QLatin1String("Genesis8_1Female"));
    auto* facs = new DzMorph(QLatin1String("facs_my_own"));
    auto* other = new DzMorph(QLatin1String("my_facs_own"));
    f.figure->getObject()->addModifier(facs);
    f.figure->getObject()->addModifier(other);
    facs->getValueChannel()->setValue(1);
    other->getValueChannel()->setValue(1);
    zeroFacsMorphs(f.figure, 0);
    QCOMPARE(facs->getValueChannel()->getValue(), 0.f);
    QCOMPARE(other->getValueChannel()->getValue(), 1.f);
}

// ---- whole figure

void TestResetPose::wholeFigureGoesToZero_data()
{
    addFigureRows();
}

void TestResetPose::wholeFigureGoesToZero()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    const DzUndoStackLock unrecorded;
    Random random(7);
    for (int i = 0; i < 200; ++i) {
        if (i == 100)
            liftAllLimits(f.figure);
        poseAtRandom(&random, f.figure);
        resetPose(f.figure, ResetWholeFigure);
        const QString left = firstUnlockedNotZero(f.figure);
        QVERIFY2(left.isEmpty(), qPrintable(left));
    }
}

void TestResetPose::aSecondResetChangesNothing_data()
{
    addFigureRows();
}

void TestResetPose::aSecondResetChangesNothing()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    pose(f, 8);
    f.scene.setTime(320); // keys at 0 and, after the reset, at 320
    resetPose(f.figure, ResetWholeFigure);
    const FigureState once = stateOf(f.figure);
    resetPose(f.figure, ResetWholeFigure);
    VERIFY_SAME_STATE(once, stateOf(f.figure));
}

void TestResetPose::chainsOfControlsGoToZero()
{
    FigureFixture f; // later in the table drives earlier, over two links
    DzFloatProperty* first = f.control("pCTRLWaistSide");
    DzFloatProperty* second = f.control("pCTRLTorsoSlump");
    DzFloatProperty* third = f.control("pCTRLArmsFrntBck");
    for (DzFloatProperty* control : {first, second, third})
        control->setMinMax(-10, 10);
    first->insertController(new DzERCLink(second, DzERCLink::ERCDeltaAdd0, 0.7));
    second->insertController(new DzERCLink(third, DzERCLink::ERCDeltaAdd0, 0.3));
    first->setValue(0.11f);
    second->setValue(0.23f);
    third->setValue(0.37f);
    resetPose(f.figure, ResetWholeFigure);
    for (DzFloatProperty* control : {first, second, third}) {
        QCOMPARE(control->getValue(), 0.f);
        QCOMPARE(control->getRawValue(), 0.f);
    }
    const QString left = firstUnlockedNotZero(f.figure);
    QVERIFY2(left.isEmpty(), qPrintable(left));
}

// A channel with limits 0..10 that held the opposite of a control's share would read 0 under its
// limits and turn up when they are lifted.
void TestResetPose::limitsDoNotHideAnOldShare()
{
    FigureFixture f;
    DzFloatProperty* bend = f.bone("abdomenLower")->getXRotControl();
    bend->setMinMax(0, 90);
    bend->setIsClamped(true);
    f.control("pCTRLTorsoSlump")->setValue(1); // adds 10 degrees
    QCOMPARE(bend->getValue(), 10.f);
    resetPose(f.figure, ResetWholeFigure);
    QCOMPARE(bend->getValue(), 0.f);
    bend->setIsClamped(false);
    QCOMPARE(bend->getValue(), 0.f);
}

void TestResetPose::facsMorphsAreZeroedIn81Only()
{
    for (const char* name : {"Genesis8Male", "Genesis8_1Male"}) {
        FigureFixture f {QLatin1String(name)};
        auto* facs = new DzMorph(QLatin1String("facs_my_own"));
        f.figure->getObject()->addModifier(facs);
        facs->getValueChannel()->setValue(1);
        resetPose(f.figure, ResetWholeFigure);
        QCOMPARE(facs->getValueChannel()->getValue(), isGenesis81() ? 0.f : 1.f);
    }
}

// ---- damage, locks, undo

static const int kAllModes[] = {ResetWholeFigure, ResetBody, ResetExtremities, ResetSelected};

static void selectSome(Random* random, const FigureFixture& f)
{
    dzScene->selectAllNodes(false);
    if (random->below(3) == 0)
        f.figure->select(true);
    for (int i = 0; i < 6; ++i) {
        if (DzBone* bone = findBone(random->below(kBoneCount), f.figure))
            bone->select(true);
    }
}

void TestResetPose::aResetIsOfTheTimeGiven()
{
    FigureFixture f; // the scene stands at 0
    DzFloatProperty* turn = f.bone("lShin")->getXRotControl();
    turn->setValue(0, 10);
    turn->setValue(4800, 20);
    resetPose(f.figure, ResetWholeFigure, 4800);
    QCOMPARE(turn->getValue(0), 10.f);
    QCOMPARE(turn->getValue(4800), 0.f);
}

void TestResetPose::locksHold_data()
{
    addFigureRows();
}

void TestResetPose::locksHold()
{
    QFETCH(QString, figure);
    Random random(18);
    FigureFixture f(figure);
    const Channels channels = everyChannel(f.figure);
    const DzUndoStackLock unrecorded;
    for (int i = 0; i < 200; ++i) {
        poseAtRandom(&random, f.figure);
        const std::vector<DzFloatProperty*> locked = lockAtRandom(&random, f.figure, 1 + i % 40);
        for (const int mode : kAllModes) {
            selectSome(&random, f);
            const HeldChannels before = heldAmong(channels);
            resetPose(f.figure, mode);
            const QString lost = lostLock(before);
            QVERIFY2(lost.isEmpty(), qPrintable(lost));
            if (mode == ResetWholeFigure) {
                const QString left = firstUnlockedNotZero(f.figure, kLockedShareTolerance);
                QVERIFY2(left.isEmpty(), qPrintable(left));
            }
        }
        unlock(locked);
    }
}

void TestResetPose::mutilatedFiguresAreSurvived_data()
{
    addFigureRows();
}

void TestResetPose::mutilatedFiguresAreSurvived()
{
    QFETCH(QString, figure);
    Random random(19);
    for (int i = 0; i < 60; ++i) {
        FigureFixture f(figure);
        mutilate(&random, f.figure, 1 + i);
        for (const int mode : {ResetBody, ResetExtremities, ResetSelected, ResetWholeFigure}) {
            poseAtRandom(&random, f.figure);
            selectSome(&random, f);
            resetPose(f.figure, mode);
        }
        const QString left = firstUnlockedNotZero(f.figure); // the last mode was the whole figure
        QVERIFY2(left.isEmpty(), qPrintable(left));
    }
}

void TestResetPose::oneUndoRestoresBitForBit_data()
{
    addFigureRows();
}

void TestResetPose::oneUndoRestoresBitForBit()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    Random random(20);
    for (const int mode : kAllModes) {
        poseAtRandom(&random, f.figure);
        f.scene.setTime(160 * mode + 160);
        selectSome(&random, f);
        f.bone("hip")->select(true); // so that every mode has something to do
        f.bone("lEye")->select(true);
        f.undoStack.clearAll();
        const FigureState before = stateOf(f.figure);
        DzUndoStackHold hold;
        resetPose(f.figure, mode);
        hold.accept(QLatin1String("quillon_stack"));
        VERIFY_ONE_STEP_SINCE(before, f);
    }
}

QUILLON_TEST(TestResetPose)
#include "test_reset_pose.moc"
