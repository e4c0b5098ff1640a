// Limits on and off: which channels, what becomes of values out of range, and the command.
#include "limits_fixture.h"
#include "room_tests.h"

#include "figure/pose_limits.h"
#include "ground/status_message.h"

#include <QtTest>

using namespace quillon;

class TestPoseLimits : public QObject {
    Q_OBJECT
private slots:
    // limits
    void partsAreSwitchedApart_data();
    void partsAreSwitchedApart();
    void pureShapesAreNeverClamped();
    void aRotationOutOfRangeMovesIntoRangeForGood();
    void aControlOutOfRangeMovesIntoRangeForGood();
    void aRotationThatAControlHoldsOutOfRangeMovesIntoRangeForGood();
    void valuesWithinLimitsAreNotWritten_data();
    void valuesWithinLimitsAreNotWritten();
    void allChannelsAreInRangeAfterwards_data();
    void allChannelsAreInRangeAfterwards();
    void aFigureWithoutSkeletonIsLeftAlone();

    // the command
    void statusTextsOfTheCommand_data();
    void statusTextsOfTheCommand();
    void theCommandIsOneUndoStep();

    void limitsAreOfTheTimeGiven();

    // damage, locks, undo
    void locksHold_data();
    void locksHold();
    void mutilatedFiguresAreSurvived_data();
    void mutilatedFiguresAreSurvived();
    void oneUndoRestoresBitForBit_data();
    void oneUndoRestoresBitForBit();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

// ---- limits

void TestPoseLimits::partsAreSwitchedApart_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<bool>("body");
    QTest::addColumn<bool>("face");
    QTest::newRow("left click: face") << int(FaceLimits) << false << true;
    QTest::newRow("right click: body") << int(BodyLimits) << true << false;
    QTest::newRow("both") << (BodyLimits | FaceLimits) << true << true;
    QTest::newRow("neither") << 0 << false << false;
}

void TestPoseLimits::partsAreSwitchedApart()
{
    QFETCH(int, mask);
    QFETCH(bool, body);
    QFETCH(bool, face);
    for (const char* name : kTestFigures) {
        FigureFixture f {s(name)};
        const int bodyRotations = body ? 93 * 3 : 0, faceRotations = face ? 77 * 3 : 0;
        const int faceControls = int(ownControlsOf(f.figure, FigureScope::Face).size());
        for (const bool clamp : {true, false}) {
            setAllFlags(f.figure, !clamp);
            setPoseLimits(f.figure, clamp, mask);
            const int bodyNow = clampedRotations(f.figure, FigureScope::Body);
            const int faceNow = clampedRotations(f.figure, FigureScope::Face);
            const int controlsNow = clampedControls(f.figure, FigureScope::Face);
            QCOMPARE(clamp ? bodyNow : 93 * 3 - bodyNow, bodyRotations);
            QCOMPARE(clamp ? faceNow : 77 * 3 - faceNow, faceRotations);
            QCOMPARE(clamp ? controlsNow : faceControls - controlsNow, face ? faceControls : 0);
            // the body controls are the bake's business, translations the other tool's
            QCOMPARE(clampedControls(f.figure, FigureScope::Body), clamp ? 0 : 97 - 4);
            QCOMPARE(f.bone("head")->getXPosControl()->isClamped(), !clamp);
        }
    }
}

void TestPoseLimits::pureShapesAreNeverClamped()
{
    FigureFixture f;
    DzFloatProperty* shape = f.control("eCTRLTongueIn-Out");
    DzFloatProperty* corrective = f.control("pPBMlBreastsFlatten");
    for (DzFloatProperty* each : {shape, corrective}) {
        each->setIsClamped(false);
        each->setValue(3);
    }
    setPoseLimits(f.figure, true, BodyLimits | FaceLimits);
    setBodyControlLimits(f.figure, true, false);
    for (DzFloatProperty* each : {shape, corrective}) {
        QVERIFY(!each->isClamped());
        QCOMPARE(each->getValue(), 3.f);
    }
}

// The value is read after the limits are on: what is stored moves, and does not come back.
void TestPoseLimits::aRotationOutOfRangeMovesIntoRangeForGood()
{
    FigureFixture f;
    DzFloatProperty* bend = f.bone("lShin")->getXRotControl();
    liftAllLimits(f.figure);
    bend->setValue(bend->getMax() + 20);
    setPoseLimits(f.figure, true, BodyLimits);
    QVERIFY(bend->isClamped());
    QVERIFY(nearly(bend->getValue(), bend->getMax(), 1e-4));
    QVERIFY(nearly(bend->getRawValue(), bend->getMax(), 1e-4));
    setPoseLimits(f.figure, false, BodyLimits);
    QVERIFY(nearly(bend->getValue(), bend->getMax(), 1e-4));
}

void TestPoseLimits::aControlOutOfRangeMovesIntoRangeForGood()
{
    FigureFixture f;
    DzFloatProperty* jaw = f.control("eCTRLMouthOpen");
    jaw->setIsClamped(false);
    jaw->setValue(jaw->getMax() + 1);
    setPoseLimits(f.figure, true, FaceLimits);
    QCOMPARE(jaw->getRawValue(), jaw->getMax());
    DzFloatProperty* fist = f.control("pCTRLlHandFist");
    fist->setIsClamped(false);
    fist->setValue(fist->getMin() - 1);
    setBodyControlLimits(f.figure, true, false);
    QCOMPARE(fist->getRawValue(), fist->getMin());
}

void TestPoseLimits::aRotationThatAControlHoldsOutOfRangeMovesIntoRangeForGood()
{
    FigureFixture f;
    DzFloatProperty* bend = f.bone("lShin")->getXRotControl(); // 100 degrees from the control
    bend->setMinMax(-10, 80);
    f.control("pCTRLKneesUpLeft")->setValue(1);
    QCOMPARE(bend->getValue(), 80.f); // limited as loaded
    setPoseLimits(f.figure, true, BodyLimits);
    QVERIFY(nearly(bend->getRawValue(), -20, 1e-4));
    setPoseLimits(f.figure, false, BodyLimits);
    QVERIFY(nearly(bend->getValue(), 80, 1e-4));
}

void TestPoseLimits::valuesWithinLimitsAreNotWritten_data()
{
    addFigureRows();
}

void TestPoseLimits::valuesWithinLimitsAreNotWritten()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    for (const FigureBone& each : bonesOf(f.figure)) {
        DzFloatProperty* bend = each.bone->getXRotControl();
        bend->setValue(0.4f * bend->getMax());
    }
    f.scene.setTime(160);
    setPoseLimits(f.figure, true, BodyLimits | FaceLimits); // sets the flags that are off as loaded
    const FigureState before = stateOf(f.figure);
    setPoseLimits(f.figure, true, BodyLimits | FaceLimits);
    setBodyControlLimits(f.figure, true, false);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    QCOMPARE(f.bone("lShin")->getXRotControl()->getNumKeys(), 1); // none at 160
}

static QString firstOutOfRange(const DzNode* figure)
{
    const double kRoundingDeg = 1e-3; // angles read back from a rotation
    for (const FigureBone& each : bonesOf(figure)) {
        const PoseChannels channels = poseChannelsOf(each.bone);
        for (int i = 0; i < 3; ++i) {
            const DzFloatProperty* c = channels.channel[i];
            if (!c->isLocked()
                && (c->getValue() < c->getMin() - kRoundingDeg
                    || c->getValue() > c->getMax() + kRoundingDeg))
                return QString("%1/%2 %3 of %4..%5")
                    .arg(each.bone->getName())
                    .arg(c->getName())
                    .arg(double(c->getValue()))
                    .arg(double(c->getMin()))
                    .arg(double(c->getMax()));
        }
    }
    for (const FigureControl& each : ownControlsOf(figure)) {
        const DzFloatProperty* c = each.property;
        if (!c->isLocked() && (c->getValue() < c->getMin() || c->getValue() > c->getMax()))
            return controlName(each.number);
    }
    return QString();
}

void TestPoseLimits::allChannelsAreInRangeAfterwards_data()
{
    addFigureRows();
}

// Also when the limits are lifted again: what is stored lies in range.
void TestPoseLimits::allChannelsAreInRangeAfterwards()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    const DzUndoStackLock unrecorded;
    Random random(21);
    for (int i = 0; i < 200; ++i) {
        liftAllLimits(f.figure);
        poseAtRandom(&random, f.figure);
        setPoseLimits(f.figure, true, BodyLimits | FaceLimits);
        const QString limited = firstOutOfRange(f.figure);
        QVERIFY2(limited.isEmpty(), qPrintable(limited));
        setPoseLimits(f.figure, false, BodyLimits | FaceLimits);
        const QString lifted = firstOutOfRange(f.figure);
        QVERIFY2(lifted.isEmpty(), qPrintable(lifted));
    }
}

void TestPoseLimits::aFigureWithoutSkeletonIsLeftAlone()
{
    SceneFixture scene;
    DzNode prop(s("cube"));
    setPoseLimits(&prop, true, BodyLimits | FaceLimits);
    setBodyControlLimits(&prop, true, false);
    setPoseLimits(nullptr, true, BodyLimits);
    limitBoneTranslations(nullptr, 0);
    QVERIFY(!prop.getXRotControl()->isClamped());
}

// ---- the command

void TestPoseLimits::statusTextsOfTheCommand_data()
{
    QTest::addColumn<bool>("clamp");
    QTest::addColumn<int>("mask");
    QTest::addColumn<QString>("text");
    QTest::newRow("left click") << true << 2 << "\r\n\r\nBone rotation limits clamped\r\n\r\n";
    QTest::newRow("right click") << true << 1 << "\r\n\r\nExpression limits clamped\r\n\r\n";
    QTest::newRow("both") << true << 3 << "\r\n\r\nBone rotation limits clamped\r\n\r\n";
    QTest::newRow("middle click") << false << 3 << "\r\n\r\nAll pose limits un-clamped\r\n\r\n";
    QTest::newRow("body off") << false << 1 << "\r\n\r\nAll pose limits un-clamped\r\n\r\n";
}

void TestPoseLimits::statusTextsOfTheCommand()
{
    QFETCH(bool, clamp);
    QFETCH(int, mask);
    QFETCH(QString, text);
    FigureFixture f;
    clearStatusMessage();
    setPoseLimits(f.figure, clamp, mask);
    QVERIFY(isStatusMessageShown());
    QCOMPARE(statusMessage(), text);
}

void TestPoseLimits::theCommandIsOneUndoStep()
{
    FigureFixture f;
    setPoseLimits(f.figure, false, BodyLimits | FaceLimits);
    QCOMPARE(f.undoStack.getUndoCaptions(), QStringList(s("quillon_stack")));
    setPoseLimits(f.figure, false, BodyLimits | FaceLimits); // changes nothing, a step all the same
    QCOMPARE(f.undoStack.getNumUndoItems(), 2);
    DzUndoStackHold outer;
    setPoseLimits(f.figure, true, BodyLimits);
    outer.accept(s("outer"));
    QCOMPARE(f.undoStack.getNumUndoItems(), 3);
    QCOMPARE(f.undoStack.getUndoCaption(), s("outer"));
}

// ---- damage, locks, undo

static void runTool(DzFigure* figure, int tool)
{
    switch (tool) {
    case 0:
        return setPoseLimits(figure, true, FaceLimits);
    case 1:
        return setPoseLimits(figure, true, BodyLimits);
    case 2:
        return setPoseLimits(figure, false, BodyLimits | FaceLimits);
    case 3:
        return limitBoneTranslations(figure, kTranslationRangeCm);
    default:
        return limitBoneTranslations(figure, 0);
    }
}

void TestPoseLimits::limitsAreOfTheTimeGiven()
{
    FigureFixture f; // the scene stands at 0
    liftAllLimits(f.figure);
    DzBone* head = f.bone("head");
    setFreeTranslation(head, DzVec3(1, 0, 0));
    for (DzFloatProperty* channel : {head->getXRotControl(), head->getXPosControl()}) {
        channel->setValue(0, 100);
        channel->setValue(4800, 200);
    }
    setPoseLimits(f.figure, true, BodyLimits, 4800);
    limitBoneTranslations(f.figure, 0, 4800);
    QCOMPARE(head->getXRotControl()->getRawValue(0), 100.f);
    QCOMPARE(head->getXRotControl()->getRawValue(4800), head->getXRotControl()->getMax());
    QCOMPARE(head->getXPosControl()->getRawValue(0), 100.f);
    QCOMPARE(head->getXPosControl()->getRawValue(4800), 0.f);
}

static const int kToolCount = 5;

static bool isBoneTranslations(int tool)
{
    return tool >= 3;
}

void TestPoseLimits::locksHold_data()
{
    addFigureRows();
}

void TestPoseLimits::locksHold()
{
    QFETCH(QString, figure);
    Random random(26);
    FigureFixture f(figure);
    const Channels channels = everyChannel(f.figure);
    const DzUndoStackLock unrecorded;
    for (int i = 0; i < 200; ++i) {
        if (i % 2)
            liftAllLimits(f.figure);
        poseAtRandom(&random, f.figure);
        const std::vector<DzFloatProperty*> locked = lockAtRandom(&random, f.figure, 1 + i % 40);
        for (int tool = 0; tool < kToolCount; ++tool) {
            const HeldChannels before = heldAmong(channels);
            runTool(f.figure, tool);
            const QString lost = lostLock(before,
                isBoneTranslations(tool) ? LocksLifted::ByBoneTranslations : LocksLifted::None);
            QVERIFY2(lost.isEmpty(), qPrintable(lost));
        }
        unlock(locked);
    }
}

void TestPoseLimits::mutilatedFiguresAreSurvived_data()
{
    addFigureRows();
}

void TestPoseLimits::mutilatedFiguresAreSurvived()
{
    QFETCH(QString, figure);
    Random random(27);
    for (int i = 0; i < 60; ++i) {
        FigureFixture f(figure);
        mutilate(&random, f.figure, 1 + i);
        poseAtRandom(&random, f.figure);
        for (int tool = 0; tool < kToolCount; ++tool)
            runTool(f.figure, tool);
        for (const FigureBone& each : bonesOf(f.figure)) {
            if (isTranslatableBone(boneName(each.number)))
                QVERIFY(each.bone->getLocalPos() == DzVec3(0, 0, 0));
        }
    }
}

void TestPoseLimits::oneUndoRestoresBitForBit_data()
{
    addFigureRows();
}

void TestPoseLimits::oneUndoRestoresBitForBit()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    Random random(28);
    for (int tool = 0; tool < kToolCount; ++tool) {
        if (tool != 2)
            liftAllLimits(f.figure);
        poseAtRandom(&random, f.figure);
        for (const FigureBone& each : bonesOf(f.figure))
            setFreeTranslation(each.bone, DzVec3(1, 2, 3));
        f.scene.setTime(160 * tool);
        f.undoStack.clearAll();
        const FigureState before = stateOf(f.figure);
        runTool(f.figure, tool);
        VERIFY_ONE_STEP_SINCE(before, f);
    }
}

QUILLON_TEST(TestPoseLimits)
#include "test_pose_limits.moc"
