// Frames with keys, and the origin and rotation order of a prop that must not move.
#include "prop_fixture.h"
#include "room_tests.h"

#include "figure/prop_origin.h"

#include <QtTest>

using namespace quillon;

class TestPropOrigin : public QObject {
    Q_OBJECT
private slots:
    // frames
    void framesAreCountedOverTheRange_data();
    void framesAreCountedOverTheRange();
    void aFrameHoldsTheTicksUpToTheNext();
    void onlyKeysOfPropertiesThatAnimateCount();
    void aKeyOfAPropertyThatCannotAnimateDoesNotCount();

    // origins
    void noChangeKeepsTheOrigin();
    void theImportedOriginIsZero();
    void theObjectCentreIsThatOfTheGeometry_data();
    void theObjectCentreIsThatOfTheGeometry();
    void theBoxIsReadUnturnedAtTheOrigin();
    void measuringAnUnkeyedTimeLeavesNoTrace();
    void theWorldCentreIsAtTheWorldsOriginInTheLastKeyedFrame();
    void aNodeWithoutGeometryKeepsItsOriginAsObjectCentre();
    void measuringPutsBackAnOriginThatRoundingCouldHaveMade_data();
    void measuringPutsBackAnOriginThatRoundingCouldHaveMade();
    void aFlatPropKeepsItsOriginAsWorldCentre();

    // what must stay
    void cornersStayInEveryKeyedFrame_data();
    void cornersStayInEveryKeyedFrame();
    void withoutKeysOnlyTheOrderChanges_data();
    void withoutKeysOnlyTheOrderChanges();
    void framesAreVisitedFromTimeZero();
    void keysOutsideTheRangeStayAsTheyAre();
    void theNudgeIsTheStepOfThePositionSliders();
    void oneUndoRestoresEverything();
};

static const OriginChoice kChoices[] = {OriginChoice::Keep, OriginChoice::Imported,
    OriginChoice::ObjectCentre, OriginChoice::WorldCentre};
static const DzRotationOrder::RotOrder kOrders[] = {DzRotationOrder::XYZ, DzRotationOrder::XZY,
    DzRotationOrder::YXZ, DzRotationOrder::YZX, DzRotationOrder::ZXY, DzRotationOrder::ZYX};
static const DzTime kStep = PropFixture::kStep;

void TestPropOrigin::framesAreCountedOverTheRange_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("count");
    QTest::newRow("a second and its end") << 0 << 30 * 160 << 31;
    QTest::newRow("one frame") << 0 << 0 << 1;
    QTest::newRow("from frame 30") << 30 * 160 << 60 * 160 << 31;
    QTest::newRow("between frames") << 159 << 321 << 3;
    QTest::newRow("from before time 0") << -3 * 160 << 160 << 5;
}

void TestPropOrigin::framesAreCountedOverTheRange()
{
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(int, count);
    PropFixture f;
    f.scene.setAnimRange(DzTimeRange(start, end));
    QCOMPARE(frameCount(), count);
}

void TestPropOrigin::aFrameHoldsTheTicksUpToTheNext()
{
    PropFixture f;
    QVERIFY(!hasKeyInFrame(f.prop, 2));
    f.prop->getYRotControl()->setValue(2 * kStep - 1, 5);
    QVERIFY(hasKeyInFrame(f.prop, 1));
    QVERIFY(!hasKeyInFrame(f.prop, 2));
    f.prop->getYRotControl()->setValue(2 * kStep, 5);
    QVERIFY(hasKeyInFrame(f.prop, 2));
    f.prop->getYRotControl()->deleteAllKeys();
    f.prop->getYRotControl()->setValue(3 * kStep - 1, 5);
    QVERIFY(hasKeyInFrame(f.prop, 2));
    QVERIFY(!hasKeyInFrame(f.prop, 3));
}

void TestPropOrigin::onlyKeysOfPropertiesThatAnimateCount()
{
    PropFixture f;
    f.prop->setOrigin(DzVec3(1, 2, 3), true); // cannot animate
    QVERIFY(!hasKeyInFrame(f.prop, 0));
    DzFloatProperty* own = new DzFloatProperty(QLatin1String("Glow"), true, true);
    f.prop->addProperty(own);
    QVERIFY(!hasKeyInFrame(f.prop, 0));
    own->setValue(0, 1);
    QVERIFY(hasKeyInFrame(f.prop, 0));
}

// Has a key at 0 all the same: whether a property can animate is the host's to say.
class FixedProperty : public DzFloatProperty {
public:
    FixedProperty()
        : DzFloatProperty(QLatin1String("Fixed"), false)
    {
    }
    bool hasKeys() const override
    {
        return true;
    }
    using DzFloatProperty::getNumKeys;
    int getNumKeys() const override
    {
        return 1;
    }
    DzTime getKeyTime(int) const override
    {
        return 0;
    }
};

void TestPropOrigin::aKeyOfAPropertyThatCannotAnimateDoesNotCount()
{
    PropFixture f;
    f.prop->addProperty(new FixedProperty);
    QVERIFY(!hasKeyInFrame(f.prop, 0));
}

void TestPropOrigin::noChangeKeepsTheOrigin()
{
    PropFixture f;
    f.prop->setOrigin(DzVec3(1, 2, 3), true);
    f.keyFrames({0, 10});
    setPropOrigin(f.prop, DzRotationOrder::ZYX, OriginChoice::Keep);
    QCOMPARE(f.prop->getOrigin(), DzVec3(1, 2, 3));
}

void TestPropOrigin::theImportedOriginIsZero()
{
    PropFixture f;
    f.prop->setOrigin(DzVec3(1, 2, 3), true);
    f.keyFrames({0});
    setPropOrigin(f.prop, DzRotationOrder::XYZ, OriginChoice::Imported);
    QCOMPARE(f.prop->getOrigin(), DzVec3(0, 0, 0));
}

void TestPropOrigin::theObjectCentreIsThatOfTheGeometry_data()
{
    QTest::addColumn<int>("now");
    QTest::newRow("at the last keyed frame") << 10;
    QTest::newRow("between keys") << 7;
    QTest::newRow("behind the last key") << 25;
}

void TestPropOrigin::theObjectCentreIsThatOfTheGeometry()
{
    QFETCH(int, now);
    PropFixture f;
    Random random(7);
    f.prop->setOrigin(DzVec3(5, -4, 3), true);
    f.poseAt(0, &random);
    f.poseAt(10 * kStep, &random);
    f.prop->getXScaleControl()->setValue(0, 2);
    f.prop->getYScaleControl()->setValue(0, 0.5f);
    f.scene.setTime(now * kStep);
    setPropOrigin(f.prop, DzRotationOrder::YZX, OriginChoice::ObjectCentre);
    QVERIFY(distance(f.prop->getOrigin(), DzVec3(10, 25, 10)) <= 1e-4);
}

// How the box of geometry that is no box turns with it, the host does not say: only this one
// placement tells.
static const DzNode* g_measured;
static int g_measurements;

static bool lookAtMeasurement(const char* name, const void*)
{
    if (qstrcmp(name, "getLocalBoundingBox") != 0)
        return false;
    ++g_measurements;
    [] {
        QCOMPARE(g_measured->getXRotControl()->getValue(), 0.f);
        QCOMPARE(g_measured->getYRotControl()->getValue(), 0.f);
        QCOMPARE(g_measured->getZRotControl()->getValue(), 0.f);
        QCOMPARE(g_measured->getXPosControl()->getValue(), 0.f);
        QCOMPARE(g_measured->getYPosControl()->getValue(), 0.f);
        QCOMPARE(g_measured->getZPosControl()->getValue(), 0.f);
        QCOMPARE(g_measured->getOriginXControl()->getValue(), 0.f);
        QCOMPARE(g_measured->getOriginYControl()->getValue(), 0.f);
        QCOMPARE(g_measured->getOriginZControl()->getValue(), 0.f);
    }();
    return false;
}

void TestPropOrigin::theBoxIsReadUnturnedAtTheOrigin()
{
    PropFixture f;
    f.prop->setOrigin(DzVec3(5, -4, 3), true);
    for (DzFloatProperty* channel : poseChannels(f.prop))
        channel->setValue(0, 40);
    g_measured = f.prop;
    g_measurements = 0;
    dzHostCallHook = lookAtMeasurement;
    setPropOrigin(f.prop, DzRotationOrder::XYZ, OriginChoice::ObjectCentre);
    dzHostCallHook = nullptr;
    QCOMPARE(g_measurements, 1);
}

void TestPropOrigin::measuringAnUnkeyedTimeLeavesNoTrace()
{
    PropFixture f;
    f.prop->getXPosControl()->setValue(0, 12);
    f.prop->getYRotControl()->setValue(0, 40);
    f.scene.setTime(30 * kStep);
    setPropOrigin(f.prop, DzRotationOrder::XYZ, OriginChoice::ObjectCentre);
    for (const DzFloatProperty* channel :
        {f.prop->getXRotControl(), f.prop->getYRotControl(), f.prop->getZRotControl(),
            f.prop->getXPosControl(), f.prop->getYPosControl(), f.prop->getZPosControl()}) {
        QCOMPARE(channel->getNumKeys(), 1);
        QCOMPARE(channel->getKeyTime(0), DzTime(0));
    }
    QCOMPARE(f.prop->getYRotControl()->getKeyValue(0), 40.f);
}

void TestPropOrigin::theWorldCentreIsAtTheWorldsOriginInTheLastKeyedFrame()
{
    PropFixture f;
    Random random(3);
    f.prop->setOrigin(DzVec3(5, -4, 3), true);
    f.poseAt(0, &random);
    f.poseAt(20 * kStep, &random);
    f.prop->getZScaleControl()->setValue(0, 3);
    setPropOrigin(f.prop, DzRotationOrder::ZXY, OriginChoice::WorldCentre);
    QVERIFY(distance(f.prop->getWSPos(20 * kStep), DzVec3(0, 0, 0)) <= 1e-3);
    QVERIFY(distance(f.prop->getWSPos(0), DzVec3(0, 0, 0)) > 1);
}

void TestPropOrigin::aNodeWithoutGeometryKeepsItsOriginAsObjectCentre()
{
    SceneFixture f;
    DzNode* group = new DzNode(QLatin1String("group"));
    f.scene.addNode(group);
    group->setOrigin(DzVec3(1, 2, 3), true);
    group->getXPosControl()->setValue(0, 12);
    setPropOrigin(group, DzRotationOrder::XYZ, OriginChoice::ObjectCentre);
    QCOMPARE(group->getOrigin(), DzVec3(1, 2, 3));
    QVERIFY(distance(group->getWSPos(), DzVec3(13, 2, 3)) <= 1e-4);
}

void TestPropOrigin::measuringPutsBackAnOriginThatRoundingCouldHaveMade_data()
{
    QTest::addColumn<bool>("hasGeometry");
    QTest::addColumn<bool>("undoKnowsOrigins");
    QTest::newRow("a centre that is there already") << true << true;
    QTest::newRow("the same in a host whose undo forgets origins") << true << false;
    QTest::newRow("no geometry") << false << true;
    QTest::newRow("no geometry in a host whose undo forgets origins") << false << false;
}

// It is read at zero, from which such an origin is not told apart.
void TestPropOrigin::measuringPutsBackAnOriginThatRoundingCouldHaveMade()
{
    QFETCH(bool, hasGeometry);
    QFETCH(bool, undoKnowsOrigins);
    const PlaceReadingNoise noise;
    SceneFixture f;
    DzNode* node = hasGeometry
        ? makeProp(QLatin1String("ball"), DzVec3(-3, -3, -3), DzVec3(3, 3, 3))
        : new DzNode(QLatin1String("group"));
    f.scene.addNode(node);
    const DzVec3 origin(3e-5f, -2e-5f, 1e-5f);
    node->setOrigin(origin, true);
    node->getXPosControl()->setValue(0, 12);
    dzUndoForgetsOrigins = !undoKnowsOrigins;
    const bool placed = setPropOrigin(node, DzRotationOrder::XYZ, OriginChoice::ObjectCentre);
    dzUndoForgetsOrigins = false;
    QVERIFY(placed);
    const DzVec3 after = node->getOrigin();
    for (int i = 0; i < 3; ++i)
        QVERIFY2(after[i] == origin[i], qPrintable(QString("%1: %2").arg(i).arg(double(after[i]))));
    QVERIFY(nearly(node->getXPosControl()->getValue(0), 12, 1e-3));
}

void TestPropOrigin::aFlatPropKeepsItsOriginAsWorldCentre()
{
    PropFixture f;
    f.prop->setOrigin(DzVec3(1, 2, 3), true);
    f.keyFrames({0});
    f.prop->getYScaleControl()->setValue(0, 0);
    const std::vector<DzVec3> before = cornersAt(f.prop, 0);
    setPropOrigin(f.prop, DzRotationOrder::XYZ, OriginChoice::WorldCentre);
    QCOMPARE(f.prop->getOrigin(), DzVec3(1, 2, 3));
    QVERIFY(furthestMoveCm(before, cornersAt(f.prop, 0)) <= 1e-3);
}

void TestPropOrigin::cornersStayInEveryKeyedFrame_data()
{
    QTest::addColumn<int>("choice");
    QTest::addColumn<bool>("oriented");
    QTest::addColumn<bool>("withParent");
    for (int choice = 0; choice < 4; ++choice)
        for (int variant = 0; variant < 4; ++variant)
            QTest::newRow(qPrintable(QString("choice %1%2%3")
                                         .arg(choice)
                                         .arg(variant & 1 ? ", oriented" : "")
                                         .arg(variant & 2 ? ", below a moving parent" : "")))
                << choice << bool(variant & 1) << bool(variant & 2);
}

// A parent that is moved, turned and scaled, each at two times.
static DzNode* movingParent(DzScene* scene, Random* random)
{
    DzNode* parent = new DzNode(QLatin1String("cart"));
    scene->addNode(parent);
    parent->setOrigin(DzVec3(7, 8, -9), true);
    for (DzTime time : {DzTime(0), DzTime(4000)}) {
        for (DzFloatProperty* channel : {parent->getXPosControl(), parent->getYRotControl(),
                 parent->getZRotControl(), parent->getZPosControl()})
            channel->setValue(time, float(random->between(-150, 150)));
        for (DzFloatProperty* channel :
            {parent->getXScaleControl(), parent->getYScaleControl(), parent->getZScaleControl()})
            channel->setValue(time, float(random->between(0.5, 2)));
    }
    return parent;
}

void TestPropOrigin::cornersStayInEveryKeyedFrame()
{
    QFETCH(int, choice);
    QFETCH(bool, oriented);
    QFETCH(bool, withParent);
    const int keyed[] = {0, 3, 4, 11, 30};
    for (int round = 0; round < 24; ++round) {
        PropFixture f;
        Random random(unsigned(100 * choice + round + 1));
        if (withParent)
            movingParent(&f.scene, &random)->addNodeChild(f.prop);
        if (oriented)
            f.prop->setOrientation(DzQuat(DzRotationOrder::XYZ, DzVec3(0.4f, -0.7f, 1.1f)), true);
        f.prop->setRotationOrder(kOrders[random.below(6)]);
        f.prop->setOrigin(DzVec3(float(random.between(-90, 90)), 12, -30), true);
        for (int frame : keyed) {
            f.poseAt(frame * kStep + (frame == 11 ? 37 : 0), &random); // one key within a frame
            for (DzFloatProperty* channel :
                {f.prop->getXScaleControl(), f.prop->getYScaleControl(), f.prop->getScaleControl()})
                channel->setValue(frame * kStep, float(random.between(0.3, 2.5)));
        }
        f.scene.setTime(random.below(31) * kStep);
        std::vector<std::vector<DzVec3>> before;
        for (int frame : keyed)
            before.push_back(cornersAt(f.prop, frame * kStep));
        setPropOrigin(f.prop, kOrders[round % 6], kChoices[choice]);
        QCOMPARE(f.prop->getRotationOrder().order(), kOrders[round % 6]);
        for (size_t i = 0; i < before.size(); ++i) {
            const double moveCm = furthestMoveCm(before[i], cornersAt(f.prop, keyed[i] * kStep));
            QVERIFY2(moveCm <= 1e-3,
                qPrintable(
                    QString("round %1, frame %2: %3 cm").arg(round).arg(keyed[i]).arg(moveCm)));
        }
    }
}

void TestPropOrigin::withoutKeysOnlyTheOrderChanges_data()
{
    QTest::addColumn<int>("choice");
    for (int choice = 0; choice < 4; ++choice)
        QTest::newRow(qPrintable(QString("choice %1").arg(choice))) << choice;
}

void TestPropOrigin::withoutKeysOnlyTheOrderChanges()
{
    QFETCH(int, choice);
    PropFixture f;
    f.prop->setOrigin(DzVec3(1, 2, 3), true);
    f.prop->getYRotControl()->setDefaultValue(30); // a value without a key
    setPropOrigin(f.prop, DzRotationOrder::ZXY, kChoices[choice]);
    QCOMPARE(f.prop->getRotationOrder().order(), DzRotationOrder::ZXY);
    QCOMPARE(f.prop->getOrigin(), DzVec3(1, 2, 3));
    QCOMPARE(f.prop->getYRotControl()->getValue(), 30.f);
    QCOMPARE(keysOf(f.prop), QStringList());
}

void TestPropOrigin::framesAreVisitedFromTimeZero()
{
    PropFixture f;
    f.scene.setAnimRange(DzTimeRange(30 * kStep, 60 * kStep));
    f.keyFrames({0, 30, 31, 60});
    f.prop->getYRotControl()->setValue(0, 20);
    f.prop->getYRotControl()->setValue(60 * kStep, 80);
    const std::vector<DzVec3> first = cornersAt(f.prop, 0);
    const std::vector<DzVec3> thirtieth = cornersAt(f.prop, 30 * kStep);
    setPropOrigin(f.prop, DzRotationOrder::XYZ, OriginChoice::ObjectCentre);
    QVERIFY(furthestMoveCm(first, cornersAt(f.prop, 0)) <= 1e-3);
    QVERIFY(furthestMoveCm(thirtieth, cornersAt(f.prop, 30 * kStep)) <= 1e-3);
    QCOMPARE(f.prop->getXPosControl()->getValue(31 * kStep), 31.f);
    QCOMPARE(f.prop->getXPosControl()->getValue(60 * kStep), 60.f);
    QVERIFY(f.prop->getXPosControl()->getValue(30 * kStep) != 30.f);
    QCOMPARE(f.prop->getXPosControl()->getNumKeys(), 4);
    QCOMPARE(f.prop->getYPosControl()->getNumKeys(), 2); // the two visited frames
}

void TestPropOrigin::keysOutsideTheRangeStayAsTheyAre()
{
    PropFixture f;
    f.scene.setAnimRange(DzTimeRange(0, 10 * kStep));
    f.keyFrames({-5, 5, 11, 40});
    setPropOrigin(f.prop, DzRotationOrder::XYZ, OriginChoice::ObjectCentre);
    const DzFloatProperty* x = f.prop->getXPosControl();
    QCOMPARE(x->getNumKeys(), 4);
    QCOMPARE(x->getValue(-5 * kStep), -5.f);
    QCOMPARE(x->getValue(11 * kStep), 11.f);
    QCOMPARE(x->getValue(40 * kStep), 40.f);
    QCOMPARE(f.prop->getOrigin(), DzVec3(10, 25, 10));
    QVERIFY(distance(f.prop->getWSPos(5 * kStep), DzVec3(15, 25, 10)) <= 1e-4);
}

void TestPropOrigin::theNudgeIsTheStepOfThePositionSliders()
{
    PropFixture f;
    const float turnStep = f.prop->getXRotControl()->getSensitivity();
    setTranslationNudge(f.prop, 2.5f);
    QCOMPARE(f.prop->getXPosControl()->getSensitivity(), 2.5f);
    QCOMPARE(f.prop->getYPosControl()->getSensitivity(), 2.5f);
    QCOMPARE(f.prop->getZPosControl()->getSensitivity(), 2.5f);
    QCOMPARE(f.prop->getXRotControl()->getSensitivity(), turnStep);
}

void TestPropOrigin::oneUndoRestoresEverything()
{
    PropFixture f;
    Random random(11);
    f.prop->setOrigin(DzVec3(1, 2, 3), true);
    f.poseAt(0, &random);
    f.poseAt(10 * kStep, &random);
    f.scene.setTime(5 * kStep);
    f.undoStack.clearAll();
    const QStringList before = keysOf(f.prop);
    {
        DzUndoStackHold hold;
        setPropOrigin(f.prop, DzRotationOrder::ZYX, OriginChoice::ObjectCentre);
        hold.accept(QLatin1String("quillon_stack"));
    }
    QVERIFY(keysOf(f.prop) != before);
    QCOMPARE(f.undoStack.getNumUndoItems(), 1);
    QVERIFY(f.undoStack.undo());
    QCOMPARE(keysOf(f.prop), before);
    QCOMPARE(f.prop->getOrigin(), DzVec3(1, 2, 3));
    QCOMPARE(f.prop->getRotationOrder().order(), DzRotationOrder::XYZ);
}

QUILLON_TEST(TestPropOrigin)
#include "test_prop_origin.moc"
