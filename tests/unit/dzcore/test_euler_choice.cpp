// Which of the angles that mean the same rotation a node's setters take.
#include "scene_fixture.h"
#include "room_tests.h"

#include "dzfloatproperty.h"
#include "dznode.h"

#include <QtTest>

static const double kPi = 3.14159265358979323846;
static const double kDeg = 180 / kPi;

class TestEulerChoice : public QObject {
    Q_OBJECT
private slots:
    void limitsDecideAmongTheSolutions();
    void amongTheAllowedTheNearestIsTaken();
    void withoutAnAllowedSolutionTheNearestIsTaken();
    void everyRotationWithinLimitsIsReached_data();
    void everyRotationWithinLimitsIsReached();
};

static void limit(DzFloatProperty* channel, double low, double high)
{
    channel->setMinMax(float(low), float(high));
    channel->setIsClamped(true);
}

void TestEulerChoice::limitsDecideAmongTheSolutions()
{
    const DzQuat target(DzVec3(0, 1, 0), 220 / kDeg);
    for (bool ignoresLimits : {false, true}) {
        const EulerChoice choice(ignoresLimits);
        DzNode n("n");
        n.getYRotControl()->setValue(100);
        limit(n.getYRotControl(), -180, 180);
        n.setWSRot(target);
        QVERIFY(nearly(n.getYRotControl()->getValue(), ignoresLimits ? 180 : -140, 1e-3));
        n.getYRotControl()->setValue(100);
        n.setLocalRot(target);
        QVERIFY(nearly(n.getYRotControl()->getValue(), ignoresLimits ? 180 : -140, 1e-3));
    }
}

void TestEulerChoice::amongTheAllowedTheNearestIsTaken()
{
    DzNode n("n");
    DzFloatProperty* x = n.getXRotControl();
    limit(x, -90, 700);
    limit(n.getYRotControl(), -90, 90); // without the solution that turns about all three
    const double rows[][3] = {// present, target, taken
        {500, 10, 370}, {-80, -100, 260}, {690, 10, 370}, {650, -10, 710 - 360}, {0, 170, 170},
        {-90, 269.99999, -90}, {700, -20.00001, 700}};
    for (const auto& row : rows) {
        x->setValue(float(row[0]));
        n.setWSRot(DzQuat(DzVec3(1, 0, 0), row[1] / kDeg));
        QVERIFY2(nearly(x->getValue(), row[2], 1e-3), qPrintable(QString::number(x->getValue())));
        QCOMPARE(n.getYRotControl()->getValue(), 0.f);
    }
}

void TestEulerChoice::withoutAnAllowedSolutionTheNearestIsTaken()
{
    DzNode n("n");
    limit(n.getXRotControl(), -10, 10);
    limit(n.getYRotControl(), -10, 10); // as above
    n.setWSRot(DzQuat(DzVec3(1, 0, 0), 50 / kDeg));
    QCOMPARE(n.getXRotControl()->getValue(), 10.f);
    QVERIFY(nearly(n.getXRotControl()->getRawValue(), 50, 1e-3));
    QVERIFY(nearly(n.getYRotControl()->getValue(), 0, 1e-3));
}

void TestEulerChoice::everyRotationWithinLimitsIsReached_data()
{
    QTest::addColumn<bool>("gimbal");
    QTest::newRow("any middle turn") << false;
    QTest::newRow("middle turn of 90 degrees") << true;
}

// Limits, present angles and the target's angles at random, all within the limits.
void TestEulerChoice::everyRotationWithinLimitsIsReached()
{
    QFETCH(bool, gimbal);
    Random random(gimbal ? 31 : 30);
    int missedByTheOtherChoice = 0;
    for (int round = 0; round < 3000; ++round) {
        DzNode n("n");
        const DzRotationOrder order = DzRotationOrder::RotOrder(random.below(6));
        n.setRotationOrder(order);
        DzFloatProperty* const rot[] = {n.getXRotControl(), n.getYRotControl(), n.getZRotControl()};
        DzVec3 presentDeg, rad;
        for (int i = 0; i < 3; ++i) {
            const double low = random.between(-250, 90), high = low + random.between(5, 300);
            limit(
                rot[i], gimbal && i == order[1] ? -100 : low, gimbal && i == order[1] ? 100 : high);
            presentDeg[i] = float(random.between(rot[i]->getMin(), rot[i]->getMax()));
            rad[i] = float(random.between(rot[i]->getMin(), rot[i]->getMax()) / kDeg);
        }
        if (gimbal)
            rad[order[1]] = float(random.below(2) ? kPi / 2 : -kPi / 2);
        const DzQuat target(order.order(), rad);
        for (bool ignoresLimits : {false, true}) {
            const EulerChoice choice(ignoresLimits);
            for (int i = 0; i < 3; ++i)
                rot[i]->setValue(presentDeg[i]);
            n.setWSRot(target);
            const double offDeg = angleDeg(n.getWSRot(), target);
            missedByTheOtherChoice += ignoresLimits && offDeg > 1;
            QVERIFY2(ignoresLimits || offDeg <= 1e-3,
                qPrintable(QString("round %1: %2 deg").arg(round).arg(offDeg)));
        }
    }
    QVERIFY(missedByTheOtherChoice > 200);
}

QUILLON_TEST(TestEulerChoice)
#include "test_euler_choice.moc"
