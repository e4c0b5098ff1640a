// What a press on the main page does beyond its status text: which kind of click reaches which
// operation, what the boxes leave standing, and where the pointer is taken to be.
#include "pose_fixture.h"
#include "button_numbers.h"
#include "room_tests.h"

#include "finder/browse_session.h"
#include "ground/data_folder.h"
#include "ground/message_boxes.h"
#include "ground/plugin_settings.h"
#include "ground/status_message.h"
#include "pane/command_dispatch.h"
#include "pane/hover.h"
#include "pane/page_layout.h"
#include "pane/page_state.h"
#include "pane/tool_tips.h"
#include "posefile/reference_pose.h"
#include "services/patch_table.h"
#include "services/update_notice.h"

#include "dzcontentmgr.h"

using namespace quillon;

static const QSize kPane(512, 1024);
static const double kNoise = 1e-4; // channels are single precision, some pass through a file

static QPoint centreOf(int gridButton)
{
    return QPoint(77 + 120 * (gridButton % 4), 317 + 102 * (gridButton / 4));
}

class TestCommandEffects : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PoseFixture> m_rig;

    void press(int gridButton, int kind) const
    {
        dispatchPress(kPane, centreOf(gridButton), ClickKind(kind));
    }
    DzFloatProperty* turnOf(const char* bone) const
    {
        return m_rig->bone(bone)->getZRotControl();
    }
    DzNode* selectedProp() const
    {
        DzNode* prop = new DzNode("prop");
        dzScene->addNode(prop);
        dzScene->selectAllNodes(false);
        prop->select(true);
        dzScene->setPrimarySelection(prop);
        return prop;
    }

private slots:
    void init();
    void cleanup();

    // ---- which click does what
    void boneTranslationsAreLimitedByTheLeftClickAlone_data();
    void boneTranslationsAreLimitedByTheLeftClickAlone();
    void resetTakesThePartOfItsClick_data();
    void resetTakesThePartOfItsClick();
    void bakeTakesTheControlsOfItsClick_data();
    void bakeTakesTheControlsOfItsClick();
    void swapTakesTheBonesBelowWithALeftClickOnly_data();
    void swapTakesTheBonesBelowWithALeftClickOnly();
    void symmetrizeTakesTheBonesBelowWithALeftClickOnly_data();
    void symmetrizeTakesTheBonesBelowWithALeftClickOnly();
    void aPropIsMirroredAtTheTimeOfTheScene();
    void rightOnSwapAndSymmetrizeAndMiddleOnReferenceAndBakeDoNothing_data();
    void rightOnSwapAndSymmetrizeAndMiddleOnReferenceAndBakeDoNothing();
    void limitsAndTranslationsNeedTheFigureNode_data();
    void limitsAndTranslationsNeedTheFigureNode();

    // ---- texts and boxes
    void symmetrizeTellsItsTextExactly();
    void patchingTellsItsTextExactly_data();
    void patchingTellsItsTextExactly();
    void boxesOfRefusalAndTheStatus_data();
    void boxesOfRefusalAndTheStatus();

    // ---- the pointer
    void aButtonIsHitAsItWasDrawnBeforeThePress_data();
    void aButtonIsHitAsItWasDrawnBeforeThePress();
    void theLinkIsHitAsItWasDrawnBeforeThePress_data();
    void theLinkIsHitAsItWasDrawnBeforeThePress();
    void everyPressMovesThePointer_data();
    void everyPressMovesThePointer();
    void afterTheCommandTheTipIsThatOfTheNewPage();
};

void TestCommandEffects::init()
{
    m_rig.reset(new PoseFixture);
    locateDataFiles();
    pageState() = PageState();
    browseSession() = BrowseSession();
    pluginSettings() = PluginSettings();
    clearStatusMessage();
    leaveHover(kPane);
    liftEveryLimit(m_rig->figure); // any value will do
    clearAllLocks(m_rig->figure);
    dzUndoStack->clearAll();
}

void TestCommandEffects::cleanup()
{
    m_rig.reset();
    locateDataFiles();
}

// ---- which click does what -------------------------------------------------------------------

void TestCommandEffects::boneTranslationsAreLimitedByTheLeftClickAlone_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<float>("beyondCm");
    QTest::addColumn<float>("withinCm");
    QTest::newRow("left") << int(LeftClick) << 0.15f << 0.1f;
    QTest::newRow("right") << int(RightClick) << 0.f << 0.f;
    QTest::newRow("middle") << int(MiddleClick) << 0.f << 0.f;
}

void TestCommandEffects::boneTranslationsAreLimitedByTheLeftClickAlone()
{
    QFETCH(int, kind);
    QFETCH(float, beyondCm);
    QFETCH(float, withinCm);
    DzBone* shin = m_rig->bone("lShin");
    shin->getXPosControl()->setValue(0.3f);
    shin->getYPosControl()->setValue(-7);
    shin->getZPosControl()->setValue(0.1f);
    press(7, kind);
    QCOMPARE(shin->getXPosControl()->getValue(), beyondCm);
    QCOMPARE(shin->getYPosControl()->getValue(), -beyondCm);
    QCOMPARE(shin->getZPosControl()->getValue(), withinCm);
}

void TestCommandEffects::resetTakesThePartOfItsClick_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("below");
    QTest::addColumn<bool>("hand");
    QTest::newRow("left: the bones below as well") << int(LeftClick) << true << true << false;
    QTest::newRow("right: face, hands and feet") << int(RightClick) << false << false << true;
    QTest::newRow("middle: no other bone") << int(MiddleClick) << true << false << false;
}

void TestCommandEffects::resetTakesThePartOfItsClick()
{
    QFETCH(int, kind);
    QFETCH(bool, selected);
    QFETCH(bool, below);
    QFETCH(bool, hand);
    const char* const bones[] = {"lShldrBend", "lForearmTwist", "lHand"};
    const bool reset[] = {selected, below, hand};
    m_rig->selectBones(QStringList("lShldrBend"));
    for (const char* bone : bones)
        m_rig->bone(bone)->getXRotControl()->setValue(20);
    press(2, kind);
    for (int i = 0; i < 3; ++i) {
        const float expected = reset[i] ? 0.f : 20.f;
        const float value = m_rig->bone(bones[i])->getXRotControl()->getValue();
        QVERIFY2(nearly(value, expected, kNoise), bones[i]);
    }
}

void TestCommandEffects::bakeTakesTheControlsOfItsClick_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<float>("body");
    QTest::addColumn<float>("face");
    QTest::newRow("left") << int(LeftClick) << 0.f << 0.5f;
    QTest::newRow("right") << int(RightClick) << 0.5f << 0.f;
    QTest::newRow("middle") << int(MiddleClick) << 0.5f << 0.5f;
}

void TestCommandEffects::bakeTakesTheControlsOfItsClick()
{
    QFETCH(int, kind);
    QFETCH(float, body);
    QFETCH(float, face);
    m_rig->control("pCTRLHipBend")->setValue(0.5f);
    m_rig->control("eCTRLMouthOpen")->setValue(0.5f);
    press(8, kind);
    QCOMPARE(m_rig->control("pCTRLHipBend")->getValue(), body);
    QCOMPARE(m_rig->control("eCTRLMouthOpen")->getValue(), face);
}

void TestCommandEffects::swapTakesTheBonesBelowWithALeftClickOnly_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<float>("leftForearm");
    QTest::addColumn<float>("rightForearm");
    QTest::newRow("left") << int(LeftClick) << 0.f << -30.f;
    QTest::newRow("middle") << int(MiddleClick) << 30.f << 0.f;
}

void TestCommandEffects::swapTakesTheBonesBelowWithALeftClickOnly()
{
    QFETCH(int, kind);
    QFETCH(float, leftForearm);
    QFETCH(float, rightForearm);
    m_rig->selectBones(QStringList("lShldrBend"));
    turnOf("lShldrBend")->setValue(20);
    turnOf("lForearmBend")->setValue(30);
    press(4, kind);
    QVERIFY(nearly(turnOf("lShldrBend")->getValue(), 0, kNoise));
    QVERIFY(nearly(turnOf("rShldrBend")->getValue(), -20, kNoise));
    QVERIFY(nearly(turnOf("lForearmBend")->getValue(), leftForearm, kNoise));
    QVERIFY(nearly(turnOf("rForearmBend")->getValue(), rightForearm, kNoise));
}

void TestCommandEffects::symmetrizeTakesTheBonesBelowWithALeftClickOnly_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<float>("forearm");
    QTest::newRow("left") << int(LeftClick) << -30.f;
    QTest::newRow("middle") << int(MiddleClick) << 0.f;
}

void TestCommandEffects::symmetrizeTakesTheBonesBelowWithALeftClickOnly()
{
    QFETCH(int, kind);
    QFETCH(float, forearm);
    m_rig->selectBones(QStringList("lShldrBend"));
    turnOf("rShldrBend")->setValue(20);
    turnOf("rForearmBend")->setValue(30);
    press(5, kind);
    QVERIFY(nearly(turnOf("lShldrBend")->getValue(), -20, kNoise));
    QVERIFY(nearly(turnOf("lForearmBend")->getValue(), forearm, kNoise));
    QVERIFY(nearly(turnOf("rForearmBend")->getValue(), 30, kNoise));
}

void TestCommandEffects::aPropIsMirroredAtTheTimeOfTheScene()
{
    const DzTime now = 10 * dzScene->getTimeStep();
    DzNode* prop = selectedProp();
    const DzVec3 posCmAtStart(1, 2, 3), posCmNow(10, 20, 30);
    const DzQuat rotAtStart(0.3, 0.1, 0.2, 0.9), rotNow(0.1, 0.2, 0.3, 0.9);
    prop->setWSPos(0, posCmAtStart);
    prop->setWSRot(0, rotAtStart);
    prop->setWSPos(now, posCmNow);
    prop->setWSRot(now, rotNow);
    dzScene->setTime(now);
    press(4, LeftClick);
    QVERIFY(distance(prop->getWSPos(now), DzVec3(-10, 20, 30)) < kNoise);
    const DzQuat mirrored(rotNow.m_x, -rotNow.m_y, -rotNow.m_z, rotNow.m_w);
    QVERIFY(angleDeg(prop->getWSRot(now), mirrored) < kNoise);
    QVERIFY(distance(prop->getWSPos(0), posCmAtStart) < kNoise);
    QVERIFY(angleDeg(prop->getWSRot(0), rotAtStart) < kNoise);
}

void TestCommandEffects::rightOnSwapAndSymmetrizeAndMiddleOnReferenceAndBakeDoNothing_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("selected");
    QTest::newRow("swap") << 4 << int(RightClick) << "lShldrBend";
    QTest::newRow("symmetrize") << 5 << int(RightClick) << "lShldrBend";
    QTest::newRow("reference") << 0 << int(MiddleClick) << "";
    QTest::newRow("bake") << 8 << int(MiddleClick) << "";
}

void TestCommandEffects::rightOnSwapAndSymmetrizeAndMiddleOnReferenceAndBakeDoNothing()
{
    QFETCH(int, button);
    QFETCH(int, kind);
    QFETCH(QString, selected);
    turnOf("lShldrBend")->setValue(33);
    m_rig->bone("lShin")->getXRotControl()->setValue(50);
    m_rig->control("pCTRLHipBend")->setValue(0.5f);
    if (!selected.isEmpty())
        m_rig->selectBones(QStringList(selected));
    dzUndoStack->clearAll();
    const FigureState before = stateOf(m_rig->figure);
    const BoxAnswers answers(QMessageBox::Yes);
    press(button, kind);
    VERIFY_SAME_STATE(before, stateOf(m_rig->figure));
    QCOMPARE(dzUndoStack->getNumUndoItems(), 0);
    QCOMPARE(answers.boxes.size(), 0);
    QVERIFY2(statusMessage().isEmpty(), qPrintable(statusMessage()));
    QVERIFY(!QFile::exists(referencePosePath()));
    press(button, LeftClick); // which has work to do here
    QVERIFY(dzUndoStack->getNumUndoItems() == 1 || QFile::exists(referencePosePath()));
}

void TestCommandEffects::limitsAndTranslationsNeedTheFigureNode_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("kind");
    for (const int kind : {LeftClick, RightClick, MiddleClick}) {
        QTest::newRow(qPrintable(QString("limits, click %1").arg(kind))) << 6 << kind;
        QTest::newRow(qPrintable(QString("translations, click %1").arg(kind))) << 7 << kind;
    }
}

void TestCommandEffects::limitsAndTranslationsNeedTheFigureNode()
{
    QFETCH(int, button);
    QFETCH(int, kind);
    m_rig->bone("lShin")->getXPosControl()->setValue(5);
    m_rig->bone("lShin")->getXRotControl()->setValue(170);
    m_rig->bone("lShin")->getXRotControl()->setIsClamped(kind == MiddleClick);
    m_rig->selectBones(QStringList("lShin"));
    dzUndoStack->clearAll();
    const FigureState before = stateOf(m_rig->figure);
    const BoxAnswers answers;
    press(button, kind);
    QCOMPARE(answers.boxes.size(), 1);
    QCOMPARE(answers.boxes.first().text, QString::fromLatin1(boxRow(Box::InvalidSelection).text));
    VERIFY_SAME_STATE(before, stateOf(m_rig->figure));
    QCOMPARE(dzUndoStack->getNumUndoItems(), 0);
    dzScene->selectAllNodes(false);
    m_rig->figure->select(true);
    dzScene->setPrimarySelection(m_rig->figure);
    press(button, kind);
    QCOMPARE(answers.boxes.size(), 1);
    QVERIFY(isStatusMessageShown());
}

// ---- texts and boxes -------------------------------------------------------------------------

void TestCommandEffects::symmetrizeTellsItsTextExactly()
{
    m_rig->selectBones(QStringList("lShldrBend"));
    press(5, LeftClick);
    QCOMPARE(statusMessage(), QString("\r\n\r\nSymmetrization succeeded\r\n\r\n"));
    QVERIFY(isStatusMessageShown());
}

void TestCommandEffects::patchingTellsItsTextExactly_data()
{
    QTest::addColumn<bool>("installed");
    QTest::addColumn<QString>("status");
    QTest::addColumn<QString>("box");
    QTest::newRow("patched") << true << "\r\n\r\nProducts patching succeessful!\r\n\r\n"
                             << "Products patching succeessful!";
    QTest::newRow("nothing to patch")
        << false << "\r\nNo products requiring\r\na patch were found\r\n\r\n"
        << "No products requiring a patch were found";
}

void TestCommandEffects::patchingTellsItsTextExactly()
{
    QFETCH(bool, installed);
    QFETCH(QString, status);
    QFETCH(QString, box);
    dzApp->getContentMgr()->setContentDirectories(QStringList(m_rig->file("content")));
    QDir().mkpath(m_rig->file("content"));
    if (installed)
        writeFile(m_rig->file("content") + '/' + scriptName(kPatchRows[0], 0), "old");
    const BoxAnswers answers(QMessageBox::Yes);
    press(12, LeftClick);
    QCOMPARE(statusMessage(), status);
    QVERIFY(isStatusMessageShown());
    QCOMPARE(answers.boxes.size(), 2);
    QCOMPARE(answers.boxes.last().text, box);
}

void TestCommandEffects::boxesOfRefusalAndTheStatus_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QString>("left");
    QTest::newRow("no figure keeps it") << 0 << "of an earlier command";
    QTest::newRow("invalid selection clears it") << 2 << "";
    QTest::newRow("no figure to save clears it") << 13 << "";
    QTest::newRow("the scanner's box clears it") << 14 << "";
}

void TestCommandEffects::boxesOfRefusalAndTheStatus()
{
    QFETCH(int, button);
    QFETCH(QString, left);
    dzScene->selectAllNodes(false);
    dzScene->setPrimarySelection(nullptr);
    showStatusMessage("of an earlier command");
    const BoxAnswers answers;
    press(button, LeftClick);
    QCOMPARE(answers.boxes.size(), 1);
    QCOMPARE(statusMessage(), left);
    QCOMPARE(isStatusMessageShown(), !left.isEmpty());
}

// ---- the pointer -----------------------------------------------------------------------------

// A button grows under the pointer. What decides is where the pointer was seen before the press:
// the picture that the user aims at was painted then.
void TestCommandEffects::aButtonIsHitAsItWasDrawnBeforeThePress_data()
{
    QTest::addColumn<QPoint>("seen");
    QTest::addColumn<bool>("picker");
    QTest::newRow("enlarged") << centreOf(1) << true;
    QTest::newRow("plain") << centreOf(2) << false;
}

void TestCommandEffects::aButtonIsHitAsItWasDrawnBeforeThePress()
{
    QFETCH(QPoint, seen);
    QFETCH(bool, picker);
    updateHover(kPane, seen);
    const QPoint justOutside(centreOf(1) - QPoint(48, 0)); // 47 to its left edge
    dispatchPress(kPane, justOutside, LeftClick);
    QCOMPARE(pageState().picker, picker);
}

void TestCommandEffects::theLinkIsHitAsItWasDrawnBeforeThePress_data()
{
    QTest::addColumn<QPoint>("seen");
    QTest::addColumn<int>("pages");
    QTest::newRow("enlarged") << QPoint(256, 870) << 1;
    QTest::newRow("plain") << centreOf(2) << 0;
}

void TestCommandEffects::theLinkIsHitAsItWasDrawnBeforeThePress()
{
    QFETCH(QPoint, seen);
    QFETCH(int, pages);
    updateHover(kPane, seen);
    dispatchPress(kPane, QPoint(20, 870), LeftClick); // it begins at 25
    QCOMPARE(dzApp->getShownUrls().size(), pages);
    if (pages)
        QCOMPARE(dzApp->getShownUrls().first(), pluginPageUrl());
}

void TestCommandEffects::everyPressMovesThePointer_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("left") << int(LeftClick);
    QTest::newRow("right") << int(RightClick);
    QTest::newRow("middle") << int(MiddleClick);
    QTest::newRow("a side button") << int(OtherClick);
}

void TestCommandEffects::everyPressMovesThePointer()
{
    QFETCH(int, kind);
    updateHover(kPane, centreOf(2));
    QVERIFY(!hoverTip().isEmpty());
    press(9, kind); // no command, no tip
    QCOMPARE(hoverPosition(), centreOf(9));
    QVERIFY(hoverTip().isEmpty());
}

void TestCommandEffects::afterTheCommandTheTipIsThatOfTheNewPage()
{
    const QPoint onBoth(220, 320); // the second button of either page
    updateHover(kPane, onBoth);
    QCOMPARE(hoverTip(), tipOf(MainPage, 1));
    dispatchPress(kPane, onBoth, LeftClick);
    QCOMPARE(currentPage(), PickerPage);
    QCOMPARE(hoverTip(), tipOf(PickerPage, 101));
    QVERIFY(hoverTip() != tipOf(MainPage, 1));
}

QUILLON_TEST(TestCommandEffects)
#include "test_command_effects.moc"
