// The Optimize Editing command: which way a selection goes, and what it answers.
#include "figure_fixture.h"
#include "room_tests.h"
#include "prop_fixture.h"

#include "figure/figure_calls.h"
#include "ground/plugin_settings.h"

#include <QtTest>

using namespace quillon;

class TestOptimizeEditing : public QObject {
    Q_OBJECT
private slots:
    void init();

    // figures
    void aLeftClickMakesTheHipTheCentre();
    void aRightClickMakesTheRootTheCentre();
    void otherClicksDoNothing_data();
    void otherClicksDoNothing();
    void anUnsupportedFigureIsRefused();
    void aFigureWithoutHipIsRefused();
    void theScenesTimeIsMeant();
    void aChannelOfTheFigureThatCannotFollowIsRefused_data();
    void aChannelOfTheFigureThatCannotFollowIsRefused();

    // props
    void theDialogsChoicesReachTheProp();
    void aCancelLeavesThePropAsItIs();
    void aPropWithoutKeysGetsOrderAndNudgeOnly_data();
    void aPropWithoutKeysGetsOrderAndNudgeOnly();
    void theClickDoesNotMatterForAProp_data();
    void theClickDoesNotMatterForAProp();
    void aChannelOfThePropThatCannotFollowIsRefused();
    void noNodeIsRefused();
};

void TestOptimizeEditing::init()
{
    pluginSettings() = PluginSettings();
}

static void addClickRows(std::initializer_list<int> kinds)
{
    QTest::addColumn<int>("kind");
    for (int kind : kinds)
        QTest::newRow(qPrintable(QString("click kind %1").arg(kind))) << kind;
}

void TestOptimizeEditing::aLeftClickMakesTheHipTheCentre()
{
    FigureFixture f;
    f.bone("hip")->setLocalPos(DzVec3(0, 10, 0));
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    QVERIFY(optimizeEditing(f.figure, f.figure, 1));
    QCOMPARE(f.bone("hip")->getLocalPos(), DzVec3(0, 0, 0));
    QVERIFY(distance(f.figure->getWSPos(), DzVec3(0, 10, 0)) <= 1e-4);
    const QString moved = firstMoved(f.figure, before, 1e-3, 1e-3);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

void TestOptimizeEditing::aRightClickMakesTheRootTheCentre()
{
    FigureFixture f;
    f.figure->setWSPos(DzVec3(100, 0, 0));
    f.figure->getYRotControl()->setValue(90);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    QVERIFY(optimizeEditing(f.bone("lHand"), f.figure, 2));
    QCOMPARE(f.figure->getWSPos(), DzVec3(0, 0, 0));
    QCOMPARE(f.figure->getYRotControl()->getValue(), 0.f);
    const QString moved = firstMoved(f.figure, before, 1e-3, 1e-3);
    QVERIFY2(moved.isEmpty(), qPrintable(moved));
}

void TestOptimizeEditing::otherClicksDoNothing_data()
{
    addClickRows({0, 3, 4});
}

void TestOptimizeEditing::otherClicksDoNothing()
{
    QFETCH(int, kind);
    FigureFixture f;
    f.bone("hip")->setLocalPos(DzVec3(0, 10, 0));
    const FigureState before = stateOf(f.figure);
    QVERIFY(!optimizeEditing(f.figure, f.figure, kind));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestOptimizeEditing::anUnsupportedFigureIsRefused()
{
    FigureFixture f;
    f.bone("hip")->setLocalPos(DzVec3(0, 10, 0));
    f.figure->setName(QLatin1String("Genesis3Female"));
    const FigureState before = stateOf(f.figure);
    QVERIFY(!optimizeEditing(f.figure, f.figure, 1));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestOptimizeEditing::aFigureWithoutHipIsRefused()
{
    FigureFixture f;
    f.figure->removeBone(f.bone("hip"));
    const FigureState before = stateOf(f.figure);
    QVERIFY(!optimizeEditing(f.figure, f.figure, 1));
    QVERIFY(!optimizeEditing(f.figure, f.figure, 2));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestOptimizeEditing::theScenesTimeIsMeant()
{
    FigureFixture f;
    DzFloatProperty* up = f.bone("hip")->getYPosControl();
    up->setValue(0, 10);
    up->setValue(1600, 30);
    f.scene.setTime(1600);
    QVERIFY(optimizeEditing(f.figure, f.figure, 1));
    QCOMPARE(up->getValue(1600), 0.f);
    QCOMPARE(up->getValue(0), 10.f);
}

void TestOptimizeEditing::aChannelOfTheFigureThatCannotFollowIsRefused_data()
{
    addClickRows({1, 2});
}

void TestOptimizeEditing::aChannelOfTheFigureThatCannotFollowIsRefused()
{
    QFETCH(int, kind);
    FigureFixture f;
    f.bone("hip")->setLocalPos(DzVec3(0, 10, 0));
    f.figure->setWSPos(DzVec3(0, 7, 0));
    f.bone("hip")->getYPosControl()->lock(true);
    const FigureState before = stateOf(f.figure);
    QVERIFY(!optimizeEditing(f.figure, f.figure, kind));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

// Answers the dialog with the choices and Accept.
static void acceptWith(QDialog* dialog, const char* origin, const char* order, const char* nudge)
{
    radioButton(dialog, origin)->click();
    radioButton(dialog, order)->click();
    dialog->findChild<QLineEdit*>()->setText(nudge);
    pushButton(dialog, "Accept")->click();
}

void TestOptimizeEditing::theDialogsChoicesReachTheProp()
{
    HostFixture host;
    PropFixture f;
    f.keyFrames({0, 10});
    f.prop->getYRotControl()->setValue(0, 35);
    const std::vector<DzVec3> before = cornersAt(f.prop, 10 * PropFixture::kStep);
    DialogAnswer answer(
        [](QDialog* dialog) { acceptWith(dialog, "Object center", "ZXY", "0.25"); });
    QVERIFY(optimizeEditing(f.prop, nullptr, 1));
    QCOMPARE(f.prop->getRotationOrder().order(), DzRotationOrder::ZXY);
    QVERIFY(distance(f.prop->getOrigin(), DzVec3(10, 25, 10)) <= 1e-4);
    QCOMPARE(f.prop->getYPosControl()->getSensitivity(), 0.25f);
    QVERIFY(furthestMoveCm(before, cornersAt(f.prop, 10 * PropFixture::kStep)) <= 1e-3);
}

void TestOptimizeEditing::aCancelLeavesThePropAsItIs()
{
    HostFixture host;
    PropFixture f;
    f.keyFrames({0, 10});
    f.undoStack.clearAll();
    const float step = f.prop->getXPosControl()->getSensitivity();
    const unsigned changes = f.scene.changeCount();
    DialogAnswer answer([](QDialog* dialog) {
        radioButton(dialog, "ZYX")->click();
        pushButton(dialog, "Cancel")->click();
    });
    QVERIFY(!optimizeEditing(f.prop, nullptr, 1));
    QCOMPARE(f.scene.changeCount(), changes);
    QCOMPARE(f.prop->getRotationOrder().order(), DzRotationOrder::XYZ);
    QCOMPARE(f.prop->getXPosControl()->getSensitivity(), step);
    QCOMPARE(f.undoStack.getNumUndoItems(), 0);
}

void TestOptimizeEditing::aPropWithoutKeysGetsOrderAndNudgeOnly_data()
{
    QTest::addColumn<QString>("origin");
    for (const char* label :
        {"No change", "Imported model origin", "Object center", "Current world center"})
        QTest::newRow(label) << QString(label);
}

void TestOptimizeEditing::aPropWithoutKeysGetsOrderAndNudgeOnly()
{
    QFETCH(QString, origin);
    HostFixture host;
    PropFixture f;
    f.prop->setOrigin(DzVec3(1, 2, 3), true);
    const FigureState before = stateOfElement(f.prop);
    DialogAnswer answer(
        [&origin](QDialog* dialog) { acceptWith(dialog, qPrintable(origin), "YXZ", "3"); });
    QVERIFY(optimizeEditing(f.prop, nullptr, 1));
    const FigureState after = stateOfElement(f.prop);
    VERIFY_SAME_STATE(before, after);
    QCOMPARE(f.prop->getRotationOrder().order(), DzRotationOrder::YXZ);
    for (const DzFloatProperty* channel :
        {f.prop->getXPosControl(), f.prop->getYPosControl(), f.prop->getZPosControl()})
        QCOMPARE(channel->getSensitivity(), 3.f);
}

void TestOptimizeEditing::theClickDoesNotMatterForAProp_data()
{
    addClickRows({0, 1, 2, 3});
}

void TestOptimizeEditing::theClickDoesNotMatterForAProp()
{
    QFETCH(int, kind);
    HostFixture host;
    PropFixture f;
    DialogAnswer answer([](QDialog* dialog) { acceptWith(dialog, "No change", "XZY", "2"); });
    QVERIFY(optimizeEditing(f.prop, nullptr, kind));
    QCOMPARE(answer.shown, 1);
    QCOMPARE(f.prop->getRotationOrder().order(), DzRotationOrder::XZY);
}

void TestOptimizeEditing::aChannelOfThePropThatCannotFollowIsRefused()
{
    HostFixture host;
    PropFixture f;
    f.keyFrames({0, 10});
    f.prop->getXRotControl()->setValue(0, 35); // unturned, the origin's move is all there is
    f.prop->getYPosControl()->lock(true);
    const FigureState before = stateOfElement(f.prop);
    const float step = f.prop->getYPosControl()->getSensitivity();
    DialogAnswer answer([](QDialog* dialog) { acceptWith(dialog, "Object center", "ZXY", "3"); });
    QVERIFY(!optimizeEditing(f.prop, nullptr, 1));
    const FigureState after = stateOfElement(f.prop);
    VERIFY_SAME_STATE(before, after);
    QCOMPARE(f.prop->getRotationOrder().order(), DzRotationOrder::XYZ);
    QCOMPARE(f.prop->getYPosControl()->getSensitivity(), step);
    QCOMPARE(pluginSettings().propOrigin, 2); // the dialog was accepted
    QCOMPARE(pluginSettings().translationNudge, 3.f);
}

void TestOptimizeEditing::noNodeIsRefused()
{
    HostFixture host;
    DialogAnswer answer([](QDialog* dialog) { dialog->accept(); });
    QVERIFY(!optimizeEditing(nullptr, nullptr, 1));
    QCOMPARE(answer.shown, 0);
}

QUILLON_TEST(TestOptimizeEditing)
#include "test_optimize_editing.moc"
