// A host that computes places in single precision gets no key and no undo step more than an exact
// one from the commands that keep places.
#include "figure_fixture.h"
#include "prop_fixture.h"
#include "room_tests.h"

#include "figure/bake_pose.h"
#include "figure/hip_centre.h"
#include "figure/prop_origin.h"
#include "figure/reset_pose.h"
#include "figure/same_place.h"
#include "ground/undo_step.h"

#include <QtTest>

using namespace quillon;

class TestHostNoise : public QObject {
    Q_OBJECT
private slots:
    void theStandInReadsWithNoise();
    void aFigureGetsTheSameKeys_data();
    void aFigureGetsTheSameKeys();
    void aFigureAtRestGetsNoKey_data();
    void aFigureAtRestGetsNoKey();
    void aPropGetsTheSameKeys_data();
    void aPropGetsTheSameKeys();
    void aCentredPropGetsNoOtherOrigin_data();
    void aCentredPropGetsNoOtherOrigin();
    void whatUndoForgetsIsPutBack_data();
    void whatUndoForgetsIsPutBack();
};

static const DzTime kTime = 1600; // where nothing has a key yet
static const double kTolerance = 2e-3; // cm and degrees: what noise may move

enum Command {
    ResetTheBody,
    ResetTheExtremities,
    ResetTheSelected,
    ResetTheHip,
    ResetAll,
    BakeTheBody,
    BakeTheFace,
    CentreTheHip,
    CentreTheRoot
};

static void run(Command command, FigureFixture* f)
{
    UndoStep step;
    step.note(true);
    switch (command) {
    case ResetTheBody:
        f->select("chestLower");
        return resetPose(f->figure, ResetBody, kTime);
    case ResetTheExtremities:
        f->select("head");
        return resetPose(f->figure, ResetExtremities, kTime);
    case ResetTheSelected:
        f->select("lForearmBend");
        return resetPose(f->figure, ResetSelected, kTime);
    case ResetTheHip:
        f->select("hip");
        return resetPose(f->figure, ResetSelected, kTime);
    case ResetAll:
        return resetPose(f->figure, ResetWholeFigure, kTime);
    case BakeTheBody:
        return bakePose(f->figure, BakeBody, kTime);
    case BakeTheFace:
        return bakePose(f->figure, BakeFace, kTime);
    case CentreTheHip:
        hipAsCentre(f->figure, f->bone("hip"), kTime);
        return;
    case CentreTheRoot:
        rootAsCentre(f->figure, f->bone("hip"), kTime);
        return;
    }
}

static void addCommandRows()
{
    QTest::addColumn<int>("command");
    QTest::newRow("reset body") << int(ResetTheBody);
    QTest::newRow("reset extremities") << int(ResetTheExtremities);
    QTest::newRow("reset selected") << int(ResetTheSelected);
    QTest::newRow("reset hip") << int(ResetTheHip);
    QTest::newRow("reset whole figure") << int(ResetAll);
    QTest::newRow("bake body") << int(BakeTheBody);
    QTest::newRow("bake face") << int(BakeTheFace);
    QTest::newRow("hip as centre") << int(CentreTheHip);
    QTest::newRow("root as centre") << int(CentreTheRoot);
}

struct Outcome {
    FigureState state;
    int steps;
};

// seed 0: the figure at rest, 5 cm above the floor.
static Outcome outcomeOf(Command command, unsigned seed, bool noise)
{
    FigureFixture f;
    Random random(seed);
    if (seed)
        poseAtRandom(&random, f.figure);
    else
        f.bone("hip")->getYPosControl()->setValue(0, 5);
    f.figure->getXPosControl()->setValue(0, 40);
    f.figure->getYRotControl()->setValue(0, 25);
    f.undoStack.clearAll();
    f.scene.setTime(kTime);
    const PlaceReadingNoise reading(noise);
    run(command, &f);
    return Outcome {stateOf(f.figure), f.undoStack.getNumUndoItems()};
}

void TestHostNoise::theStandInReadsWithNoise()
{
    FigureFixture f;
    DzBone* hand = f.bone("lHand");
    const DzVec3 exactCm = hand->getWSPos();
    const DzQuat exact = hand->getWSRot();
    const PlaceReadingNoise reading;
    const DzVec3 firstCm = hand->getWSPos(), secondCm = hand->getWSPos();
    QVERIFY(firstCm != secondCm && firstCm != exactCm);
    QVERIFY(distance(firstCm, exactCm) < 3e-5);
    QVERIFY(hand->getWSRot() != exact && sameTurn(hand->getWSRot(), exact));
    QVERIFY(hand->getWSScale() != hand->getWSScale());
    QVERIFY(sameScale(hand->getWSScale(), DzMatrix3(true)));
}

void TestHostNoise::aFigureGetsTheSameKeys_data()
{
    addCommandRows();
}

void TestHostNoise::aFigureGetsTheSameKeys()
{
    QFETCH(int, command);
    for (unsigned seed = 1; seed <= 4; ++seed) {
        const Outcome exact = outcomeOf(Command(command), seed, false);
        const Outcome noisy = outcomeOf(Command(command), seed, true);
        const QString other = firstOtherKey(exact.state, noisy.state, kTolerance);
        QVERIFY2(other.isEmpty(), qPrintable(QString("seed %1, %2").arg(seed).arg(other)));
        QCOMPARE(noisy.steps, exact.steps);
    }
}

void TestHostNoise::aFigureAtRestGetsNoKey_data()
{
    addCommandRows();
}

void TestHostNoise::aFigureAtRestGetsNoKey()
{
    QFETCH(int, command);
    const Outcome exact = outcomeOf(Command(command), 0, false);
    const Outcome noisy = outcomeOf(Command(command), 0, true);
    const QString other = firstOtherKey(exact.state, noisy.state, kTolerance);
    QVERIFY2(other.isEmpty(), qPrintable(other));
    QCOMPARE(noisy.steps, exact.steps);
}

static void addChoiceRows()
{
    QTest::addColumn<int>("choice");
    QTest::newRow("keep") << int(OriginChoice::Keep);
    QTest::newRow("imported") << int(OriginChoice::Imported);
    QTest::newRow("object centre") << int(OriginChoice::ObjectCentre);
    QTest::newRow("world centre") << int(OriginChoice::WorldCentre);
}

void TestHostNoise::aPropGetsTheSameKeys_data()
{
    addChoiceRows();
}

// The keys' times and the rounded values.
static QStringList keyTimesOf(const DzNode* node)
{
    QStringList times;
    const QStringList keys = keysOf(node);
    for (const QString& each : keys)
        times << each.section(QLatin1Char(' '), 0, 1);
    return times;
}

void TestHostNoise::aPropGetsTheSameKeys()
{
    QFETCH(int, choice);
    QStringList times[2];
    DzVec3 origin[2];
    std::vector<DzVec3> corners[2];
    for (bool noise : {false, true}) {
        PropFixture f;
        Random random(7);
        f.prop->setOrigin(DzVec3(3, 4, 5), true);
        f.poseAt(0, &random);
        f.poseAt(10 * PropFixture::kStep, &random);
        f.undoStack.clearAll();
        f.scene.setTime(7 * PropFixture::kStep);
        corners[noise] = cornersAt(f.prop, 0);
        const PlaceReadingNoise reading(noise);
        QVERIFY(setPropOrigin(f.prop, DzRotationOrder::ZYX, OriginChoice(choice)));
        QCOMPARE(f.undoStack.getNumUndoItems(), 1);
        times[noise] = keyTimesOf(f.prop);
        origin[noise] = f.prop->getOrigin();
        QVERIFY(furthestMoveCm(corners[noise], cornersAt(f.prop, 0)) <= 2e-3);
    }
    QCOMPARE(times[1], times[0]);
    QVERIFY(distance(origin[0], origin[1]) <= 1e-3);
}

void TestHostNoise::aCentredPropGetsNoOtherOrigin_data()
{
    addChoiceRows();
}

void TestHostNoise::aCentredPropGetsNoOtherOrigin()
{
    QFETCH(int, choice);
    PropFixture f;
    Random random(11);
    f.poseAt(10 * PropFixture::kStep, &random);
    const PlaceReadingNoise reading;
    QVERIFY(setPropOrigin(f.prop, DzRotationOrder::XYZ, OriginChoice(choice)));
    const DzVec3 origin = f.prop->getOrigin();
    for (int again = 0; again < 5; ++again) {
        QVERIFY(setPropOrigin(f.prop, DzRotationOrder::XYZ, OriginChoice(choice)));
        QCOMPARE(f.prop->getOrigin(), origin); // to the bit
    }
}

void TestHostNoise::whatUndoForgetsIsPutBack_data()
{
    addChoiceRows();
}

namespace {

struct ForgottenOrigins {
    ForgottenOrigins()
    {
        dzUndoForgetsOrigins = true;
    }
    ~ForgottenOrigins()
    {
        dzUndoForgetsOrigins = false;
    }
};

} // namespace

void TestHostNoise::whatUndoForgetsIsPutBack()
{
    QFETCH(int, choice);
    const ForgottenOrigins forgotten;
    PropFixture f;
    Random random(13);
    f.prop->setOrigin(DzVec3(3, 4, 5), true);
    f.poseAt(0, &random);
    f.poseAt(10 * PropFixture::kStep, &random);
    f.scene.setTime(7 * PropFixture::kStep);
    f.prop->getXRotControl()->lock(true);
    f.prop->getYPosControl()->lock(true);
    const QStringList keys = keysOf(f.prop);
    const std::vector<DzVec3> corners = cornersAt(f.prop, 10 * PropFixture::kStep);
    QVERIFY(!setPropOrigin(f.prop, DzRotationOrder::ZYX, OriginChoice(choice)));
    QCOMPARE(f.prop->getOrigin(), DzVec3(3, 4, 5));
    QCOMPARE(f.prop->getRotationOrder().order(), DzRotationOrder::XYZ);
    QCOMPARE(keysOf(f.prop), keys);
    QCOMPARE(furthestMoveCm(corners, cornersAt(f.prop, 10 * PropFixture::kStep)), 0.0);
}

QUILLON_TEST(TestHostNoise)
#include "test_host_noise.moc"
