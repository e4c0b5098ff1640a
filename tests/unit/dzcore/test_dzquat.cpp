// The host's rotation convention, against worked numbers and an independent matrix computation.
#include "scene_fixture.h"
#include "room_tests.h"

#include "dzmatrix3.h"
#include "dzrotationorder.h"

#include <QtTest>

Q_DECLARE_METATYPE(DzQuat)
Q_DECLARE_METATYPE(DzVec3)

static const double kPi = 3.14159265358979323846;
static const DzVec3 kX(1, 0, 0), kY(0, 1, 0), kZ(0, 0, 1);

// Column-vector rotation matrices written out by hand, independent of the library.
struct M {
    double m[3][3];
};

static M about(int axis, double a)
{
    const double c = std::cos(a), s = std::sin(a);
    if (axis == 0)
        return {{{1, 0, 0}, {0, c, -s}, {0, s, c}}};
    if (axis == 1)
        return {{{c, 0, s}, {0, 1, 0}, {-s, 0, c}}};
    return {{{c, -s, 0}, {s, c, 0}, {0, 0, 1}}};
}

static M mul(const M& a, const M& b)
{
    M r = {};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            for (int k = 0; k < 3; ++k)
                r.m[i][j] += a.m[i][k] * b.m[k][j];
    return r;
}

static DzVec3 apply(const M& a, const DzVec3& v)
{
    return DzVec3(float(a.m[0][0] * v.m_x + a.m[0][1] * v.m_y + a.m[0][2] * v.m_z),
        float(a.m[1][0] * v.m_x + a.m[1][1] * v.m_y + a.m[1][2] * v.m_z),
        float(a.m[2][0] * v.m_x + a.m[2][1] * v.m_y + a.m[2][2] * v.m_z));
}

class TestDzQuat : public QObject {
    Q_OBJECT
private slots:
    void axisAngleStoresTheNegativeSine();
    void turnsAreRightHanded();
    void productTurnsByTheLeftOneFirst();
    void classifiesTheLyingBases_data();
    void classifiesTheLyingBases();
    void facingCorrectionMapsFrontOntoTheDirection();
    void eulerAnglesAgreeWithMatrices_data();
    void eulerAnglesAgreeWithMatrices();
    void matrixRowsAreTheImagesOfTheAxes();
    void fourNumbersAreNormalisedUnlessToldNot();
    void slerpGoesTheShorterWay();
    void axisAndAngleComeBack();
};

void TestDzQuat::axisAngleStoresTheNegativeSine()
{
    const DzQuat q(kY, kPi / 2);
    QVERIFY(nearly(q.m_x, 0, 1e-12));
    QVERIFY(nearly(q.m_y, -std::sqrt(0.5), 1e-12));
    QVERIFY(nearly(q.m_w, std::sqrt(0.5), 1e-12));
    const DzQuat e(DzRotationOrder::XYZ, DzVec3(float(-20 * kPi / 180), 0, 0));
    QVERIFY(nearly(e.m_x, 0.173648, 1e-6));
    QVERIFY(nearly(e.m_w, 0.984808, 1e-6));
}

void TestDzQuat::turnsAreRightHanded()
{
    QVERIFY(distance(DzQuat(kZ, kPi / 2).multVec(kX), kY) < 1e-6);
    QVERIFY(distance(DzQuat(kX, kPi / 2).multVec(kY), kZ) < 1e-6);
    QVERIFY(distance(DzQuat(kY, kPi / 2).multVec(kZ), kX) < 1e-6);
}

void TestDzQuat::productTurnsByTheLeftOneFirst()
{
    const DzQuat a(kX, kPi / 2), b(kZ, kPi / 2);
    QVERIFY(distance((a * b).multVec(kY), b.multVec(a.multVec(kY))) < 1e-6);
    QVERIFY(distance((a * b).multVec(kY), kZ) < 1e-6); // Y -> Z by a, Z stays under b
}

void TestDzQuat::classifiesTheLyingBases_data()
{
    QTest::addColumn<DzQuat>("base");
    QTest::addColumn<DzVec3>("up");
    QTest::addColumn<DzVec3>("front");
    QTest::newRow("on the back") << DzQuat(0, -.707, -.707, 0) << DzVec3(0, 0, 1) << kY;
    QTest::newRow("on the belly") << DzQuat(-.707, 0, 0, .707) << kZ << DzVec3(0, -1, 0);
    QTest::newRow("left side") << DzQuat(-.5, .5, .5, .5) << kZ << DzVec3(-1, 0, 0);
    QTest::newRow("right side") << DzQuat(-.5, -.5, -.5, .5) << kZ << kX;
    QTest::newRow("upside down") << DzQuat(0, 0, -1, 0) << DzVec3(0, -1, 0) << kZ;
}

void TestDzQuat::classifiesTheLyingBases()
{
    QFETCH(DzQuat, base);
    QFETCH(DzVec3, up);
    QFETCH(DzVec3, front);
    QVERIFY(distance(base.multVec(kY), up) < 1e-6);
    QVERIFY(distance(base.multVec(kZ), front) < 1e-6);
    // a yaw afterwards does not change how one lies
    for (int i = 0; i < 360; ++i) {
        const DzQuat turned = base * DzQuat(kY, i * kPi / 180);
        QVERIFY(nearly(turned.multVec(kY).m_y, up.m_y, 1e-6));
        QVERIFY(nearly(turned.multVec(kZ).m_y, front.m_y, 1e-6));
    }
}

void TestDzQuat::facingCorrectionMapsFrontOntoTheDirection()
{
    for (int deg = -175; deg <= 175; deg += 10) {
        const DzVec3 d(float(std::sin(deg * kPi / 180)), 0, float(std::cos(deg * kPi / 180)));
        QVERIFY(distance(DzQuat(kY, deg * kPi / 180).multVec(kZ), d) < 1e-6);
    }
}

void TestDzQuat::eulerAnglesAgreeWithMatrices_data()
{
    QTest::addColumn<int>("order");
    for (int i = 0; i < 6; ++i)
        QTest::newRow(qPrintable(DzRotationOrder(DzRotationOrder::RotOrder(i)).toString())) << i;
}

void TestDzQuat::eulerAnglesAgreeWithMatrices()
{
    QFETCH(int, order);
    const DzRotationOrder o = DzRotationOrder::RotOrder(order);
    Random random(7);
    for (int n = 0; n < 2000; ++n) {
        DzVec3 rad;
        for (int i = 0; i < 3; ++i)
            rad[i] = float(random.between(-kPi, kPi));
        if (n % 10 == 0) // near and at gimbal lock
            rad[o[1]] = float((n % 20 ? 1 : -1) * (kPi / 2 - (n % 40 ? 0 : 1e-8)));
        const DzQuat q(o.order(), rad);
        const M m
            = mul(about(o[2], rad[o[2]]), mul(about(o[1], rad[o[1]]), about(o[0], rad[o[0]])));
        const DzVec3 v(float(random.between(-1, 1)), float(random.between(-1, 1)),
            float(random.between(-1, 1)));
        QVERIFY(distance(q.multVec(v), apply(m, v)) < 2e-6); // single-precision vectors

        DzVec3 back;
        q.getValue(o.order(), back);
        QVERIFY(std::fabs(back[o[1]]) <= kPi / 2 + 1e-6);
        QVERIFY(angleDeg(DzQuat(o.order(), back), q) < 1e-4); // angles come back as floats
    }
}

void TestDzQuat::matrixRowsAreTheImagesOfTheAxes()
{
    const DzQuat q(.1, -.4, .3, .8);
    DzMatrix3 m;
    q.getMatrix(m);
    const double x = q.m_x, y = q.m_y, z = q.m_z, w = q.m_w;
    QVERIFY(distance(m.row(0), q.multVec(kX)) < 1e-6);
    QVERIFY(distance(m.row(1), q.multVec(kY)) < 1e-6);
    QVERIFY(distance(m.row(2), q.multVec(kZ)) < 1e-6);
    QVERIFY(nearly(m[0][1], 2 * (x * y - w * z), 1e-6));
    QVERIFY(nearly(m[2][0], 2 * (x * z - w * y), 1e-6));
    QVERIFY(angleDeg(DzQuat(m), q) < 1e-4);
    QVERIFY(distance((m * m.inverse()).multVec(kX), kX) < 1e-6);
}

void TestDzQuat::fourNumbersAreNormalisedUnlessToldNot()
{
    QVERIFY(nearly(DzQuat(0, .707, 0, .707).m_w, std::sqrt(0.5), 1e-12));
    QCOMPARE(DzQuat(0, .707, 0, .707, false).m_w, .707);
    QCOMPARE(DzQuat(0, 0, 0, 0), DzQuat());
}

void TestDzQuat::slerpGoesTheShorterWay()
{
    const DzQuat a(kY, 0.2), b(kY, 1.2);
    const DzQuat flipped(-b.m_x, -b.m_y, -b.m_z, -b.m_w, false);
    QVERIFY(angleDeg(DzQuat::slerp(a, b, 0.5), DzQuat(kY, 0.7)) < 1e-6);
    QVERIFY(angleDeg(DzQuat::slerp(a, flipped, 0.5), DzQuat(kY, 0.7)) < 1e-6);
    QVERIFY(angleDeg(DzQuat::slerp(a, b, 0), a) < 1e-9);
    QVERIFY(angleDeg(DzQuat::slerp(a, b, 1), b) < 1e-9);
}

void TestDzQuat::axisAndAngleComeBack()
{
    DzVec3 axis;
    QVERIFY(nearly(DzQuat(DzVec3(0, 0, 2), 1.25).getValue(axis), 1.25, 1e-9));
    QVERIFY(distance(axis, kZ) < 1e-6);
    QCOMPARE(DzQuat().getValue(axis), 0.0);
}

QUILLON_TEST_WITHOUT_APPLICATION(TestDzQuat)
#include "test_dzquat.moc"
