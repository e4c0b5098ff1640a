// The channels of one bone, switched and restored, and the translations of the main bones.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/pose_limits.h"
#include "ground/status_message.h"

#include <QtTest>

using namespace quillon;

class TestBoneTranslations : public QObject {
    Q_OBJECT
private slots:
    // channels of one bone
    void channelsAreLockedAndClampedWithoutRemembering();
    void freedChannelsGetTheirFlagsBack();
    void restoringSetsOnlyWhatWasKept();
    void aMaskTouchesItsGroupOnly();

    // translations
    void leftClickPullsTranslationsIntoRange();
    void rightClickZeroesTranslations();
    void onlyTheMainBonesAreTranslated();
    void translationsInRangeAreNotWritten();
    void lockedTranslationsChangeAndAreLockedAgain();
    void limitedTranslationsAreLimitedAgain();
    void otherFiguresAndPropsBelowStay();
    void translationsAreOneUndoStepWithAText();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

// ---- channels of one bone

static QString flagsOf(const DzNode* bone)
{
    QString flags;
    for (DzFloatProperty* channel : poseChannelsOf(bone).channel)
        flags += s(channel->isLocked() ? "L" : "-") + s(channel->isClamped() ? "C" : "-");
    return flags; // two letters a channel: rotation X, Y, Z, translation X, Y, Z
}

static void setFlagsOf(const DzNode* bone, const char* flags)
{
    for (DzFloatProperty* channel : poseChannelsOf(bone).channel) {
        channel->lock(*flags++ == 'L');
        channel->setIsClamped(*flags++ == 'C');
    }
}

void TestBoneTranslations::channelsAreLockedAndClampedWithoutRemembering()
{
    DzBone bone(s("b"));
    const int both = RotationChannels | TranslationChannels;
    setFlagsOf(&bone, "-C---------C");
    setChannelLimits(&bone, true, both, false);
    QCOMPARE(flagsOf(&bone), s("LCL-L-LCLCLC"));
    setChannelLimits(&bone, false, both, false);
    QCOMPARE(flagsOf(&bone), s("-C----------"));
}

void TestBoneTranslations::freedChannelsGetTheirFlagsBack()
{
    Random random(25);
    for (int i = 0; i < 100; ++i) {
        DzBone bone(s("b"));
        for (DzFloatProperty* channel : poseChannelsOf(&bone).channel) {
            channel->lock(random.below(2));
            channel->setIsClamped(random.below(2));
        }
        const QString before = flagsOf(&bone);
        const int mask = 1 + random.below(3);
        setChannelLimits(&bone, false, mask, true);
        for (int channel = 0; channel < 6; ++channel) {
            if (mask & (channel < 3 ? RotationChannels : TranslationChannels))
                QCOMPARE(flagsOf(&bone).at(2 * channel), QChar(QLatin1Char('-')));
        }
        setChannelLimits(&bone, true, mask, true);
        QCOMPARE(flagsOf(&bone), before);
    }
}

void TestBoneTranslations::restoringSetsOnlyWhatWasKept()
{
    DzBone bone(s("b"));
    setFlagsOf(&bone, "------L-----");
    setChannelLimits(&bone, false, TranslationChannels, true);
    setFlagsOf(&bone, "L-----------"); // of another group, and set meanwhile
    bone.getYPosControl()->lock(true);
    setChannelLimits(&bone, true, TranslationChannels, true);
    QCOMPARE(flagsOf(&bone), s("L-----L-L---")); // X Translate is back, nothing was taken off
}

void TestBoneTranslations::aMaskTouchesItsGroupOnly()
{
    DzBone bone(s("b"));
    setChannelLimits(&bone, true, RotationChannels, false);
    QCOMPARE(flagsOf(&bone), s("L-L-L-------"));
    setChannelLimits(&bone, true, TranslationChannels, false);
    setChannelLimits(&bone, false, RotationChannels, false);
    QCOMPARE(flagsOf(&bone), s("------LCLCLC"));
    setChannelLimits(&bone, false, 0, false);
    QCOMPARE(flagsOf(&bone), s("------LCLCLC"));
}

// ---- translations

void TestBoneTranslations::leftClickPullsTranslationsIntoRange()
{
    FigureFixture f;
    setFreeTranslation(f.bone("head"), DzVec3(0.1f, 0.4f, -0.3f));
    limitBoneTranslations(f.figure, kTranslationRangeCm);
    QVERIFY(f.bone("head")->getLocalPos() == DzVec3(0.1f, 0.15f, -0.15f));
}

void TestBoneTranslations::rightClickZeroesTranslations()
{
    FigureFixture f;
    setFreeTranslation(f.bone("head"), DzVec3(0.1f, 0.4f, -1e-7f));
    limitBoneTranslations(f.figure, 0);
    QVERIFY(f.bone("head")->getLocalPos() == DzVec3(0, 0, 0));
    setFreeTranslation(f.bone("head"), DzVec3(0.1f, 0.4f, -1e-7f));
    limitTranslation(f.bone("head"), 1.1920929e-07f); // counts as 0
    QVERIFY(f.bone("head")->getLocalPos() == DzVec3(0, 0, 0));
}

void TestBoneTranslations::onlyTheMainBonesAreTranslated()
{
    FigureFixture f;
    for (const FigureBone& each : bonesOf(f.figure))
        setFreeTranslation(each.bone, DzVec3(1, 2, 3));
    setFreeTranslation(f.figure, DzVec3(1, 2, 3));
    limitBoneTranslations(f.figure, 0);
    int moved = 0;
    for (const FigureBone& each : bonesOf(f.figure)) {
        const bool zeroed = each.bone->getLocalPos() == DzVec3(0, 0, 0);
        QVERIFY(zeroed || each.bone->getLocalPos() == DzVec3(1, 2, 3));
        QCOMPARE(zeroed, isTranslatableBone(each.bone->getName()));
        moved += zeroed;
    }
    QCOMPARE(moved, 26);
    QVERIFY(!isTranslatableBone(s("hip")));
    QVERIFY(f.bone("hip")->getLocalPos() == DzVec3(1, 2, 3));
    QVERIFY(f.figure->getLocalPos() == DzVec3(1, 2, 3));
}

void TestBoneTranslations::translationsInRangeAreNotWritten()
{
    FigureFixture f;
    f.scene.setTime(160);
    const FigureState before = stateOf(f.figure);
    limitBoneTranslations(f.figure, kTranslationRangeCm);
    limitBoneTranslations(f.figure, 0);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestBoneTranslations::lockedTranslationsChangeAndAreLockedAgain()
{
    FigureFixture f;
    DzBone* shin = f.bone("lShin");
    setFreeTranslation(shin, DzVec3(1, 2, 3));
    shin->getXPosControl()->lock(true);
    limitBoneTranslations(f.figure, 0);
    QVERIFY(shin->getLocalPos() == DzVec3(0, 0, 0));
    QVERIFY(shin->getXPosControl()->isLocked());
    QVERIFY(!shin->getYPosControl()->isLocked());
}

void TestBoneTranslations::limitedTranslationsAreLimitedAgain()
{
    FigureFixture f;
    DzBone* shin = f.bone("lShin");
    setFreeTranslation(shin, DzVec3(1, 2, 3));
    shin->getYPosControl()->setMinMax(1, 3); // would keep the value from 0
    shin->getYPosControl()->setIsClamped(true);
    limitBoneTranslations(f.figure, 0);
    QCOMPARE(shin->getYPosControl()->getRawValue(), 0.f);
    QVERIFY(shin->getYPosControl()->isClamped());
    QVERIFY(!shin->getXPosControl()->isClamped());
}

void TestBoneTranslations::otherFiguresAndPropsBelowStay()
{
    FigureFixture f;
    QString why;
    DzFigure* doll = loadFigure(s("Genesis8Male"), &why);
    QVERIFY2(doll, qPrintable(why));
    auto* prop = new DzNode(s("head")); // named like a bone
    f.bone("lHand")->addNodeChild(doll);
    f.bone("lHand")->addNodeChild(prop);
    setFreeTranslation(doll->findBone(s("head")), DzVec3(1, 2, 3));
    prop->setLocalPos(DzVec3(1, 2, 3));
    limitBoneTranslations(f.figure, 0);
    QVERIFY(doll->findBone(s("head"))->getLocalPos() == DzVec3(1, 2, 3));
    QVERIFY(prop->getLocalPos() == DzVec3(1, 2, 3));
}

void TestBoneTranslations::translationsAreOneUndoStepWithAText()
{
    FigureFixture f;
    for (const float rangeCm : {kTranslationRangeCm, 0.f}) {
        clearStatusMessage();
        f.undoStack.clearAll();
        limitBoneTranslations(f.figure, rangeCm);
        QCOMPARE(f.undoStack.getUndoCaptions(), QStringList(s("quillon_stack")));
        QCOMPARE(statusMessage(), s("\r\n\r\nBone translations reset succeeded\r\n\r\n"));
    }
}

QUILLON_TEST(TestBoneTranslations)
#include "test_bone_translations.moc"
