// Swap and symmetrize: which bones exchange what, and what stays.
#include "mirror_fixture.h"
#include "room_tests.h"
#include "pose_fixture.h"

#include "figure/body_parts.h"
#include "figure/reset_pose.h"
#include "posefile/pose_reader.h"
#include "posefile/swap_symmetrize.h"

#include <set>

using namespace quillon;

class TestSwapSymmetrize : public QObject {
    Q_OBJECT
private slots:
    void swapExchangesEveryBone_data();
    void swapExchangesEveryBone();
    void symmetrizeTakesThePartnersValues_data();
    void symmetrizeTakesThePartnersValues();
    void thisBoneOnlyLeavesForearmHandAndFingers();
    void symmetrizeLeavesTheOtherThighAlone();
    void bothSidesSelectedKeepTheirBones();
    void controlsOfBothSidesExchange();
    void bonesNotTakingPartKeepTheirPlace_data();
    void bonesNotTakingPartKeepTheirPlace();
    void swapOfTheFigureTwiceGivesBackThePose_data();
    void swapOfTheFigureTwiceGivesBackThePose();
    void swapOfTheFigureMirrorsEveryEntry();
    void swapOfTheFigureIsItsReflectionInTheWorld_data();
    void swapOfTheFigureIsItsReflectionInTheWorld();
    void theJawKeepsItsOwnValues();
};

static QString partnerName(const QString& bone)
{
    const bool left = bone.startsWith('l'), right = bone.startsWith('r');
    return left || right ? QChar(left ? 'r' : 'l') + bone.mid(1) : bone;
}

// Which bones take part when this one is selected: itself, its partner, what hangs below.
static std::set<int> bonesTakingPart(const PoseFixture& f, const QString& selected, bool children)
{
    std::set<int> numbers;
    for (const QString& name : {selected, partnerName(selected)}) {
        const DzBone* bone = f.figure->findBone(name);
        if (!bone)
            continue;
        numbers.insert(boneIndex(name));
        DzNodeList below;
        bone->getNodeChildren(below, children);
        for (int i = 0; children && i < below.size(); ++i)
            numbers.insert(boneIndex(below.at(i)->getName()));
    }
    return numbers;
}

// Mirrored channels change their sign: rotation Y and Z, translation X.
static float mirrored(int channel, float value)
{
    return channel >= 1 && channel <= 3 ? -value : value;
}

typedef std::vector<float> BoneValues; // kPoseChannelCount of each bone number

static BoneValues boneValues(const PoseFixture& f)
{
    BoneValues values(size_t(kBoneCount * kPoseChannelCount));
    for (const FigureBone& each : bonesOf(f.figure)) {
        const PoseChannels channels = poseChannelsOf(each.bone);
        for (int i = 0; i < kPoseChannelCount; ++i)
            values[size_t(each.number * kPoseChannelCount + i)]
                = channels.channel[i]->getRawValue();
    }
    return values;
}

static float& valueAt(BoneValues* values, int bone, int channel)
{
    return (*values)[size_t(bone * kPoseChannelCount + channel)];
}

static QString firstOtherBone(const BoneValues& a, const BoneValues& b, double tolerance)
{
    for (size_t i = kPoseChannelCount; i < a.size(); ++i) { // the hip's translation moves away
        if (!nearly(a[i], b[i], tolerance))
            return QString("%1 channel %2: %3 against %4")
                .arg(boneName(int(i) / kPoseChannelCount))
                .arg(i % kPoseChannelCount)
                .arg(double(a[i]))
                .arg(double(b[i]));
    }
    for (size_t i = 0; i < 3; ++i) {
        if (!nearly(a[i], b[i], tolerance))
            return QString("hip channel %1").arg(i);
    }
    return QString();
}

// Bones only: every channel unlocked and at random.
static void poseBonesAtRandom(Random* random, const PoseFixture& f)
{
    clearAllLocks(f.figure);
    for (const FigureBone& each : bonesOf(f.figure)) {
        for (DzFloatProperty* channel : poseChannelsOf(each.bone).channel)
            channel->setRawValue(float(random->between(-40, 40)));
    }
}

// What the bones read after a swap. The jaw's entries are lost: it and its like keep their values.
static BoneValues expectedSwap(const std::set<int>& bones, const BoneValues& before)
{
    BoneValues after = before;
    for (int number : bones) {
        const int partner = boneIndex(partnerName(boneName(number)));
        for (int i = 0; partner >= 0 && i < kPoseChannelCount; ++i)
            valueAt(&after, partner, i)
                = mirrored(i, before[size_t(number * kPoseChannelCount + i)]);
    }
    return after;
}

static const double kSevenDigits = 5e-5; // half a unit of the last digit written

static void addFigureAndChildrenRows()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<bool>("children");
    for (const char* figure : {"Genesis8Female", "Genesis8_1Male"}) {
        QTest::newRow(qPrintable(QString("%1, with children").arg(figure)))
            << QString(figure) << true;
        QTest::newRow(qPrintable(QString("%1, this bone only").arg(figure)))
            << QString(figure) << false;
    }
}

void TestSwapSymmetrize::swapExchangesEveryBone_data()
{
    addFigureAndChildrenRows();
}

void TestSwapSymmetrize::swapExchangesEveryBone()
{
    QFETCH(QString, figure);
    QFETCH(bool, children);
    PoseFixture f(figure);
    Random random(60);
    poseBonesAtRandom(&random, f);
    BoneValues before = boneValues(f);
    for (int number = 0; number < kBoneCount; ++number) {
        const QString name = boneName(number);
        f.selectBones(QStringList() << name);
        swapOrSymmetrize(f.figure, children ? BonesBelowToo : SelectedBonesOnly, f.time(), false);
        const BoneValues after = boneValues(f);
        const std::set<int> bones = bonesTakingPart(f, name, children);
        const QString found = firstOtherBone(expectedSwap(bones, before), after, kSevenDigits);
        QVERIFY2(found.isEmpty(), qPrintable(name + " selected: " + found));
        before = after;
    }
}

void TestSwapSymmetrize::symmetrizeTakesThePartnersValues_data()
{
    addFigureAndChildrenRows();
}

// The selected bone and those below it take their partners' values; all others keep theirs, bit
// for bit, and so do all when the bone has no side or belongs to the face.
void TestSwapSymmetrize::symmetrizeTakesThePartnersValues()
{
    QFETCH(QString, figure);
    QFETCH(bool, children);
    PoseFixture f(figure);
    Random random(61);
    poseBonesAtRandom(&random, f);
    for (int number = 0; number < kBoneCount; ++number) {
        const QString name = boneName(number);
        for (DzFloatProperty* channel : poseChannelsOf(f.figure->findBone(name)).channel)
            channel->setRawValue(float(random.between(-40, 40)));
        BoneValues expected = boneValues(f);
        const bool sided = partnerName(name) != name;
        for (int each : bonesTakingPart(f, name, children)) {
            const QString eachName = boneName(each);
            const int partner = boneIndex(partnerName(eachName));
            const bool takes
                = sided && eachName.at(0) == name.at(0) && partner >= 0 && !isFaceBone(eachName);
            for (int i = 0; takes && i < kPoseChannelCount; ++i)
                valueAt(&expected, each, i) = mirrored(i, valueAt(&expected, partner, i));
        }
        f.selectBones(QStringList() << name);
        swapOrSymmetrize(f.figure, children ? BonesBelowToo : SelectedBonesOnly, f.time(), true);
        const QString found = firstOtherBone(expected, boneValues(f), kSevenDigits);
        QVERIFY2(found.isEmpty(), qPrintable(name + " selected: " + found));
    }
}

void TestSwapSymmetrize::thisBoneOnlyLeavesForearmHandAndFingers()
{
    for (int clickKind : {BonesBelowToo, SelectedBonesOnly}) {
        PoseFixture f;
        f.bone("lShldrBend")->getZRotControl()->setValue(20);
        f.bone("rShldrBend")->getZRotControl()->setValue(7);
        f.bone("lForearmBend")->getYRotControl()->setValue(-30);
        f.bone("lIndex1")->getZRotControl()->setValue(-11);
        f.selectBones(QStringList() << "lShldrBend");
        swapOrSymmetrize(f.figure, clickKind, f.time(), false);
        QCOMPARE(f.bone("lShldrBend")->getZRotControl()->getValue(), -7.f);
        QCOMPARE(f.bone("rShldrBend")->getZRotControl()->getValue(), -20.f);
        const bool all = clickKind == BonesBelowToo;
        QCOMPARE(f.bone("lForearmBend")->getYRotControl()->getValue(), all ? 0.f : -30.f);
        QCOMPARE(f.bone("rForearmBend")->getYRotControl()->getValue(), all ? 30.f : 0.f);
        QCOMPARE(f.bone("rIndex1")->getZRotControl()->getValue(), all ? 11.f : 0.f);
    }
}

void TestSwapSymmetrize::symmetrizeLeavesTheOtherThighAlone()
{
    PoseFixture f;
    f.bone("rThighBend")->getXRotControl()->setValue(-50);
    f.bone("rThighBend")->getZRotControl()->setValue(-12.3456);
    f.bone("lThighBend")->getXRotControl()->setValue(5);
    f.selectBones(QStringList() << "lThighBend");
    swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), true);
    QCOMPARE(f.bone("lThighBend")->getXRotControl()->getValue(), -50.f);
    QCOMPARE(f.bone("lThighBend")->getZRotControl()->getValue(), 12.3456f);
    QCOMPARE(f.bone("rThighBend")->getXRotControl()->getValue(), -50.f);
    QCOMPARE(f.bone("rThighBend")->getZRotControl()->getValue(), -12.3456f);
}

// Their controls do exchange; the bones are put back to the very bits.
void TestSwapSymmetrize::bothSidesSelectedKeepTheirBones()
{
    PoseFixture f;
    Random random(62);
    poseBonesAtRandom(&random, f);
    f.bone("hip")->setLocalPos(DzVec3(0, 0, 0));
    const RawPose before = rawPose(f.figure);
    f.selectBones(QStringList() << "lThighBend"
                                << "rThighBend");
    swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), true);
    const RawPose after = rawPose(f.figure);
    for (size_t i = 0; i < before.size(); ++i)
        QVERIFY2(
            sameBits(before[i].second, after[i].second), qPrintable(channelPath(before[i].first)));
}

void TestSwapSymmetrize::controlsOfBothSidesExchange()
{
    for (bool symmetrize : {false, true}) {
        PoseFixture f;
        f.control("pCTRLKneesUpLeft")->setValue(0.5);
        f.control("pCTRLLegsSpreadRight")->setValue(0.25);
        f.control("pCTRLlHandFist")->setValue(0.75); // of no bone that takes part
        f.selectBones(QStringList() << "lThighBend"
                                    << "rThighBend");
        swapOrSymmetrize(f.figure, SelectedBonesOnly, f.time(), symmetrize);
        QCOMPARE(f.control("pCTRLKneesUpLeft")->getValue(), 0.f);
        QCOMPARE(f.control("pCTRLKneesUpRight")->getValue(), 0.5f);
        QCOMPARE(f.control("pCTRLLegsSpreadLeft")->getValue(), 0.25f);
        QCOMPARE(f.control("pCTRLlHandFist")->getValue(), 0.75f);
    }
}

void TestSwapSymmetrize::bonesNotTakingPartKeepTheirPlace_data()
{
    addFigureRows();
}

// With controls at random, some of which drive bones that take part and bones that do not.
void TestSwapSymmetrize::bonesNotTakingPartKeepTheirPlace()
{
    QFETCH(QString, figure);
    PoseFixture f(figure);
    for (unsigned seed = 1; seed <= 12; ++seed) {
        Random random(seed);
        resetPose(f.figure, ResetWholeFigure);
        poseAtRandom(&random, f.figure);
        f.bone("hip")->setLocalPos(DzVec3(0, 0, 0));
        const QString name = boneName(random.below(kBoneCount));
        const bool children = seed % 2, symmetrize = seed / 2 % 2;
        const std::set<int> bones = bonesTakingPart(f, name, children);
        const RawPose before = finalPose(f.figure);
        f.selectBones(QStringList() << name);
        swapOrSymmetrize(
            f.figure, children ? BonesBelowToo : SelectedBonesOnly, f.time(), symmetrize);
        const RawPose after = finalPose(f.figure);
        for (size_t i = 0; i < before.size(); ++i) {
            const DzNode* bone = qobject_cast<DzBone*>(before[i].first->getOwner());
            const bool stays = bone && !bones.count(boneIndex(bone->getName()));
            // sums of up to ten shares in floats
            QVERIFY2(!stays || nearly(before[i].second, after[i].second, 1e-4),
                qPrintable(name + " selected: " + channelPath(before[i].first)));
        }
    }
}

// ---- the whole figure

void TestSwapSymmetrize::swapOfTheFigureTwiceGivesBackThePose_data()
{
    addFigureRows();
}

void TestSwapSymmetrize::swapOfTheFigureTwiceGivesBackThePose()
{
    QFETCH(QString, figure);
    PoseFixture f(figure);
    for (unsigned seed = 1; seed <= 5; ++seed) {
        Random random(seed);
        resetPose(f.figure, ResetWholeFigure);
        poseAtRandom(&random, f.figure);
        const RawPose raw = rawPose(f.figure), final = finalPose(f.figure);
        swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false);
        QVERIFY(!firstOtherValue(raw, rawPose(f.figure), 1).isEmpty());
        swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false);
        VERIFY_NONE(firstOtherValue(raw, rawPose(f.figure), kSevenDigits));
        VERIFY_NONE(firstOtherValue(final, finalPose(f.figure), 2 * kSevenDigits));
    }
}

void TestSwapSymmetrize::swapOfTheFigureMirrorsEveryEntry()
{
    PoseFixture f;
    Random random(63);
    poseBonesAtRandom(&random, f);
    f.control("pCTRLWaistTwist")->setValue(0.5);
    f.control("eCTRLEyesClosedR")->setValue(0.25);
    f.control("pCTRLlHandFist")->setValue(0.75);
    const BoneValues before = boneValues(f);
    std::set<int> every;
    for (int i = 0; i < kBoneCount; ++i)
        every.insert(i);
    swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false);
    VERIFY_NONE(firstOtherBone(expectedSwap(every, before), boneValues(f), kSevenDigits));
    QCOMPARE(f.control("pCTRLWaistTwist")->getValue(), -0.5f);
    QCOMPARE(f.control("eCTRLEyesClosedR")->getValue(), 0.f);
    QCOMPARE(f.control("eCTRLEyesClosedL")->getValue(), 0.25f);
    QCOMPARE(f.control("pCTRLrHandFist")->getValue(), 0.75f);
}

void TestSwapSymmetrize::swapOfTheFigureIsItsReflectionInTheWorld_data()
{
    addFigureRows();
}

// Bones and a third of the controls at random, the figure anywhere: what was seen before is seen in
// a mirror that stands through the hip, at right angles to the figure's own X axis.
void TestSwapSymmetrize::swapOfTheFigureIsItsReflectionInTheWorld()
{
    QFETCH(QString, figure);
    for (unsigned seed = 1; seed <= 5; ++seed) {
        PoseFixture f(figure);
        Random random(seed);
        poseAtRandom(&random, f.figure);
        levelOneSidedNames(f.figure);
        f.figure->setWSPos(DzVec3(30, -7, 100));
        f.figure->setWSRot(
            DzQuat(DzVec3(0.6f, 0.8f, 0), random.between(-3, 3))); // radians, an axis askew
        const Mirror mirror
            = {f.bone("hip")->getWSPos(), f.figure->getWSRot().multVec(DzVec3(1, 0, 0))};
        const std::vector<WorldPlace> before = worldPlaces(f.figure);
        QVERIFY(swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false));
        VERIFY_NONE(firstUnlikeReflection(f.figure, mirror, before));
    }
}

void TestSwapSymmetrize::theJawKeepsItsOwnValues()
{
    PoseFixture f;
    DzBone* jaw = f.bone("lowerJaw");
    jaw->getXRotControl()->setRawValue(10);
    jaw->getYRotControl()->setRawValue(3);
    swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false);
    QCOMPARE(jaw->getXRotControl()->getRawValue(), 10.f);
    QCOMPARE(jaw->getYRotControl()->getRawValue(), 3.f);
}

QUILLON_TEST(TestSwapSymmetrize)
#include "test_swap_symmetrize.moc"
