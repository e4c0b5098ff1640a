// Which nodes are figures, and which generation the tables speak of.
#include "scene_fixture.h"
#include "room_tests.h"

#include "figure/figure_kind.h"

#include "dzbone.h"
#include "dzfigure.h"

#include <QtTest>

using namespace quillon;

class TestFigureKind : public QObject {
    Q_OBJECT
private slots:
    void startsAsGenesis8();
    void namesDecideTheGeneration_data();
    void namesDecideTheGeneration();
    void namesAreComparedExactly_data();
    void namesAreComparedExactly();
    void anUnsupportedNodeLeavesTheGeneration();
    void generationOfLeavesTheFlag();
    void eachFigureHasItsOwnModel();
    void aNodeOfNoFigureHasTheModelOfTheLastOne();
    void aDerivedFigureClassIsAFigureNode();
    void aBoneStandsForItsFigure();
    void aBoneWithoutSkeletonIsNoFigureNode();
    void aPropIsNoFigureNode();
    void figureOfGivesTheSkeleton();
};

void TestFigureKind::startsAsGenesis8()
{
    QVERIFY(!isGenesis81());
    QVERIFY(activeModel().kind == FigureKind::Genesis8);
}

void TestFigureKind::namesDecideTheGeneration_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("genesis81");
    QTest::newRow("8 female") << "Genesis8Female" << false;
    QTest::newRow("8.1 female") << "Genesis8_1Female" << true;
    QTest::newRow("8 male") << "Genesis8Male" << false;
    QTest::newRow("8.1 male") << "Genesis8_1Male" << true;
}

void TestFigureKind::namesDecideTheGeneration()
{
    QFETCH(QString, name);
    QFETCH(bool, genesis81);
    const DzFigure figure(name);
    QVERIFY(isSupportedFigure(&figure));
    QCOMPARE(isGenesis81(), genesis81);
    QVERIFY(activeModel().kind == (genesis81 ? FigureKind::Genesis8_1 : FigureKind::Genesis8));
}

void TestFigureKind::namesAreComparedExactly_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no name") << "";
    QTest::newRow("other case") << "genesis8female";
    QTest::newRow("longer") << "Genesis8Female2";
    QTest::newRow("shorter") << "Genesis8";
    QTest::newRow("older generation") << "Genesis3Female";
    QTest::newRow("newer generation") << "Genesis9";
    QTest::newRow("blank") << "Genesis8_1Male ";
}

void TestFigureKind::namesAreComparedExactly()
{
    QFETCH(QString, name);
    const DzFigure figure(name);
    QVERIFY(!isSupportedFigure(&figure));
}

void TestFigureKind::anUnsupportedNodeLeavesTheGeneration()
{
    const DzFigure newer(QLatin1String("Genesis8_1Male"));
    const DzNode other(QLatin1String("Cube"));
    QVERIFY(isSupportedFigure(&newer));
    QVERIFY(!isSupportedFigure(&other));
    QVERIFY(isGenesis81());
    QVERIFY(!isSupportedFigure(nullptr));
    QVERIFY(isGenesis81());
}

void TestFigureKind::generationOfLeavesTheFlag()
{
    const DzFigure older(QLatin1String("Genesis8Male")), newer(QLatin1String("Genesis8_1Male"));
    const DzNode other(QLatin1String("Cube"));
    resetFigureKind();
    QVERIFY(generationOf(&newer) == FigureKind::Genesis8_1);
    QVERIFY(!isGenesis81());
    QVERIFY(isSupportedFigure(&newer));
    QVERIFY(generationOf(&older) == FigureKind::Genesis8);
    QVERIFY(generationOf(&other) == FigureKind::None);
    QVERIFY(generationOf(nullptr) == FigureKind::None);
    QVERIFY(isGenesis81());
}

void TestFigureKind::eachFigureHasItsOwnModel()
{
    const DzFigure older(QLatin1String("Genesis8Male")), newer(QLatin1String("Genesis8_1Male"));
    for (const DzFigure* last : {&older, &newer}) {
        QVERIFY(isSupportedFigure(last));
        QCOMPARE(modelOf(&older).controls.count, 250);
        QCOMPARE(modelOf(&newer).controls.count, 248);
        QVERIFY(modelOf(&older).kind == FigureKind::Genesis8);
        QVERIFY(modelOf(&newer).kind == FigureKind::Genesis8_1);
    }
}

void TestFigureKind::aNodeOfNoFigureHasTheModelOfTheLastOne()
{
    const DzFigure older(QLatin1String("Genesis8Male")), newer(QLatin1String("Genesis8_1Male"));
    const DzSkeleton shirt(QLatin1String("Shirt"));
    const DzNode prop(QLatin1String("Cube"));
    for (const DzFigure* last : {&older, &newer}) {
        QVERIFY(isSupportedFigure(last));
        for (const DzNode* node :
            {static_cast<const DzNode*>(&shirt), &prop, static_cast<const DzNode*>(nullptr)})
            QCOMPARE(&modelOf(node), &modelOf(last));
    }
}

void TestFigureKind::aDerivedFigureClassIsAFigureNode()
{
    const DzSkeleton skeleton(QLatin1String("s"));
    const DzFigure figure(QLatin1String("f"));
    QVERIFY(isFigureNode(&skeleton));
    QVERIFY(isFigureNode(&figure));
}

void TestFigureKind::aBoneStandsForItsFigure()
{
    DzFigure figure(QLatin1String("Genesis8Female"));
    DzBone* hip = new DzBone(QLatin1String("hip"));
    DzBone* pelvis = new DzBone(QLatin1String("pelvis"));
    figure.addNodeChild(hip);
    hip->addNodeChild(pelvis);
    QVERIFY(isFigureNode(hip));
    QVERIFY(isFigureNode(pelvis));
}

void TestFigureKind::aBoneWithoutSkeletonIsNoFigureNode()
{
    const DzBone bone(QLatin1String("hip"));
    QVERIFY(!isFigureNode(&bone));
    QVERIFY(!figureOf(&bone));
}

void TestFigureKind::aPropIsNoFigureNode()
{
    DzFigure figure(QLatin1String("Genesis8Female"));
    DzNode* prop = new DzNode(QLatin1String("hat"));
    figure.addNodeChild(prop);
    QVERIFY(!isFigureNode(prop));
    QVERIFY(!figureOf(prop));
    QVERIFY(!isFigureNode(nullptr));
}

void TestFigureKind::figureOfGivesTheSkeleton()
{
    DzFigure figure(QLatin1String("Genesis8Female"));
    DzBone* hip = new DzBone(QLatin1String("hip"));
    figure.addNodeChild(hip);
    QCOMPARE(figureOf(hip), static_cast<DzSkeleton*>(&figure));
    QCOMPARE(figureOf(&figure), static_cast<DzSkeleton*>(&figure));
    QVERIFY(!figureOf(nullptr));
}

QUILLON_TEST(TestFigureKind)
#include "test_figure_kind.moc"
