// How a figure lies, which way it faces, and whether it was moved.
#include "finder_fixture.h"
#include "room_tests.h"

#include "finder/browse_setup.h"
#include "finder/pose_signature.h"
#include "finder/pose_similarity.h"

#include <limits>

using namespace quillon;

class TestFigureFacing : public QObject {
    Q_OBJECT
private slots:
    void init();

    // classes
    void theTypesBasesAreOfTheirTypes();
    void classesEndAtTheThresholds_data();
    void classesEndAtTheThresholds();
    void theSideAxisDecidesBetweenTheSides();
    void aNumberThatIsNoneIsOfNoType();

    // directions
    void directionsFollowTheHip_data();
    void directionsFollowTheHip();
    void aStaleTypeTurnsTheDirectionRound_data();
    void aStaleTypeTurnsTheDirectionRound();
    void aDirectionWithoutLengthBecomesForward();
    void directionsAreHorizontalAndOfUnitLength();
    void aTurnAboutUpTurnsTheDirection();

    // back to a rotation
    void theRotationMakesForwardFaceTheDirection();
    void theRotationOfNoDirectionIsTheIdentity();
    void theRotationKeepsUpUpright();

    // the figure
    void derivingTakesTypeDirectionYawsAndPosition();
    void derivingLeavesTheStoredOrientation();
    void aTurnedAndMovedFigureIsNoticed_data();
    void aTurnedAndMovedFigureIsNoticed();
    void aTenthIsAChange_data();
    void aTenthIsAChange();
    void storingMakesTheHipUnchanged();
    void clearingForgetsTheHipAndRebuildsTheYaws();
    void aFigureWithoutHipNeverChanges();
};

void TestFigureFacing::init()
{
    browseSession() = BrowseSession();
}

// ---- classes

void TestFigureFacing::theTypesBasesAreOfTheirTypes()
{
    for (int type = LyingBellyUp; type <= UpsideDown; ++type)
        QCOMPARE(classifyHipOrientation(poseTypeBase(type)), type);
    for (int type = AllPoses; type <= Standing; ++type)
        QCOMPARE(classifyHipOrientation(poseTypeBase(type)), int(Standing));
}

void TestFigureFacing::classesEndAtTheThresholds_data()
{
    QTest::addColumn<double>("leanDeg"); // forwards, about X
    QTest::addColumn<int>("type");
    QTest::newRow("upright") << 0.0 << int(Standing);
    QTest::newRow("45 degrees") << 45.0 << int(Standing);
    QTest::newRow("45.01 degrees") << 45.01 << int(LyingBellyDown);
    QTest::newRow("on the belly") << 90.0 << int(LyingBellyDown);
    QTest::newRow("134.99 degrees") << 134.99 << int(LyingBellyDown);
    QTest::newRow("135.01 degrees") << 135.01 << int(UpsideDown);
    QTest::newRow("head first") << 180.0 << int(UpsideDown);
    QTest::newRow("45 degrees back") << -45.0 << int(Standing);
    QTest::newRow("45.01 degrees back") << -45.01 << int(LyingBellyUp);
    QTest::newRow("on the back") << -90.0 << int(LyingBellyUp);
    QTest::newRow("135.01 degrees back") << -135.01 << int(UpsideDown);
}

void TestFigureFacing::classesEndAtTheThresholds()
{
    QFETCH(double, leanDeg);
    QFETCH(int, type);
    QCOMPARE(classifyHipOrientation(turn(1, 0, 0, leanDeg)), type);
    QCOMPARE(classifyHipOrientation(turn(1, 0, 0, leanDeg) * turn(0, 1, 0, 123)), type);
}

void TestFigureFacing::theSideAxisDecidesBetweenTheSides()
{
    QCOMPARE(classifyHipOrientation(turn(0, 0, 1, -90)), int(LyingLeftSide)); // left side down
    QCOMPARE(classifyHipOrientation(turn(0, 0, 1, 90)), int(LyingRightSide));
    QCOMPARE(classifyHipOrientation(turn(0, 0, 1, -45.01)), int(LyingLeftSide));
    QCOMPARE(classifyHipOrientation(turn(0, 0, 1, 45.01)), int(LyingRightSide));
    QCOMPARE(classifyHipOrientation(turn(0, 0, 1, 44.99)), int(Standing));
}

void TestFigureFacing::aNumberThatIsNoneIsOfNoType()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QCOMPARE(classifyHipOrientation(DzQuat(nan, nan, nan, nan, false)), int(AllPoses));
}

// ---- directions

static QString text(const DzVec3& v)
{
    return QString("%1 %2 %3")
        .arg(qRound(v.m_x * 1000))
        .arg(qRound(v.m_y * 1000))
        .arg(qRound(v.m_z * 1000));
}

static bool nearlyEqual(const DzVec3& a, const DzVec3& b, double tolerance = 1e-6)
{
    return distance(a, b) <= tolerance;
}

void TestFigureFacing::directionsFollowTheHip_data()
{
    QTest::addColumn<double>("x"); // axis of the hip's turn
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("z");
    QTest::addColumn<double>("deg");
    QTest::addColumn<QString>("direction"); // thousandths
    QTest::newRow("upright") << 1.0 << 0.0 << 0.0 << 0.0 << "0 0 1000";
    QTest::newRow("turned to the left") << 0.0 << 1.0 << 0.0 << 90.0 << "1000 0 0";
    QTest::newRow("leaning back") << 1.0 << 0.0 << 0.0 << -30.0 << "0 0 1000";
    QTest::newRow("on its head") << 1.0 << 0.0 << 0.0 << 180.0 << "0 0 1000";
    QTest::newRow("on the back: its feet") << 1.0 << 0.0 << 0.0 << -90.0 << "0 0 1000";
    QTest::newRow("on the belly: its feet") << 1.0 << 0.0 << 0.0 << 90.0 << "0 0 -1000";
    QTest::newRow("on the left side: its feet") << 0.0 << 0.0 << 1.0 << -90.0 << "-1000 0 0";
    QTest::newRow("on the right side: its feet") << 0.0 << 0.0 << 1.0 << 90.0 << "1000 0 0";
}

void TestFigureFacing::directionsFollowTheHip()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, z);
    QFETCH(double, deg);
    QFETCH(QString, direction);
    const DzQuat hip = turn(x, y, z, deg);
    browseSession().facing.currentType = classifyHipOrientation(hip);
    QCOMPARE(text(facingDirection(hip)), direction);
}

void TestFigureFacing::aStaleTypeTurnsTheDirectionRound_data()
{
    QTest::addColumn<int>("storedType");
    QTest::addColumn<double>("leanDeg");
    QTest::addColumn<QString>("direction");
    QTest::newRow("standing, now on the belly") << int(Standing) << 90.0 << "0 0 1000";
    QTest::newRow("on the belly, still") << int(LyingBellyDown) << 90.0 << "0 0 -1000";
    QTest::newRow("on the belly, now standing") << int(LyingBellyDown) << 0.0 << "0 0 -1000";
    QTest::newRow("standing, still") << int(Standing) << 0.0 << "0 0 1000";
    QTest::newRow("standing, now on the back") << int(Standing) << -90.0 << "0 0 1000";
    QTest::newRow("on the belly, now on the back") << int(LyingBellyDown) << -90.0 << "0 0 1000";
    QTest::newRow("upside down, now standing") << int(UpsideDown) << 0.0 << "0 0 1000";
}

void TestFigureFacing::aStaleTypeTurnsTheDirectionRound()
{
    QFETCH(int, storedType);
    QFETCH(double, leanDeg);
    QFETCH(QString, direction);
    browseSession().facing.currentType = storedType;
    QCOMPARE(text(facingDirection(turn(1, 0, 0, leanDeg))), direction);
    QCOMPARE(browseSession().facing.currentType, storedType);
}

void TestFigureFacing::aDirectionWithoutLengthBecomesForward()
{
    // no rotation leaves so little of the direction; damaged numbers do
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QCOMPARE(text(facingDirection(DzQuat(nan, nan, nan, nan, false))), QString("0 0 1000"));
    const DzQuat flattening(0, 0, std::sqrt(0.5), 0, false);
    QVERIFY(flattening.multVec(DzVec3(0, 1, 0)).length() < 1e-6f);
    QCOMPARE(text(facingDirection(flattening)), QString("0 0 1000"));
}

void TestFigureFacing::directionsAreHorizontalAndOfUnitLength()
{
    Random random(4);
    for (int n = 0; n < 5000; ++n) {
        browseSession().facing.currentType = random.below(8);
        const DzVec3 direction = facingDirection(randomRotation(&random));
        QCOMPARE(direction.m_y, 0.f);
        QVERIFY(nearly(double(direction.length()), 1, 1e-6));
    }
}

void TestFigureFacing::aTurnAboutUpTurnsTheDirection()
{
    Random random(6);
    for (int n = 0; n < 500; ++n) {
        const DzQuat hip = randomRotation(&random);
        const DzQuat yaw = turn(0, 1, 0, random.between(-180, 180));
        const DzVec3 before = facingDirection(hip), after = facingDirection(hip * yaw);
        QVERIFY(nearlyEqual(after, yaw.multVec(before), 1e-4)); // short ones magnify rounding
    }
}

// ---- back to a rotation

void TestFigureFacing::theRotationMakesForwardFaceTheDirection()
{
    const DzVec3 up(0, 1, 0);
    for (int deg = -180; deg <= 180; ++deg) {
        const DzVec3 direction = turn(0, 1, 0, deg).multVec(DzVec3(0, 0, 1));
        const DzQuat q = facingRotation(direction, up);
        QVERIFY2(
            nearlyEqual(q.multVec(DzVec3(0, 0, 1)), direction, 2e-6), qPrintable(text(direction)));
        QVERIFY(nearlyEqual(
            facingRotation(direction * 7.f, up).multVec(DzVec3(0, 0, 1)), direction, 2e-6));
    }
}

void TestFigureFacing::theRotationOfNoDirectionIsTheIdentity()
{
    QVERIFY(facingRotation(DzVec3(), DzVec3(0, 1, 0)) == DzQuat());
    QVERIFY(facingRotation(DzVec3(0.0009f, 0, 0), DzVec3(0, 1, 0)) == DzQuat());
    QVERIFY(facingRotation(DzVec3(0.0011f, 0, 0), DzVec3(0, 1, 0)) != DzQuat());
}

void TestFigureFacing::theRotationKeepsUpUpright()
{
    Random random(14);
    const DzVec3 up(0, 1, 0);
    for (int n = 0; n < 300; ++n) {
        const DzVec3 direction(float(random.between(-1, 1)), 0, float(random.between(-1, 1)));
        QVERIFY(nearlyEqual(facingRotation(direction, up).multVec(up), up, 1e-5));
    }
}

// ---- the figure

void TestFigureFacing::derivingTakesTypeDirectionYawsAndPosition()
{
    FinderFixture f;
    f.bone("hip")->getXRotControl()->setValue(90);
    f.figure->getYRotControl()->setValue(90);
    f.figure->getZPosControl()->setValue(40);
    deriveFigureFacing(&browseSession(), LyingLeftSide, f.figure, f.time());
    QCOMPARE(browseSession().facing.currentType, int(LyingBellyDown));
    QCOMPARE(text(browseSession().facing.direction), QString("-1000 0 0")); // the feet
    QVERIFY(browseSession().facing.hipPosCm_world == f.bone("hip")->getWSPos());
    QVERIFY(browseSession().tables.yaw[0] == poseTypeBase(LyingLeftSide));
}

void TestFigureFacing::derivingLeavesTheStoredOrientation()
{
    FinderFixture f;
    hipChanged(f.figure, StoreHip, f.time());
    const DzQuat stored = browseSession().facing.hipRot_world;
    f.bone("hip")->getXRotControl()->setValue(90);
    deriveFigureFacing(&browseSession(), AllPoses, f.figure, f.time());
    QVERIFY(browseSession().facing.hipRot_world == stored);
}

void TestFigureFacing::aTurnedAndMovedFigureIsNoticed_data()
{
    QTest::addColumn<QString>("channel");
    QTest::addColumn<float>("value");
    QTest::addColumn<bool>("noticed");
    QTest::newRow("not moved") << "XTranslate" << 0.f << false;
    QTest::newRow("0.09 cm") << "XTranslate" << 0.09f << false;
    QTest::newRow("0.11 cm") << "XTranslate" << 0.11f << true;
    QTest::newRow("down") << "YTranslate" << -0.11f << true;
    QTest::newRow("back") << "ZTranslate" << -30.f << true;
    QTest::newRow("11 degrees, 0.096") << "YRotate" << 11.f << false;
    QTest::newRow("12 degrees, 0.105") << "YRotate" << -12.f << true;
    QTest::newRow("half a turn") << "YRotate" << 180.f << true;
    QTest::newRow("lying") << "XRotate" << 90.f << true;
}

void TestFigureFacing::aTurnedAndMovedFigureIsNoticed()
{
    QFETCH(QString, channel);
    QFETCH(float, value);
    QFETCH(bool, noticed);
    FinderFixture f;
    hipChanged(f.figure, StoreHip, f.time());
    const bool turns = channel.endsWith("Rotate");
    DzNode* node = turns ? static_cast<DzNode*>(f.bone("hip")) : f.figure; // a turn moves no hip
    qobject_cast<DzFloatProperty*>(node->findProperty(channel))->setValue(value);
    QCOMPARE(hipChanged(f.figure, CompareHip, f.time()), noticed);
}

void TestFigureFacing::aTenthIsAChange_data()
{
    QTest::addColumn<int>("component"); // x, y, z of the orientation, then of the position
    QTest::newRow("orientation, x") << 0;
    QTest::newRow("orientation, y") << 1;
    QTest::newRow("orientation, z") << 2;
    QTest::newRow("position, x") << 3;
    QTest::newRow("position, z") << 5;
}

// On components that are exactly 0, so that nothing is rounded.
void TestFigureFacing::aTenthIsAChange()
{
    QFETCH(int, component);
    FinderFixture f;
    f.bone("hip")->setWSPos(f.time(), DzVec3());
    hipChanged(f.figure, StoreHip, f.time());
    DzQuat& turn = browseSession().facing.hipRot_world;
    DzVec3& place = browseSession().facing.hipPosCm_world;
    double* const turns[] = {&turn.m_x, &turn.m_y, &turn.m_z};
    float* const places[] = {&place.m_x, &place.m_y, &place.m_z};
    const auto store = [&](float value) {
        if (component < 3)
            *turns[component] = double(value);
        else
            *places[component - 3] = value;
    };
    QCOMPARE(component < 3 ? *turns[component] : double(*places[component - 3]), 0.0);
    for (const float sign : {-1.f, 1.f}) {
        store(sign * std::nextafter(0.1f, 0.f));
        QVERIFY(!hipChanged(f.figure, CompareHip, f.time()));
        store(sign * 0.1f);
        QVERIFY(hipChanged(f.figure, CompareHip, f.time()));
    }
}

void TestFigureFacing::storingMakesTheHipUnchanged()
{
    FinderFixture f;
    f.figure->getXPosControl()->setValue(100);
    QVERIFY(hipChanged(f.figure, CompareHip, f.time()));
    QVERIFY(!hipChanged(f.figure, StoreHip, f.time()));
    QVERIFY(!hipChanged(f.figure, CompareHip, f.time()));
    QVERIFY(browseSession().facing.hipPosCm_world == f.bone("hip")->getWSPos());
}

void TestFigureFacing::clearingForgetsTheHipAndRebuildsTheYaws()
{
    FinderFixture f;
    hipChanged(f.figure, StoreHip, f.time());
    buildYawTable(UpsideDown, f.figure, f.time());
    QVERIFY(!hipChanged(f.figure, ClearHip, f.time()));
    QVERIFY(browseSession().facing.hipRot_world == DzQuat());
    QVERIFY(browseSession().facing.hipPosCm_world == DzVec3());
    QVERIFY(browseSession().tables.yaw[0] == poseTypeBase(UpsideDown)); // no category is browsed
    browseSession().type = LyingBellyUp;
    hipChanged(f.figure, ClearHip, f.time());
    QVERIFY(browseSession().tables.yaw[0] == poseTypeBase(LyingBellyUp));
}

void TestFigureFacing::aFigureWithoutHipNeverChanges()
{
    FinderFixture f;
    f.figure->removeBone(f.bone("hip"));
    browseSession().facing.hipPosCm_world = DzVec3(5, 5, 5);
    for (int mode : {ClearHip, StoreHip, CompareHip}) {
        QVERIFY(!hipChanged(f.figure, mode, f.time()));
        QVERIFY(!hipChanged(nullptr, mode, f.time()));
    }
    QVERIFY(browseSession().facing.hipPosCm_world == DzVec3(5, 5, 5));
}

QUILLON_TEST(TestFigureFacing)
#include "test_figure_facing.moc"
