// Holds, steps, locks, and restoration bit for bit.
#include "scene_fixture.h"
#include "room_tests.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"

#include <QtTest>

#include <cstring>

// Every bit of every property of every node of the scene, and the nodes' own flags.
static QByteArray snapshot()
{
    QByteArray bytes;
    const auto add
        = [&bytes](const void* p, int n) { bytes.append(static_cast<const char*>(p), n); };
    for (int i = 0; i < dzScene->getNumNodes(); ++i) {
        const DzNode* node = dzScene->getNode(i);
        bytes += node->getName().toUtf8() + node->getLabel().toUtf8();
        const int flags[] = {node->getRotationOrder().order(), node->inheritsScale(),
            node->getNodeParent() ? 1 : 0, node->getNumNodeChildren()};
        add(flags, sizeof flags);
        for (int k = 0; k < node->getNumProperties(); ++k) {
            const auto* p = qobject_cast<const DzFloatProperty*>(node->getProperty(k));
            const float numbers[] = {p->getMin(), p->getMax(), p->getDefaultValue(),
                p->getSensitivity(), p->getValue(), p->getRawValue()};
            const int states[] = {p->isLocked(), p->isClamped(), p->isOverridingControllers()};
            add(numbers, sizeof numbers);
            add(states, sizeof states);
            for (int key = 0; key < p->getNumKeys(); ++key) {
                const int time = p->getKeyTime(key);
                const float value = p->getKeyValue(key);
                add(&time, sizeof time);
                add(&value, sizeof value);
            }
        }
    }
    return bytes;
}

class TestDzUndoStack : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void aChangeOutsideAHoldIsAStep();
    void aPlacementOutsideAHoldIsOneStep();
    void aHoldIsOneStepHoweverManyChanges();
    void acceptingAnOutermostHoldAddsAStepEvenWhenEmpty();
    void aNestedAcceptAddsNone();
    void cancelTakesBackOnlyItsOwnHold();
    void dropKeepsItemsInTheOuterHold();
    void aHoldThatDiesOpenIsDropped();
    void aLockedStackRecordsNothing();
    void locksNest();
    void aNewStepDropsWhatCouldBeRedone();
    void undoIsRefusedInsideAHold();
    void writingThePresentValueRecordsNothing();
    void thousandRandomOperationsComeBackBitForBit();
    void theOldestStepsFallOff();
    void nodesComeAndGoWithoutLeaks();

private:
    DzNode* m_node;
    std::unique_ptr<SceneFixture> m_fixture;
};

void TestDzUndoStack::init()
{
    m_fixture.reset(new SceneFixture);
    m_node = new DzNode("node");
    dzScene->addNode(m_node);
    dzUndoStack->clearAll();
}

void TestDzUndoStack::cleanup()
{
    m_fixture.reset();
}

void TestDzUndoStack::aChangeOutsideAHoldIsAStep()
{
    m_node->getXPosControl()->setValue(1);
    m_node->getXPosControl()->setValue(2);
    QCOMPARE(dzUndoStack->getUndoCaptions(),
        QStringList() << "X Translate"
                      << "X Translate");
    QVERIFY(dzUndoStack->undo());
    QCOMPARE(m_node->getXPosControl()->getValue(), 1.0f);
    QVERIFY(dzUndoStack->undo());
    QVERIFY(!m_node->getXPosControl()->hasKeys());
    QVERIFY(!dzUndoStack->undo());
    QVERIFY(dzUndoStack->redo());
    QVERIFY(dzUndoStack->redo());
    QCOMPARE(m_node->getXPosControl()->getValue(), 2.0f);
    QVERIFY(!dzUndoStack->redo());
}

void TestDzUndoStack::aPlacementOutsideAHoldIsOneStep()
{
    m_node->setWSTransform(DzVec3(1, 2, 3), DzQuat(0.1, 0.2, 0.3, 0.9), DzMatrix3());
    QCOMPARE(dzUndoStack->getNumUndoItems(), 1);
    m_node->setOrigin(m_node->getOrigin()); // nothing changes: no step
    QCOMPARE(dzUndoStack->getNumUndoItems(), 1);
}

void TestDzUndoStack::aHoldIsOneStepHoweverManyChanges()
{
    {
        DzUndoStackHold hold;
        for (int i = 0; i < 100; ++i)
            m_node->getXPosControl()->setValue(float(i));
        m_node->getYRotControl()->lock(true);
        m_node->setRotationOrder(DzRotationOrder::ZYX);
        hold.accept("many");
    }
    QCOMPARE(dzUndoStack->getUndoCaptions(), QStringList("many"));
    QCOMPARE(dzUndoStack->getUndoCaption(), QString("many"));
    dzUndoStack->undo();
    QVERIFY(!m_node->getXPosControl()->hasKeys());
    QVERIFY(!m_node->getYRotControl()->isLocked());
    QVERIFY(m_node->getRotationOrder() == DzRotationOrder::XYZ);
    QCOMPARE(dzUndoStack->getRedoCaption(), QString("many"));
}

void TestDzUndoStack::acceptingAnOutermostHoldAddsAStepEvenWhenEmpty()
{
    DzUndoStackHold hold;
    hold.accept("empty");
    QCOMPARE(dzUndoStack->getUndoCaptions(), QStringList("empty"));
    QVERIFY(dzUndoStack->undo());
}

void TestDzUndoStack::aNestedAcceptAddsNone()
{
    DzUndoStackHold outer;
    {
        DzUndoStackHold inner;
        m_node->getXPosControl()->setValue(1);
        inner.accept("inner");
    }
    QCOMPARE(dzUndoStack->getNumUndoItems(), 0);
    m_node->getXPosControl()->setValue(2);
    outer.accept("outer");
    QCOMPARE(dzUndoStack->getUndoCaptions(), QStringList("outer"));
    dzUndoStack->undo();
    QVERIFY(!m_node->getXPosControl()->hasKeys());
    dzUndoStack->redo();
    QCOMPARE(m_node->getXPosControl()->getValue(), 2.0f);
}

void TestDzUndoStack::cancelTakesBackOnlyItsOwnHold()
{
    DzUndoStackHold outer;
    m_node->getXPosControl()->setValue(1);
    {
        DzUndoStackHold inner;
        m_node->getXPosControl()->setValue(2);
        inner.cancel();
    }
    QCOMPARE(m_node->getXPosControl()->getValue(), 1.0f);
    m_node->getXPosControl()->setValue(3);
    outer.cancel();
    QVERIFY(!m_node->getXPosControl()->hasKeys());
    QCOMPARE(dzUndoStack->getNumUndoItems(), 0);
}

void TestDzUndoStack::dropKeepsItemsInTheOuterHold()
{
    DzUndoStackHold outer;
    {
        DzUndoStackHold inner;
        m_node->getXPosControl()->setValue(2);
        inner.drop();
    }
    outer.accept("outer");
    dzUndoStack->undo();
    QVERIFY(!m_node->getXPosControl()->hasKeys());
}

void TestDzUndoStack::aHoldThatDiesOpenIsDropped()
{
    {
        DzUndoStackHold hold;
        m_node->getXPosControl()->setValue(2);
    }
    QCOMPARE(dzUndoStack->getHoldDepth(), 0);
    QCOMPARE(dzUndoStack->getNumUndoItems(), 0);
    QCOMPARE(m_node->getXPosControl()->getValue(), 2.0f);
}

void TestDzUndoStack::aLockedStackRecordsNothing()
{
    DzUndoStackLock lock;
    m_node->getXPosControl()->setValue(2);
    DzUndoStackHold hold;
    m_node->getXPosControl()->setValue(3);
    hold.accept("nothing");
    QCOMPARE(dzUndoStack->getNumUndoItems(), 0);
}

void TestDzUndoStack::locksNest()
{
    dzUndoStack->lock();
    dzUndoStack->lock();
    dzUndoStack->unlock();
    QVERIFY(dzUndoStack->isLocked());
    dzUndoStack->unlock();
    QVERIFY(!dzUndoStack->isLocked());
    dzUndoStack->unlock(); // one too many does no harm
    QVERIFY(!dzUndoStack->isLocked());
}

void TestDzUndoStack::aNewStepDropsWhatCouldBeRedone()
{
    m_node->getXPosControl()->setValue(1);
    dzUndoStack->undo();
    QVERIFY(dzUndoStack->canRedo());
    m_node->getYPosControl()->setValue(1);
    QVERIFY(!dzUndoStack->canRedo());
}

void TestDzUndoStack::undoIsRefusedInsideAHold()
{
    m_node->getXPosControl()->setValue(1);
    DzUndoStackHold hold;
    QVERIFY(!dzUndoStack->undo());
    QCOMPARE(m_node->getXPosControl()->getValue(), 1.0f);
}

void TestDzUndoStack::writingThePresentValueRecordsNothing()
{
    m_node->getXPosControl()->setValue(1);
    const int count = dzUndoStack->getNumUndoItems();
    m_node->getXPosControl()->setValue(1);
    m_node->getXPosControl()->lock(false);
    m_node->setName("node");
    QCOMPARE(dzUndoStack->getNumUndoItems(), count);
}

static DzFigure* makeFigure()
{
    DzFigure* figure = new DzFigure("f");
    DzNode* last = figure;
    for (int i = 0; i < 12; ++i) {
        DzBone* bone = new DzBone(QString("b%1").arg(i));
        last->addNodeChild(bone);
        last = i % 3 ? bone : static_cast<DzNode*>(figure);
    }
    return figure;
}

static void randomOperation(Random* random)
{
    DzNode* node = dzScene->getNode(random->below(dzScene->getNumNodes()));
    auto* p = qobject_cast<DzFloatProperty*>(
        node->getProperty(random->below(node->getNumProperties())));
    const float value = float(random->between(-180, 180));
    switch (random->below(16)) {
    case 0:
        p->lock(!p->isLocked());
        break;
    case 1:
        p->setIsClamped(!p->isClamped());
        break;
    case 2:
        p->setMinMax(value, value + 50);
        break;
    case 3:
        p->deleteAllKeys();
        break;
    case 4:
        p->setDefaultValue(value);
        break;
    case 5:
        p->setSensitivity(1 + std::fabs(value));
        break;
    case 6:
        node->setRotationOrder(DzRotationOrder::RotOrder(random->below(6)));
        break;
    case 7:
        node->setInheritScale(!node->inheritsScale());
        break;
    case 8:
        node->setWSRot(DzQuat(random->between(-1, 1), random->between(-1, 1),
            random->between(-1, 1), random->between(-1, 1)));
        break;
    case 9:
        node->setWSPos(DzVec3(value, value, value));
        break;
    case 10:
        node->setLabel(QString::number(value));
        break;
    case 11: {
        DzNode* other = dzScene->getNode(random->below(dzScene->getNumNodes()));
        if (other->inherits("DzFigure") || node->inherits("DzFigure"))
            other = new DzNode("prop");
        node->addNodeChild(other, random->below(2));
        break;
    }
    case 12:
        if (dzScene->getNumNodes() > 8 && !node->inherits("DzFigure"))
            dzScene->removeNode(node);
        break;
    case 13:
        p->setOverrideControllers(!p->isOverridingControllers());
        break;
    default:
        p->setValue(random->below(5) * 160, value);
    }
}

void TestDzUndoStack::thousandRandomOperationsComeBackBitForBit()
{
    dzScene->addNode(makeFigure());
    dzUndoStack->clearAll();
    Random random(99);
    QList<QByteArray> states; // state before each step
    while (states.size() < 1000) {
        const QByteArray before = snapshot();
        const int count = dzUndoStack->getNumUndoItems();
        if (random.below(4) == 0) {
            DzUndoStackHold hold;
            for (int i = random.below(8); i >= 0; --i)
                randomOperation(&random);
            hold.accept("group");
        } else {
            randomOperation(&random);
        }
        QVERIFY(dzUndoStack->getNumUndoItems() - count <= 2); // a new prop, then its place
        for (int i = count; i < dzUndoStack->getNumUndoItems(); ++i)
            states.append(i == count ? before : QByteArray());
    }
    const QByteArray last = snapshot();
    for (int i = states.size() - 1; i >= 0; --i) {
        QVERIFY(dzUndoStack->undo());
        if (!states.at(i).isEmpty())
            QVERIFY2(snapshot() == states.at(i), qPrintable(QString("step %1").arg(i)));
    }
    while (dzUndoStack->redo()) { }
    QVERIFY(snapshot() == last);
}

void TestDzUndoStack::theOldestStepsFallOff()
{
    dzUndoStack->setMemoryLimit(20000);
    for (int i = 0; i < 1000; ++i)
        m_node->getXPosControl()->setValue(float(i + 1));
    QVERIFY(dzUndoStack->getMemoryUse() <= 20000);
    QVERIFY(dzUndoStack->getNumUndoItems() > 1);
    QVERIFY(dzUndoStack->getNumUndoItems() < 1000);
    while (dzUndoStack->undo()) { }
    QVERIFY(m_node->getXPosControl()->getValue() > 1);
}

void TestDzUndoStack::nodesComeAndGoWithoutLeaks()
{
    QPointer<DzNode> node = new DzNode("guest");
    dzScene->addNode(node);
    dzScene->removeNode(node);
    QVERIFY(node); // an undo could bring it back
    dzUndoStack->undo();
    QCOMPARE(dzScene->findNode("guest"), node.data());
    dzUndoStack->undo();
    QVERIFY(!dzScene->findNode("guest"));
    QVERIFY(node);
    m_node->getXPosControl()->setValue(1); // drops the redo steps, and the node with them
    QVERIFY(!node);
}

QUILLON_TEST(TestDzUndoStack)
#include "test_dzundostack.moc"
