// How alike two poses are, and how well one fits the type browsed for.
#include "finder_fixture.h"
#include "room_tests.h"

#include "finder/pose_signature.h"
#include "finder/pose_similarity.h"
#include "reference/finder_reference.h"

using namespace quillon;

class TestPoseSimilarity : public QObject {
    Q_OBJECT
private slots:
    // two rotations
    void equalRotationsScoreOneAtAnyTolerance();
    void toleranceZeroScoresOneAtAnyDistance();
    void distancesFromTheRejectingOneOnAreRejected_data();
    void distancesFromTheRejectingOneOnAreRejected();
    void theLeastScoreIsAThousandth();
    void theWorseProbeDecides();
    void aboveToleranceTwoNothingIsRejected();
    void scoresEqualTheLiteralFormBitForBit();

    // mirrors
    void swappedLimbsWithNegatedMiddleAreAMirror();
    void everyComponentTestCounts_data();
    void everyComponentTestCounts();
    void aTenthIsNoMirror_data();
    void aTenthIsNoMirror();
    void xAndWDoNotMatterToAMirror();
    void signsAreNotNormalised();
    void aSymmetricSitIsAMirrorOfASymmetricStand();
    void entriesOutsideTheIndexAreNeitherMirrorNorSimilar();

    // duplicates
    void otherFigureCodesAreNeverSimilar();
    void oneRejectedSlotMakesPosesDifferent_data();
    void oneRejectedSlotMakesPosesDifferent();
    void verdictsOnPairsEqualTheLiteralForm();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

static const float kTolerances[] = {0.f, 0.1f, 0.5f, 0.75f, 2.f, 2.5f, 10.f};

// ---- two rotations

void TestPoseSimilarity::equalRotationsScoreOneAtAnyTolerance()
{
    Random random(1);
    for (int n = 0; n < 100; ++n) {
        const DzQuat q = randomRotation(&random);
        for (const float tolerance : kTolerances)
            QCOMPARE(partSimilarity(q, q, tolerance), 1.f);
    }
}

void TestPoseSimilarity::toleranceZeroScoresOneAtAnyDistance()
{
    QCOMPARE(partSimilarity(DzQuat(), turn(1, 0, 0, 180), 0), 1.f);
    QCOMPARE(partSimilarity(DzQuat(), turn(1, 1, 1, 77), 0), 1.f);
}

void TestPoseSimilarity::distancesFromTheRejectingOneOnAreRejected_data()
{
    QTest::addColumn<float>("distance");
    QTest::addColumn<bool>("rejected");
    QTest::newRow("same") << 0.f << false;
    QTest::newRow("half the tolerance") << 0.25f << false;
    QTest::newRow("just below") << 0.49949f << false;
    QTest::newRow("at 0.4995") << 0.4995f << true;
    QTest::newRow("at the tolerance") << 0.5f << true;
    QTest::newRow("beyond") << 1.9f << true;
}

void TestPoseSimilarity::distancesFromTheRejectingOneOnAreRejected()
{
    QFETCH(float, distance);
    QFETCH(bool, rejected);
    const Probe a = {DzVec3(0, 1, 0), DzVec3(0, 0, 1)};
    const Probe b = {DzVec3(distance, 1, 0), DzVec3(0, 0, 1)};
    QCOMPARE(probeSimilarity(a, b, 0.5f), rejected ? kRejected : 1 - distance / 0.5f);
    // a turn about X moves both probes by the same chord
    const double deg = 2 * std::asin(double(distance) / 2) * 180 / kPi;
    if (std::fabs(distance - 0.4995f) > 1e-5f) // the chord is rounded
        QCOMPARE(partSimilarity(DzQuat(), turn(1, 0, 0, deg), 0.5f) < 0, rejected);
}

// Scores below one half are whole multiples of 2^-24, one thousandth is none: with a tolerance of 1
// the score next above it passes and the one next below is rejected.
void TestPoseSimilarity::theLeastScoreIsAThousandth()
{
    const float grid = std::ldexp(1.f, -24);
    const float below = std::floor(0.001f / grid) * grid;
    const Probe a = {DzVec3(0, 1, 0), DzVec3(0, 0, 1)};
    for (const float score : {below, below + grid}) {
        const float distance = 1 - score;
        QCOMPARE(1 - distance, score); // nothing is rounded
        QVERIFY(score != 0.001f);
        const Probe ofY = {DzVec3(distance, 1, 0), a.z}, ofZ = {a.y, DzVec3(distance, 0, 1)};
        for (const Probe& b : {ofY, ofZ})
            QCOMPARE(probeSimilarity(a, b, 1.f), score > below ? score : kRejected);
    }
}

void TestPoseSimilarity::theWorseProbeDecides()
{
    // a turn about Y leaves the probe Y where it is
    const float chord = float(2 * std::sin(10 * kPi / 180));
    const float score = partSimilarity(DzQuat(), turn(0, 1, 0, 20), 0.5f);
    QVERIFY(nearly(double(score), double(1 - chord / 0.5f), 1e-6));
    QCOMPARE(partSimilarity(DzQuat(), turn(0, 0, 1, 20), 0.5f), score); // Z stays, Y moves
}

void TestPoseSimilarity::aboveToleranceTwoNothingIsRejected()
{
    const DzQuat opposite = turn(1, 0, 0, 180);
    QCOMPARE(partSimilarity(DzQuat(), opposite, 2.f), kRejected);
    QVERIFY(nearly(double(partSimilarity(DzQuat(), opposite, 2.5f)), 0.2, 1e-6));
    const Probe a = {DzVec3(0, 1, 0), DzVec3(0, 0, 1)};
    const Probe beyond = {DzVec3(0, -2, 0), DzVec3(0, 0, 1)};
    QCOMPARE(probeSimilarity(a, beyond, 2.5f), 0.f);
}

void TestPoseSimilarity::scoresEqualTheLiteralFormBitForBit()
{
    Random random(2);
    for (int n = 0; n < 20000; ++n) {
        const DzQuat a = randomRotation(&random);
        const DzQuat b = a * turn(random.between(-1, 1), 1, 0, random.between(0, 60));
        const float tolerance = kTolerances[random.below(int(std::size(kTolerances)))];
        QVERIFY(
            sameBits(partSimilarity(a, b, tolerance), reference::partSimilarity(a, b, tolerance)));
    }
}

// ---- mirrors

static DzQuat mirrored(const DzQuat& q)
{
    return DzQuat(q.m_x, -q.m_y, -q.m_z, q.m_w, false);
}

static const int kOther[] = {0, 1, 3, 2, 5, 4, 7, 6, 9, 8};

static void mirrorSignature(int from, int to)
{
    for (int slot = 0; slot < kSignatureSlots; ++slot)
        entryToChange(to)->signature[slot] = mirrored(poseEntry(from)->signature[kOther[slot]]);
}

void TestPoseSimilarity::swappedLimbsWithNegatedMiddleAreAMirror()
{
    StoreFixture f;
    Random random(7);
    const int a = addEntry(s("/a.duf"), 1), b = addEntry(s("/b.duf"), 2);
    for (int n = 0; n < 50; ++n) {
        randomSignature(&random, a);
        mirrorSignature(a, b);
        QVERIFY(isMirrorOf(a, b));
        QVERIFY(isMirrorOf(b, a));
        QVERIFY(!isMirrorOf(a, a));
    }
}

void TestPoseSimilarity::everyComponentTestCounts_data()
{
    QTest::addColumn<int>("slot");
    for (int slot = 0; slot < kSignatureSlots; ++slot)
        QTest::newRow(qPrintable(QString("slot %1").arg(slot + 1))) << slot;
}

void TestPoseSimilarity::everyComponentTestCounts()
{
    QFETCH(int, slot);
    StoreFixture f;
    Random random(8);
    const int a = addEntry(s("/a.duf"), 1), b = addEntry(s("/b.duf"), 2);
    randomSignature(&random, a);
    mirrorSignature(a, b);
    for (double DzQuat::*component : {&DzQuat::m_y, &DzQuat::m_z}) {
        double& value = entryToChange(b)->signature[slot].*component;
        const double exact = value;
        for (const double sign : {-1.0, 1.0}) {
            value = exact + sign * 0.0999;
            QVERIFY(isMirrorOf(a, b));
            value = exact + sign * 0.1001;
            QVERIFY(!isMirrorOf(a, b));
        }
        value = exact;
    }
}

void TestPoseSimilarity::aTenthIsNoMirror_data()
{
    everyComponentTestCounts_data();
}

void TestPoseSimilarity::aTenthIsNoMirror()
{
    QFETCH(int, slot);
    StoreFixture f;
    const int a = addEntry(s("/a.duf"), 1), b = addEntry(s("/b.duf"), 2); // y and z exactly 0
    for (double DzQuat::*component : {&DzQuat::m_y, &DzQuat::m_z}) {
        double& value = entryToChange(b)->signature[slot].*component;
        for (const float sign : {-1.f, 1.f}) {
            value = double(sign * std::nextafter(0.1f, 0.f));
            QVERIFY(isMirrorOf(a, b) && isMirrorOf(b, a));
            value = double(sign * 0.1f);
            QVERIFY(!isMirrorOf(a, b) && !isMirrorOf(b, a));
        }
        value = 0;
    }
}

void TestPoseSimilarity::xAndWDoNotMatterToAMirror()
{
    StoreFixture f;
    Random random(9);
    const int a = addEntry(s("/a.duf"), 1), b = addEntry(s("/b.duf"), 2);
    randomSignature(&random, a);
    mirrorSignature(a, b);
    for (DzQuat& each : entryToChange(b)->signature) {
        each.m_x = random.between(-1, 1);
        each.m_w = random.between(-1, 1);
    }
    QVERIFY(isMirrorOf(a, b));
}

void TestPoseSimilarity::signsAreNotNormalised()
{
    StoreFixture f;
    Random random(10);
    const int a = addEntry(s("/a.duf"), 1), b = addEntry(s("/b.duf"), 2);
    randomSignature(&random, a);
    mirrorSignature(a, b);
    DzQuat& q = entryToChange(b)->signature[TorsoSlot];
    q = DzQuat(0, 0.6, 0, 0.8);
    entryToChange(a)->signature[TorsoSlot] = mirrored(q);
    QVERIFY(isMirrorOf(a, b));
    q = DzQuat(-q.m_x, -q.m_y, -q.m_z, -q.m_w, false); // the same rotation
    QVERIFY(!isMirrorOf(a, b));
}

void TestPoseSimilarity::aSymmetricSitIsAMirrorOfASymmetricStand()
{
    StoreFixture f;
    const int stand = addEntry(s("/stand.duf"), 1), sit = addEntry(s("/sit.duf"), 2);
    PoseIndexEntry& e = *entryToChange(sit);
    e.signature[LeftThighSlot] = e.signature[RightThighSlot] = turn(1, 0, 0, -90);
    e.signature[LeftShinSlot] = e.signature[RightShinSlot] = turn(1, 0, 0, 90);
    QVERIFY(isMirrorOf(stand, sit));
    QVERIFY(!isSimilarPose(stand, sit));
}

void TestPoseSimilarity::entriesOutsideTheIndexAreNeitherMirrorNorSimilar()
{
    StoreFixture f;
    const int a = addEntry(s("/a.duf"), 1);
    for (const int other : {-1, 1, kPoseIndexCapacity}) {
        QVERIFY(!isMirrorOf(a, other) && !isMirrorOf(other, a));
        QVERIFY(!isSimilarPose(a, other) && !isSimilarPose(other, a));
    }
}

// ---- duplicates

void TestPoseSimilarity::otherFigureCodesAreNeverSimilar()
{
    StoreFixture f;
    const int a = addEntry(s("/a.duf"), 1, kFemaleCode), b = addEntry(s("/b.duf"), 2, kMaleCode);
    QVERIFY(!isSimilarPose(a, b));
    entryToChange(b)->figureCode = kFemaleCode;
    QVERIFY(isSimilarPose(a, b));
}

void TestPoseSimilarity::oneRejectedSlotMakesPosesDifferent_data()
{
    everyComponentTestCounts_data();
}

void TestPoseSimilarity::oneRejectedSlotMakesPosesDifferent()
{
    QFETCH(int, slot);
    StoreFixture f;
    Random random(12);
    const int a = addEntry(s("/a.duf"), 1), b = addEntry(s("/b.duf"), 2);
    randomSignature(&random, a);
    copyEntry(a, b);
    QVERIFY(isSimilarPose(a, b));
    DzQuat& q = entryToChange(b)->signature[slot];
    const DzQuat exact = q;
    q = exact * turn(0, 1, 0, 28); // chords of up to 0.484
    QVERIFY(isSimilarPose(a, b));
    q = exact * turn(0, 1, 0, 180);
    QVERIFY(!isSimilarPose(a, b));
}

void TestPoseSimilarity::verdictsOnPairsEqualTheLiteralForm()
{
    StoreFixture f;
    Random random(13);
    const int a = addEntry(s("/a.duf"), 1), b = addEntry(s("/b.duf"), 2);
    int similar = 0, mirrors = 0;
    for (int n = 0; n < 3000; ++n) {
        randomSignature(&random, a);
        if (n % 2)
            copyEntry(a, b);
        else
            mirrorSignature(a, b);
        for (DzQuat& each : entryToChange(b)->signature)
            each = each * turn(random.between(-1, 1), 1, 0, random.between(0, n % 2 ? 31 : 20));
        QCOMPARE(isSimilarPose(a, b), reference::isSimilarPose(a, b));
        QCOMPARE(isMirrorOf(a, b), reference::isMirrorOf(a, b));
        similar += isSimilarPose(a, b);
        mirrors += isMirrorOf(a, b);
    }
    QVERIFY2(similar > 100 && similar < 1400, qPrintable(QString::number(similar)));
    QVERIFY2(mirrors > 100 && mirrors < 1400, qPrintable(QString::number(mirrors)));
}

QUILLON_TEST(TestPoseSimilarity)
#include "test_pose_similarity.moc"
