// Which entries of a pose belong to what is selected.
#include "rewrite_fixture.h"
#include "room_tests.h"

#include "reference/pose_rewriter_reference.h"

using namespace quillon;

class TestPoseSelection : public QObject {
    Q_OBJECT
private slots:
    void entriesOutsideTheSelectionAreCopied();
    void childrenTakePartUnlessToldNot();
    void thePartnersEntriesTakePart();
    void faceEntriesNeedTheFace_data();
    void faceEntriesNeedTheFace();
    void mirrorAllTakesEveryEntryAndMarksNone();
    void symmetrizeMarksTheSelectedSideOnly();
    void symmetrizeOfBothSidesMarksNone();
    void unsidedBonesAreLeftAloneBySymmetrize();
    void theHipIsNoChild();
    void bonesOfAnotherFigureAreNoChildren();
    void selectionEqualsReference_data();
    void selectionEqualsReference();
};

static QByteArray armText()
{
    return kHead + block("/lShldrBend:?rotation/y", "1") + block("/rShldrBend:?rotation/y", "2")
        + block("/lHand:?rotation/y", "3") + block("/chestUpper:?rotation/y", "4")
        + block("#pCTRLArmsUpLeft:?value", "5") + block("#pCTRLlHandFist:?value", "6")
        + block("#pCTRLHipBend:?value", "7", true);
}

void TestPoseSelection::entriesOutsideTheSelectionAreCopied()
{
    PoseFixture f;
    f.selectBones(QStringList() << "lFoot");
    QCOMPARE(entriesOf(rewritten(f, armText(), Rewrite())),
        QStringList() << "/lShldrBend:?rotation/y 1"
                      << "/rShldrBend:?rotation/y 2"
                      << "/lHand:?rotation/y 3"
                      << "/chestUpper:?rotation/y 4"
                      << "#pCTRLArmsUpLeft:?value 5"
                      << "#pCTRLlHandFist:?value 6"
                      << "#pCTRLHipBend:?value 7");
    QVERIFY(touchedBones().isEmpty());
}

void TestPoseSelection::childrenTakePartUnlessToldNot()
{
    PoseFixture f;
    f.selectBones(QStringList() << "lShldrBend");
    QCOMPARE(entriesOf(rewritten(f, armText(), Rewrite())),
        QStringList() << "/rShldrBend:?rotation/y -1"
                      << "/lShldrBend:?rotation/y -2"
                      << "/lHand:?rotation/y 3"
                      << "/chestUpper:?rotation/y 4"
                      << "#pCTRLArmsUpRight:?value 5"
                      << "#pCTRLlHandFist:?value 6"
                      << "#pCTRLHipBend:?value 7");
    QCOMPARE(touchedBones(),
        QStringList() << "lShldrBend"
                      << "rShldrBend");
    Rewrite ask;
    ask.withChildren = true;
    QCOMPARE(entriesOf(rewritten(f, armText(), ask)),
        QStringList() << "/rShldrBend:?rotation/y -1"
                      << "/lShldrBend:?rotation/y -2"
                      << "/rHand:?rotation/y -3"
                      << "/chestUpper:?rotation/y 4"
                      << "#pCTRLArmsUpRight:?value 5"
                      << "#pCTRLrHandFist:?value 6"
                      << "#pCTRLHipBend:?value 7");
    QCOMPARE(touchedBones(),
        QStringList() << "lShldrBend"
                      << "lHand"
                      << "rShldrBend");
}

void TestPoseSelection::thePartnersEntriesTakePart()
{
    PoseFixture f;
    f.selectBones(QStringList() << "rShldrBend");
    const QStringList entries = entriesOf(rewritten(f, armText(), Rewrite()));
    QCOMPARE(entries.at(0), QString("/rShldrBend:?rotation/y -1"));
    QCOMPARE(entries.at(1), QString("/lShldrBend:?rotation/y -2"));
}

void TestPoseSelection::faceEntriesNeedTheFace_data()
{
    QTest::addColumn<bool>("includeFace");
    QTest::newRow("with the face") << true;
    QTest::newRow("without the face") << false;
}

void TestPoseSelection::faceEntriesNeedTheFace()
{
    QFETCH(bool, includeFace);
    PoseFixture f;
    f.selectBones(QStringList() << "head");
    const QByteArray text = kHead + block("/lEye:?rotation/y", "1")
        + block("#eCTRLEyesClosedL:?value", "2") + block("/head:?rotation/y", "3", true);
    Rewrite ask;
    ask.withChildren = true;
    ask.includeFace = includeFace;
    const QStringList entries = entriesOf(rewritten(f, text, ask));
    QCOMPARE(entries.at(0), QString(includeFace ? "/rEye:?rotation/y -1" : "/lEye:?rotation/y 1"));
    QCOMPARE(entries.at(1),
        QString(includeFace ? "#eCTRLEyesClosedR:?value 2" : "#eCTRLEyesClosedL:?value 2"));
    QCOMPARE(entries.at(2), QString("/head:?rotation/y -3"));
    QCOMPARE(touchedBones(),
        includeFace ? QStringList() << "head"
                                    << "lEye"
                    : QStringList("head"));
}

void TestPoseSelection::mirrorAllTakesEveryEntryAndMarksNone()
{
    PoseFixture f;
    f.rig.scene.selectAllNodes(false);
    QCOMPARE(entriesOf(rewritten(f, armText(), all())),
        QStringList() << "/rShldrBend:?rotation/y -1"
                      << "/lShldrBend:?rotation/y -2"
                      << "/rHand:?rotation/y -3"
                      << "/chestUpper:?rotation/y -4"
                      << "#pCTRLArmsUpRight:?value 5"
                      << "#pCTRLrHandFist:?value 6"
                      << "#pCTRLHipBend:?value 7");
    QVERIFY(touchedBones().isEmpty());
}

static Rewrite symmetrize()
{
    Rewrite ask;
    ask.withChildren = true;
    ask.symmetrize = true;
    ask.includeFace = false;
    return ask;
}

void TestPoseSelection::symmetrizeMarksTheSelectedSideOnly()
{
    PoseFixture f;
    f.selectBones(QStringList() << "lShldrBend");
    const QStringList entries = entriesOf(rewritten(f, armText(), symmetrize()));
    QCOMPARE(entries.at(0), QString("/rShldrBend:?rotation/y -1"));
    QCOMPARE(entries.at(1), QString("/lShldrBend:?rotation/y -2"));
    QCOMPARE(touchedBones(),
        QStringList() << "lShldrBend"
                      << "lHand");
}

void TestPoseSelection::symmetrizeOfBothSidesMarksNone()
{
    PoseFixture f;
    f.selectBones(QStringList() << "lShldrBend"
                                << "rShldrBend");
    QCOMPARE(entriesOf(rewritten(f, armText(), symmetrize())).at(0),
        QString("/rShldrBend:?rotation/y -1"));
    QVERIFY(touchedBones().isEmpty());
}

void TestPoseSelection::unsidedBonesAreLeftAloneBySymmetrize()
{
    PoseFixture f;
    f.selectBones(QStringList() << "chestUpper");
    QCOMPARE(rewritten(f, armText(), symmetrize()), armText());
    QVERIFY(touchedBones().isEmpty());
}

// A stray hip below the hand: index 0 counts when selected itself only.
void TestPoseSelection::theHipIsNoChild()
{
    PoseFixture f;
    DzBone* hand = f.bone("lHand");
    hand->addNodeChild(new DzBone(QLatin1String("hip")));
    f.selectBones(QStringList() << "lHand");
    const QByteArray text = kHead + block("/hip:?rotation/y", "1", true);
    Rewrite ask;
    ask.withChildren = true;
    QCOMPARE(rewritten(f, text, ask), text);
    f.selectBones(QStringList() << "hip");
    QVERIFY(rewritten(f, text, ask) != text);
}

void TestPoseSelection::bonesOfAnotherFigureAreNoChildren()
{
    PoseFixture f;
    DzFigure* glove = new DzFigure(QLatin1String("glove"));
    glove->addNodeChild(new DzBone(QLatin1String("rThumb1")));
    f.bone("lHand")->addNodeChild(glove);
    f.selectBones(QStringList() << "lThumb1");
    int kind;
    bool noTouch;
    QVERIFY(selectionIndexFor("rThumb1", f.figure, true, false, BoneEntry, &kind, &noTouch) > 0);
    f.selectBones(QStringList() << "lForearmTwist");
    f.bone("rForearmTwist")->select(false);
    f.figure->removeBone(f.bone("rThumb1"));
    QCOMPARE(selectionIndexFor("rThumb1", f.figure, true, false, BoneEntry, &kind, &noTouch), -1);
}

void TestPoseSelection::selectionEqualsReference_data()
{
    addFigureRows();
}

static void selectAtRandom(Random* random, const PoseFixture& f)
{
    f.figure->select(false);
    for (const FigureBone& each : bonesOf(f.figure))
        each.bone->select(false);
    for (int n = random->below(5); n >= 0; --n) {
        if (DzBone* bone = findBone(random->below(kBoneCount), f.figure))
            bone->select(true);
    }
}

// Some 1,000 names, each asked about bone and control, on 30 selections.
void TestPoseSelection::selectionEqualsReference()
{
    QFETCH(QString, figure);
    PoseFixture f(figure);
    Random random(17);
    int hits = 0;
    for (int round = 0; round < 30; ++round) {
        if (round == 15)
            mutilate(&random, f.figure, 10);
        selectAtRandom(&random, f);
        const bool withChildren = round % 2, symmetrizing = round / 2 % 2;
        for (int i = 0; i < 40; ++i) {
            const int mode = random.below(2);
            const QString name = mode == BoneEntry ? boneName(random.below(kBoneCount))
                                                   : controlName(random.below(controlCount()));
            int kind = -1;
            bool noTouch = false, expectedNoTouch = false;
            const int index = selectionIndexFor(
                name, f.figure, withChildren, symmetrizing, mode, &kind, &noTouch);
            QCOMPARE(index,
                reference::selectionIndexFor(
                    name, f.figure, withChildren, symmetrizing, mode, &expectedNoTouch));
            if (index < 0)
                continue;
            QCOMPARE(kind, mode);
            QCOMPARE(noTouch, expectedNoTouch);
            ++hits;
        }
    }
    QVERIFY2(hits > 30, "hardly any name was in a selection");
}

QUILLON_TEST(TestPoseSelection)
#include "test_pose_selection.moc"
