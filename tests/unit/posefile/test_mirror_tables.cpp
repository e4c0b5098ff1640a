// Which controls a mirrored pose exchanges and which it negates.
#include "scene_fixture.h"
#include "room_tests.h"

#include "figure/control_tables.h"
#include "figure/figure_kind.h"
#include "posefile/mirror_tables.h"

#include "dzfigure.h"

#include <QtTest>

#include <set>

using namespace quillon;

class TestMirrorTables : public QObject {
    Q_OBJECT
private slots:
    void pairedListHas144Names();
    void bodyNamesStandAroundTheFacialOnes();
    void everyFacialNameHasItsPartner_data();
    void everyFacialNameHasItsPartner();
    void sidedLookingNamesWithoutPartnerAreOut_data();
    void sidedLookingNamesWithoutPartnerAreOut();
    void givenExamplesAreIn_data();
    void givenExamplesAreIn();
    void negatedListFollowsGenerationAndFace();
    void everyListedNameIsInItsControlTable_data();
    void everyListedNameIsInItsControlTable();
    void noPairedNameIsNegatedButOne();
};

typedef std::vector<QByteArray> Names;

static void setGeneration(bool genesis81)
{
    const DzFigure figure(QLatin1String(genesis81 ? "Genesis8_1Male" : "Genesis8Male"));
    QVERIFY(isSupportedFigure(&figure));
}

static bool holds(const Names& names, const QByteArray& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

static Names activeTable(bool genesis81)
{
    return genesis81 ? Names(kBodyControlTableG81, kBodyControlTableG81 + kControlCountG81)
                     : Names(kBodyControlTableG8, kBodyControlTableG8 + kControlCountG8);
}

static Names facialNames(bool genesis81)
{
    setGeneration(genesis81);
    Names names;
    for (const QByteArray& name : pairedControls(true)) {
        if (!name.startsWith("pCTRL"))
            names.push_back(name);
    }
    return names;
}

void TestMirrorTables::pairedListHas144Names()
{
    const Names g8 = facialNames(false), g81 = facialNames(true);
    QCOMPARE(g8.size(), size_t(62));
    QCOMPARE(g81.size(), size_t(68));
    QCOMPARE(pairedControls(false).size(), size_t(14));
    QCOMPARE(g8.size() + g81.size() + pairedControls(false).size(), size_t(144));
    std::set<QByteArray> distinct(g8.begin(), g8.end());
    distinct.insert(g81.begin(), g81.end());
    distinct.insert(pairedControls(false).begin(), pairedControls(false).end());
    QCOMPARE(distinct.size(), size_t(144));
}

void TestMirrorTables::bodyNamesStandAroundTheFacialOnes()
{
    for (bool genesis81 : {false, true}) {
        setGeneration(genesis81);
        const Names body = pairedControls(false), all = pairedControls(true);
        for (size_t i = 0; i < 12; ++i)
            QCOMPARE(all[i], body[i]);
        QCOMPARE(all[all.size() - 2], QByteArray("pCTRLFlexBiceps_twist_R"));
        QCOMPARE(all[all.size() - 1], QByteArray("pCTRLFlexBiceps_twist_L"));
    }
}

static QByteArray partnerOf(const QByteArray& name, bool genesis81)
{
    QByteArray partner = name;
    if (genesis81)
        return name.contains("Left") ? partner.replace("Left", "Right")
                                     : partner.replace("Right", "Left");
    partner[partner.size() - 1] = name.endsWith('L') ? 'R' : 'L';
    return partner;
}

void TestMirrorTables::everyFacialNameHasItsPartner_data()
{
    QTest::addColumn<bool>("genesis81");
    QTest::newRow("Genesis 8") << false;
    QTest::newRow("Genesis 8.1") << true;
}

void TestMirrorTables::everyFacialNameHasItsPartner()
{
    QFETCH(bool, genesis81);
    const Names names = facialNames(genesis81);
    for (const QByteArray& name : names) {
        QVERIFY2(name.startsWith(genesis81 ? "facs_" : "eCTRL"), name);
        QVERIFY2(holds(names, partnerOf(name, genesis81)), name);
        QVERIFY2(partnerOf(name, genesis81) != name, name);
    }
}

void TestMirrorTables::sidedLookingNamesWithoutPartnerAreOut_data()
{
    QTest::addColumn<bool>("genesis81");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("vER") << false << QByteArray("eCTRLvER");
    QTest::newRow("vL") << false << QByteArray("eCTRLvL");
    QTest::newRow("a shape of cheek creases") << false << QByteArray("ePHMCheekCreaseL");
    QTest::newRow("another") << false << QByteArray("PHMCheeksDimpleCreaseL_HD_div2");
    QTest::newRow("initials") << true << QByteArray("facs_cbs_MSR_MDR_div2");
    QTest::newRow("more initials") << true << QByteArray("facs_cbs_EBL_ELUL_div2");
    QTest::newRow("eyes of 8.1") << true << QByteArray("eCTRLEyesClosedR");
    QTest::newRow("no side") << true << QByteArray("facs_jnt_JawOpen");
}

void TestMirrorTables::sidedLookingNamesWithoutPartnerAreOut()
{
    QFETCH(bool, genesis81);
    QFETCH(QByteArray, name);
    QVERIFY(holds(activeTable(genesis81), name)); // else the row says nothing
    QVERIFY(!holds(facialNames(genesis81), name));
}

void TestMirrorTables::givenExamplesAreIn_data()
{
    QTest::addColumn<bool>("genesis81");
    QTest::addColumn<QByteArray>("name");
    for (const char* name : {"facs_bs_MouthSmileLeft_div2", "facs_ctrl_EyeLookSide-SideRight",
             "facs_jnt_JawLeft", "facs_cbs_EyeBlinkRight_div2"})
        QTest::newRow(name) << true << QByteArray(name);
    for (const char* name : {"eCTRLEyesClosedR", "eCTRLMouthSmileSimpleL", "eCTRLBrowInnerUp-DownR",
             "eCTRLCheeksBalloon-SuckInL"})
        QTest::newRow(name) << false << QByteArray(name);
}

void TestMirrorTables::givenExamplesAreIn()
{
    QFETCH(bool, genesis81);
    QFETCH(QByteArray, name);
    QVERIFY(holds(facialNames(genesis81), name));
}

void TestMirrorTables::negatedListFollowsGenerationAndFace()
{
    setGeneration(false);
    QCOMPARE(negatedControls(false).size(), size_t(5));
    QCOMPARE(negatedControls(true).size(), size_t(9));
    QVERIFY(holds(negatedControls(true), "eCTRLEyesSideSide"));
    QVERIFY(!holds(negatedControls(true), "facs_ctrl_EyeLookSide-Side"));
    setGeneration(true);
    QCOMPARE(negatedControls(false).size(), size_t(5));
    QCOMPARE(negatedControls(true).size(), size_t(6));
    QVERIFY(holds(negatedControls(true), "facs_ctrl_EyeLookSide-Side"));
}

void TestMirrorTables::everyListedNameIsInItsControlTable_data()
{
    everyFacialNameHasItsPartner_data();
}

void TestMirrorTables::everyListedNameIsInItsControlTable()
{
    QFETCH(bool, genesis81);
    setGeneration(genesis81);
    const Names table = activeTable(genesis81);
    for (const Names& list : {pairedControls(true), negatedControls(true)}) {
        for (const QByteArray& name : list)
            QVERIFY2(holds(table, name), name);
    }
}

void TestMirrorTables::noPairedNameIsNegatedButOne()
{
    setGeneration(true);
    Names both;
    for (const QByteArray& name : pairedControls(true)) {
        if (containsAnyOf(name, negatedControls(true)))
            both.push_back(name);
    }
    QCOMPARE(both.size(), size_t(2)); // one control and its partner: the paired test comes first
    QCOMPARE(both[0].left(both[0].indexOf("Side-Side")), QByteArray("facs_ctrl_EyeLook"));
    QCOMPARE(both[1].left(both[1].indexOf("Side-Side")), QByteArray("facs_ctrl_EyeLook"));
}

QUILLON_TEST_WITHOUT_APPLICATION(TestMirrorTables)
#include "test_mirror_tables.moc"
