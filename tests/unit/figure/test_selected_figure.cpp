// Which nodes the scene still has, and what is selected where there is no scene.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/selected_figure.h"

#include <QtTest>

using namespace quillon;

class TestSelectedFigure : public QObject {
    Q_OBJECT
private slots:
    void ofSeveralFiguresEachIsFound();
    void aHeldNodeIsGoneWithItsNode();
    void whereNothingIsHeldNothingGoes();
    void withoutASceneNothingIsSelected();
};

void TestSelectedFigure::ofSeveralFiguresEachIsFound()
{
    FigureFixture f;
    QString why;
    DzFigure* const second = loadFigure("Genesis8Male", &why);
    QVERIFY2(second, qPrintable(why));
    QVERIFY(!isInScene(second));
    f.scene.addNode(second);
    QVERIFY(isInScene(f.figure));
    QVERIFY(isInScene(second));
    QVERIFY(isInScene(f.bone("head")));
    QVERIFY(!isInScene(nullptr));
}

void TestSelectedFigure::aHeldNodeIsGoneWithItsNode()
{
    SceneFixture f;
    DzNode* const prop = new DzNode;
    f.scene.addNode(prop);
    const HeldNode held(prop);
    QVERIFY(!held.isGone());
    f.scene.removeNode(prop);
    QVERIFY(held.isGone());
}

void TestSelectedFigure::whereNothingIsHeldNothingGoes()
{
    SceneFixture f;
    QVERIFY(!HeldNode(nullptr).isGone());
}

void TestSelectedFigure::withoutASceneNothingIsSelected()
{
    QVERIFY(!dzScene);
    DzNode node;
    QVERIFY(!selectedNode());
    QVERIFY(!selectedFigure());
    QVERIFY(!isInScene(&node));
    QVERIFY(HeldNode(&node).isGone());
}

QUILLON_TEST(TestSelectedFigure)
#include "test_selected_figure.moc"
