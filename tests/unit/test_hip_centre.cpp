// The two ways to place the figure node below a body that stays.
#include "figure_fixture.h"

#include "figure/hip_centre.h"

#include <QtTest>

using namespace quillon;

class TestHipCentre : public QObject {
    Q_OBJECT
private slots:
    void theHipsTranslationMovesToTheFigure_data();
    void theHipsTranslationMovesToTheFigure();
    void theFigureGoesToTheOriginAndTheBodyStays_data();
    void theFigureGoesToTheOriginAndTheBodyStays();
    void aHipWithoutTranslationWritesNothing();
    void bodiesStayWhateverThePose_data();
    void bodiesStayWhateverThePose();
    void otherTimesAreLeftAlone();
    void aLockLeavesEverythingAsItIs_data();
    void aLockLeavesEverythingAsItIs();
};

// Single precision at a few hundred centimetres, over a chain of ten bones.
static const double kToleranceCm = 1e-3;
static const double kToleranceDeg = 1e-3;

void TestHipCentre::theHipsTranslationMovesToTheFigure_data()
{
    addFigureRows();
}

void TestHipCentre::theHipsTranslationMovesToTheFigure()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    DzBone* hip = f.bone("hip");
    hip->setLocalPos(DzVec3(0, 10, 0));
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    hipAsCentre(f.figure, hip, f.scene.getTime());
    QCOMPARE(hip->getLocalPos(), DzVec3(0, 0, 0));
    QVERIFY(distance(f.figure->getWSPos(), DzVec3(0, 10, 0)) <= 1e-4);
    const QString moved = firstMoved(f.figure, before, kToleranceDeg, kToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

void TestHipCentre::theFigureGoesToTheOriginAndTheBodyStays_data()
{
    addFigureRows();
}

void TestHipCentre::theFigureGoesToTheOriginAndTheBodyStays()
{
    QFETCH(QString, figure);
    FigureFixture f(figure);
    f.figure->setWSPos(DzVec3(100, 0, 0));
    f.figure->getYRotControl()->setValue(90);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    DzBone* hip = f.bone("hip");
    rootAsCentre(f.figure, hip, f.scene.getTime());
    QCOMPARE(f.figure->getWSPos(), DzVec3(0, 0, 0));
    QVERIFY(angleDeg(f.figure->getWSRot(), DzQuat()) <= 1e-5);
    QVERIFY(angleDeg(hip->getWSRot(), before[0].rot_world) <= kToleranceDeg);
    QVERIFY(distance(hip->getWSPos(), before[0].posCm_world) <= kToleranceCm);
    const QString moved = firstMoved(f.figure, before, kToleranceDeg, kToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

void TestHipCentre::aHipWithoutTranslationWritesNothing()
{
    FigureFixture f;
    f.figure->setWSPos(DzVec3(50, 0, 0));
    const FigureState before = stateOf(f.figure);
    hipAsCentre(f.figure, f.bone("hip"), f.scene.getTime());
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestHipCentre::bodiesStayWhateverThePose_data()
{
    QTest::addColumn<unsigned>("seed");
    QTest::addColumn<bool>("root");
    for (unsigned seed = 1; seed <= 6; ++seed) {
        QTest::newRow(qPrintable(QString("hip, pose %1").arg(seed))) << seed << false;
        QTest::newRow(qPrintable(QString("root, pose %1").arg(seed))) << seed << true;
    }
}

void TestHipCentre::bodiesStayWhateverThePose()
{
    QFETCH(unsigned, seed);
    QFETCH(bool, root);
    FigureFixture f(QLatin1String(kTestFigures[seed % 4]));
    Random random(seed);
    liftAllLimits(f.figure);
    poseAtRandom(&random, f.figure);
    f.figure->setWSPos(DzVec3(float(random.between(-300, 300)), 20, -150));
    f.figure->setWSRot(DzQuat(DzVec3(0.3f, 0.8f, -0.2f), random.between(-3, 3)));
    f.figure->getScaleControl()->setValue(1.3f);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    if (root)
        rootAsCentre(f.figure, f.bone("hip"), f.scene.getTime());
    else
        hipAsCentre(f.figure, f.bone("hip"), f.scene.getTime());
    const QString moved = firstMoved(f.figure, before, kToleranceDeg, kToleranceCm);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
    QVERIFY(root ? f.figure->getWSPos() == DzVec3(0, 0, 0)
                 : f.bone("hip")->getLocalPos() == DzVec3(0, 0, 0));
}

void TestHipCentre::otherTimesAreLeftAlone()
{
    FigureFixture f;
    DzBone* hip = f.bone("hip");
    hip->getYPosControl()->setValue(0, 10);
    hip->getYPosControl()->setValue(1600, 30);
    f.figure->getYPosControl()->setValue(0, 0);
    f.figure->getYPosControl()->setValue(1600, 5);
    hipAsCentre(f.figure, hip, 1600);
    QCOMPARE(hip->getYPosControl()->getValue(1600), 0.f);
    QVERIFY(nearly(f.figure->getYPosControl()->getValue(1600), 35, 1e-4));
    QCOMPARE(hip->getYPosControl()->getValue(0), 10.f);
    QCOMPARE(f.figure->getYPosControl()->getValue(0), 0.f);
}

void TestHipCentre::aLockLeavesEverythingAsItIs_data()
{
    QTest::addColumn<bool>("root");
    QTest::addColumn<bool>("onHip");
    QTest::addColumn<QString>("channel");
    for (const char* channel : {"XTranslate", "YTranslate", "ZTranslate"}) {
        QTest::newRow(qPrintable(QString("hip, figure's %1").arg(channel)))
            << false << false << QString(channel);
        QTest::newRow(qPrintable(QString("hip, hip's %1").arg(channel)))
            << false << true << QString(channel);
    }
    for (const char* channel : {"YTranslate", "XRotate", "YRotate", "ZRotate"}) {
        QTest::newRow(qPrintable(QString("root, figure's %1").arg(channel)))
            << true << false << QString(channel);
        QTest::newRow(qPrintable(QString("root, hip's %1").arg(channel)))
            << true << true << QString(channel);
    }
}

void TestHipCentre::aLockLeavesEverythingAsItIs()
{
    QFETCH(bool, root);
    QFETCH(bool, onHip);
    QFETCH(QString, channel);
    FigureFixture f;
    DzBone* hip = f.bone("hip");
    hip->setLocalPos(DzVec3(3, 10, -4));
    f.figure->setWSPos(DzVec3(100, 0, 0));
    f.figure->getYRotControl()->setValue(90);
    const DzNode* node = onHip ? static_cast<DzNode*>(hip) : f.figure;
    node->findProperty(channel)->lock(true);
    const FigureState before = stateOf(f.figure);
    if (root)
        rootAsCentre(f.figure, hip, f.scene.getTime());
    else
        hipAsCentre(f.figure, hip, f.scene.getTime());
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

QTEST_MAIN(TestHipCentre)
#include "test_hip_centre.moc"
