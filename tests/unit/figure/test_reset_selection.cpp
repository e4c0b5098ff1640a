// Reset of a selection: which bones go to 0, and that all others keep their place on their parents.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/reset_pose.h"

#include <QtTest>

using namespace quillon;

// Channel values are single precision; a rotation read back through its three angles differs by
// rounding only.
static const double kTurnToleranceDeg = 1e-3;
static const double kMoveToleranceCm = 1e-4;

class TestResetSelection : public QObject {
    Q_OBJECT
private slots:
    void nothingSelectedChangesNothing_data();
    void nothingSelectedChangesNothing();
    void otherModesChangeNothing();
    void leftClickOnTheRootKeepsFaceHandsAndFeet();
    void rightClickOnTheRootTakesFaceHandsAndFeet();
    void middleClickOnTheRootTakesEveryBone();
    void leftClickTakesWhatIsBelow();
    void rightClickTakesOnlyExtremitiesBelow();
    void middleClickTakesTheBoneAlone();
    void hipTurnsUprightAndKeepsTheTranslation_data();
    void hipTurnsUprightAndKeepsTheTranslation();
    void limitsDoNotKeepTheHipFromTurningUpright_data();
    void limitsDoNotKeepTheHipFromTurningUpright();
    void hipControlsFallThroughSharedChildrenOnly();
    void rightClickOnTheHipLeavesTheHip();
    void facsControlsFallWithAFaceBone();
    void facsControlsStayWithoutAFaceBone();
    void facsMorphsOutsideTheTableFallWithAFaceBone_data();
    void facsMorphsOutsideTheTableFallWithAFaceBone();
    void otherFiguresBelowStay();
    void propsBelowWithABonesNameStay();
    void unselectedBonesKeepTheirLocalPlace_data();
    void unselectedBonesKeepTheirLocalPlace();
};

static bool allZero(const DzNode* bone)
{
    for (DzFloatProperty* channel : poseChannelsOf(bone).channel) {
        if (channel->getValue() != 0)
            return false;
    }
    return true;
}

struct LocalPlace {
    DzQuat rot;
    DzVec3 posCm;
    DzMatrix3 scale;
};

static std::vector<LocalPlace> localPlaces(const DzFigure* figure)
{
    std::vector<LocalPlace> places(kBoneCount);
    for (const FigureBone& each : bonesOf(figure))
        places[each.number] = LocalPlace {
            each.bone->getLocalRot(), each.bone->getLocalPos(), each.bone->getLocalScale()};
    return places;
}

// The first bone outside the reset that moved against its parent; empty: none.
static QString firstLocallyMoved(
    const DzFigure* figure, const std::vector<LocalPlace>& before, const std::vector<bool>& reset)
{
    const std::vector<LocalPlace> now = localPlaces(figure);
    for (const FigureBone& each : bonesOf(figure)) {
        const LocalPlace &a = before[each.number], &b = now[each.number];
        if (!reset[each.number]
            && !(angleDeg(a.rot, b.rot) <= kTurnToleranceDeg
                && distance(a.posCm, b.posCm) <= kMoveToleranceCm && a.scale == b.scale))
            return QString("%1 turned %2 deg, moved %3 cm")
                .arg(each.bone->getName())
                .arg(angleDeg(a.rot, b.rot))
                .arg(distance(a.posCm, b.posCm));
    }
    return QString();
}

// Which bones the mode resets, found out apart from the tool: from each selected bone downwards.
static std::vector<bool> expectedReset(const DzFigure* figure, int mode)
{
    std::vector<bool> reset(kBoneCount, false);
    for (const FigureBone& each : bonesOf(figure)) {
        bool covered = each.bone->isSelected() || figure->isSelected();
        if (mode != ResetSelected) {
            for (const DzNode* up = each.bone; up && up != figure; up = up->getNodeParent())
                covered |= up->isSelected();
        }
        reset[each.number] = covered && inResetPart(each.bone, mode);
    }
    return reset;
}

static void pose(const FigureFixture& f, unsigned seed)
{
    Random random(seed);
    poseAtRandom(&random, f.figure);
}

static void addFiguresAndModes()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<int>("mode");
    for (const char* name : kTestFigures) {
        for (int mode = ResetBody; mode <= ResetSelected; ++mode)
            QTest::newRow(qPrintable(QString("%1 mode %2").arg(QLatin1String(name)).arg(mode)))
                << QString(QLatin1String(name)) << mode;
    }
}

void TestResetSelection::nothingSelectedChangesNothing_data()
{
    addFiguresAndModes();
}

void TestResetSelection::nothingSelectedChangesNothing()
{
    QFETCH(QString, figure);
    QFETCH(int, mode);
    FigureFixture f(figure);
    pose(f, 9);
    f.scene.setTime(160);
    const FigureState before = stateOf(f.figure);
    resetPose(f.figure, mode);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestResetSelection::otherModesChangeNothing()
{
    FigureFixture f;
    pose(f, 10);
    f.figure->select(true);
    f.bone("hip")->select(true);
    const FigureState before = stateOf(f.figure);
    for (const int mode : {-2, 0, 4, 99})
        resetPose(f.figure, mode);
    resetPose(nullptr, ResetBody);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

// Checks a selection reset on a posed figure against the bones it should take.
static void verifySelectionReset(const FigureFixture& f, int mode)
{
    const std::vector<bool> reset = expectedReset(f.figure, mode);
    const std::vector<LocalPlace> before = localPlaces(f.figure);
    resetPose(f.figure, mode);
    const QString moved = firstLocallyMoved(f.figure, before, reset);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
    for (const FigureBone& each : bonesOf(f.figure)) {
        if (!reset[each.number])
            continue;
        if (each.number == 0)
            QVERIFY(angleDeg(each.bone->getWSRot(), DzQuat()) < kTurnToleranceDeg);
        else
            QVERIFY2(allZero(each.bone), qPrintable(each.bone->getName()));
    }
}

void TestResetSelection::leftClickOnTheRootKeepsFaceHandsAndFeet()
{
    FigureFixture f;
    pose(f, 11);
    f.figure->select(true);
    verifySelectionReset(f, ResetBody);
    QVERIFY(allZero(f.bone("lShin")));
    QVERIFY(!allZero(f.bone("lHand")));
    QVERIFY(!allZero(f.bone("lFoot")));
    QVERIFY(!allZero(f.bone("lEye")));
}

void TestResetSelection::rightClickOnTheRootTakesFaceHandsAndFeet()
{
    FigureFixture f;
    pose(f, 12);
    f.figure->select(true);
    verifySelectionReset(f, ResetExtremities);
    for (const FigureBone& each : bonesOf(f.figure)) {
        if (inResetPart(each.bone, ResetExtremities))
            QVERIFY2(allZero(each.bone), qPrintable(each.bone->getName()));
    }
    QVERIFY(!allZero(f.bone("lShin")));
    QVERIFY(!allZero(f.bone("hip")));
}

void TestResetSelection::middleClickOnTheRootTakesEveryBone()
{
    FigureFixture f;
    pose(f, 13);
    f.figure->select(true);
    verifySelectionReset(f, ResetSelected);
    for (const FigureBone& each : bonesOf(f.figure)) {
        if (each.number != 0)
            QVERIFY2(allZero(each.bone), qPrintable(each.bone->getName()));
    }
}

void TestResetSelection::leftClickTakesWhatIsBelow()
{
    FigureFixture f;
    pose(f, 14);
    f.select("lShldrBend");
    verifySelectionReset(f, ResetBody);
    QVERIFY(allZero(f.bone("lForearmTwist")));
    QVERIFY(!allZero(f.bone("lHand")));
    QVERIFY(!allZero(f.bone("lCollar")));
}

void TestResetSelection::rightClickTakesOnlyExtremitiesBelow()
{
    FigureFixture f;
    pose(f, 15);
    f.select("lShldrBend");
    verifySelectionReset(f, ResetExtremities);
    QVERIFY(!allZero(f.bone("lForearmTwist")));
    QVERIFY(allZero(f.bone("lHand")));
    QVERIFY(allZero(f.bone("lPinky3")));
    QVERIFY(!allZero(f.bone("rHand")));
}

void TestResetSelection::middleClickTakesTheBoneAlone()
{
    FigureFixture f;
    pose(f, 16);
    f.select("lForearmBend");
    const DzQuat hand = f.bone("lHand")->getLocalRot();
    verifySelectionReset(f, ResetSelected);
    QVERIFY(allZero(f.bone("lForearmBend")));
    QVERIFY(!allZero(f.bone("lHand")));
    QVERIFY(f.bone("lHand")->getLocalRot() == hand);
}

void TestResetSelection::hipTurnsUprightAndKeepsTheTranslation_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("left click") << int(ResetBody);
    QTest::newRow("middle click") << int(ResetSelected);
}

void TestResetSelection::hipTurnsUprightAndKeepsTheTranslation()
{
    QFETCH(int, mode);
    FigureFixture f;
    f.figure->getYRotControl()->setValue(30);
    f.figure->getXPosControl()->setValue(50);
    DzBone* hip = f.bone("hip");
    hip->setLocalPos(DzVec3(10, 20, 30));
    hip->getXRotControl()->setValue(40);
    hip->getZRotControl()->setValue(-15);
    f.select("hip");
    resetPose(f.figure, mode);
    QVERIFY(angleDeg(hip->getWSRot(), DzQuat()) < kTurnToleranceDeg);
    QVERIFY(hip->getLocalPos() == DzVec3(10, 20, 30));
    QVERIFY(nearly(hip->getYRotControl()->getValue(), -30, 1e-4)); // against the figure
    QCOMPARE(f.figure->getXPosControl()->getValue(), 50.f);
    QCOMPARE(f.figure->getYRotControl()->getValue(), 30.f);
}

void TestResetSelection::limitsDoNotKeepTheHipFromTurningUpright_data()
{
    QTest::addColumn<bool>("ignoresLimits");
    QTest::newRow("a host that minds limits") << false;
    QTest::newRow("a host that does not") << true;
}

void TestResetSelection::limitsDoNotKeepTheHipFromTurningUpright()
{
    QFETCH(bool, ignoresLimits);
    const EulerChoice choice(ignoresLimits);
    FigureFixture f;
    setBodyBoneLimits(f.figure, true, false);
    f.select("hip");
    DzBone* hip = f.bone("hip");
    Random random(42);
    for (int pair = 0; pair <= 40; ++pair) {
        const float figureDeg = pair == 0 ? 120 : float(random.between(-720, 720));
        const float hipDeg = pair == 0 ? 100 : float(random.between(-180, 180));
        f.figure->getYRotControl()->setValue(figureDeg);
        hip->getYRotControl()->setValue(hipDeg);
        resetPose(f.figure, pair % 2 ? ResetBody : ResetSelected);
        const double offDeg = angleDeg(hip->getWSRot(), DzQuat());
        QVERIFY2(offDeg <= kTurnToleranceDeg,
            qPrintable(QString("figure %1, hip %2: %3").arg(figureDeg).arg(hipDeg).arg(offDeg)));
    }
}

void TestResetSelection::hipControlsFallThroughSharedChildrenOnly()
{
    FigureFixture f;
    f.select("hip");
    f.control("pCTRLHipBend")->setValue(0.5f);
    resetPose(f.figure, ResetSelected); // the hip alone: the control stays, the hip is upright
    QCOMPARE(f.control("pCTRLHipBend")->getValue(), 0.5f);
    QVERIFY(angleDeg(f.bone("hip")->getWSRot(), DzQuat()) < kTurnToleranceDeg);
    resetPose(f.figure, ResetBody); // the thighs below it share the control
    QCOMPARE(f.control("pCTRLHipBend")->getValue(), 0.f);
    QVERIFY(angleDeg(f.bone("hip")->getWSRot(), DzQuat()) < kTurnToleranceDeg);
}

void TestResetSelection::rightClickOnTheHipLeavesTheHip()
{
    FigureFixture f;
    f.bone("hip")->getXRotControl()->setValue(40);
    f.bone("lHand")->getXRotControl()->setValue(10);
    f.select("hip");
    resetPose(f.figure, ResetExtremities);
    QCOMPARE(f.bone("hip")->getXRotControl()->getValue(), 40.f);
    QCOMPARE(f.bone("lHand")->getXRotControl()->getValue(), 0.f);
}

void TestResetSelection::facsControlsFallWithAFaceBone()
{
    FigureFixture f(QLatin1String("Genesis8_1Female"));
    f.control("facs_jnt_JawOpen")->setValue(0.5f);
    f.control("facs_bs_MouthPucker_div2")->setValue(0.5f); // a morph
    f.control("pCTRLlHandFist")->setValue(0.5f);
    f.select("lEye");
    const DzQuat jaw = f.bone("lowerJaw")->getLocalRot();
    resetPose(f.figure, ResetSelected);
    QCOMPARE(f.control("facs_jnt_JawOpen")->getValue(), 0.f);
    QCOMPARE(f.control("facs_bs_MouthPucker_div2")->getValue(), 0.f);
    QCOMPARE(f.control("pCTRLlHandFist")->getValue(), 0.5f);
    // The jaw was not to be reset: it keeps its place in its own channels.
    QVERIFY(angleDeg(jaw, f.bone("lowerJaw")->getLocalRot()) < kTurnToleranceDeg);
    QVERIFY(angleDeg(jaw, DzQuat()) > 1);
}

void TestResetSelection::facsControlsStayWithoutAFaceBone()
{
    FigureFixture f(QLatin1String("Genesis8_1Female"));
    f.control("facs_jnt_JawOpen")->setValue(0.5f);
    f.select("lHand");
    resetPose(f.figure, ResetSelected);
    QCOMPARE(f.control("facs_jnt_JawOpen")->getValue(), 0.5f);
}

void TestResetSelection::facsMorphsOutsideTheTableFallWithAFaceBone_data()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<QString>("bone");
    QTest::addColumn<bool>("falls");
    QTest::newRow("8.1, eye") << "Genesis8_1Female"
                              << "lEye" << true;
    QTest::newRow("8.1, hand") << "Genesis8_1Female"
                               << "lHand" << false;
    QTest::newRow("8, eye") << "Genesis8Female"
                            << "lEye" << false;
}

void TestResetSelection::facsMorphsOutsideTheTableFallWithAFaceBone()
{
    QFETCH(QString, figure);
    QFETCH(QString, bone);
    QFETCH(bool, falls);
    FigureFixture f(figure);
    auto* morph = new DzMorph(QLatin1String("facs_my_own"));
    f.figure->getObject()->addModifier(morph);
    morph->getValueChannel()->setValue(1);
    findBone(bone, f.figure)->select(true);
    resetPose(f.figure, ResetSelected);
    QCOMPARE(morph->getValueChannel()->getValue(), falls ? 0.f : 1.f);
}

void TestResetSelection::otherFiguresBelowStay()
{
    FigureFixture f;
    QString why;
    DzFigure* doll = loadFigure(QLatin1String("Genesis8Male"), &why);
    QVERIFY2(doll, qPrintable(why));
    f.bone("lHand")->addNodeChild(doll);
    DzFloatProperty* shin = doll->findBone(QLatin1String("lShin"))->getXRotControl();
    DzFloatProperty* foot = doll->findBone(QLatin1String("lFoot"))->getXRotControl();
    shin->setValue(60);
    foot->setValue(20);
    f.select("lHand");
    resetPose(f.figure, ResetBody);
    resetPose(f.figure, ResetExtremities);
    QCOMPARE(shin->getValue(), 60.f);
    QCOMPARE(foot->getValue(), 20.f);
}

// Its skeleton is the figure's, as that of everything below; a bone it is not.
void TestResetSelection::propsBelowWithABonesNameStay()
{
    FigureFixture f;
    auto* prop = new DzNode(QLatin1String("lThumb2"));
    f.bone("lFoot")->addNodeChild(prop);
    prop->getXRotControl()->setValue(25);
    f.select("lFoot");
    resetPose(f.figure, ResetExtremities);
    QCOMPARE(prop->getXRotControl()->getValue(), 25.f);
}

void TestResetSelection::unselectedBonesKeepTheirLocalPlace_data()
{
    addFiguresAndModes();
}

void TestResetSelection::unselectedBonesKeepTheirLocalPlace()
{
    QFETCH(QString, figure);
    QFETCH(int, mode);
    FigureFixture f(figure);
    const DzUndoStackLock unrecorded;
    Random random(17 + mode);
    for (int i = 0; i < 200; ++i) {
        if (i == 100)
            liftAllLimits(f.figure);
        poseAtRandom(&random, f.figure);
        f.scene.selectAllNodes(false);
        for (int k = random.below(5); k >= 0; --k)
            findBone(random.below(kBoneCount), f.figure)->select(true);
        verifySelectionReset(f, mode);
        if (QTest::currentTestFailed())
            return;
    }
}

QUILLON_TEST(TestResetSelection)
#include "test_reset_selection.moc"
