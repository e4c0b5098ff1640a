// Bake: the controls fall to 0, the figure stays where it is.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/bake_pose.h"

#include "dzerclink.h"

#include <QtTest>

#include <limits>

using namespace quillon;

// Channel values are single precision; each bone's rotation is read back through three angles.
static const double kTurnToleranceDeg = 1e-3;
static const double kMoveToleranceCm = 2e-4; // a bake leaves 1e-6 of the length where it is

class TestBakePose : public QObject {
    Q_OBJECT
private slots:
    void hipBendGoesIntoTheBones();
    void faceBakeLeavesBodyControls();
    void bodyBakeLeavesExpressionControls();
    void controlsThatDriveNoBoneKeepTheirValue();
    void rightBreastControlsSurviveIn81();
    void otherButtonsDoNothing();
    void aFigureWithoutHeadIsLeftAlone();
    void nothingToBakeChangesNothing_data();
    void nothingToBakeChangesNothing();
    void aControlThatIsAMorphIsBaked();
    void onlyAControlBeyondTheThresholdFallsToZero();
    void controlsThatDriveControlsFallToZero();
    void limitFlagsComeBack();
    void limitsDoNotDisturbTheBake();
    void scalesStay();
    void worldPlacesStayWithoutLimits_data();
    void worldPlacesStayWithoutLimits();
    void noChannelLeavesItsLimits_data();
    void noChannelLeavesItsLimits();
    void aBakeIsOfTheTimeGiven();
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

static FigureScope partOf(int button)
{
    return button == BakeFace ? FigureScope::Face : FigureScope::Body;
}

// Whether the link table says that the control drives a bone of the baked part.
static bool isBaked(const QString& control, int button)
{
    for (int bone = 0; bone < kBoneCount; ++bone) {
        if (isFaceBone(boneName(bone)) == (button == BakeFace) && controlDrivesBone(control, bone))
            return true;
    }
    return false;
}

// ---- cases

void TestBakePose::hipBendGoesIntoTheBones()
{
    FigureFixture f;
    f.control("pCTRLHipBend")->setValue(0.6f);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    QVERIFY(angleDeg(before[0].rot_world, DzQuat()) > 5);
    bakePose(f.figure, BakeBody);
    QCOMPARE(f.control("pCTRLHipBend")->getValue(), 0.f);
    const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
    QVERIFY(f.bone("lThighBend")->getXRotControl()->getRawValue() != 0);
}

void TestBakePose::faceBakeLeavesBodyControls()
{
    FigureFixture f;
    f.control("pCTRLHipBend")->setValue(0.5f);
    f.control("eCTRLEyesUpDown")->setValue(0.5f);
    f.control("eCTRLMouthOpen")->setValue(0.5f);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    bakePose(f.figure, BakeFace);
    QCOMPARE(f.control("pCTRLHipBend")->getValue(), 0.5f);
    QCOMPARE(f.control("eCTRLEyesUpDown")->getValue(), 0.f);
    QCOMPARE(f.control("eCTRLMouthOpen")->getValue(), 0.f);
    const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

void TestBakePose::bodyBakeLeavesExpressionControls()
{
    FigureFixture f;
    f.control("eCTRLEyesUpDown")->setValue(0.5f);
    f.control("pCTRLWaistBend")->setValue(0.5f);
    bakePose(f.figure, BakeBody);
    QCOMPARE(f.control("eCTRLEyesUpDown")->getValue(), 0.5f);
    QCOMPARE(f.control("pCTRLWaistBend")->getValue(), 0.f);
}

void TestBakePose::controlsThatDriveNoBoneKeepTheirValue()
{
    FigureFixture f;
    const char* const shapes[] = {"pCTRLBreastsFlatten", "pPBMlBreastsFlatten", "pJCMFlexQuad_L",
        "eCTRLTongueNarrow-Wide", "pCTRLFlexBiceps_twist_L"};
    for (const char* name : shapes)
        f.control(name)->setValue(0.5f);
    bakePose(f.figure, BakeBody);
    bakePose(f.figure, BakeFace);
    for (const char* name : shapes)
        QCOMPARE(f.control(name)->getValue(), 0.5f);
}

// The 8.1 link table has no row for the right pectoral; the figure has the links all the same.
void TestBakePose::rightBreastControlsSurviveIn81()
{
    for (const char* name : {"Genesis8Female", "Genesis8_1Female"}) {
        FigureFixture f {s(name)};
        const char* const right[] = {"pCTRLrBreastUp-Down", "pCTRLrBreastSide-Side"};
        for (const char* control : right)
            f.control(control)->setValue(0.5f);
        f.control("pCTRLlBreastUp-Down")->setValue(0.5f);
        const std::vector<WorldPlace> before = worldPlaces(f.figure);
        bakePose(f.figure, BakeBody);
        for (const char* control : right)
            QCOMPARE(f.control(control)->getValue(), isGenesis81() ? 0.5f : 0.f);
        QCOMPARE(f.control("pCTRLlBreastUp-Down")->getValue(), 0.f);
        const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
        QVERIFY2(moved.isEmpty(), qPrintable(moved));
    }
}

void TestBakePose::otherButtonsDoNothing()
{
    FigureFixture f;
    f.control("pCTRLHipBend")->setValue(0.5f);
    const FigureState before = stateOf(f.figure);
    for (const int button : {-1, 0, 3, 4})
        bakePose(f.figure, button);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestBakePose::aFigureWithoutHeadIsLeftAlone()
{
    FigureFixture f;
    f.control("pCTRLHipBend")->setValue(0.5f);
    QVERIFY(f.figure->removeBone(f.bone("head")));
    const FigureState before = stateOf(f.figure);
    bakePose(f.figure, BakeBody);
    bakePose(f.figure, BakeFace);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    bakePose(nullptr, BakeBody);
    DzNode prop(s("cube"));
    bakePose(&prop, BakeBody);
}

void TestBakePose::nothingToBakeChangesNothing_data()
{
    addFigureRows();
}

void TestBakePose::nothingToBakeChangesNothing()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    for (const FigureBone& each : bonesOf(f.figure))
        each.bone->getZRotControl()->setValue(0.3f * each.bone->getZRotControl()->getMax());
    levelLimits(f.figure);
    f.scene.setTime(160);
    const FigureState before = stateOf(f.figure);
    bakePose(f.figure, BakeBody);
    bakePose(f.figure, BakeFace);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestBakePose::aControlThatIsAMorphIsBaked()
{
    FigureFixture f;
    QVERIFY(f.figure->removeProperty(f.control("pCTRLlFootRoll")));
    auto* morph = new DzMorph(s("pCTRLlFootRoll"));
    QVERIFY(f.figure->getObject()->addModifier(morph));
    f.bone("lFoot")->getXRotControl()->insertController(
        new DzERCLink(morph->getValueChannel(), DzERCLink::ERCDeltaAdd0, 25));
    morph->getValueChannel()->setValue(1);
    bakePose(f.figure, BakeBody);
    QCOMPARE(morph->getValueChannel()->getValue(), 0.f);
    QVERIFY(nearly(f.bone("lFoot")->getXRotControl()->getRawValue(), 25, kTurnToleranceDeg));
}

void TestBakePose::onlyAControlBeyondTheThresholdFallsToZero()
{
    static const float kThreshold = std::numeric_limits<float>::epsilon();
    FigureFixture f;
    DzFloatProperty* control = f.control("pCTRLWaistBend");
    control->setValue(kThreshold);
    bakePose(f.figure, BakeBody);
    QVERIFY(control->getRawValue() == kThreshold);
    control->setValue(2 * kThreshold);
    bakePose(f.figure, BakeBody);
    QVERIFY(control->getRawValue() == 0);
}

void TestBakePose::controlsThatDriveControlsFallToZero()
{
    FigureFixture f; // the driver stands later in the table than what it drives
    DzFloatProperty* driven = f.control("pCTRLWaistSide");
    DzFloatProperty* driver = f.control("pCTRLArmsFrntBck");
    driven->insertController(new DzERCLink(driver, DzERCLink::ERCDeltaAdd0, 0.5));
    driver->setValue(0.7f);
    driven->setValue(0.2f);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    bakePose(f.figure, BakeBody);
    QCOMPARE(driven->getValue(), 0.f);
    QCOMPARE(driver->getValue(), 0.f);
    QCOMPARE(driven->getRawValue(), 0.f);
    const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

void TestBakePose::limitFlagsComeBack()
{
    FigureFixture f;
    levelLimits(f.figure);
    for (const char* bone : {"lShin", "lEye"}) {
        for (DzFloatProperty* channel : poseChannelsOf(f.bone(bone)).channel)
            channel->setIsClamped(false);
    }
    f.control("pCTRLWaistBend")->setIsClamped(false);
    f.control("eCTRLMouthOpen")->setIsClamped(false);
    f.control("pCTRLHipBend")->setValue(0.5f);
    f.control("eCTRLEyesUpDown")->setValue(0.5f);
    const FigureState before = stateOf(f.figure);
    bakePose(f.figure, BakeBody);
    bakePose(f.figure, BakeFace);
    const FigureState after = stateOf(f.figure);
    for (size_t i = 0; i < before.size(); ++i)
        QVERIFY2(before[i].clamped == after[i].clamped, qPrintable(before[i].path));
    QVERIFY(!f.bone("lShin")->getXRotControl()->isClamped());
    QVERIFY(f.bone("rShin")->getXRotControl()->isClamped());
}

// A control moves a channel within its limits, though its own part of the value lies outside.
void TestBakePose::limitsDoNotDisturbTheBake()
{
    FigureFixture f;
    DzFloatProperty* bend = f.bone("lShin")->getXRotControl();
    bend->setMinMax(-10, 60);
    bend->setIsClamped(false);
    f.control("pCTRLKneesUpLeft")->setValue(1); // 100 degrees
    bend->setRawValue(-60);
    bend->setIsClamped(true);
    QCOMPARE(bend->getValue(), 40.f);
    bakePose(f.figure, BakeBody);
    QVERIFY(nearly(bend->getValue(), 40, kTurnToleranceDeg));
    QVERIFY(nearly(bend->getRawValue(), 40, kTurnToleranceDeg));
}

void TestBakePose::scalesStay()
{
    FigureFixture f;
    f.bone("lShldrBend")->getXScaleControl()->setValue(1.3f);
    f.bone("head")->getScaleControl()->setValue(0.8f);
    f.control("pCTRLArmsUpDwn")->setValue(0.5f);
    f.control("pCTRLNeckHeadTwist")->setValue(0.5f);
    std::vector<DzMatrix3> scales;
    for (const FigureBone& each : bonesOf(f.figure))
        scales.push_back(each.bone->getWSScale());
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    bakePose(f.figure, BakeBody);
    for (const FigureBone& each : bonesOf(f.figure))
        QVERIFY(each.bone->getWSScale() == scales[each.number]);
    QCOMPARE(f.bone("lShldrBend")->getXScaleControl()->getNumKeys(), 1);
    QCOMPARE(f.bone("lShldrBend")->getYScaleControl()->getNumKeys(), 0);
    const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

// ---- random poses

static void addFiguresAndButtons()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<int>("button");
    for (const char* name : kTestFigures) {
        QTest::newRow(qPrintable(s(name) + s(" body"))) << s(name) << int(BakeBody);
        QTest::newRow(qPrintable(s(name) + s(" face"))) << s(name) << int(BakeFace);
    }
}

static QString firstNotBaked(const DzFigure* figure, int button)
{
    for (const FigureControl& each : controlsOf(figure)) {
        const QString& name = controlName(each.number);
        if (!each.property->isLocked() && isBaked(name, button) && each.property->getValue() != 0)
            return name;
    }
    return QString();
}

void TestBakePose::worldPlacesStayWithoutLimits_data()
{
    addFiguresAndButtons();
}

void TestBakePose::worldPlacesStayWithoutLimits()
{
    QFETCH(QString, figure);
    QFETCH(int, button);
    FigureFixture f(figure);
    const DzUndoStackLock unrecorded;
    liftAllLimits(f.figure);
    Random random(31 + button);
    for (int i = 0; i < 200; ++i) {
        poseAtRandom(&random, f.figure);
        const std::vector<WorldPlace> before = worldPlaces(f.figure);
        bakePose(f.figure, button);
        const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
        QVERIFY2(moved.isEmpty(), qPrintable(moved));
        const QString left = firstNotBaked(f.figure, button);
        QVERIFY2(left.isEmpty(), qPrintable(left));
    }
}

static std::vector<DzFloatProperty*> clampedOnes(const DzFigure* figure)
{
    std::vector<DzFloatProperty*> clamped;
    for (DzFloatProperty* each : poseProperties(figure)) {
        if (each->isClamped())
            clamped.push_back(each);
    }
    return clamped;
}

static QString nameOf(const DzFloatProperty* property)
{
    const DzBase* owner = qobject_cast<DzBase*>(property->getOwner());
    return (owner ? owner->getName() : QString()) + s("/") + property->getName();
}

// The value that is stored, too, where nothing adds to it: it would come out with the limits off.
static QString firstOutOfRange(const std::vector<DzFloatProperty*>& clamped)
{
    for (const DzFloatProperty* each : clamped) {
        const float min = each->getMin(), max = each->getMax(), stored = each->getRawValue();
        const bool value = each->getValue() >= min && each->getValue() <= max;
        const bool raw = stored >= min - 1e-4f && stored <= max + 1e-4f;
        if (!value || (!raw && !each->hasControllers()))
            return nameOf(each);
    }
    return QString();
}

void TestBakePose::noChannelLeavesItsLimits_data()
{
    addFiguresAndButtons();
}

void TestBakePose::noChannelLeavesItsLimits()
{
    QFETCH(QString, figure);
    QFETCH(int, button);
    FigureFixture f(figure);
    const DzUndoStackLock unrecorded;
    setPoseLimits(f.figure, true, BodyLimits | FaceLimits);
    setBodyControlLimits(f.figure, true, false);
    const std::vector<DzFloatProperty*> clamped = clampedOnes(f.figure);
    QVERIFY(clamped.size() > 170 * 3 + 100); // every rotation and the controls; no translation
    Random random(33 + button);
    for (int i = 0; i < 200; ++i) {
        poseAtRandom(&random, f.figure);
        bakePose(f.figure, button);
        const QString out = firstOutOfRange(clamped);
        QVERIFY2(out.isEmpty(), qPrintable(out));
        QVERIFY(clampedOnes(f.figure) == clamped);
        for (const FigureBone& each : bonesOf(f.figure, partOf(button))) {
            const PoseChannels channels = poseChannelsOf(each.bone);
            for (int axis = 0; axis < 3; ++axis) {
                const DzFloatProperty* c = channels.channel[axis];
                QVERIFY(c->isClamped());
                const float value = c->getValue(), raw = c->getRawValue();
                QVERIFY2(
                    value >= c->getMin() && value <= c->getMax(), qPrintable(each.bone->getName()));
                // With the controls at 0 the stored value is the whole one.
                const bool driven = isGenesis81() && each.number == 169;
                QVERIFY2(driven || nearly(raw, value, kTurnToleranceDeg),
                    qPrintable(each.bone->getName()));
            }
        }
    }
}

// ---- damage, locks, undo

void TestBakePose::aBakeIsOfTheTimeGiven()
{
    FigureFixture f; // the scene stands at 0
    DzFloatProperty* bend = f.control("pCTRLHipBend");
    bend->setValue(0, 0.25f);
    bend->setValue(4800, 0.5f);
    bakePose(f.figure, BakeBody, 4800);
    QCOMPARE(bend->getValue(0), 0.25f);
    QCOMPARE(bend->getValue(4800), 0.f);
}

void TestBakePose::locksHold_data()
{
    addFiguresAndButtons();
}

void TestBakePose::locksHold()
{
    QFETCH(QString, figure);
    QFETCH(int, button);
    Random random(35 + button);
    FigureFixture f(figure);
    const Channels channels = everyChannel(f.figure);
    const DzUndoStackLock unrecorded;
    for (int i = 0; i < 200; ++i) {
        if (i == 100)
            liftAllLimits(f.figure);
        poseAtRandom(&random, f.figure);
        const std::vector<DzFloatProperty*> locked = lockAtRandom(&random, f.figure, 1 + i % 40);
        const HeldChannels before = heldAmong(channels);
        bakePose(f.figure, button);
        const QString lost = lostLock(before);
        QVERIFY2(lost.isEmpty(), qPrintable(lost));
        const QString left = firstNotBaked(f.figure, button);
        QVERIFY2(left.isEmpty(), qPrintable(left));
        unlock(locked);
    }
}

void TestBakePose::mutilatedFiguresAreSurvived_data()
{
    addFiguresAndButtons();
}

void TestBakePose::mutilatedFiguresAreSurvived()
{
    QFETCH(QString, figure);
    QFETCH(int, button);
    Random random(37 + button);
    for (int i = 0; i < 60; ++i) {
        FigureFixture f(figure);
        liftAllLimits(f.figure);
        mutilate(&random, f.figure, 1 + i);
        poseAtRandom(&random, f.figure);
        const std::vector<WorldPlace> before = worldPlaces(f.figure);
        bakePose(f.figure, button);
        const QString moved = firstMoved(f.figure, before, kTurnToleranceDeg, kMoveToleranceCm);
        QVERIFY2(moved.isEmpty(), qPrintable(moved));
    }
}

void TestBakePose::oneUndoRestoresBitForBit_data()
{
    addFiguresAndButtons();
}

void TestBakePose::oneUndoRestoresBitForBit()
{
    QFETCH(QString, figure);
    QFETCH(int, button);
    FigureFixture f(figure);
    Random random(39 + button);
    poseAtRandom(&random, f.figure);
    f.scene.setTime(480);
    f.undoStack.clearAll();
    const FigureState before = stateOf(f.figure);
    DzUndoStackHold hold;
    bakePose(f.figure, button);
    hold.accept(s("quillon_stack"));
    VERIFY_ONE_STEP_SINCE(before, f);
}

QUILLON_TEST(TestBakePose)
#include "test_bake_pose.moc"
