// Parts of a figure held fast while another pose is applied.
#include "pose_fixture.h"
#include "room_tests.h"

#include "figure/body_parts.h"
#include "figure/reset_pose.h"
#include "ground/plugin_settings.h"
#include "posefile/part_locks.h"
#include "posefile/pose_reader.h"
#include "posefile/pose_writer.h"
#include "posefile/swap_symmetrize.h"

#include "dzmorph.h"
#include "dzobject.h"

#include <set>

using namespace quillon;

class TestPartLocks : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void noLockLocksNothing();
    void anyLockIsFound();
    void withoutAFigureNothingIsLocked();
    void eachLockTakesItsPart_data();
    void eachLockTakesItsPart();
    void theHipsTranslationIsNeverLocked();
    void partControlsGoByPredicateOnTheirName();
    void allLocksTakeEveryControlOfTheFigureNode_data();
    void allLocksTakeEveryControlOfTheFigureNode();
    void pureShapesAreNeverLocked_data();
    void pureShapesAreNeverLocked();
    void pureShapesFollowTheCandidate();
    void allLockFlagsComeBack_data();
    void allLockFlagsComeBack();
    void settingsChangedMeanwhileReleaseAll();
    void lockedPartsKeepResetAndCandidateAway_data();
    void lockedPartsKeepResetAndCandidateAway();
    void aLockedFootIsPutBackAfterControlsOfTheLegs();
    void aLimitedChannelIsPutBackExactly();
    void theUsersOwnLockTakesNoValue();
    void onlyWhatDiffersIsWritten();
    void lockedPartsKeepTheirPlaceInAMirroredPose();
    void undoBringsBackEveryFlagAndValue();
};

static void lockParts(std::initializer_list<BodyPart> parts)
{
    for (BodyPart part : parts)
        pluginSettings().partLocks[int(part)] = true;
}

void TestPartLocks::init()
{
    pluginSettings() = PluginSettings();
}

void TestPartLocks::cleanup()
{
    pluginSettings() = PluginSettings();
}

void TestPartLocks::withoutAFigureNothingIsLocked()
{
    lockParts({BodyPart::Face});
    SceneFixture scene;
    DzNode prop;
    setPartLocks(nullptr, true, 0);
    setPartLocks(&prop, true, 0);
    for (int i = 0; i < prop.getNumProperties(); ++i)
        QVERIFY(!prop.getProperty(i)->isLocked());
    setPartLocks(nullptr, false, 0);
}

static void addPartRows()
{
    static const char* const kNames[]
        = {"upper body", "lower body", "feet", "expression", "left hand", "right hand"};
    QTest::addColumn<QString>("figure");
    QTest::addColumn<int>("part");
    for (const char* figure : {"Genesis8Female", "Genesis8_1Male"}) {
        for (int part = 0; part < kBodyPartCount; ++part)
            QTest::newRow(qPrintable(QString("%1, %2").arg(figure, kNames[part])))
                << QString(figure) << part;
    }
}

static std::set<const DzFloatProperty*> lockedNow(const DzNode* figure)
{
    std::set<const DzFloatProperty*> locked;
    for (const ChannelState& each : stateOf(figure)) {
        if (each.locked)
            locked.insert(each.property);
    }
    return locked;
}

static bool isPureShape(const DzFloatProperty* channel)
{
    return qobject_cast<DzMorph*>(channel->getOwner()) != nullptr;
}

void TestPartLocks::noLockLocksNothing()
{
    PoseFixture f;
    QVERIFY(!anyPartLockOn());
    const FigureState before = stateOf(f.figure);
    setPartLocks(f.figure, true);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    setPartLocks(f.figure, false);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestPartLocks::anyLockIsFound()
{
    for (int part = 0; part < kPartLockCount; ++part) {
        pluginSettings() = PluginSettings();
        pluginSettings().partLocks[part] = true;
        QVERIFY(anyPartLockOn());
    }
}

void TestPartLocks::eachLockTakesItsPart_data()
{
    addPartRows();
}

// All rotations, all translations but the hip's, and the figure's own controls, of the part and of
// no other.
void TestPartLocks::eachLockTakesItsPart()
{
    QFETCH(QString, figure);
    QFETCH(int, part);
    PoseFixture f(figure);
    clearAllLocks(f.figure);
    pluginSettings().partLocks[part] = true;
    setPartLocks(f.figure, true);
    int locked = 0;
    for (const FigureBone& each : bonesOf(f.figure)) {
        const QString name = each.bone->getName();
        const PoseChannels channels = poseChannelsOf(each.bone);
        for (int i = 0; i < kPoseChannelCount; ++i) {
            const bool expected = boneInPart(name, BodyPart(part)) && (i < 3 || name != "hip");
            QVERIFY2(channels.channel[i]->isLocked() == expected, qPrintable(name));
            locked += expected;
        }
    }
    for (const FigureControl& each : controlsOf(f.figure)) {
        const bool expected = !isPureShape(each.property)
            && controlInPart(controlName(each.number), BodyPart(part));
        QVERIFY2(each.property->isLocked() == expected, qPrintable(controlName(each.number)));
        locked += expected;
    }
    QCOMPARE(lockedNow(f.figure).size(), size_t(locked)); // nothing else, the figure node included
    setPartLocks(f.figure, false);
    QVERIFY(lockedNow(f.figure).empty());
}

void TestPartLocks::theHipsTranslationIsNeverLocked()
{
    PoseFixture f;
    for (bool& on : pluginSettings().partLocks)
        on = true;
    setPartLocks(f.figure, true);
    const PoseChannels hip = poseChannelsOf(f.bone("hip"));
    for (int i = 0; i < kPoseChannelCount; ++i)
        QCOMPARE(hip.channel[i]->isLocked(), i < 3);
    setPartLocks(f.figure, false);
}

// A property that no table knows, found because its name contains that of a control.
void TestPartLocks::partControlsGoByPredicateOnTheirName()
{
    PoseFixture f;
    DzFloatProperty* extra = new DzFloatProperty(QLatin1String("my pCTRLWaistBend copy"));
    DzFloatProperty* stranger = new DzFloatProperty(QLatin1String("my WaistBend"));
    f.figure->addProperty(extra);
    f.figure->addProperty(stranger);
    lockParts({BodyPart::UpperBody});
    setPartLocks(f.figure, true);
    QVERIFY(extra->isLocked());
    QVERIFY(!stranger->isLocked());
    setPartLocks(f.figure, false);
    QVERIFY(!extra->isLocked());
}

void TestPartLocks::allLocksTakeEveryControlOfTheFigureNode_data()
{
    addFigureRows();
}

void TestPartLocks::allLocksTakeEveryControlOfTheFigureNode()
{
    QFETCH(QString, figure);
    PoseFixture f(figure);
    clearAllLocks(f.figure);
    for (bool& on : pluginSettings().partLocks)
        on = true;
    setPartLocks(f.figure, true);
    const std::vector<FigureControl> own = ownControlsOf(f.figure);
    QVERIFY(own.size() > 100);
    for (const FigureControl& each : own)
        QVERIFY2(each.property->isLocked(), qPrintable(controlName(each.number)));
    setPartLocks(f.figure, false);
}

void TestPartLocks::pureShapesAreNeverLocked_data()
{
    addFigureRows();
}

void TestPartLocks::pureShapesAreNeverLocked()
{
    QFETCH(QString, figure);
    PoseFixture f(figure);
    for (bool& on : pluginSettings().partLocks)
        on = true;
    setPartLocks(f.figure, true);
    const DzObject* object = f.figure->getObject();
    int shapes = 0;
    for (int i = 0; i < object->getNumModifiers(); ++i) {
        const DzMorph* morph = qobject_cast<DzMorph*>(object->getModifier(i));
        if (!morph)
            continue;
        QVERIFY2(!morph->getValueChannel()->isLocked(), qPrintable(morph->getName()));
        ++shapes;
    }
    QVERIFY(shapes > 5);
    setPartLocks(f.figure, false);
}

// A kept expression is that of the bones and the figure's own controls.
void TestPartLocks::pureShapesFollowTheCandidate()
{
    PoseFixture f(QLatin1String("Genesis8_1Female"));
    DzFloatProperty* shape = f.control("facs_bs_MouthSmileLeft_div2");
    DzFloatProperty* control = f.control("facs_ctrl_EyeLookSide-Side");
    QVERIFY(isPureShape(shape) && !isPureShape(control));
    shape->setValue(0.5);
    control->setValue(0.5);
    lockParts({BodyPart::Face});
    setPartLocks(f.figure, true);
    QVERIFY(applyPoseFile(
        f.fileWith("pose.duf",
            presetText(QList<QByteArray>() << valueEntry("#facs_bs_MouthSmileLeft_div2:?value",
                           "0.25") << valueEntry("#facs_ctrl_EyeLookSide-Side:?value", "0.25"))),
        true));
    setPartLocks(f.figure, false);
    QCOMPARE(shape->getValue(), 0.25f);
    QCOMPARE(control->getValue(), 0.5f);
}

void TestPartLocks::allLockFlagsComeBack_data()
{
    addFigureRows();
}

void TestPartLocks::allLockFlagsComeBack()
{
    QFETCH(QString, figure);
    PoseFixture f(figure);
    Random random(31);
    lockAtRandom(&random, f.figure, 40); // the user's, beside the rig's
    const auto before = lockedNow(f.figure);
    QVERIFY(before.size() > 400);
    for (bool& on : pluginSettings().partLocks)
        on = true;
    setPartLocks(f.figure, true);
    QVERIFY(lockedNow(f.figure).size() > before.size());
    QVERIFY(applyPoseFile(
        f.fileWith("pose.duf", presetOf(valueEntry("/lShin:?rotation/x", "1"))), true));
    setPartLocks(f.figure, false);
    QVERIFY(lockedNow(f.figure) == before);
}

void TestPartLocks::settingsChangedMeanwhileReleaseAll()
{
    PoseFixture f;
    const auto before = lockedNow(f.figure);
    lockParts({BodyPart::Feet, BodyPart::Face});
    setPartLocks(f.figure, true);
    pluginSettings() = PluginSettings();
    setPartLocks(f.figure, false);
    QVERIFY(lockedNow(f.figure) == before);
    setPartLocks(f.figure, false); // and once more does no harm
    QVERIFY(lockedNow(f.figure) == before);
}

// ---- applying a candidate

void TestPartLocks::lockedPartsKeepResetAndCandidateAway_data()
{
    addPartRows();
}

static bool isOfPart(const DzFloatProperty* channel, BodyPart part)
{
    const DzNode* bone = qobject_cast<const DzBone*>(channel->getOwner());
    if (isPureShape(channel))
        return false;
    return bone ? boneInPart(bone->getName(), part) : controlInPart(controlNameOf(channel), part);
}

static QString writtenPose(const PoseFixture& f, const char* name)
{
    const QString path = f.file(name);
    return writePoseFile(path, false, false) ? path : QString();
}

// The reference applied, then locked, then another pose after a reset. Final values of the part
// stay, limits lifted or not; everything else reads as the candidate.
void TestPartLocks::lockedPartsKeepResetAndCandidateAway()
{
    QFETCH(QString, figure);
    QFETCH(int, part);
    PoseFixture f(figure);
    Random random(40 + unsigned(part));
    poseAtRandom(&random, f.figure);
    const QString candidate = writtenPose(f, "candidate.duf");
    const RawPose ofCandidate = rawPose(f.figure);
    resetPose(f.figure, ResetWholeFigure);
    poseAtRandom(&random, f.figure);
    const RawPose reference = finalPose(f.figure);
    pluginSettings().partLocks[part] = true;
    setPartLocks(f.figure, true);
    QVERIFY(applyPoseFile(candidate, true));
    setPartLocks(f.figure, false);
    const RawPose final = finalPose(f.figure), raw = rawPose(f.figure);
    int kept = 0;
    for (size_t i = 0; i < final.size(); ++i) {
        DzFloatProperty* channel = final[i].first;
        if (isHipTranslation(channel))
            continue;
        if (isOfPart(channel, BodyPart(part))) {
            QVERIFY2(nearly(final[i].second, reference[i].second, 1e-4),
                qPrintable(channelPath(channel)));
            ++kept;
        } else if (!channel->isLocked()) {
            QVERIFY2(nearly(raw[i].second, ofCandidate[i].second, 5e-5),
                qPrintable(channelPath(channel)));
        }
    }
    QVERIFY(kept > 20);
}

void TestPartLocks::aLockedFootIsPutBackAfterControlsOfTheLegs()
{
    PoseFixture f;
    DzBone* foot = f.bone("lFoot");
    foot->getXRotControl()->setValue(12);
    const DzVec3 before(foot->getXRotControl()->getValue(), foot->getYRotControl()->getValue(),
        foot->getZRotControl()->getValue());
    const QString candidate
        = f.fileWith("pose.duf", presetOf(valueEntry("#pCTRLKneesUp:?value", "1")));

    setPartLocks(f.figure, true); // without a lock the control moves the foot
    QVERIFY(applyPoseFile(candidate, false));
    setPartLocks(f.figure, false);
    QVERIFY(!nearly(foot->getXRotControl()->getValue(), before.m_x, 0.5));
    f.control("pCTRLKneesUp")->setValue(0);

    lockParts({BodyPart::Feet});
    setPartLocks(f.figure, true);
    QVERIFY(applyPoseFile(candidate, false));
    setPartLocks(f.figure, false);
    QCOMPARE(f.control("pCTRLKneesUp")->getValue(), 1.f);
    QVERIFY(nearly(foot->getXRotControl()->getValue(), before.m_x, 1e-5));
    QVERIFY(nearly(foot->getYRotControl()->getValue(), before.m_y, 1e-5));
    QVERIFY(nearly(foot->getZRotControl()->getValue(), before.m_z, 1e-5));
}

// The control drives the foot far beyond its limit; the difference is not the one seen through it.
void TestPartLocks::aLimitedChannelIsPutBackExactly()
{
    PoseFixture f;
    DzFloatProperty* channel = f.bone("lFoot")->getXRotControl();
    DzFloatProperty* knees = f.control("pCTRLKneesUp");
    channel->setMinMax(-1, 1);
    QVERIFY(channel->isClamped());
    channel->setValue(0.25);
    lockParts({BodyPart::Feet});
    setPartLocks(f.figure, true);
    knees->setValue(1);
    QVERIFY(std::fabs(channel->getValue()) == 1);
    setPartLocks(f.figure, false);
    QVERIFY(nearly(channel->getValue(), 0.25, 1e-5));
    QVERIFY(channel->isClamped());
}

void TestPartLocks::theUsersOwnLockTakesNoValue()
{
    PoseFixture f;
    DzFloatProperty* channel = f.bone("lFoot")->getXRotControl();
    channel->setValue(5);
    channel->lock(true);
    lockParts({BodyPart::Feet});
    setPartLocks(f.figure, true);
    f.control("pCTRLKneesUp")->setValue(1);
    setPartLocks(f.figure, false);
    QVERIFY(channel->isLocked());
    QCOMPARE(channel->getRawValue(), 5.f);
}

void TestPartLocks::onlyWhatDiffersIsWritten()
{
    PoseFixture f;
    const FigureState before = stateOf(f.figure);
    for (bool& on : pluginSettings().partLocks)
        on = true;
    setPartLocks(f.figure, true);
    setPartLocks(f.figure, false);
    VERIFY_SAME_STATE(before, stateOf(f.figure)); // no key anywhere
}

void TestPartLocks::lockedPartsKeepTheirPlaceInAMirroredPose()
{
    PoseFixture f;
    Random random(50);
    poseAtRandom(&random, f.figure);
    const RawPose before = finalPose(f.figure);
    lockParts({BodyPart::LeftHand, BodyPart::Feet});
    QVERIFY(mirrorWholePose(f.figure, f.time()));
    const RawPose after = finalPose(f.figure);
    int moved = 0;
    for (size_t i = 0; i < before.size(); ++i) {
        const DzFloatProperty* channel = before[i].first;
        const bool kept
            = isOfPart(channel, BodyPart::LeftHand) || isOfPart(channel, BodyPart::Feet);
        const bool same = nearly(before[i].second, after[i].second, 1e-4);
        QVERIFY2(!kept || same, qPrintable(channelPath(channel)));
        moved += !same;
    }
    QVERIFY(moved > 200);
    QVERIFY(f.tempFiles().isEmpty());
}

void TestPartLocks::undoBringsBackEveryFlagAndValue()
{
    PoseFixture f;
    Random random(51);
    poseAtRandom(&random, f.figure);
    for (bool& on : pluginSettings().partLocks)
        on = true;
    f.rig.undoStack.clearAll();
    const FigureState before = stateOf(f.figure);
    {
        DzUndoStackHold hold;
        setPartLocks(f.figure, true);
        f.control("pJCMFlexQuad_L")->setValue(0.5);
        setPartLocks(f.figure, false);
        hold.accept("quillon_stack");
    }
    QCOMPARE(f.rig.undoStack.getNumUndoItems(), 1);
    QVERIFY(f.rig.undoStack.undo());
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

QUILLON_TEST(TestPartLocks)
#include "test_part_locks.moc"
