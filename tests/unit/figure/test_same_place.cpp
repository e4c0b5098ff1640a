// What still counts as the same place, and what does not.
#include "room_tests.h"

#include "figure/same_place.h"

#include <QtTest>

#include <limits>

using namespace quillon;

class TestSamePlace : public QObject {
    Q_OBJECT
private slots:
    void aTenThousandthOfACentimetreIsTheSame();
    void farAwayAMillionthOfTheLengthIsTheSame();
    void aMillionthOfARadianIsTheSame();
    void oppositeQuaternionsTurnAlike();
    void aMillionthOfAScaleIsTheSame();
    void whatIsNoNumberIsTheSameAsNothing();
};

void TestSamePlace::aTenThousandthOfACentimetreIsTheSame()
{
    QVERIFY(samePlace(DzVec3(1, 2, 3), DzVec3(1.00009f, 2, 3)));
    QVERIFY(!samePlace(DzVec3(1, 2, 3), DzVec3(1.00012f, 2, 3)));
    QVERIFY(!samePlace(DzVec3(0, 0, 0), DzVec3(0, -0.00011f, 0)));
}

void TestSamePlace::farAwayAMillionthOfTheLengthIsTheSame()
{
    QVERIFY(samePlace(DzVec3(0, 0, 30000), DzVec3(0, 0.025f, 30000)));
    QVERIFY(!samePlace(DzVec3(0, 0, 30000), DzVec3(0, 0.035f, 30000)));
    QVERIFY(samePlace(DzVec3(0, 0.025f, 30000), DzVec3(0, 0, 30000)));
}

void TestSamePlace::aMillionthOfARadianIsTheSame()
{
    const DzQuat turn(DzVec3(0, 0, 1), 1.2);
    QVERIFY(sameTurn(turn, turn * DzQuat(DzVec3(1, 0, 0), 0.9e-6)));
    QVERIFY(!sameTurn(turn, turn * DzQuat(DzVec3(1, 0, 0), 1.2e-6)));
    QVERIFY(!sameTurn(turn, turn * DzQuat(DzVec3(1, 0, 0), -1.2e-6)));
    QVERIFY(!sameTurn(turn, turn * DzQuat(DzVec3(0, 1, 0), 3.1)));
}

void TestSamePlace::oppositeQuaternionsTurnAlike()
{
    QVERIFY(sameTurn(DzQuat(.5, .5, -.5, .5), DzQuat(-.5, -.5, .5, -.5)));
}

static DzMatrix3 scaled(float x, float skew = 0)
{
    DzMatrix3 scale(true);
    scale[0][0] = x;
    scale[2][1] = skew;
    return scale;
}

void TestSamePlace::aMillionthOfAScaleIsTheSame()
{
    QVERIFY(sameScale(scaled(1), scaled(1.0000008f)));
    QVERIFY(!sameScale(scaled(1), scaled(1.0000013f)));
    QVERIFY(!sameScale(scaled(1), scaled(1, 0.0000013f)));
    QVERIFY(sameScale(scaled(50), scaled(50.00004f)));
    QVERIFY(!sameScale(scaled(50), scaled(50.00006f)));
}

void TestSamePlace::whatIsNoNumberIsTheSameAsNothing()
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    QVERIFY(!samePlace(DzVec3(none, 0, 0), DzVec3(none, 0, 0)));
    QVERIFY(!sameTurn(DzQuat(double(none), 0, 0, 1, false), DzQuat()));
    QVERIFY(!sameScale(scaled(none), scaled(none)));
    QVERIFY(!sameScale(scaled(none, 5), scaled(1, 5)));
}

QUILLON_TEST_WITHOUT_APPLICATION(TestSamePlace)
#include "test_same_place.moc"
