// Brings a node to a rotation where the host's own choice of angles is cut off by a limit.
#include "scene_fixture.h"
#include "room_tests.h"

#include "figure/node_place.h"

#include "dzfloatproperty.h"
#include "dznode.h"

#include <QtTest>

using namespace quillon;

static const double kDeg = 180 / 3.14159265358979323846;
static const double kToleranceDeg = 1e-3; // channels are single precision

class TestNodePlace : public QObject {
    Q_OBJECT
private slots:
    void theNearestAllowedAnglesAreTaken_data();
    void theNearestAllowedAnglesAreTaken();
    void channelsWithoutLimitsStayNearTheirAngles_data();
    void channelsWithoutLimitsStayNearTheirAngles();
    void aLockedChannelThatWouldHaveToTurnIsAnObstacle();
    void everyRotationThatLocksAndLimitsAllowIsReached();
};

static void limit(DzFloatProperty* channel, double low, double high)
{
    channel->setMinMax(float(low), float(high));
    channel->setIsClamped(true);
}

static DzQuat yaw(double deg)
{
    return DzQuat(DzVec3(0, 1, 0), deg / kDeg);
}

void TestNodePlace::theNearestAllowedAnglesAreTaken_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<double>("present");
    QTest::addColumn<double>("target");
    QTest::addColumn<double>("taken");
    QTest::newRow("beyond the upper limit") << -180.0 << 180.0 << 100.0 << 220.0 << -140.0;
    QTest::newRow("beyond the lower limit") << -180.0 << 180.0 << -100.0 << -220.0 << 140.0;
    QTest::newRow("a turn below") << 200.0 << 700.0 << 650.0 << 10.0 << 370.0;
    QTest::newRow("a turn above") << -700.0 << -200.0 << -650.0 << -10.0 << -370.0;
    QTest::newRow("at the upper limit") << -180.0 << 130.0 << 100.0 << 130.0 << 130.0;
}

void TestNodePlace::theNearestAllowedAnglesAreTaken()
{
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(double, present);
    QFETCH(double, target);
    QFETCH(double, taken);
    const EulerChoice choice(true);
    DzNode n("n");
    limit(n.getXRotControl(), -60, 60); // without the solution that turns about all three
    limit(n.getZRotControl(), -60, 60);
    limit(n.getYRotControl(), low, high);
    n.getYRotControl()->setValue(float(present));
    QVERIFY(turnTo(&n, 0, yaw(target)));
    QVERIFY2(nearly(n.getYRotControl()->getValue(), taken, kToleranceDeg),
        qPrintable(QString::number(n.getYRotControl()->getValue())));
    QVERIFY(isTurnedTo(&n, 0, yaw(target)));
}

void TestNodePlace::channelsWithoutLimitsStayNearTheirAngles_data()
{
    QTest::addColumn<bool>("locked");
    QTest::newRow("free") << false;
    QTest::newRow("locked") << true;
}

void TestNodePlace::channelsWithoutLimitsStayNearTheirAngles()
{
    QFETCH(bool, locked);
    const EulerChoice choice(true);
    DzNode n("n");
    DzFloatProperty* const x = n.getXRotControl();
    x->setMinMax(-180, 180); // which does not count
    x->setIsClamped(false);
    x->setValue(720);
    x->lock(locked);
    n.getYRotControl()->setValue(100);
    limit(n.getYRotControl(), -180, 180);
    QVERIFY(turnTo(&n, 0, yaw(220)));
    QVERIFY(nearly(x->getValue(), 720, kToleranceDeg));
    QVERIFY(nearly(n.getYRotControl()->getValue(), -140, kToleranceDeg));
    QVERIFY(nearly(n.getZRotControl()->getValue(), 0, kToleranceDeg));
}

void TestNodePlace::aLockedChannelThatWouldHaveToTurnIsAnObstacle()
{
    for (bool ignoresLimits : {false, true}) {
        const EulerChoice choice(ignoresLimits);
        DzNode n("n");
        n.getXRotControl()->setValue(30);
        n.getXRotControl()->lock(true);
        QVERIFY(!turnTo(&n, 0, yaw(40)));
        QVERIFY(!isTurnedTo(&n, 0, yaw(40)));
        QCOMPARE(n.getXRotControl()->getValue(), 30.f);
    }
}

// Under a turned parent, with an orientation of its own; at times one channel is locked.
void TestNodePlace::everyRotationThatLocksAndLimitsAllowIsReached()
{
    const EulerChoice choice(true);
    Random random(41);
    for (int round = 0; round < 2000; ++round) {
        DzNode parent("parent");
        DzNode* const n = new DzNode("n"); // the parent's
        parent.addNodeChild(n);
        parent.getXRotControl()->setValue(float(random.between(-180, 180)));
        n->setOrientation(yaw(random.between(-90, 90)));
        n->setRotationOrder(DzRotationOrder::RotOrder(random.below(6)));
        DzFloatProperty* const rot[]
            = {n->getXRotControl(), n->getYRotControl(), n->getZRotControl()};
        const int locked = random.below(6); // 3 to 5: none
        for (int i = 0; i < 3; ++i) {
            const double low = random.between(-800, 600);
            limit(rot[i], low, low + random.between(5, 500));
            rot[i]->setValue(float(random.between(rot[i]->getMin(), rot[i]->getMax())));
        }
        const float presentDeg[] = {rot[0]->getValue(), rot[1]->getValue(), rot[2]->getValue()};
        for (int i = 0; i < 3; ++i) {
            if (i != locked)
                rot[i]->setValue(float(random.between(rot[i]->getMin(), rot[i]->getMax())));
        }
        const DzQuat target = n->getWSRot();
        for (int i = 0; i < 3; ++i)
            rot[i]->setValue(presentDeg[i]);
        if (locked < 3)
            rot[locked]->lock(true);
        QVERIFY2(turnTo(n, 0, target), qPrintable(QString::number(round)));
        QVERIFY(angleDeg(n->getWSRot(), target) < 1e-2); // sums of angles up to 1100
    }
}

QUILLON_TEST(TestNodePlace)
#include "test_node_place.moc"
