// Composition of transforms, the ways back to channels, and the tree.
#include "scene_fixture.h"
#include "room_tests.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dznode.h"
#include "dzobject.h"

#include <QPointer>
#include <QtTest>

static const double kPi = 3.14159265358979323846;
static const double kDeg = 180 / kPi;

// A chain of nodes below a root, with origins, orientations, orders and (uniform) scales.
static DzNode* makeChain(Random* random, int length)
{
    DzNode* root = new DzNode("n0");
    DzNode* last = root;
    for (int i = 1; i < length; ++i) {
        DzNode* node = new DzNode(QString("n%1").arg(i));
        last->addNodeChild(node);
        last = node;
    }
    for (DzNode* n = root; n; n = n->getNodeChild(0)) {
        n->setOrigin(DzVec3(float(random->between(-50, 50)), float(random->between(0, 150)),
            float(random->between(-50, 50))));
        n->setOrientation(DzQuat(DzRotationOrder::XYZ,
            DzVec3(float(random->between(-3, 3)), float(random->between(-1.5, 1.5)),
                float(random->between(-3, 3)))));
        n->setRotationOrder(DzRotationOrder::RotOrder(random->below(6)));
        n->getScaleControl()->setValue(float(random->between(0.5, 1.5)));
    }
    return root;
}

static void randomPose(Random* random, DzNode* root)
{
    for (DzNode* n = root; n; n = n->getNodeChild(0)) {
        DzFloatProperty* const rot[]
            = {n->getXRotControl(), n->getYRotControl(), n->getZRotControl()};
        DzFloatProperty* const pos[]
            = {n->getXPosControl(), n->getYPosControl(), n->getZPosControl()};
        for (int i = 0; i < 3; ++i) {
            rot[i]->setValue(float(random->between(-180, 180)));
            pos[i]->setValue(float(random->between(-5, 5)));
        }
    }
}

class TestDzNode : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void aNodeAtRestStandsAtItsOrigin();
    void turningANodeDoesNotMoveItsPivot();
    void worldIsLocalTimesParentWorld();
    void worldPlacementSurvivesARoundTrip();
    void localPlacementSurvivesARoundTrip();
    void nonUniformScaleSurvivesARoundTrip();
    void scaleIsInheritedOrNot();
    void otherTimesDoNotDisturbTheCache();
    void setterTakesTheNearestSolution();
    void twoHundredDegreesStayTwoHundred();
    void aLockedTwistChannelDoesNotSpoilTheRotation();
    void gimbalLockKeepsTheLockedChannel();
    void settersRespectLocks();
    void originShiftMovesTheWorldPosition();
    void boundingBoxFollowsScaleAndRotation();
    void reparentingInPlaceKeepsTheWorldTransform();
    void aNodeCannotHangBelowItself();
    void selectionFollowsTheScene();
    void aStepOutlivesTheNodeThatItMoved();
    void bonesAreFoundByExactName();
    void aBonesChildrenHangOnItsParentWhenItGoes();
    void defaultsAreReadWithoutTouchingTheChannels();

private:
    std::unique_ptr<SceneFixture> m_fixture;
};

void TestDzNode::init()
{
    m_fixture.reset(new SceneFixture);
}

void TestDzNode::cleanup()
{
    m_fixture.reset();
}

void TestDzNode::aNodeAtRestStandsAtItsOrigin()
{
    DzNode root("root");
    DzNode* child = new DzNode("child");
    root.addNodeChild(child);
    root.setOrigin(DzVec3(1, 2, 3));
    child->setOrigin(DzVec3(4, 6, 8));
    QCOMPARE(root.getWSPos(), DzVec3(1, 2, 3));
    QCOMPARE(child->getWSPos(), DzVec3(4, 6, 8));
    QCOMPARE(child->getLocalPos(), DzVec3(0, 0, 0));
    root.getYRotControl()->setValue(90); // +Z to +X, +X to -Z
    QVERIFY(distance(child->getWSPos(), DzVec3(1 + 5, 2 + 4, 3 - 3)) < 1e-5);
    child->getXPosControl()->setValue(10);
    QVERIFY(distance(child->getWSPos(), DzVec3(6, 6, -10)) < 1e-5);
}

void TestDzNode::turningANodeDoesNotMoveItsPivot()
{
    DzNode node("n");
    node.setOrigin(DzVec3(0, 98, 0));
    node.getXRotControl()->setValue(-90);
    QCOMPARE(node.getWSPos(), DzVec3(0, 98, 0));
    QVERIFY(distance(node.getWSRot().multVec(DzVec3(0, 0, 1)), DzVec3(0, 1, 0)) < 1e-6);
}

void TestDzNode::worldIsLocalTimesParentWorld()
{
    Random random(11);
    std::unique_ptr<DzNode> root(makeChain(&random, 6));
    randomPose(&random, root.get());
    for (DzNode* n = root->getNodeChild(0); n; n = n->getNodeChild(0))
        QVERIFY(angleDeg(n->getWSRot(), n->getLocalRot() * n->getNodeParent()->getWSRot()) < 1e-9);
}

void TestDzNode::worldPlacementSurvivesARoundTrip()
{
    Random random(5);
    for (int round = 0; round < 50; ++round) {
        std::unique_ptr<DzNode> root(makeChain(&random, 5));
        randomPose(&random, root.get());
        for (DzNode* n = root.get(); n; n = n->getNodeChild(0)) {
            const DzQuat rotation(random.between(-1, 1), random.between(-1, 1),
                random.between(-1, 1), random.between(-1, 1));
            const DzVec3 position(float(random.between(-200, 200)),
                float(random.between(-200, 200)), float(random.between(-200, 200)));
            n->setWSRot(rotation);
            n->setWSPos(position);
            QVERIFY(angleDeg(n->getWSRot(), rotation) < 1e-4);
            QVERIFY(distance(n->getWSPos(), position) < 2e-4); // a few float steps at 200 cm
        }
    }
}

void TestDzNode::localPlacementSurvivesARoundTrip()
{
    Random random(6);
    std::unique_ptr<DzNode> root(makeChain(&random, 4));
    for (int round = 0; round < 200; ++round) {
        randomPose(&random, root.get());
        for (DzNode* n = root.get(); n; n = n->getNodeChild(0)) {
            const DzQuat rotation(random.between(-1, 1), random.between(-1, 1),
                random.between(-1, 1), random.between(-1, 1));
            n->setLocalRot(rotation);
            n->setLocalPos(DzVec3(1.5f, -2.25f, 3));
            QVERIFY(angleDeg(n->getLocalRot(), rotation) < 1e-4);
            QCOMPARE(n->getLocalPos(), DzVec3(1.5f, -2.25f, 3));
        }
    }
}

void TestDzNode::nonUniformScaleSurvivesARoundTrip()
{
    Random random(8);
    std::unique_ptr<DzNode> root(makeChain(&random, 3));
    DzNode* child = root->getNodeChild(0);
    child->getXScaleControl()->setValue(2);
    child->getYScaleControl()->setValue(0.5);
    const DzMatrix3 world = child->getWSScale(), local = child->getLocalScale();
    child->getXScaleControl()->setValue(1);
    child->setWSScale(world);
    for (int i = 0; i < 3; ++i)
        QVERIFY(distance(child->getWSScale()[i], world[i]) < 1e-5);
    child->getYScaleControl()->setValue(3);
    child->setLocalScale(local);
    for (int i = 0; i < 3; ++i)
        QVERIFY(distance(child->getLocalScale()[i], local[i]) < 1e-5);
    QCOMPARE(child->getScaleControl()->getValue(), 1.0f);
}

void TestDzNode::scaleIsInheritedOrNot()
{
    DzNode root("root");
    DzNode* child = new DzNode("child");
    root.addNodeChild(child);
    root.getScaleControl()->setValue(2);
    child->setOrigin(DzVec3(0, 10, 0));
    child->getXScaleControl()->setValue(3);
    QVERIFY(distance(child->getWSScale()[0], DzVec3(6, 0, 0)) < 1e-6);
    child->setInheritScale(false);
    QVERIFY(distance(child->getWSScale()[0], DzVec3(3, 0, 0)) < 1e-6);
    QVERIFY(distance(child->getWSPos(), DzVec3(0, 20, 0)) < 1e-5); // the place still scales
}

void TestDzNode::otherTimesDoNotDisturbTheCache()
{
    DzNode root("root");
    DzNode* child = new DzNode("child");
    root.addNodeChild(child);
    root.getXPosControl()->setValue(0, 1);
    root.getXPosControl()->setValue(4800, 3);
    QCOMPARE(child->getWSPos().m_x, 1.0f);
    QCOMPARE(child->getWSPos(4800).m_x, 3.0f);
    QCOMPARE(child->getWSPos().m_x, 1.0f);
    child->setWSPos(4800, DzVec3(10, 0, 0));
    QCOMPARE(child->getXPosControl()->getValue(4800), 7.0f);
    dzScene->setTime(4800);
    QCOMPARE(child->getWSPos().m_x, 10.0f);
}

void TestDzNode::setterTakesTheNearestSolution()
{
    DzNode n("n");
    n.getXRotControl()->setValue(170);
    n.getYRotControl()->setValue(120); // middle turn beyond 90: the other solution
    n.getZRotControl()->setValue(-160);
    n.setWSRot(n.getWSRot());
    QVERIFY(nearly(n.getXRotControl()->getValue(), 170, 1e-3));
    QVERIFY(nearly(n.getYRotControl()->getValue(), 120, 1e-3));
    QVERIFY(nearly(n.getZRotControl()->getValue(), -160, 1e-3));
}

void TestDzNode::twoHundredDegreesStayTwoHundred()
{
    DzNode n("n");
    n.getYRotControl()->setValue(200);
    n.setWSRot(n.getWSRot());
    QVERIFY(nearly(n.getYRotControl()->getValue(), 200, 1e-3));
    QVERIFY(nearly(n.getXRotControl()->getValue(), 0, 1e-3));
    n.getXRotControl()->setValue(-725);
    n.setLocalRot(n.getLocalRot());
    QVERIFY(nearly(n.getXRotControl()->getValue(), -725, 1e-2));
}

void TestDzNode::aLockedTwistChannelDoesNotSpoilTheRotation()
{
    DzNode n("n");
    n.setRotationOrder(DzRotationOrder::YZX);
    n.getYRotControl()->lock(true);
    Random random(4);
    for (int i = 0; i < 500; ++i) {
        const double x = random.between(-179, 179), z = random.between(-89, 89);
        const DzQuat target(DzRotationOrder::YZX, DzVec3(float(x / kDeg), 0, float(z / kDeg)));
        n.setWSRot(target);
        QVERIFY(angleDeg(n.getWSRot(), target) < 1e-4);
        QCOMPARE(n.getYRotControl()->getValue(), 0.0f);
    }
}

void TestDzNode::gimbalLockKeepsTheLockedChannel()
{
    for (int order = 0; order < 6; ++order) {
        const DzRotationOrder o = DzRotationOrder::RotOrder(order);
        for (int locked = 0; locked < 3; ++locked) {
            DzNode n("n");
            n.setRotationOrder(o);
            DzFloatProperty* const rot[]
                = {n.getXRotControl(), n.getYRotControl(), n.getZRotControl()};
            DzVec3 rad;
            rad[o[1]] = float(kPi / 2);
            rad[o[locked == 0 ? 2 : 0]] = 0.5f;
            if (locked == 1) {
                rot[o[1]]->setValue(90);
            }
            rot[o[locked]]->lock(true);
            const DzQuat target(o.order(), rad);
            n.setWSRot(target);
            QVERIFY2(angleDeg(n.getWSRot(), target) < 1e-3, qPrintable(o.toString()));
        }
    }
}

void TestDzNode::settersRespectLocks()
{
    DzNode n("n");
    n.getXPosControl()->lock(true);
    n.setWSPos(DzVec3(1, 2, 3));
    QCOMPARE(n.getWSPos(), DzVec3(0, 2, 3));
}

void TestDzNode::originShiftMovesTheWorldPosition()
{
    DzNode n("n");
    n.getXPosControl()->setValue(5);
    n.setOrigin(DzVec3(10, 0, 0), true);
    QCOMPARE(n.getXPosControl()->getValue(), 5.0f);
    QCOMPARE(n.getWSPos(), DzVec3(15, 0, 0));
    QCOMPARE(n.getOrigin(true), DzVec3(10, 0, 0));
}

void TestDzNode::boundingBoxFollowsScaleAndRotation()
{
    DzNode n("n");
    QVERIFY(!n.getLocalBoundingBox().isValid());
    n.setObject(new DzObject("o"));
    n.getObject()->setGeometryBox(DzBox3(DzVec3(-1, 0, -2), DzVec3(1, 4, 2)));
    QCOMPARE(n.getLocalBoundingBox().getMax(), DzVec3(1, 4, 2));
    n.getScaleControl()->setValue(2);
    QCOMPARE(n.getLocalBoundingBox().getMin(), DzVec3(-2, 0, -4));
    n.getYRotControl()->setValue(90);
    QVERIFY(distance(n.getLocalBoundingBox().getMax(), DzVec3(4, 8, 2)) < 1e-5);
    n.getXPosControl()->setValue(100);
    QVERIFY(distance(n.getWSBoundingBox().getMax(), DzVec3(104, 8, 2)) < 1e-4);
}

void TestDzNode::reparentingInPlaceKeepsTheWorldTransform()
{
    Random random(21);
    DzNode* chain = makeChain(&random, 3);
    dzScene->addNode(chain);
    randomPose(&random, chain);
    DzNode* prop = new DzNode("prop");
    dzScene->addNode(prop);
    prop->setWSPos(DzVec3(10, 20, 30));
    prop->setWSRot(DzQuat(0.1, 0.2, 0.3, 0.4));
    const DzQuat rotation = prop->getWSRot();
    QVERIFY(chain->getNodeChild(0)->addNodeChild(prop, true));
    QVERIFY(!prop->isRootNode());
    QVERIFY(distance(prop->getWSPos(), DzVec3(10, 20, 30)) < 1e-4);
    QVERIFY(angleDeg(prop->getWSRot(), rotation) < 1e-4);
    QVERIFY(dzUndoStack->undo());
    QVERIFY(prop->isRootNode());
    QVERIFY(distance(prop->getWSPos(), DzVec3(10, 20, 30)) < 1e-4);
}

void TestDzNode::aNodeCannotHangBelowItself()
{
    DzNode a("a");
    DzNode* b = new DzNode("b");
    QVERIFY(a.addNodeChild(b));
    QVERIFY(!b->addNodeChild(&a));
    QVERIFY(!a.addNodeChild(&a));
}

void TestDzNode::selectionFollowsTheScene()
{
    DzNode* a = new DzNode("a");
    DzNode* b = new DzNode("b");
    a->select(true);
    QVERIFY(!a->isSelected()); // not in a scene
    dzScene->addNode(a);
    dzScene->addNode(b);
    QVERIFY(!dzScene->setPrimarySelection(a)); // must be selected already
    a->select(true);
    b->select(true);
    QCOMPARE(dzScene->getPrimarySelection(), a);
    QVERIFY(dzScene->setPrimarySelection(b));
    dzScene->removeNode(b);
    QVERIFY(!b->isSelected());
    QCOMPARE(dzScene->getPrimarySelection(), a);
    dzScene->selectAllNodes(false);
    QVERIFY(!dzScene->getPrimarySelection());
    dzUndoStack->undo();
    QCOMPARE(dzScene->findNode("b"), b);
}

// The figure goes with the last step that moved it, and takes the prop along that a later one
// moved.
void TestDzNode::aStepOutlivesTheNodeThatItMoved()
{
    DzFigure* figure = new DzFigure("f");
    DzBone* hip = new DzBone("hip");
    figure->addNodeChild(hip);
    DzNode* prop = new DzNode("prop");
    dzScene->addNode(figure);
    dzScene->addNode(prop);
    dzScene->removeNode(figure);
    QVERIFY(hip->addNodeChild(prop));
    const QPointer<DzNode> alive(prop);
    dzUndoStack->clearAll();
    QVERIFY(!alive);
}

void TestDzNode::bonesAreFoundByExactName()
{
    DzFigure* figure = new DzFigure("f");
    DzBone* hip = new DzBone("hip");
    figure->addNodeChild(hip);
    DzFigure* other = new DzFigure("g");
    other->addNodeChild(new DzBone("otherHip"));
    hip->addNodeChild(other);
    dzScene->addNode(figure);
    QCOMPARE(figure->findBone("hip"), hip);
    QVERIFY(!figure->findBone("Hip"));
    QVERIFY(!figure->findBone("otherHip")); // belongs to the other figure
    QCOMPARE(other->getNodeChild(0)->getSkeleton(), static_cast<DzSkeleton*>(other));
    QCOMPARE(figure->getSkeleton(), static_cast<DzSkeleton*>(figure));
    QCOMPARE(dzScene->getNumSkeletons(), 2);
    hip->setName("pelvis");
    QVERIFY(!figure->findBone("hip"));
    QCOMPARE(figure->findBone("pelvis"), hip);
    QVERIFY(figure->inherits("DzSkeleton") && figure->iskindof("DzNode"));
    QCOMPARE(figure->className(), QString("DzFigure"));
}

void TestDzNode::aBonesChildrenHangOnItsParentWhenItGoes()
{
    DzFigure* figure = new DzFigure("f");
    DzBone *a = new DzBone("a"), *b = new DzBone("b"), *c = new DzBone("c");
    figure->addNodeChild(a);
    a->addNodeChild(b);
    b->addNodeChild(c);
    dzScene->addNode(figure);
    b->select(true);
    QVERIFY(figure->removeBone(b));
    QVERIFY(!figure->findBone("b"));
    QVERIFY(!dzScene->getPrimarySelection());
    QCOMPARE(c->getNodeParent(), static_cast<DzNode*>(a));
    QCOMPARE(figure->findBone("c"), c);
}

void TestDzNode::defaultsAreReadWithoutTouchingTheChannels()
{
    DzNode n("n");
    n.getXPosControl()->setValue(5);
    n.getYRotControl()->setValue(45);
    QCOMPARE(n.getWSPos(0, true), DzVec3(0, 0, 0));
    QVERIFY(n.getWSRot(0, true).isIdentity());
    QCOMPARE(n.getWSPos(0, false), DzVec3(5, 0, 0));
}

QUILLON_TEST(TestDzNode)
#include "test_dznode.moc"
