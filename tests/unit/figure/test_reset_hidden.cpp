// What limits and links hide from the eye: reset takes stored values along, and settles at once.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/reset_pose.h"

#include "dzerclink.h"

#include <QtTest>

#include <limits>

using namespace quillon;

class TestResetHidden : public QObject {
    Q_OBJECT
private slots:
    void onlyWhatExceedsTheThresholdIsWritten();
    // one hidden value
    void aStoredValueUnderItsRangeGoesToZero_data();
    void aStoredValueUnderItsRangeGoesToZero();
    void aStoredValueGoesThoughTheRangeLacksZero();
    void aLockedHiddenValueStays();
    void theHipHidesNothing();
    void aLinkThatMultipliesByZeroHidesNothing_data();
    void aLinkThatMultipliesByZeroHidesNothing();

    // drivers
    void aDriverThatStaysKeepsItsOpposite_data();
    void aDriverThatStaysKeepsItsOpposite();
    void bonesThatDriveBonesGoToZero_data();
    void bonesThatDriveBonesGoToZero();
    void morphsThatDriveMorphsAndBonesGoToZero_data();
    void morphsThatDriveMorphsAndBonesGoToZero();

    // all at once
    void everythingStoredIsZeroAndASecondResetWritesNothing_data();
    void everythingStoredIsZeroAndASecondResetWritesNothing();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

static void clampTo(DzFloatProperty* property, float min, float max)
{
    property->setMinMax(min, max);
    property->setIsClamped(true);
}

static void link(DzFloatProperty* driven, DzFloatProperty* driver, double scalar)
{
    auto* controller = new DzERCLink(driver, DzERCLink::ERCDeltaAdd0, scalar);
    if (driven->insertController(controller))
        return;
    delete controller; // refused, and so nobody else's
    QFAIL("The host refused the link");
}

static DzFloatProperty* addMorph(const FigureFixture& f, const char* name)
{
    auto* morph = new DzMorph(s(name));
    f.figure->getObject()->addModifier(morph);
    return morph->getValueChannel();
}

// Whether a further reset, here or at a time that has no keys yet, leaves everything as it is.
// Outside a hold each write would be an undo step of its own.
static QString secondWrite(FigureFixture* f, int mode, DzTime time)
{
    f->scene.setTime(time);
    const FigureState before = stateOf(f->figure);
    f->undoStack.clearAll();
    resetPose(f->figure, mode);
    const QString difference = firstDifference(before, stateOf(f->figure));
    const int steps = f->undoStack.getNumUndoItems();
    return steps == 0 ? difference : QString("%1 undo steps %2").arg(steps).arg(difference);
}

#define VERIFY_SECOND_WRITES_NOTHING(fixture, mode, time)                                          \
    do {                                                                                           \
        const QString written = secondWrite(fixture, mode, time);                                  \
        QVERIFY2(written.isEmpty(), qPrintable(written));                                          \
    } while (false)

static void addModes()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("whole figure") << int(ResetWholeFigure);
    QTest::newRow("left click") << int(ResetBody);
    QTest::newRow("middle click") << int(ResetSelected);
}

// ---- one hidden value

void TestResetHidden::onlyWhatExceedsTheThresholdIsWritten()
{
    static const float kThreshold = std::numeric_limits<float>::epsilon();
    FigureFixture f;
    for (DzFloatProperty* each : {f.bone("lShin")->getXRotControl(), f.control("pCTRLWaistBend")}) {
        each->setValue(kThreshold);
        resetPose(f.figure, ResetWholeFigure);
        QVERIFY(each->getRawValue() == kThreshold);
        each->setValue(2 * kThreshold);
        resetPose(f.figure, ResetWholeFigure);
        QVERIFY(each->getRawValue() == 0);
    }
}

void TestResetHidden::aStoredValueUnderItsRangeGoesToZero_data()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<QString>("control"); // empty: X Rotate of the bone
    QTest::addColumn<QString>("bone");
    QTest::addColumn<int>("mode");
    const QString f8 = s("Genesis8Female"), f81 = s("Genesis8_1Male"), whole = s("lThighBend");
    const int all = ResetWholeFigure, body = ResetBody, right = ResetExtremities;
    QTest::newRow("control, whole figure") << f8 << s("pCTRLKneesUpLeft") << whole << all;
    QTest::newRow("control, left click") << f8 << s("pCTRLKneesUpLeft") << whole << body;
    QTest::newRow("corrective") << f8 << s("pJCMFlexQuad_L") << whole << body;
    QTest::newRow("face control") << f8 << s("eCTRLMouthOpen") << s("lowerJaw") << right;
    QTest::newRow("facs control") << f81 << s("facs_jnt_JawOpen") << s("lEye") << right;
    QTest::newRow("facs morph") << f81 << s("facs_bs_CheekPuffLeft_div2") << s("lEye") << right;
    QTest::newRow("bone, whole figure") << f8 << s("") << s("lForearmBend") << all;
    QTest::newRow("bone, left click") << f81 << s("") << s("lForearmBend") << body;
    QTest::newRow("bone, right click") << f8 << s("") << s("lHand") << right;
}

void TestResetHidden::aStoredValueUnderItsRangeGoesToZero()
{
    QFETCH(QString, figure);
    QFETCH(QString, control);
    QFETCH(QString, bone);
    QFETCH(int, mode);
    FigureFixture f(figure);
    DzFloatProperty* hiding = control.isEmpty() ? findBone(bone, f.figure)->getXRotControl()
                                                : findControl(control, f.figure);
    hiding->lock(false); // as some rotations are when loaded
    clampTo(hiding, 0, 1);
    hiding->setRawValue(-0.5f);
    QCOMPARE(hiding->getRawValue(), -0.5f);
    QCOMPARE(hiding->getValue(), 0.f);
    findBone(bone, f.figure)->select(true);
    resetPose(f.figure, mode);
    QCOMPARE(hiding->getRawValue(), 0.f);
    VERIFY_SECOND_WRITES_NOTHING(&f, mode, 0);
    VERIFY_SECOND_WRITES_NOTHING(&f, mode, 160);
    hiding->setIsClamped(false);
    QCOMPARE(hiding->getValue(), 0.f);
}

// The value reads the range's beginning before and after; what is stored goes all the same.
void TestResetHidden::aStoredValueGoesThoughTheRangeLacksZero()
{
    FigureFixture f;
    DzFloatProperty* turn = f.bone("lShin")->getYRotControl();
    DzFloatProperty* bend = f.control("pCTRLWaistBend");
    clampTo(turn, 5, 20);
    clampTo(bend, 0.25f, 1);
    turn->setRawValue(10);
    bend->setRawValue(-3);
    resetPose(f.figure, ResetWholeFigure);
    QCOMPARE(turn->getRawValue(), 0.f);
    QCOMPARE(bend->getRawValue(), 0.f);
    QCOMPARE(turn->getValue(), 5.f);
    VERIFY_SECOND_WRITES_NOTHING(&f, ResetWholeFigure, 160);
}

void TestResetHidden::aLockedHiddenValueStays()
{
    FigureFixture f;
    DzFloatProperty* control = f.control("pCTRLKneesUp");
    clampTo(control, 0, 1);
    control->setRawValue(-0.5f);
    control->lock(true);
    VERIFY_SECOND_WRITES_NOTHING(&f, ResetWholeFigure, 0);
    QCOMPARE(control->getRawValue(), -0.5f);
}

// Upright as it looks, with 25 degrees that would come out with the limits.
void TestResetHidden::theHipHidesNothing()
{
    for (const int mode : {int(ResetBody), int(ResetSelected), int(ResetWholeFigure)}) {
        FigureFixture f;
        DzFloatProperty* bend = f.bone("hip")->getXRotControl();
        clampTo(bend, 0, 90);
        bend->setRawValue(-25);
        f.select("hip");
        resetPose(f.figure, mode);
        QCOMPARE(bend->getRawValue(), 0.f);
        VERIFY_SECOND_WRITES_NOTHING(&f, mode, 160);
    }
}

void TestResetHidden::aLinkThatMultipliesByZeroHidesNothing_data()
{
    addModes();
}

void TestResetHidden::aLinkThatMultipliesByZeroHidesNothing()
{
    QFETCH(int, mode);
    FigureFixture f;
    DzFloatProperty* turn = f.bone("lForearmBend")->getYRotControl();
    DzFloatProperty* share = f.control("pCTRLWaistBend");
    turn->insertController(new DzERCLink(share, DzERCLink::ERCMultiply3));
    turn->setRawValue(30);
    QCOMPARE(turn->getRawValue(), 30.f);
    QCOMPARE(turn->getValue(), 0.f);
    f.select("lForearmBend");
    resetPose(f.figure, mode);
    QCOMPARE(turn->getRawValue(), 0.f);
    share->setValue(1);
    QCOMPARE(turn->getValue(), 0.f);
    share->setValue(0);
    VERIFY_SECOND_WRITES_NOTHING(&f, mode, 0);
}

// ---- drivers

void TestResetHidden::aDriverThatStaysKeepsItsOpposite_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("locked"); // a locked control; otherwise a slider of the user's own
    QTest::addColumn<bool>("clamped");
    for (const int mode : {int(ResetWholeFigure), int(ResetBody), int(ResetSelected)}) {
        for (const bool locked : {false, true}) {
            for (const bool clamped : {false, true})
                QTest::newRow(qPrintable(QString("mode %1%2%3")
                                             .arg(mode)
                                             .arg(s(locked ? " locked control" : " own slider"))
                                             .arg(s(clamped ? ", limits" : ""))))
                    << mode << locked << clamped;
        }
    }
}

void TestResetHidden::aDriverThatStaysKeepsItsOpposite()
{
    QFETCH(int, mode);
    QFETCH(bool, locked);
    QFETCH(bool, clamped);
    FigureFixture f;
    DzFloatProperty* own = new DzFloatProperty(s("MyOwnSlider"));
    f.figure->addProperty(own);
    DzFloatProperty* driver = locked ? f.control("pCTRLHipBendBck") : own;
    DzFloatProperty* turn = f.bone("lForearmBend")->getYRotControl();
    link(turn, driver, 10.1);
    driver->setValue(1);
    driver->lock(locked);
    clampTo(turn, 0, 45);
    turn->setIsClamped(clamped);
    turn->setRawValue(-30); // reads 0 under limits that begin there
    f.select("lForearmBend");
    resetPose(f.figure, mode);
    QCOMPARE(turn->getRawValue(), -10.1f);
    QVERIFY(nearly(turn->getValue(), 0, 1e-6)); // the share is no single-precision number
    QVERIFY(driver->getValue() == 1);
    VERIFY_SECOND_WRITES_NOTHING(&f, mode, 0);
    VERIFY_SECOND_WRITES_NOTHING(&f, mode, 160); // not even a key that changes nothing
    QCOMPARE(turn->isClamped(), clamped);
}

void TestResetHidden::bonesThatDriveBonesGoToZero_data()
{
    addModes();
}

// In either order of the bones, over two links, and from a control that drives the last of them.
void TestResetHidden::bonesThatDriveBonesGoToZero()
{
    QFETCH(int, mode);
    FigureFixture f;
    DzFloatProperty* shin = f.bone("lShin")->getXRotControl();
    DzFloatProperty* arm = f.bone("lForearmBend")->getXRotControl();
    DzFloatProperty* neck = f.bone("neckLower")->getXRotControl();
    DzFloatProperty* bend = f.control("pCTRLNeckHeadBend");
    link(shin, arm, 0.5);
    link(arm, neck, 0.5);
    for (DzFloatProperty* each : {shin, arm, neck}) {
        each->lock(false);
        each->setRawValue(40);
        QCOMPARE(each->getRawValue(), 40.f);
    }
    bend->setRawValue(0.3f);
    for (const char* bone : {"lShin", "lForearmBend", "neckLower"})
        f.select(bone);
    resetPose(f.figure, mode);
    for (DzFloatProperty* each : {shin, arm, neck}) {
        QCOMPARE(each->getValue(), 0.f);
        QCOMPARE(each->getRawValue(), 0.f);
    }
}

void TestResetHidden::morphsThatDriveMorphsAndBonesGoToZero_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("whole figure") << int(ResetWholeFigure);
    QTest::newRow("right click") << int(ResetExtremities);
}

void TestResetHidden::morphsThatDriveMorphsAndBonesGoToZero()
{
    QFETCH(int, mode);
    FigureFixture f(s("Genesis8_1Female"));
    DzFloatProperty* first = addMorph(f, "facs_my_first"); // driven by what comes after it
    DzFloatProperty* second = addMorph(f, "facs_my_second");
    DzFloatProperty* eye = f.bone("lEye")->getXRotControl();
    DzFloatProperty* open = f.control("facs_jnt_JawOpen");
    link(first, second, 0.5);
    link(eye, first, 10);
    link(open, second, 0.25);
    eye->setRawValue(3);
    for (DzFloatProperty* each : {open, first, second})
        each->setRawValue(0.5f);
    f.select("lEye");
    resetPose(f.figure, mode);
    for (DzFloatProperty* each : {open, first, second, eye}) {
        QCOMPARE(each->getValue(), 0.f);
        QCOMPARE(each->getRawValue(), 0.f);
    }
    VERIFY_SECOND_WRITES_NOTHING(&f, mode, 160);
}

// ---- all at once

// Every limit on, half of the stored values outside theirs.
static void hideAtRandom(Random* random, const FigureFixture& f)
{
    const DzUndoStackLock unrecorded;
    std::vector<DzFloatProperty*> all;
    for (const FigureBone& each : bonesOf(f.figure)) {
        for (DzFloatProperty* channel : poseChannelsOf(each.bone).channel)
            all.push_back(channel);
    }
    for (const FigureControl& each : controlsOf(f.figure))
        all.push_back(each.property);
    for (DzFloatProperty* each : all) {
        const double reach = std::min(each->getMax() - each->getMin(), 300.f);
        each->lock(false);
        each->setIsClamped(random->below(4) != 0);
        each->setRawValue(float(random->between(-reach, reach)));
    }
}

static bool isControl(const DzFloatProperty* property)
{
    return isBodyControl(controlNameOf(property));
}

// The first property that the reset took and that still holds something; empty: none. The hip of
// a click stays as far as its translation and the turn against the figure are concerned.
static QString firstStored(const DzFigure* figure, const std::vector<bool>& reset, int mode)
{
    for (const FigureBone& each : bonesOf(figure)) {
        if (!reset[each.number] || (each.number == 0 && mode != ResetWholeFigure))
            continue;
        for (DzFloatProperty* channel : poseChannelsOf(each.bone).channel) {
            for (DzFloatProperty* taken : driversFirst(channel, isControl)) {
                if (taken->getRawValue() != 0)
                    return each.bone->getName() + s(" ") + taken->getName();
            }
        }
    }
    for (const FigureControl& each : controlsOf(figure)) {
        if (mode == ResetWholeFigure && each.property->getRawValue() != 0)
            return controlName(each.number);
    }
    return QString();
}

static std::vector<bool> resetBones(const DzFigure* figure, int mode)
{
    std::vector<bool> reset(kBoneCount, mode == ResetWholeFigure);
    for (const FigureBone& each : bonesOf(figure)) {
        if (inResetPart(each.bone, mode) && each.bone->isSelected())
            reset[each.number] = true;
    }
    return reset;
}

void TestResetHidden::everythingStoredIsZeroAndASecondResetWritesNothing_data()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<int>("mode");
    for (const char* figure : kTestFigures) {
        for (const int mode :
            {int(ResetWholeFigure), int(ResetBody), int(ResetExtremities), int(ResetSelected)})
            QTest::newRow(qPrintable(QString("%1 mode %2").arg(s(figure)).arg(mode)))
                << s(figure) << mode;
    }
}

void TestResetHidden::everythingStoredIsZeroAndASecondResetWritesNothing()
{
    QFETCH(QString, figure);
    QFETCH(int, mode);
    FigureFixture f(figure);
    Random random(51 + unsigned(mode));
    for (int i = 0; i < 40; ++i) {
        f.scene.setTime(160 * i);
        hideAtRandom(&random, f);
        f.scene.selectAllNodes(false);
        for (int k = 0; k < 8; ++k)
            findBone(random.below(kBoneCount), f.figure)->select(true);
        if (i % 4 == 0)
            f.select("hip");
        resetPose(f.figure, mode);
        const QString left = firstStored(f.figure, resetBones(f.figure, mode), mode);
        QVERIFY2(left.isEmpty(), qPrintable(left));
        VERIFY_SECOND_WRITES_NOTHING(&f, mode, 160 * i);
    }
}

QUILLON_TEST(TestResetHidden)
#include "test_reset_hidden.moc"
