// The value chain of a property: keys, controllers, clamp, lock.
#include "scene_fixture.h"
#include "room_tests.h"

#include "dzerclink.h"
#include "dzfloatproperty.h"
#include "dznode.h"

#include <QtTest>

#include <limits>

class TestDzFloatProperty : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void writingPlacesAKeyAtItsTime();
    void interpolatesBetweenKeysAndIsConstantOutside();
    void constantAndLinearKeys();
    void keysAreDeletedByRange();
    void clampActsOnTheFinalValueOnly();
    void settingAClampedValueBackStoresIt();
    void lockRefusesValuesAndKeysButControllersStillMove();
    void everyLinkTypeFollowsItsFormula_data();
    void everyLinkTypeFollowsItsFormula();
    void setValueWorksBackwardsThroughControllers();
    void settingTheValueReadChangesNothing();
    void rawValueIsExactWithControllers();
    void overridingSwitchesControllersOff();
    void aDriverChangeReachesTheEndOfTheChain();
    void aCircleOfDriversIsRefused();
    void aRemovedDriverLeavesTheValueAlone();
    void aPropertyThatCannotAnimateChangesItsDefault();
    void timeDecidesWhatIsRead();
    void nonFiniteNumbersAreIgnored();

private:
    std::unique_ptr<SceneFixture> m_fixture;
};

void TestDzFloatProperty::init()
{
    m_fixture.reset(new SceneFixture);
}

void TestDzFloatProperty::cleanup()
{
    m_fixture.reset();
}

void TestDzFloatProperty::writingPlacesAKeyAtItsTime()
{
    DzFloatProperty p("p", true, false, 3);
    QVERIFY(!p.hasKeys());
    QCOMPARE(p.getValue(), 3.0f);
    p.setValue(480, 7);
    QCOMPARE(p.getNumKeys(), 1);
    QCOMPARE(p.getKeyTime(0), 480);
    QCOMPARE(p.getValue(), 7.0f); // constant before the first key
    p.setValue(480, 8);
    QCOMPARE(p.getNumKeys(), 1);
    p.setValue(0, 1);
    QCOMPARE(p.getKeyTime(0), 0);
    QCOMPARE(p.getKeyRange(), DzTimeRange(0, 480));
    p.setKeyValue(1, 9);
    QCOMPARE(p.getKeyValue(1), 9.0f);
    p.deleteAllKeys();
    QCOMPARE(p.getValue(), 3.0f);
}

void TestDzFloatProperty::interpolatesBetweenKeysAndIsConstantOutside()
{
    DzFloatProperty p("p");
    p.setValue(1000, 10);
    p.setValue(2000, 20);
    QCOMPARE(p.getValue(0), 10.0f);
    QCOMPARE(p.getValue(9999), 20.0f);
    QVERIFY(nearly(p.getValue(1500), 15, 1e-5)); // two keys: a straight line
    QVERIFY(nearly(p.getValue(1250), 12.5, 1e-5));
    p.setValue(3000, 20);
    // Catmull-Rom by hand: slopes 10 and 5 per span, u = 1/2
    QVERIFY(nearly(p.getValue(1500), 15 + (10 - 5) / 8.0, 1e-5));
    QCOMPARE(p.getValue(2000), 20.0f);
}

void TestDzFloatProperty::constantAndLinearKeys()
{
    DzFloatProperty p("p");
    p.setValue(0, 0, DzFloatProperty::Constant);
    p.setValue(100, 10, DzFloatProperty::Linear);
    p.setValue(200, 0, DzFloatProperty::Linear);
    p.setValue(300, 50);
    QCOMPARE(p.getValue(99), 0.0f);
    QVERIFY(nearly(p.getValue(150), 5, 1e-6));
    p.setValue(100, 12); // keeps the kind of the key
    QVERIFY(nearly(p.getValue(150), 6, 1e-6));
}

void TestDzFloatProperty::keysAreDeletedByRange()
{
    DzFloatProperty p("p");
    for (int t = 0; t <= 1000; t += 100)
        p.setValue(t, float(t));
    QCOMPARE(p.getNumKeys(DzTimeRange(100, 300)), 3);
    p.deleteKeys(DzTimeRange(100, 300)); // both ends included
    QCOMPARE(p.getNumKeys(), 8);
    QCOMPARE(p.getKeyTime(1), 400);
}

void TestDzFloatProperty::clampActsOnTheFinalValueOnly()
{
    DzFloatProperty p("p");
    p.setMinMax(-10, 10);
    p.setValue(25);
    QCOMPARE(p.getValue(), 25.0f);
    p.setIsClamped(true);
    QCOMPARE(p.getValue(), 10.0f);
    QCOMPARE(p.getRawValue(), 25.0f);
    p.setIsClamped(false);
    QCOMPARE(p.getValue(), 25.0f);
}

void TestDzFloatProperty::settingAClampedValueBackStoresIt()
{
    DzFloatProperty p("p");
    p.setMinMax(-10, 10);
    p.setIsClamped(true);
    p.setValue(25);
    p.setValue(p.getValue());
    p.setIsClamped(false);
    QCOMPARE(p.getValue(), 10.0f);
}

void TestDzFloatProperty::lockRefusesValuesAndKeysButControllersStillMove()
{
    DzFloatProperty driver("driver"), p("p");
    p.insertController(new DzERCLink(&driver, DzERCLink::ERCDeltaAdd0, 2));
    p.setValue(5);
    p.lock(true);
    p.setValue(6);
    p.setRawValue(7);
    p.setValue(100, 8);
    p.setKeyValue(0, 9);
    p.deleteAllKeys();
    QCOMPARE(p.getNumKeys(), 1);
    QCOMPARE(p.getRawValue(), 5.0f);
    driver.setValue(10);
    QCOMPARE(p.getValue(), 25.0f);
    p.lock(false);
    p.setValue(6);
    QCOMPARE(p.getValue(), 6.0f);
}

void TestDzFloatProperty::everyLinkTypeFollowsItsFormula_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<float>("result"); // v = 6, c = 3, m = 2, a = 1
    QTest::newRow("delta add") << 0 << 13.0f;
    QTest::newRow("divide into") << 1 << 1.5f;
    QTest::newRow("divide by") << 2 << 3.0f;
    QTest::newRow("multiply") << 3 << 19.0f;
    QTest::newRow("subtract") << 4 << 4.0f;
    QTest::newRow("add") << 5 << 10.0f;
    QTest::newRow("keyed") << 6 << 46.0f;
}

void TestDzFloatProperty::everyLinkTypeFollowsItsFormula()
{
    QFETCH(int, type);
    QFETCH(float, result);
    DzFloatProperty driver("driver"), p("p");
    driver.setValue(3);
    auto* link = new DzERCLink(&driver, DzERCLink::ERCType(type), 2, 1);
    link->addKeyValue(4, 60);
    link->addKeyValue(2, 20); // P(3) = 40
    p.setValue(6);
    QVERIFY(p.insertController(link));
    QCOMPARE(link->getProperty(), static_cast<DzNumericProperty*>(&driver));
    QCOMPARE(p.getValue(), result);
    p.setValue(17);
    QVERIFY(nearly(p.getValue(), 17, 1e-5));
}

void TestDzFloatProperty::setValueWorksBackwardsThroughControllers()
{
    DzFloatProperty a("a"), b("b"), p("p");
    p.insertController(new DzERCLink(&a, DzERCLink::ERCDeltaAdd0, 10));
    p.insertController(new DzERCLink(&b, DzERCLink::ERCMultiply3));
    a.setValue(2);
    b.setValue(4);
    p.setValue(100);
    QCOMPARE(p.getValue(), 100.0f);
    QCOMPARE(p.getRawValue(), 5.0f); // (5 + 20) * 4
    b.setValue(0);
    p.setValue(3); // nothing times 0 is 3: refused
    QCOMPARE(p.getRawValue(), 5.0f);
}

void TestDzFloatProperty::settingTheValueReadChangesNothing()
{
    DzFloatProperty a("a"), p("p");
    p.insertController(new DzERCLink(&a, DzERCLink::ERCDeltaAdd0, 0.1));
    Random random(3);
    for (int i = 0; i < 1000; ++i) {
        a.setValue(float(random.between(-50, 50)));
        p.setRawValue(float(random.between(-180, 180)));
        const float raw = p.getRawValue(), value = p.getValue();
        p.setValue(value);
        QCOMPARE(p.getRawValue(), raw);
        QCOMPARE(p.getValue(), value);
    }
}

void TestDzFloatProperty::rawValueIsExactWithControllers()
{
    DzFloatProperty a("a"), p("p");
    p.insertController(new DzERCLink(&a, DzERCLink::ERCDeltaAdd0, 33));
    a.setValue(0.77f);
    p.setRawValue(12.3456f);
    QCOMPARE(p.getRawValue(), 12.3456f);
}

void TestDzFloatProperty::overridingSwitchesControllersOff()
{
    DzFloatProperty a("a"), p("p");
    p.insertController(new DzERCLink(&a, DzERCLink::ERCDeltaAdd0, 1));
    a.setValue(4);
    QCOMPARE(p.getValue(), 4.0f);
    QVERIFY(!p.setOverrideControllers(true));
    QCOMPARE(p.getValue(), 0.0f);
    QVERIFY(p.setOverrideControllers(false));
    a.setValue(5);
    QCOMPARE(p.getValue(), 5.0f);
}

void TestDzFloatProperty::aDriverChangeReachesTheEndOfTheChain()
{
    DzFloatProperty a("a"), b("b");
    DzNode node("n");
    b.insertController(new DzERCLink(&a, DzERCLink::ERCDeltaAdd0, 2));
    node.getXPosControl()->insertController(new DzERCLink(&b, DzERCLink::ERCDeltaAdd0, 3));
    QCOMPARE(node.getWSPos().m_x, 0.0f);
    a.setValue(1);
    QCOMPARE(node.getWSPos().m_x, 6.0f);
    a.setValue(2);
    QCOMPARE(node.getWSPos().m_x, 12.0f);
}

void TestDzFloatProperty::aCircleOfDriversIsRefused()
{
    DzFloatProperty a("a"), b("b");
    QVERIFY(b.insertController(new DzERCLink(&a, DzERCLink::ERCDeltaAdd0)));
    std::unique_ptr<DzERCLink> back(new DzERCLink(&b, DzERCLink::ERCDeltaAdd0));
    QVERIFY(!a.insertController(back.get()));
    std::unique_ptr<DzERCLink> self(new DzERCLink(&a, DzERCLink::ERCDeltaAdd0));
    QVERIFY(!a.insertController(self.get()));
}

void TestDzFloatProperty::aRemovedDriverLeavesTheValueAlone()
{
    DzElement element("e");
    auto* a = new DzFloatProperty("a");
    element.addProperty(a);
    DzFloatProperty p("p");
    p.insertController(new DzERCLink(a, DzERCLink::ERCDeltaAdd0, 1));
    a->setValue(4);
    QCOMPARE(p.getValue(), 4.0f);
    QVERIFY(element.removeProperty(a));
    QCOMPARE(p.getNumControllers(), 0);
    QCOMPARE(p.getValue(), 0.0f);
    QVERIFY(!element.findProperty("a"));

    DzFloatProperty q("q");
    {
        DzFloatProperty shortLived("s");
        shortLived.setValue(9);
        q.insertController(new DzERCLink(&shortLived, DzERCLink::ERCDeltaAdd0, 1));
        QCOMPARE(q.getValue(), 9.0f);
    }
    QCOMPARE(q.getValue(), 0.0f);
}

void TestDzFloatProperty::aPropertyThatCannotAnimateChangesItsDefault()
{
    DzFloatProperty p("p", false, false, 1);
    p.setValue(500, 4);
    QVERIFY(!p.hasKeys());
    QCOMPARE(p.getDefaultValue(), 4.0f);
    QCOMPARE(p.getValue(), 4.0f);
}

void TestDzFloatProperty::timeDecidesWhatIsRead()
{
    DzFloatProperty p("p"), driven("d");
    driven.insertController(new DzERCLink(&p, DzERCLink::ERCDeltaAdd0, 2));
    p.setValue(0, 1);
    p.setValue(160, 5);
    QCOMPARE(driven.getValue(), 2.0f);
    dzScene->setTime(160);
    QCOMPARE(p.getValue(), 5.0f);
    QCOMPARE(driven.getValue(), 10.0f);
    QCOMPARE(driven.getValue(0), 2.0f);
    p.setValue(6);
    QCOMPARE(p.getKeyValue(1), 6.0f);
    dzScene->setTime(0);
    QCOMPARE(driven.getValue(), 2.0f);
}

void TestDzFloatProperty::nonFiniteNumbersAreIgnored()
{
    DzFloatProperty p("p");
    p.setValue(2);
    p.setValue(std::numeric_limits<float>::quiet_NaN());
    p.setRawValue(std::numeric_limits<float>::infinity());
    QCOMPARE(p.getValue(), 2.0f);
}

QUILLON_TEST(TestDzFloatProperty)
#include "test_dzfloatproperty.moc"
