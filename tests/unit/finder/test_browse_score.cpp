// How well a pose fits the type browsed for.
#include "finder_fixture.h"
#include "room_tests.h"

#include "finder/pose_signature.h"
#include "finder/pose_similarity.h"
#include "reference/finder_reference.h"

using namespace quillon;

class TestBrowseScore : public QObject {
    Q_OBJECT
private slots:
    void filtersFollowTheType_data();
    void filtersFollowTheType();
    void filtersOfTheReferencePoseAreTheUsers_data();
    void filtersOfTheReferencePoseAreTheUsers();
    void referencesFollowTheType();
    void referencesOfTheReferencePoseAreTheFigures();
    void yawsTurnTheBaseAboutTheWorldsUpAxis_data();
    void yawsTurnTheBaseAboutTheWorldsUpAxis();
    void theReferencePosesYawsStartAtTheFiguresHip();
    void everyPoseWithASignatureMatchesAllPoses();
    void aPoseWithoutSignatureNeverMatches();
    void anyYawOfATypeMatchesIt_data();
    void anyYawOfATypeMatchesIt();
    void aRejectedSlotOutweighsAllOthers();
    void scoresOfPosesEqualTheLiteralForm_data();
    void scoresOfPosesEqualTheLiteralForm();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

static QString filterText()
{
    static const char* const names[] = {"hip", "torso", "shinL", "shinR", "thighL", "thighR",
        "armL", "armR", "forearmL", "forearmR"};
    QStringList on;
    for (int slot = 0; slot < kSignatureSlots; ++slot)
        if (browseSession().tables.filters.on(slot))
            on << s(names[slot]);
    return on.join(s(" "));
}

void TestBrowseScore::filtersFollowTheType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("on");
    QTest::newRow("all") << int(AllPoses) << "";
    QTest::newRow("sitting") << int(Sitting) << "hip thighL thighR";
    QTest::newRow("standing") << int(Standing) << "hip thighL thighR";
    QTest::newRow("belly up") << int(LyingBellyUp) << "hip torso";
    QTest::newRow("belly down") << int(LyingBellyDown) << "hip torso";
    QTest::newRow("left side") << int(LyingLeftSide) << "hip";
    QTest::newRow("right side") << int(LyingRightSide) << "hip";
    QTest::newRow("upside down") << int(UpsideDown) << "hip";
    QTest::newRow("picker") << -1 << "";
}

void TestBrowseScore::filtersFollowTheType()
{
    QFETCH(int, type);
    QFETCH(QString, on);
    pluginSettings() = PluginSettings();
    setSimilarityFilters(&browseSession().tables, type);
    QCOMPARE(filterText(), on);
    std::fill_n(pluginSettings().similarity, kBodyAreaCount, true); // the user's do not matter here
    setSimilarityFilters(&browseSession().tables, type);
    QCOMPARE(filterText(), on);
}

void TestBrowseScore::filtersOfTheReferencePoseAreTheUsers_data()
{
    QTest::addColumn<int>("area");
    QTest::addColumn<QString>("on");
    QTest::newRow("torso") << int(AreaTorso) << "torso";
    QTest::newRow("left shin") << int(AreaLeftShin) << "shinL";
    QTest::newRow("right shin") << int(AreaRightShin) << "shinR";
    QTest::newRow("left thigh") << int(AreaLeftThigh) << "thighL";
    QTest::newRow("right thigh") << int(AreaRightThigh) << "thighR";
    QTest::newRow("left arm") << int(AreaLeftArm) << "armL";
    QTest::newRow("right arm") << int(AreaRightArm) << "armR";
    QTest::newRow("left forearm") << int(AreaLeftForearm) << "forearmL";
    QTest::newRow("right forearm") << int(AreaRightForearm) << "forearmR";
    QTest::newRow("hip") << int(AreaHip) << "hip";
}

void TestBrowseScore::filtersOfTheReferencePoseAreTheUsers()
{
    QFETCH(int, area);
    QFETCH(QString, on);
    std::fill_n(pluginSettings().similarity, kBodyAreaCount, false);
    pluginSettings().similarity[area] = true;
    setSimilarityFilters(&browseSession().tables, ReferencePose);
    QCOMPARE(filterText(), on);
}

static bool nearlyEqual(const DzQuat& a, const DzQuat& b, double tolerance)
{
    return nearly(a.m_x, b.m_x, tolerance) && nearly(a.m_y, b.m_y, tolerance)
        && nearly(a.m_z, b.m_z, tolerance) && nearly(a.m_w, b.m_w, tolerance);
}

void TestBrowseScore::referencesFollowTheType()
{
    setPartReferences(&browseSession().tables, Sitting, nullptr, 0);
    QVERIFY(browseSession().tables.references[TorsoSlot] == DzQuat());
    QVERIFY(browseSession().tables.references[LeftShinSlot] == DzQuat(-0.689, -0.104, 0.12, 0.707));
    QVERIFY(
        browseSession().tables.references[RightShinSlot] == DzQuat(-0.689, 0.104, -0.12, 0.707));
    QVERIFY(
        browseSession().tables.references[LeftThighSlot] == DzQuat(0.698, 0.036, -0.122, 0.704));
    QVERIFY(
        browseSession().tables.references[RightThighSlot] == DzQuat(0.698, -0.036, 0.122, 0.704));
    QVERIFY(browseSession().tables.references[LeftArmSlot] == DzQuat(-0.004, 0, 0.13, 0.991));
    QVERIFY(browseSession().tables.references[RightArmSlot] == DzQuat(-0.004, 0, -0.13, 0.991));
    QVERIFY(
        browseSession().tables.references[LeftForearmSlot] == DzQuat(0.268, 0.273, 0.008, 0.924));
    QVERIFY(browseSession().tables.references[RightForearmSlot]
        == DzQuat(0.268, -0.273, -0.008, 0.924));
    for (int type = AllPoses; type <= UpsideDown; ++type) {
        if (type == Sitting)
            continue;
        setPartReferences(&browseSession().tables, type, nullptr, 0);
        for (int slot = TorsoSlot; slot < kSignatureSlots; ++slot) {
            const DzQuat expected = slot == LeftArmSlot ? DzQuat(-0.008, 0, 0.259, 0.966)
                : slot == RightArmSlot                  ? DzQuat(-0.008, 0, -0.259, 0.966)
                                                        : DzQuat();
            QVERIFY(browseSession().tables.references[SignatureSlot(slot)] == expected);
        }
    }
}

void TestBrowseScore::referencesOfTheReferencePoseAreTheFigures()
{
    FinderFixture f;
    Random random(21);
    poseAtRandom(&random, f.figure);
    setPartReferences(&browseSession().tables, ReferencePose, f.figure, f.time());
    const int entry = appendPose(s("/a.duf"));
    takeSignature(entry, f.figure, f.time());
    for (int slot = TorsoSlot; slot < kSignatureSlots; ++slot)
        QVERIFY(browseSession().tables.references[SignatureSlot(slot)]
            == poseEntry(entry)->signature[slot]);
}

static void addTypeRows()
{
    QTest::addColumn<int>("type");
    for (int type = AllPoses; type <= UpsideDown; ++type)
        QTest::newRow(qPrintable(QString("type %1").arg(type))) << type;
}

void TestBrowseScore::yawsTurnTheBaseAboutTheWorldsUpAxis_data()
{
    addTypeRows();
}

void TestBrowseScore::yawsTurnTheBaseAboutTheWorldsUpAxis()
{
    QFETCH(int, type);
    buildYawTable(type, nullptr, 0);
    const int lies = classifyHipOrientation(poseTypeBase(type));
    QCOMPARE(lies, type < LyingBellyUp ? int(Standing) : type);
    for (int deg = 0; deg < kYawCount; ++deg) {
        const DzQuat expected = poseTypeBase(type) * turn(0, 1, 0, deg);
        QVERIFY(nearlyEqual(browseSession().tables.yaw[deg], expected, 1e-6));
        QCOMPARE(classifyHipOrientation(browseSession().tables.yaw[deg]),
            lies); // a yaw does not turn it over
    }
}

void TestBrowseScore::theReferencePosesYawsStartAtTheFiguresHip()
{
    FinderFixture f;
    f.bone("hip")->getXRotControl()->setValue(-70);
    f.bone("pelvis")->getYRotControl()->setValue(9);
    f.figure->getYRotControl()->setValue(33);
    buildYawTable(ReferencePose, f.figure, f.time());
    const DzQuat base = f.bone("pelvis")->getLocalRot() * f.bone("hip")->getWSRot();
    QVERIFY(nearlyEqual(browseSession().tables.yaw[0], base, 1e-9));
    QVERIFY(nearlyEqual(browseSession().tables.yaw[90], base * turn(0, 1, 0, 90), 1e-6));
}

void TestBrowseScore::everyPoseWithASignatureMatchesAllPoses()
{
    StoreFixture f;
    Random random(22);
    buildYawTable(AllPoses, nullptr, 0);
    setPartReferences(&browseSession().tables, AllPoses, nullptr, 0);
    setSimilarityFilters(&browseSession().tables, AllPoses);
    const int entry = addEntry(s("/a.duf"), 1);
    for (int n = 0; n < 50; ++n) {
        randomSignature(&random, entry);
        QCOMPARE(browseScore(entry), 1.f);
    }
}

void TestBrowseScore::aPoseWithoutSignatureNeverMatches()
{
    StoreFixture f;
    const int entry = addEntry(s("/a.duf"), 1);
    entryToChange(entry)->hasSignature = false;
    for (int type = AllPoses; type <= ReferencePose; ++type) {
        buildYawTable(type, nullptr, 0);
        setPartReferences(&browseSession().tables, type, nullptr, 0);
        setSimilarityFilters(&browseSession().tables, type);
        QVERIFY(browseScore(entry) < 0);
    }
    QVERIFY(browseScore(-1) < 0);
    QVERIFY(browseScore(1) < 0);
}

void TestBrowseScore::anyYawOfATypeMatchesIt_data()
{
    addTypeRows();
}

void TestBrowseScore::anyYawOfATypeMatchesIt()
{
    QFETCH(int, type);
    StoreFixture f;
    buildYawTable(type, nullptr, 0);
    setPartReferences(&browseSession().tables, type, nullptr, 0);
    setSimilarityFilters(&browseSession().tables, type);
    const int entry = addEntry(s("/a.duf"), 1);
    for (int slot = TorsoSlot; slot < kSignatureSlots; ++slot)
        entryToChange(entry)->signature[slot]
            = browseSession().tables.references[SignatureSlot(slot)];
    for (double deg = 0; deg < 360; deg += 7.3) {
        entryToChange(entry)->signature[HipSlot] = poseTypeBase(type) * turn(0, 1, 0, deg);
        QVERIFY(browseScore(entry) > 0.99f);
        const DzQuat over = type == LyingLeftSide || type == LyingRightSide ? turn(0, 1, 0, 180)
                                                                            : turn(1, 0, 0, 180);
        entryToChange(entry)->signature[HipSlot] = over * poseTypeBase(type) * turn(0, 1, 0, deg);
        QCOMPARE(browseScore(entry) > 0, type == AllPoses);
    }
}

void TestBrowseScore::aRejectedSlotOutweighsAllOthers()
{
    StoreFixture f;
    buildYawTable(Sitting, nullptr, 0);
    setPartReferences(&browseSession().tables, Sitting, nullptr, 0);
    setSimilarityFilters(&browseSession().tables, Sitting);
    const int entry = addEntry(s("/a.duf"), 1);
    PoseIndexEntry& e = *entryToChange(entry);
    e.signature[LeftThighSlot] = browseSession().tables.references[LeftThighSlot];
    e.signature[RightThighSlot] = browseSession().tables.references[RightThighSlot];
    QVERIFY(browseScore(entry) > 0.99f); // straight shins do not count
    e.signature[RightThighSlot] = DzQuat();
    QVERIFY(browseScore(entry) < -90000);
}

void TestBrowseScore::scoresOfPosesEqualTheLiteralForm_data()
{
    addTypeRows();
    QTest::newRow("reference pose") << int(ReferencePose);
}

void TestBrowseScore::scoresOfPosesEqualTheLiteralForm()
{
    QFETCH(int, type);
    FinderFixture f;
    Random random(30 + unsigned(type));
    poseAtRandom(&random, f.figure);
    buildYawTable(type, f.figure, f.time());
    setPartReferences(&browseSession().tables, type, f.figure, f.time());
    setSimilarityFilters(&browseSession().tables, type);
    const int entry = addEntry(s("/a.duf"), 1);
    int matches = 0;
    for (int n = 0; n < 400; ++n) {
        for (int slot = 0; slot < kSignatureSlots; ++slot) {
            const DzQuat& base = slot == HipSlot
                ? browseSession().tables.yaw[random.below(kYawCount)]
                : browseSession().tables.references[SignatureSlot(slot)];
            entryToChange(entry)->signature[slot]
                = base * turn(random.between(-1, 1), 1, 0, random.between(0, 45));
        }
        QVERIFY(sameBits(browseScore(entry), reference::browseScore(entry)));
        matches += browseScore(entry) > 0;
    }
    QVERIFY(matches > 10);
}

QUILLON_TEST(TestBrowseScore)
#include "test_browse_score.moc"
