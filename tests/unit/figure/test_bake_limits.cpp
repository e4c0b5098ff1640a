// Bake where limits hold bones or hide values: the figure keeps the look that the limits gave it.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/bake_pose.h"

#include "dzerclink.h"

#include <QtTest>

using namespace quillon;

// Channel values are single precision; a place is the product of up to twenty of them.
static const double kTurnToleranceDeg = 1e-3;
static const double kMoveToleranceCm = 1e-3;

class TestBakeLimits : public QObject {
    Q_OBJECT
private slots:
    void aBoneHeldByItsLimitKeepsItsAngle();
    void pairsOfControlsKeepTheLook_data();
    void pairsOfControlsKeepTheLook();
    void hiddenValuesGoIntoTheBakedPose_data();
    void hiddenValuesGoIntoTheBakedPose();
    void aControlWhoseRangeLacksZeroKeepsTheLook();
    void theAngleThatShowedIsTaken();
    void faceBonesKeepTheirTurnThoughTheHeadMoves();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

// Both controls together bend the knee further than it goes.
void TestBakeLimits::aBoneHeldByItsLimitKeepsItsAngle()
{
    FigureFixture f;
    setPoseLimits(f.figure, true, BodyLimits | FaceLimits);
    f.control("pCTRLKneesUp")->setValue(1);
    f.control("pCTRLKneesUpLeft")->setValue(1);
    DzFloatProperty* bend = f.bone("lShin")->getXRotControl();
    const float heldDeg = bend->getMax();
    QCOMPARE(bend->getValue(), heldDeg);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    bakePose(f.figure, BakeBody);
    QVERIFY(nearly(bend->getValue(), heldDeg, kTurnToleranceDeg));
    QVERIFY(nearly(bend->getRawValue(), heldDeg, kTurnToleranceDeg));
    QCOMPARE(f.control("pCTRLKneesUp")->getRawValue(), 0.f);
    const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

// ---- pairs

void TestBakeLimits::pairsOfControlsKeepTheLook_data()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("limits");
    for (const char* figure : kTestFigures) {
        for (const int button : {int(BakeBody), int(BakeFace)}) {
            for (const bool limits : {true, false})
                QTest::newRow(qPrintable(QString("%1 %2, limits %3")
                                             .arg(s(figure))
                                             .arg(s(button == BakeBody ? "body" : "face"))
                                             .arg(s(limits ? "on" : "off"))))
                    << s(figure) << button << limits;
        }
    }
}

static void setAllLimits(DzNode* figure, bool clamp)
{
    setBodyBoneLimits(figure, clamp, false);
    setBodyControlLimits(figure, clamp, false);
    setFaceLimits(figure, clamp, false);
}

static void zeroEverything(const DzNode* figure)
{
    for (const FigureControl& each : controlsOf(figure))
        each.property->setRawValue(0);
    for (const FigureBone& each : bonesOf(figure)) {
        for (DzFloatProperty* channel : poseChannelsOf(each.bone).channel)
            channel->setRawValue(0);
    }
}

// Two different controls that the table lets drive the same bone of the part.
static std::vector<FigureControl> randomPair(Random* random, const DzNode* figure, int button)
{
    const FigureScope part = button == BakeFace ? FigureScope::Face : FigureScope::Body;
    const std::vector<FigureBone> bones = bonesOf(figure, part);
    std::vector<FigureControl> sharing;
    while (sharing.size() < 2) {
        sharing.clear();
        const int number = bones[random->below(int(bones.size()))].number;
        for (const FigureControl& each : controlsOf(figure)) {
            if (bonesDrivenBy(each.number).test(number))
                sharing.push_back(each);
        }
    }
    const int first = random->below(int(sharing.size()));
    const int second = (first + 1 + random->below(int(sharing.size()) - 1)) % int(sharing.size());
    return {sharing[first], sharing[second]};
}

void TestBakeLimits::pairsOfControlsKeepTheLook()
{
    QFETCH(QString, figure);
    QFETCH(int, button);
    QFETCH(bool, limits);
    FigureFixture f(figure);
    const DzUndoStackLock unrecorded;
    setAllLimits(f.figure, limits);
    Random random(61 + unsigned(button));
    int held = 0;
    for (int i = 0; i < 200; ++i) {
        zeroEverything(f.figure);
        const std::vector<FigureControl> pair = randomPair(&random, f.figure, button);
        for (const FigureControl& each : pair)
            each.property->setValue(each.property->getMax());
        const std::vector<WorldPlace> before = worldPlaces(f.figure);
        setAllLimits(f.figure, false);
        held += !firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm).isEmpty();
        for (const FigureBone& each : bonesOf(f.figure)) {
            const PoseChannels channels = poseChannelsOf(each.bone);
            for (int axis = 0; axis < 3; ++axis)
                channels.channel[axis]->setIsClamped(limits);
        }
        for (const FigureControl& each : ownControlsOf(f.figure))
            each.property->setIsClamped(limits);
        bakePose(f.figure, button);
        const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
        const QString names = controlName(pair[0].number) + s(" ") + controlName(pair[1].number);
        QVERIFY2(moved.isEmpty(), qPrintable(names + s(": ") + moved));
        for (const FigureControl& each : pair)
            QCOMPARE(each.property->getRawValue(), 0.f);
    }
    QVERIFY(limits == (held > 0)); // some pairs reach a limit, or the test shows nothing
}

// ---- hidden values

void TestBakeLimits::hiddenValuesGoIntoTheBakedPose_data()
{
    QTest::addColumn<QString>("bone");
    QTest::addColumn<QString>("control");
    QTest::addColumn<int>("button");
    QTest::newRow("body") << "lShin"
                          << "pCTRLKneesUpLeft" << int(BakeBody);
    QTest::newRow("face") << "lowerJaw"
                          << "eCTRLMouthOpen" << int(BakeFace);
}

// A bone held at its limit and a control that reads 0 both store more than they show. Of the part
// that is baked nothing stays hidden, of the other all.
void TestBakeLimits::hiddenValuesGoIntoTheBakedPose()
{
    QFETCH(QString, bone);
    QFETCH(QString, control);
    QFETCH(int, button);
    for (const int pressed : {int(BakeBody), int(BakeFace)}) {
        FigureFixture f;
        DzFloatProperty* turn = findBone(bone, f.figure)->getYRotControl();
        DzFloatProperty* hiding = findControl(control, f.figure);
        for (DzFloatProperty* each : {turn, hiding}) {
            each->setMinMax(0, 1);
            each->setIsClamped(true);
        }
        levelLimits(f.figure);
        turn->setRawValue(30);
        hiding->setRawValue(-0.5f);
        const std::vector<WorldPlace> before = worldPlaces(f.figure);
        bakePose(f.figure, pressed);
        QVERIFY(nearly(turn->getRawValue(), pressed == button ? 1 : 30, kTurnToleranceDeg));
        QCOMPARE(hiding->getRawValue(), pressed == button ? 0.f : -0.5f);
        QVERIFY(turn->isClamped() && hiding->isClamped());
        const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
        QVERIFY2(moved.isEmpty(), qPrintable(moved));
    }
}

// Its limits lift it off 0 again after the bake; the bones make up for that, too.
void TestBakeLimits::aControlWhoseRangeLacksZeroKeepsTheLook()
{
    FigureFixture f;
    DzFloatProperty* control = f.control("pCTRLKneesUpLeft");
    control->setMinMax(0.25f, 1);
    control->setIsClamped(true);
    control->setValue(0.75f);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    bakePose(f.figure, BakeBody);
    QCOMPARE(control->getValue(), 0.25f);
    const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

// What is stored lies nearer to -340 than to 20 degrees, which is the same turn outside the limits;
// without limits, too, the dial goes on showing what it showed.
void TestBakeLimits::theAngleThatShowedIsTaken()
{
    for (const bool limits : {true, false}) {
        FigureFixture f;
        setAllLimits(f.figure, limits);
        DzFloatProperty* control = f.control("pCTRLKneesUpLeft");
        DzFloatProperty* bend = f.bone("lShin")->getXRotControl();
        bend->insertController(new DzERCLink(control, DzERCLink::ERCDeltaAdd0, 220));
        control->setValue(1);
        bend->setValue(20);
        QVERIFY(bend->getRawValue() < -250);
        const std::vector<WorldPlace> before = worldPlaces(f.figure);
        bakePose(f.figure, BakeBody);
        QVERIFY(nearly(bend->getRawValue(), 20, kTurnToleranceDeg));
        const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
        QVERIFY2(moved.isEmpty(), qPrintable(moved));
    }
}

// A control of the face that turns the head as well, by a link of the user's own.
void TestBakeLimits::faceBonesKeepTheirTurnThoughTheHeadMoves()
{
    FigureFixture f;
    liftAllLimits(f.figure);
    for (const FigureBone& each : bonesOf(f.figure, FigureScope::Face)) {
        const PoseChannels channels = poseChannelsOf(each.bone);
        for (int axis = 0; axis < 3; ++axis)
            channels.channel[axis]->lock(false);
    }
    DzFloatProperty* open = f.control("eCTRLMouthOpen");
    f.bone("head")->getYRotControl()->insertController(
        new DzERCLink(open, DzERCLink::ERCDeltaAdd0, 20));
    open->setValue(1);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    bakePose(f.figure, BakeFace);
    const DzQuat head = before[boneIndex(s("head"))].rot_world;
    QVERIFY(angleDeg(f.bone("head")->getWSRot(), head) > 10);
    for (const char* bone : {"lowerJaw", "lEye", "tongue02"}) {
        const double turnDeg
            = angleDeg(f.bone(bone)->getWSRot(), before[boneIndex(s(bone))].rot_world);
        QVERIFY2(turnDeg < kTurnToleranceDeg, bone);
    }
}

QUILLON_TEST(TestBakeLimits)
#include "test_bake_limits.moc"
