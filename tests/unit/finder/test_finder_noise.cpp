// A host that computes places in single precision gets no key and no undo step more than an exact
// one from the Pose Finder and the reference pose.
#include "browse_fixture.h"
#include "room_tests.h"

#include "posefile/pose_calls.h"

#include <QtTest>

using namespace quillon;

class TestFinderNoise : public QObject {
    Q_OBJECT
private slots:
    void browsingMakesTheSameKeys_data();
    void browsingMakesTheSameKeys();
    void aFigureThatIsSetUpStaysSetUp();
    void theReferenceMakesTheSameKeys();
};

static const DzTime kTime = 1600; // where nothing has a key yet
static const double kTolerance = 2e-3; // cm and degrees: what noise may move

struct Outcome {
    FigureState state;
    int steps;
};

static Outcome outcomeOf(BrowseFixture* f)
{
    return Outcome {stateOf(f->rig.figure), f->rig.undoStack.getNumUndoItems()};
}

static void pose(BrowseFixture* f, unsigned seed)
{
    Random random(seed);
    poseAtRandom(&random, f->rig.figure);
    f->rig.figure->getXPosControl()->setValue(0, 40);
    f->rig.figure->getYRotControl()->setValue(0, 25);
    f->rig.scene.setTime(kTime);
    f->rig.undoStack.clearAll();
}

// A type chosen, three poses, another type, a pose.
static Outcome browsed(int type, bool noise)
{
    BrowseFixture f;
    for (int i = 0; i < 4; ++i)
        f.addPose(QString("%1.duf").arg(i), values({{"lShldrBend/z", 5.0 * i}, {"hip/y", 10}}));
    f.memorize(values({{"hip/y", 30}, {"lShldrBend/z", 20}}));
    pose(&f, 3);
    const PlaceReadingNoise reading(noise);
    selectPoseType(type);
    for (int i = 0; i < 3; ++i)
        f.next();
    selectPoseType(Sitting);
    selectPoseType(type);
    f.previous();
    return outcomeOf(&f);
}

void TestFinderNoise::browsingMakesTheSameKeys_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("standing") << int(Standing);
    QTest::newRow("all poses") << int(AllPoses);
    QTest::newRow("reference") << int(ReferencePose);
}

void TestFinderNoise::browsingMakesTheSameKeys()
{
    QFETCH(int, type);
    const Outcome exact = browsed(type, false);
    const Outcome noisy = browsed(type, true);
    QVERIFY(exact.steps > 1);
    const QString other = firstOtherKey(exact.state, noisy.state, kTolerance);
    QVERIFY2(other.isEmpty(), qPrintable(other));
    QCOMPARE(noisy.steps, exact.steps);
}

// What a set-up leaves is what the next one finds.
void TestFinderNoise::aFigureThatIsSetUpStaysSetUp()
{
    BrowseFixture f;
    f.addPose("1.duf");
    pose(&f, 5);
    const PlaceReadingNoise reading;
    selectPoseType(Standing);
    const Outcome first = outcomeOf(&f);
    for (int again = 0; again < 3; ++again) {
        selectPoseType(Sitting);
        selectPoseType(Standing);
    }
    QCOMPARE(f.rig.undoStack.getNumUndoItems(), first.steps);
    VERIFY_SAME_STATE(first.state, stateOf(f.rig.figure));
}

static Outcome referenceShown(bool noise)
{
    BrowseFixture f;
    pose(&f, 9);
    memorizeReferencePose();
    f.rig.bone("lHand")->getXRotControl()->setValue(0, 12);
    f.rig.undoStack.clearAll();
    const PlaceReadingNoise reading(noise);
    showReferencePose();
    return outcomeOf(&f);
}

void TestFinderNoise::theReferenceMakesTheSameKeys()
{
    const Outcome exact = referenceShown(false);
    const Outcome noisy = referenceShown(true);
    QCOMPARE(exact.steps, 1);
    const QString other = firstOtherKey(exact.state, noisy.state, kTolerance);
    QVERIFY2(other.isEmpty(), qPrintable(other));
    QCOMPARE(noisy.steps, exact.steps);
}

QUILLON_TEST(TestFinderNoise)
#include "test_finder_noise.moc"
