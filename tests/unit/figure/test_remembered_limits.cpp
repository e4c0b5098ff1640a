// Limits lifted and set again as they were: what is kept, for whom, and how long.
#include "limits_fixture.h"
#include "room_tests.h"

#include "figure/bake_pose.h"
#include "figure/pose_limits.h"

#include <QtTest>

using namespace quillon;

class TestRememberedLimits : public QObject {
    Q_OBJECT
private slots:
    void aRememberingClampBringsFlagsBack_data();
    void aRememberingClampBringsFlagsBack();
    void aRememberingClampAloneTurnsLimitsOff();
    void aSecondUnclampKeepsTheFirstFlags();
    void anotherFigureKeepsItsOwnFlags();
    void aBakeAfterACancelledScanEndsWithTheUsersFlags();
    void poseLimitsLeavesTheKeptFlagsAlone();
    void mutilatedFiguresGetTheirFlagsBack_data();
    void mutilatedFiguresGetTheirFlagsBack();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

static void setRandomFlags(Random* random, const DzNode* figure)
{
    for (const FigureBone& each : bonesOf(figure)) {
        const bool clamped = random->below(2);
        const PoseChannels channels = poseChannelsOf(each.bone);
        for (int i = 0; i < 3; ++i)
            channels.channel[i]->setIsClamped(clamped);
    }
    for (const FigureControl& each : ownControlsOf(figure))
        each.property->setIsClamped(random->below(2));
}

static std::vector<bool> allFlags(const DzNode* figure)
{
    std::vector<bool> flags;
    for (const ChannelState& state : stateOf(figure))
        flags.push_back(state.clamped);
    return flags;
}

static void unclampAll(DzNode* figure)
{
    setBodyBoneLimits(figure, false, true);
    setBodyControlLimits(figure, false, true);
    setFaceLimits(figure, false, true);
}

static void reclampAll(DzNode* figure)
{
    setBodyBoneLimits(figure, true, true);
    setBodyControlLimits(figure, true, true);
    setFaceLimits(figure, true, true);
}

void TestRememberedLimits::aRememberingClampBringsFlagsBack_data()
{
    addFigureRows();
}

void TestRememberedLimits::aRememberingClampBringsFlagsBack()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    const DzUndoStackLock unrecorded;
    Random random(22);
    for (int i = 0; i < 200; ++i) {
        poseAtRandom(&random, f.figure);
        setRandomFlags(&random, f.figure);
        const std::vector<bool> before = allFlags(f.figure);
        unclampAll(f.figure);
        QCOMPARE(clampedRotations(f.figure, FigureScope::All), 0);
        QCOMPARE(clampedControls(f.figure, FigureScope::All), 0);
        reclampAll(f.figure);
        QVERIFY(allFlags(f.figure) == before);
    }
    // One flag a bone, that of X Rotate.
    f.bone("head")->getXRotControl()->setIsClamped(false);
    f.bone("head")->getYRotControl()->setIsClamped(true);
    unclampAll(f.figure);
    reclampAll(f.figure);
    QVERIFY(!f.bone("head")->getYRotControl()->isClamped());
}

void TestRememberedLimits::aRememberingClampAloneTurnsLimitsOff()
{
    FigureFixture f;
    setAllFlags(f.figure, true);
    reclampAll(f.figure);
    QCOMPARE(clampedRotations(f.figure, FigureScope::All), 0);
    QCOMPARE(clampedControls(f.figure, FigureScope::All), 0);
}

void TestRememberedLimits::aSecondUnclampKeepsTheFirstFlags()
{
    FigureFixture f;
    Random random(23);
    setRandomFlags(&random, f.figure);
    const std::vector<bool> before = allFlags(f.figure);
    unclampAll(f.figure);
    unclampAll(f.figure);
    reclampAll(f.figure);
    QVERIFY(allFlags(f.figure) == before);
}

void TestRememberedLimits::anotherFigureKeepsItsOwnFlags()
{
    FigureFixture f;
    QString why;
    DzFigure* other = loadFigure(s("Genesis8Male"), &why);
    QVERIFY2(other, qPrintable(why));
    f.scene.addNode(other);
    setAllFlags(f.figure, false);
    setAllFlags(other, true);
    const std::vector<bool> before = allFlags(other);
    unclampAll(f.figure); // never clamped again
    unclampAll(other);
    reclampAll(other);
    QVERIFY(allFlags(other) == before);
}

// A scan that was cancelled without its last step leaves the limits lifted; the user's flags are
// those from before it, for the bake that follows and the scan after that.
void TestRememberedLimits::aBakeAfterACancelledScanEndsWithTheUsersFlags()
{
    FigureFixture f;
    Random random(24);
    setRandomFlags(&random, f.figure);
    const std::vector<bool> before = allFlags(f.figure);
    setBodyBoneLimits(f.figure, false, true); // the scan begins, and ends here
    bakePose(f.figure, BakeBody);
    QVERIFY(allFlags(f.figure) == before);
    setBodyBoneLimits(f.figure, false, true); // a scan that goes through
    setBodyBoneLimits(f.figure, true, true);
    QVERIFY(allFlags(f.figure) == before);
}

void TestRememberedLimits::poseLimitsLeavesTheKeptFlagsAlone()
{
    FigureFixture f;
    setAllFlags(f.figure, true);
    unclampAll(f.figure);
    setPoseLimits(f.figure, true, BodyLimits | FaceLimits);
    setPoseLimits(f.figure, false, BodyLimits | FaceLimits);
    reclampAll(f.figure);
    QCOMPARE(clampedRotations(f.figure, FigureScope::All), kBoneCount * 3);
}

void TestRememberedLimits::mutilatedFiguresGetTheirFlagsBack_data()
{
    addFigureRows();
}

void TestRememberedLimits::mutilatedFiguresGetTheirFlagsBack()
{
    QFETCH(QString, figure);
    Random random(29);
    for (int i = 0; i < 60; ++i) {
        FigureFixture f(figure);
        mutilate(&random, f.figure, 1 + i);
        poseAtRandom(&random, f.figure);
        levelLimits(f.figure);
        const std::vector<bool> before = allFlags(f.figure);
        unclampAll(f.figure);
        reclampAll(f.figure);
        QVERIFY(allFlags(f.figure) == before);
    }
}

QUILLON_TEST(TestRememberedLimits)
#include "test_remembered_limits.moc"
