// Names and numbers to bones, controls and links, and the walks over a figure.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/figure_lookup.h"

#include "dzerclink.h"
#include "dzmodifier.h"

#include <QtTest>

using namespace quillon;

class TestFigureLookup : public QObject {
    Q_OBJECT
private slots:
    void worksBeforeTheTablesAreBuilt();
    void boneNumbersAreExact();
    void bodyControlsFollowTheGeneration();
    void numbersAndNamesAreEachOthersInverse();
    void linksMatchWholeNames();
    void linksOfTheLastBoneAreEmptyIn81();
    void linksOutsideTheTableAreFalse();
    void bonesOfAControlAreThoseItDrives();
    void findsBonesFromAnyNodeOfTheFigure();
    void findsNoBoneWithoutSkeleton();
    void findsAControlAsPropertyOfTheFigure();
    void findsAPureShapeThroughItsMorph();
    void aPropertyHidesTheMorphOfItsName();
    void aModifierThatIsNoMorphIsNoControl();
    void theOwnControlsOfAFigureAreNoMorphs();
    void aMorphsChannelIsKnownByTheMorphsName();
    void bonesAreWalkedInTableOrder();
    void scopesPartTheWalks_data();
    void scopesPartTheWalks();
    void walksSkipWhatIsMissing();
    void walksOfNothingAreEmpty();
    void driversComeBeforeWhatTheyDrive();
    void onlyAcceptedDriversAreFollowed();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

void TestFigureLookup::worksBeforeTheTablesAreBuilt()
{
    QCOMPARE(boneIndex(s("hip")), 0);
    buildFigureTables();
    QCOMPARE(boneIndex(s("hip")), 0);
}

void TestFigureLookup::boneNumbersAreExact()
{
    QCOMPARE(boneIndex(s("hip")), 0);
    QCOMPARE(boneIndex(s("rPectoral")), 169);
    QCOMPARE(boneIndex(s("Hip")), -1);
    QCOMPARE(boneIndex(s("hips")), -1);
    QCOMPARE(boneIndex(QString()), -1);
    QCOMPARE(boneIndex(s("pCTRLHipBend")), -1);
}

void TestFigureLookup::bodyControlsFollowTheGeneration()
{
    const DzFigure older(s("Genesis8Female")), newer(s("Genesis8_1Female"));
    QVERIFY(isSupportedFigure(&older));
    QCOMPARE(controlCount(), 250);
    QVERIFY(isBodyControl(s("eCTRLvAA")));
    QVERIFY(!isBodyControl(s("facs_jnt_JawOpen")));
    QVERIFY(!isBodyControl(s("hip")));
    QVERIFY(isSupportedFigure(&newer));
    QCOMPARE(controlCount(), 248);
    QVERIFY(!isBodyControl(s("eCTRLvAA")));
    QVERIFY(isBodyControl(s("facs_jnt_JawOpen")));
    QVERIFY(isBodyControl(s("pCTRLHipBend")));
}

void TestFigureLookup::numbersAndNamesAreEachOthersInverse()
{
    for (int i = 0; i < kBoneCount; ++i)
        QCOMPARE(boneIndex(boneName(i)), i);
    for (const char* name : {"Genesis8Male", "Genesis8_1Male"}) {
        const DzFigure figure {s(name)};
        QVERIFY(isSupportedFigure(&figure));
        for (int i = 0; i < controlCount(); ++i)
            QCOMPARE(controlIndex(controlName(i)), i);
    }
}

void TestFigureLookup::linksMatchWholeNames()
{
    const DzFigure figure(s("Genesis8Female"));
    QVERIFY(isSupportedFigure(&figure));
    QVERIFY(controlDrivesBone(s("pCTRLHipBend"), 0));
    QVERIFY(!controlDrivesBone(s("pCTRLHipBen"), 0));
    QVERIFY(!controlDrivesBone(s("CTRLHipBend"), 0));
    QVERIFY(!controlDrivesBone(s("pctrlhipbend"), 0));
    QVERIFY(!controlDrivesBone(s("pCTRLWaistBend"), 0));
    QVERIFY(!controlDrivesBone(QString(), 0));
}

void TestFigureLookup::linksOfTheLastBoneAreEmptyIn81()
{
    const DzFigure older(s("Genesis8Female")), newer(s("Genesis8_1Female"));
    QVERIFY(isSupportedFigure(&older));
    QVERIFY(controlDrivesBone(s("pCTRLrBreastUp-Down"), 169));
    QVERIFY(isSupportedFigure(&newer));
    for (int i = 0; i < controlCount(); ++i)
        QVERIFY(!controlDrivesBone(controlName(i), 169));
    QVERIFY(!controlDrivesBone(QString(), 169));
}

void TestFigureLookup::linksOutsideTheTableAreFalse()
{
    QVERIFY(!controlDrivesBone(s("pCTRLHipBend"), -1));
    QVERIFY(!controlDrivesBone(s("pCTRLHipBend"), 170));
}

void TestFigureLookup::bonesOfAControlAreThoseItDrives()
{
    for (const char* name : {"Genesis8Female", "Genesis8_1Female"}) {
        const DzFigure figure {s(name)};
        QVERIFY(isSupportedFigure(&figure));
        for (int control = 0; control < controlCount(); ++control) {
            for (int bone = 0; bone < kBoneCount; ++bone)
                QCOMPARE(bonesDrivenBy(control).test(bone),
                    controlDrivesBone(controlName(control), bone));
        }
    }
}

void TestFigureLookup::findsBonesFromAnyNodeOfTheFigure()
{
    const FigureFixture f;
    QVERIFY(f.bone("lHand"));
    QCOMPARE(findBone(s("lHand"), f.figure), f.bone("lHand"));
    QCOMPARE(findBone(s("lHand"), f.bone("rEye")), f.bone("lHand"));
    QCOMPARE(findBone(43, f.figure), f.bone("lHand"));
    QVERIFY(!findBone(s("lhand"), f.figure));
}

void TestFigureLookup::findsNoBoneWithoutSkeleton()
{
    const DzNode prop(s("hip"));
    QVERIFY(!findBone(s("hip"), &prop));
    QVERIFY(!findBone(s("hip"), nullptr));
    QVERIFY(!findControl(s("pCTRLHipBend"), &prop));
    QVERIFY(!findControl(s("pCTRLHipBend"), nullptr));
}

void TestFigureLookup::findsAControlAsPropertyOfTheFigure()
{
    const FigureFixture f;
    DzFloatProperty* control = findControl(s("pCTRLHipBend"), f.bone("head"));
    QVERIFY(control);
    QCOMPARE(control->getName(), s("pCTRLHipBend"));
    QCOMPARE(control->getOwner(), static_cast<DzElement*>(f.figure));
}

void TestFigureLookup::findsAPureShapeThroughItsMorph()
{
    const FigureFixture f;
    DzFloatProperty* shape = findControl(s("pPBMlBreastsFlatten"), f.figure);
    QVERIFY(shape);
    const auto* morph = qobject_cast<DzMorph*>(shape->getOwner());
    QVERIFY(morph);
    QCOMPARE(morph->getName(), s("pPBMlBreastsFlatten"));
    QCOMPARE(morph->getValueChannel(), shape);
}

void TestFigureLookup::aPropertyHidesTheMorphOfItsName()
{
    const FigureFixture f;
    auto* property = new DzFloatProperty(s("pPBMlBreastsFlatten"));
    QVERIFY(f.figure->addProperty(property));
    QCOMPARE(findControl(s("pPBMlBreastsFlatten"), f.figure), property);
}

void TestFigureLookup::aModifierThatIsNoMorphIsNoControl()
{
    const FigureFixture f;
    f.figure->getObject()->addModifier(new DzModifier(s("smoothing")));
    QVERIFY(!findControl(s("smoothing"), f.figure));
}

void TestFigureLookup::theOwnControlsOfAFigureAreNoMorphs()
{
    const FigureFixture f;
    QVERIFY(findOwnControl(s("pCTRLHipBend"), f.figure));
    QVERIFY(!findOwnControl(s("pPBMlBreastsFlatten"), f.figure));
    QVERIFY(!findOwnControl(s("pCTRLHipBend"), nullptr));
}

void TestFigureLookup::aMorphsChannelIsKnownByTheMorphsName()
{
    const FigureFixture f;
    QCOMPARE(controlNameOf(f.control("pPBMlBreastsFlatten")), s("pPBMlBreastsFlatten"));
    QCOMPARE(controlNameOf(f.control("pCTRLHipBend")), s("pCTRLHipBend"));
}

void TestFigureLookup::bonesAreWalkedInTableOrder()
{
    const FigureFixture f;
    const std::vector<FigureBone> bones = bonesOf(f.bone("lToe"));
    QCOMPARE(int(bones.size()), kBoneCount);
    for (int i = 0; i < kBoneCount; ++i) {
        QCOMPARE(bones[i].number, i);
        QCOMPARE(bones[i].bone->getName(), boneName(i));
    }
}

void TestFigureLookup::scopesPartTheWalks_data()
{
    addFigureRows();
}

void TestFigureLookup::scopesPartTheWalks()
{
    QFETCH(QString, figure);
    const FigureFixture f(figure);
    QCOMPARE(int(bonesOf(f.figure, FigureScope::Face).size()), 77);
    QCOMPARE(int(bonesOf(f.figure, FigureScope::Body).size()), 93);
    const int face = int(controlsOf(f.figure, FigureScope::Face).size());
    const int body = int(controlsOf(f.figure, FigureScope::Body).size());
    QCOMPARE(face + body, controlCount());
    QCOMPARE(body, isGenesis81() ? 97 : 105); // in Genesis 8 with eight body correctives
    for (const FigureControl& each : ownControlsOf(f.figure)) {
        QCOMPARE(each.property->getOwner(), static_cast<DzElement*>(f.figure));
        QCOMPARE(each.property->getName(), controlName(each.number));
    }
    QVERIFY(ownControlsOf(f.figure).size() < controlsOf(f.figure).size());
}

void TestFigureLookup::walksSkipWhatIsMissing()
{
    const FigureFixture f;
    QVERIFY(f.figure->removeBone(f.bone("lHand")));
    QVERIFY(f.figure->removeProperty(f.control("pCTRLHipBend")));
    QCOMPARE(int(bonesOf(f.figure).size()), kBoneCount - 1);
    for (const FigureBone& each : bonesOf(f.figure))
        QCOMPARE(each.bone->getName(), boneName(each.number));
    QCOMPARE(int(controlsOf(f.figure).size()), controlCount() - 1);
}

void TestFigureLookup::walksOfNothingAreEmpty()
{
    const DzNode prop(s("cube"));
    QVERIFY(bonesOf(&prop).empty());
    QVERIFY(bonesOf(nullptr).empty());
    QVERIFY(controlsOf(&prop).empty());
    QVERIFY(controlsOf(nullptr).empty());
    QVERIFY(ownControlsOf(nullptr).empty());
}

// ---- drivers

struct Properties {
    DzFloatProperty a {s("a")}, b {s("b")}, c {s("c")};

    static void link(DzFloatProperty* driver, DzFloatProperty* driven)
    {
        driven->insertController(new DzERCLink(driver, DzERCLink::ERCDeltaAdd0, 2));
    }
};

static bool anyDriver(const DzFloatProperty*)
{
    return true;
}

void TestFigureLookup::driversComeBeforeWhatTheyDrive()
{
    Properties p; // a drives b and c, b drives c
    Properties::link(&p.b, &p.c);
    Properties::link(&p.a, &p.c);
    Properties::link(&p.a, &p.b);
    const std::vector<DzFloatProperty*> wanted = {&p.a, &p.b, &p.c};
    QVERIFY(driversFirst(&p.c, anyDriver) == wanted);
}

void TestFigureLookup::onlyAcceptedDriversAreFollowed()
{
    Properties p; // a drives b drives c
    Properties::link(&p.a, &p.b);
    Properties::link(&p.b, &p.c);
    const auto notB = [](const DzFloatProperty* driver) { return driver->getName() != s("b"); };
    const std::vector<DzFloatProperty*> wanted = {&p.c};
    QVERIFY(driversFirst(&p.c, notB) == wanted);
}

QUILLON_TEST(TestFigureLookup)
#include "test_figure_lookup.moc"
