// The two ways to place the figure node below a body that stays.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/channel_snapshot.h"
#include "figure/hip_centre.h"
#include "figure/pose_limits.h"

#include <QtTest>

using namespace quillon;

class TestHipCentre : public QObject {
    Q_OBJECT
private slots:
    void theHipsTranslationMovesToTheFigure_data();
    void theHipsTranslationMovesToTheFigure();
    void onlyAxesThatMoveGetKeys();
    void theFigureGoesToTheOriginAndTheBodyStays_data();
    void theFigureGoesToTheOriginAndTheBodyStays();
    void aHipWithoutTranslationWritesNothing();
    void bodiesStayWhateverThePose_data();
    void bodiesStayWhateverThePose();
    void otherTimesAreLeftAlone();
    void limitsDoNotTurnTheBody_data();
    void limitsDoNotTurnTheBody();
    void belowATurnedParentTheNodeIsUnturnedInTheWorld();
    void aChannelThatCannotFollowLeavesEverythingAsItIs_data();
    void aChannelThatCannotFollowLeavesEverythingAsItIs();
    void aLockThatNeedNotGiveIsNoObstacle();
    void aRefusalLeavesNothingToUndoInTheCallersHold();
};

// Single precision at a few hundred centimetres, over a chain of ten bones.
static const double kToleranceCm = 1e-3;
static const double kToleranceDeg = 1e-3;

void TestHipCentre::theHipsTranslationMovesToTheFigure_data()
{
    addFigureRows();
}

void TestHipCentre::theHipsTranslationMovesToTheFigure()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    DzBone* hip = f.bone("hip");
    hip->setLocalPos(DzVec3(0, 10, 0));
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    hipAsCentre(f.figure, hip, f.scene.getTime());
    QCOMPARE(hip->getLocalPos(), DzVec3(0, 0, 0));
    QVERIFY(distance(f.figure->getWSPos(), DzVec3(0, 10, 0)) <= 1e-4);
    const QString moved = firstMoved(f.figure, before, kToleranceDeg, kToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

void TestHipCentre::onlyAxesThatMoveGetKeys()
{
    FigureFixture f;
    DzBone* hip = f.bone("hip");
    hip->getYPosControl()->setValue(0, 5);
    ChannelSnapshot before;
    keepPoseChannels(f.figure, 1600, &before);
    keepPoseChannels(hip, 1600, &before);
    QVERIFY(hipAsCentre(f.figure, hip, 1600));
    for (const KeptValue& each : before) {
        const bool moved = each.channel->getName() == "YTranslate";
        QCOMPARE(each.channel->getNumKeys() > each.keyCount, moved);
    }
}

void TestHipCentre::theFigureGoesToTheOriginAndTheBodyStays_data()
{
    addFigureRows();
}

void TestHipCentre::theFigureGoesToTheOriginAndTheBodyStays()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    f.figure->setWSPos(DzVec3(100, 0, 0));
    f.figure->getYRotControl()->setValue(90);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    DzBone* hip = f.bone("hip");
    rootAsCentre(f.figure, hip, f.scene.getTime());
    QCOMPARE(f.figure->getWSPos(), DzVec3(0, 0, 0));
    QVERIFY(angleDeg(f.figure->getWSRot(), DzQuat()) <= 1e-5);
    QVERIFY(angleDeg(hip->getWSRot(), before[0].rot_world) <= kToleranceDeg);
    QVERIFY(distance(hip->getWSPos(), before[0].posCm_world) <= kToleranceCm);
    const QString moved = firstMoved(f.figure, before, kToleranceDeg, kToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

void TestHipCentre::aHipWithoutTranslationWritesNothing()
{
    FigureFixture f;
    f.figure->setWSPos(DzVec3(50, 0, 0));
    const FigureState before = stateOf(f.figure);
    QVERIFY(hipAsCentre(f.figure, f.bone("hip"), f.scene.getTime()));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestHipCentre::bodiesStayWhateverThePose_data()
{
    QTest::addColumn<unsigned>("seed");
    QTest::addColumn<bool>("root");
    for (unsigned seed = 1; seed <= 6; ++seed) {
        QTest::newRow(qPrintable(QString("hip, pose %1").arg(seed))) << seed << false;
        QTest::newRow(qPrintable(QString("root, pose %1").arg(seed))) << seed << true;
    }
}

void TestHipCentre::bodiesStayWhateverThePose()
{
    QFETCH(unsigned, seed);
    QFETCH(bool, root);
    FigureFixture f((QLatin1String(kTestFigures[seed % 4])));
    Random random(seed);
    liftAllLimits(f.figure);
    poseAtRandom(&random, f.figure);
    f.figure->setWSPos(DzVec3(float(random.between(-300, 300)), 20, -150));
    f.figure->setWSRot(DzQuat(DzVec3(0.3f, 0.8f, -0.2f), random.between(-3, 3)));
    f.figure->getScaleControl()->setValue(1.3f);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    if (root)
        rootAsCentre(f.figure, f.bone("hip"), f.scene.getTime());
    else
        hipAsCentre(f.figure, f.bone("hip"), f.scene.getTime());
    const QString moved = firstMoved(f.figure, before, kToleranceDeg, kToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
    QVERIFY(root ? f.figure->getWSPos() == DzVec3(0, 0, 0)
                 : f.bone("hip")->getLocalPos() == DzVec3(0, 0, 0));
}

void TestHipCentre::otherTimesAreLeftAlone()
{
    FigureFixture f;
    DzBone* hip = f.bone("hip");
    hip->getYPosControl()->setValue(0, 10);
    hip->getYPosControl()->setValue(1600, 30);
    f.figure->getYPosControl()->setValue(0, 0);
    f.figure->getYPosControl()->setValue(1600, 5);
    hipAsCentre(f.figure, hip, 1600);
    QCOMPARE(hip->getYPosControl()->getValue(1600), 0.f);
    QVERIFY(nearly(f.figure->getYPosControl()->getValue(1600), 35, 1e-4));
    QCOMPARE(hip->getYPosControl()->getValue(0), 10.f);
    QCOMPARE(f.figure->getYPosControl()->getValue(0), 0.f);
}

void TestHipCentre::limitsDoNotTurnTheBody_data()
{
    QTest::addColumn<bool>("ignoresLimits");
    QTest::newRow("a host that minds limits") << false;
    QTest::newRow("a host that does not") << true;
}

static void yaw(const FigureFixture& f, float figureDeg, float hipDeg)
{
    f.figure->setWSPos(DzVec3(30, 0, -20));
    f.figure->getYRotControl()->setValue(figureDeg);
    f.bone("hip")->getYRotControl()->setValue(hipDeg);
}

static bool dialsAreZero(const DzNode* node)
{
    return node->getXRotControl()->getValue() == 0 && node->getYRotControl()->getValue() == 0
        && node->getZRotControl()->getValue() == 0;
}

void TestHipCentre::limitsDoNotTurnTheBody()
{
    QFETCH(bool, ignoresLimits);
    const EulerChoice choice(ignoresLimits);
    FigureFixture f;
    setBodyBoneLimits(f.figure, true, false);
    DzBone* hip = f.bone("hip");
    Random random(41);
    for (int pair = 0; pair <= 40; ++pair) {
        const float figureDeg = pair == 0 ? 120 : float(random.between(-720, 720));
        const float hipDeg = pair == 0 ? 100 : float(random.between(-180, 180));
        yaw(f, figureDeg, hipDeg);
        hip->getXRotControl()->setValue(pair % 2 ? 0 : float(random.between(-80, 80)));
        const std::vector<WorldPlace> before = worldPlaces(f.figure);
        QVERIFY(rootAsCentre(f.figure, hip, f.scene.getTime()));
        const QString moved = firstMoved(f.figure, before, kToleranceDeg, kToleranceCm);
        QVERIFY2(moved.isEmpty(),
            qPrintable(QString("figure %1, hip %2: %3").arg(figureDeg).arg(hipDeg).arg(moved)));
        QVERIFY(dialsAreZero(f.figure));
    }
}

void TestHipCentre::belowATurnedParentTheNodeIsUnturnedInTheWorld()
{
    FigureFixture f;
    DzNode* cart = new DzNode(QLatin1String("cart"));
    f.scene.addNode(cart);
    cart->getYRotControl()->setValue(70);
    cart->getXPosControl()->setValue(50);
    cart->addNodeChild(f.figure);
    f.figure->getYRotControl()->setValue(-20);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    QVERIFY(rootAsCentre(f.figure, f.bone("hip"), f.scene.getTime()));
    QVERIFY(angleDeg(f.figure->getWSRot(), DzQuat()) <= kToleranceDeg);
    QVERIFY(distance(f.figure->getWSPos(), DzVec3(0, 0, 0)) <= kToleranceCm);
    const QString moved = firstMoved(f.figure, before, kToleranceDeg, kToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

// Every channel of both nodes has to change, whichever becomes the centre.
static void placeAllChannels(const FigureFixture& f)
{
    setFreeTranslation(f.bone("hip"), DzVec3(3, 10, -4));
    f.bone("hip")->setLocalRot(DzQuat(DzRotationOrder::YZX, DzVec3(0.3f, -0.5f, 0.2f)));
    f.figure->setWSPos(DzVec3(100, 20, -30));
    f.figure->setWSRot(DzQuat(DzRotationOrder::YXZ, DzVec3(0.4f, 1.5f, -0.3f)));
}

void TestHipCentre::aChannelThatCannotFollowLeavesEverythingAsItIs_data()
{
    QTest::addColumn<bool>("root");
    QTest::addColumn<bool>("onHip");
    QTest::addColumn<QString>("channel");
    QTest::addColumn<bool>("byLock");
    for (const char* channel :
        {"XTranslate", "YTranslate", "ZTranslate", "XRotate", "YRotate", "ZRotate"}) {
        for (int variant = 0; variant < 8; ++variant) {
            const bool root = variant & 1, onHip = variant & 2, byLock = variant & 4;
            if (!root && QByteArray(channel).endsWith("Rotate"))
                continue; // the hip as centre turns nothing
            QTest::newRow(qPrintable(QString("%1, %2 %3 %4")
                                         .arg(root ? "root" : "hip")
                                         .arg(onHip ? "hip's" : "figure's")
                                         .arg(channel)
                                         .arg(byLock ? "locked" : "limited")))
                << root << onHip << QString(channel) << byLock;
        }
    }
}

// Holds a channel at the value that it has.
static void hold(DzNode* node, const QString& name, bool byLock)
{
    DzFloatProperty* channel = qobject_cast<DzFloatProperty*>(node->findProperty(name));
    if (byLock) {
        channel->lock(true);
        return;
    }
    channel->setMinMax(channel->getValue(), channel->getValue());
    channel->setIsClamped(true);
}

static bool makeCentre(const FigureFixture& f, bool root)
{
    return root ? rootAsCentre(f.figure, f.bone("hip"), f.scene.getTime())
                : hipAsCentre(f.figure, f.bone("hip"), f.scene.getTime());
}

void TestHipCentre::aChannelThatCannotFollowLeavesEverythingAsItIs()
{
    QFETCH(bool, root);
    QFETCH(bool, onHip);
    QFETCH(QString, channel);
    QFETCH(bool, byLock);
    FigureFixture f;
    placeAllChannels(f);
    hold(onHip ? static_cast<DzNode*>(f.bone("hip")) : f.figure, channel, byLock);
    const FigureState before = stateOf(f.figure);
    QVERIFY(!makeCentre(f, root));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestHipCentre::aLockThatNeedNotGiveIsNoObstacle()
{
    for (bool byLock : {true, false}) {
        FigureFixture f;
        DzBone* hip = f.bone("hip");
        hip->setLocalPos(DzVec3(3, 10, -4));
        f.figure->setWSPos(DzVec3(100, 0, 0));
        f.figure->getYRotControl()->setValue(90);
        for (const char* channel : {"XRotate", "ZRotate", "YTranslate"})
            hold(hip, channel, byLock); // a turn about Y alone
        for (const char* channel : {"XRotate", "ZRotate", "YTranslate"})
            hold(f.figure, channel, byLock);
        const std::vector<WorldPlace> before = worldPlaces(f.figure);
        QVERIFY(rootAsCentre(f.figure, hip, f.scene.getTime()));
        QVERIFY(dialsAreZero(f.figure));
        const QString moved = firstMoved(f.figure, before, kToleranceDeg, kToleranceCm);
        QVERIFY2(moved.isEmpty(), qPrintable(moved));
    }
    FigureFixture f;
    f.bone("hip")->setLocalPos(DzVec3(3, 0, -4));
    hold(f.bone("hip"), "YTranslate", true);
    hold(f.figure, "YTranslate", true);
    QVERIFY(hipAsCentre(f.figure, f.bone("hip"), f.scene.getTime()));
    QCOMPARE(f.bone("hip")->getLocalPos(), DzVec3(0, 0, 0));
    QVERIFY(distance(f.figure->getWSPos(), DzVec3(3, 0, -4)) <= 1e-4);
}

void TestHipCentre::aRefusalLeavesNothingToUndoInTheCallersHold()
{
    for (bool root : {false, true}) {
        FigureFixture f;
        placeAllChannels(f);
        hold(f.bone("hip"), "ZTranslate", true);
        f.undoStack.clearAll();
        const FigureState before = stateOf(f.figure);
        {
            DzUndoStackHold outer;
            QVERIFY(!makeCentre(f, root));
            outer.accept(QLatin1String("quillon_stack"));
        }
        QCOMPARE(f.undoStack.getNumUndoItems(), 1); // the empty step of the press
        QVERIFY(f.undoStack.undo());
        VERIFY_SAME_STATE(before, stateOf(f.figure));
    }
}

QUILLON_TEST(TestHipCentre)
#include "test_hip_centre.moc"
