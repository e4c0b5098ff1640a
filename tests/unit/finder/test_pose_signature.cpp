// What a signature takes from a posed figure.
#include "finder_fixture.h"
#include "room_tests.h"

#include "finder/pose_signature.h"

using namespace quillon;

class TestPoseSignature : public QObject {
    Q_OBJECT
private slots:
    void slotsAreTheProductsOfTheTable();
    void aRestingFigureHasIdentities();
    void aHipTurnIsStoredInTheHostsConvention();
    void onlyTheHipSlotSeesWhereTheFigureFaces();
    void rotationsAreReadAtTheGivenTime();
    void aFigureWithoutHipGivesNoSignature();
    void noFigureGivesNoSignature();
    void anEntryOutsideTheIndexIsLeftAlone();
    void missingBonesCountAsIdentity();
    void absentBonesGiveNeutralValues();
    void aWorldRotationMayBeTurnedFurther();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

static bool nearlyEqual(const DzQuat& a, const DzQuat& b, double tolerance = 1e-6)
{
    return nearly(a.m_x, b.m_x, tolerance) && nearly(a.m_y, b.m_y, tolerance)
        && nearly(a.m_z, b.m_z, tolerance) && nearly(a.m_w, b.m_w, tolerance);
}

void TestPoseSignature::slotsAreTheProductsOfTheTable()
{
    FinderFixture f;
    Random random(11);
    poseAtRandom(&random, f.figure);
    const auto local = [&](const char* name) { return f.bone(name)->getLocalRot(); };
    const int entry = appendPose(s("/a.duf"));
    takeSignature(entry, f.figure, f.time());
    const DzQuat* q = poseEntry(entry)->signature;
    QVERIFY(poseEntry(entry)->hasSignature);
    QVERIFY(q[0] == local("pelvis") * f.bone("hip")->getWSRot());
    QVERIFY(q[1]
        == local("chestUpper") * local("chestLower") * local("abdomenUpper")
            * local("abdomenLower"));
    QVERIFY(q[2] == local("lShin"));
    QVERIFY(q[3] == local("rShin"));
    QVERIFY(q[4] == local("lThighBend"));
    QVERIFY(q[5] == local("rThighBend"));
    QVERIFY(q[6] == local("lShldrBend") * local("lCollar"));
    QVERIFY(q[7] == local("rShldrBend") * local("rCollar"));
    QVERIFY(q[8] == local("lForearmBend"));
    QVERIFY(q[9] == local("rForearmBend"));
}

void TestPoseSignature::aRestingFigureHasIdentities()
{
    FinderFixture f;
    const int entry = appendPose(s("/a.duf"));
    takeSignature(entry, f.figure, f.time());
    for (const DzQuat& each : poseEntry(entry)->signature)
        QVERIFY(nearlyEqual(each, DzQuat()));
}

void TestPoseSignature::aHipTurnIsStoredInTheHostsConvention()
{
    FinderFixture f;
    f.bone("hip")->getXRotControl()->setValue(-90);
    const double half = std::sqrt(0.5);
    QVERIFY(
        nearlyEqual(slotRotation(f.figure, HipSlot, f.time()), DzQuat(half, 0, 0, half, false)));
}

void TestPoseSignature::onlyTheHipSlotSeesWhereTheFigureFaces()
{
    FinderFixture f;
    Random random(5);
    poseAtRandom(&random, f.figure);
    const int before = appendPose(s("/a.duf")), after = appendPose(s("/b.duf"));
    takeSignature(before, f.figure, f.time());
    f.figure->getYRotControl()->setValue(90);
    f.figure->getXPosControl()->setValue(120);
    takeSignature(after, f.figure, f.time());
    const DzQuat *a = poseEntry(before)->signature, *b = poseEntry(after)->signature;
    QVERIFY(nearly(angleDeg(b[HipSlot], a[HipSlot] * turn(0, 1, 0, 90)), 0, 1e-4));
    for (int slot = TorsoSlot; slot < kSignatureSlots; ++slot)
        QVERIFY(a[slot] == b[slot]);
}

void TestPoseSignature::rotationsAreReadAtTheGivenTime()
{
    FinderFixture f;
    f.bone("lShin")->getXRotControl()->setValue(0, 0.f);
    f.bone("lShin")->getXRotControl()->setValue(160, 90.f);
    QVERIFY(nearlyEqual(slotRotation(f.figure, LeftShinSlot, 0), DzQuat()));
    QVERIFY(nearly(angleDeg(slotRotation(f.figure, LeftShinSlot, 160), DzQuat()), 90, 1e-3));
}

void TestPoseSignature::aFigureWithoutHipGivesNoSignature()
{
    FinderFixture f;
    f.figure->removeBone(f.bone("hip"));
    const int entry = appendPose(s("/a.duf"));
    f.bone("lShin")->getXRotControl()->setValue(90);
    takeSignature(entry, f.figure, f.time());
    QVERIFY(!poseEntry(entry)->hasSignature);
    QVERIFY(poseEntry(entry)->signature[LeftShinSlot] == DzQuat());
}

void TestPoseSignature::noFigureGivesNoSignature()
{
    FinderFixture f;
    const int entry = appendPose(s("/a.duf"));
    takeSignature(entry, nullptr, f.time());
    QVERIFY(!poseEntry(entry)->hasSignature);
}

void TestPoseSignature::anEntryOutsideTheIndexIsLeftAlone()
{
    FinderFixture f;
    takeSignature(-1, f.figure, f.time());
    takeSignature(0, f.figure, f.time());
    QCOMPARE(poseCount(), 0);
}

void TestPoseSignature::missingBonesCountAsIdentity()
{
    FinderFixture f;
    Random random(3);
    poseAtRandom(&random, f.figure);
    f.figure->removeBone(f.bone("chestLower"));
    f.figure->removeBone(f.bone("pelvis"));
    f.figure->removeBone(f.bone("rForearmBend"));
    const int entry = appendPose(s("/a.duf"));
    takeSignature(entry, f.figure, f.time());
    const DzQuat* q = poseEntry(entry)->signature;
    QVERIFY(poseEntry(entry)->hasSignature);
    QVERIFY(q[HipSlot] == f.bone("hip")->getWSRot());
    QVERIFY(nearlyEqual(q[TorsoSlot],
        f.bone("chestUpper")->getLocalRot() * f.bone("abdomenUpper")->getLocalRot()
            * f.bone("abdomenLower")->getLocalRot()));
    QVERIFY(q[RightForearmSlot] == DzQuat());
}

void TestPoseSignature::absentBonesGiveNeutralValues()
{
    FinderFixture f;
    const DzSkeleton* const figures[] = {f.figure, nullptr};
    for (const DzSkeleton* figure : figures) {
        QVERIFY(boneLocalRotation(figure, s("tail"), 0) == DzQuat());
        QVERIFY(boneWorldRotation(figure, s("tail"), 0, 30) == DzQuat());
        QVERIFY(boneWorldPosition(figure, s("tail"), 0) == DzVec3());
        QVERIFY(boneWorldScale(figure, s("tail"), 0).isIdentity());
    }
    QVERIFY(boneWorldPosition(f.figure, s("hip"), 0) == f.bone("hip")->getWSPos());
    f.figure->getScaleControl()->setValue(2);
    QVERIFY(boneWorldScale(f.figure, s("hip"), 0) == f.bone("hip")->getWSScale());
    QVERIFY(!boneWorldScale(f.figure, s("hip"), 0).isIdentity());
}

void TestPoseSignature::aWorldRotationMayBeTurnedFurther()
{
    FinderFixture f;
    f.bone("hip")->getXRotControl()->setValue(40);
    const DzQuat plain = boneWorldRotation(f.figure, s("hip"), 0);
    QVERIFY(nearlyEqual(plain, f.bone("hip")->getWSRot()));
    const DzQuat turned = boneWorldRotation(f.figure, s("hip"), 0, 25);
    QVERIFY(nearlyEqual(turned, plain * turn(0, 1, 0, 25)));
}

QUILLON_TEST(TestPoseSignature)
#include "test_pose_signature.moc"
