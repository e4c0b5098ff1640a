// Status texts of the main page's commands, letter by letter, and what a press leaves alone.
#include "room_tests.h"

#include "figure/figure_lookup.h"
#include "finder/browse_session.h"
#include "ground/plugin_settings.h"
#include "ground/status_message.h"
#include "host/figures/figure_loader.h"
#include "pane/artwork.h"
#include "pane/command_dispatch.h"
#include "pane/hover.h"
#include "pane/page_state.h"
#include "posefile/pose_text.h"
#include "scene_fixture.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"

#include <QtTest>

using namespace quillon;

static const QSize kPane(512, 1024);

static QPoint centreOf(int gridButton)
{
    return QPoint(77 + 120 * (gridButton % 4), 317 + 102 * (gridButton / 4));
}

class TestCommandDispatch : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void statusTextsAreExact_data();
    void statusTextsAreExact();
    void everyKindOfClickIsToldApart();
    void anotherMouseButtonOnlyClearsTheOverlay();
    void nothingHappensWhileBusy();
    void symmetrizeOfTheWholeFigureIsSilent();
    void swapOfAPropMirrorsIt();
    void aResetReallyResets();

private:
    std::unique_ptr<SceneFixture> m_fixture;
    DzFigure* m_figure = nullptr;
};

void TestCommandDispatch::init()
{
    m_fixture.reset(new SceneFixture);
    pageState() = PageState();
    browseSession() = BrowseSession();
    pluginSettings() = PluginSettings();
    createReadBuffer();
    clearStatusMessage();
    leaveHover(kPane);
    QString why;
    m_figure = loadFigure("Genesis8Female", &why);
    QVERIFY2(m_figure, qPrintable(why));
    dzScene->addNode(m_figure);
    m_figure->select(true);
    dzUndoStack->clearAll();
}

void TestCommandDispatch::cleanup()
{
    freeReadBuffer();
    m_fixture.reset();
}

void TestCommandDispatch::statusTextsAreExact_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text");
    QTest::newRow("show reference")
        << 0 << 2 << "\r\nReference Pose shown\r\nUse 'undo' revert\r\nto current pose\r\n";
    QTest::newRow("memorize without a data folder")
        << 0 << 1 << "ERROR\r\nThis could not be saved.\r\nIs the disk full, or a\r\nfile in use?";
    QTest::newRow("reset left") << 2 << 1 << "\r\n\r\nReset succeeded\r\n\r\n";
    QTest::newRow("reset right") << 2 << 2 << "\r\n\r\nReset succeeded\r\n\r\n";
    QTest::newRow("reset middle") << 2 << 3 << "\r\n\r\nReset succeeded\r\n\r\n";
    QTest::newRow("hip as centre") << 3 << 1 << "\r\n\r\nOptimization succeeded\r\n\r\n";
    QTest::newRow("root as centre") << 3 << 2 << "\r\n\r\nOptimization succeeded\r\n\r\n";
    QTest::newRow("optimize middle") << 3 << 3 << "";
    QTest::newRow("swap") << 4 << 1 << "\r\n\r\nSwapping succeeded\r\n\r\n";
    QTest::newRow("swap right") << 4 << 2 << "";
    QTest::newRow("symmetrize") << 5 << 1 << "";
    QTest::newRow("clamp face") << 6 << 1 << "\r\n\r\nBone rotation limits clamped\r\n\r\n";
    QTest::newRow("clamp body") << 6 << 2 << "\r\n\r\nExpression limits clamped\r\n\r\n";
    QTest::newRow("release") << 6 << 3 << "\r\n\r\nAll pose limits un-clamped\r\n\r\n";
    QTest::newRow("translations") << 7 << 1 << "\r\n\r\nBone translations reset succeeded\r\n\r\n";
    QTest::newRow("translations zero")
        << 7 << 3 << "\r\n\r\nBone translations reset succeeded\r\n\r\n";
    QTest::newRow("bake") << 8 << 1 << "\r\n\r\nFigure pose baking succeeded\r\n\r\n";
    QTest::newRow("bake face") << 8 << 2 << "\r\n\r\nFigure pose baking succeeded\r\n\r\n";
    QTest::newRow("bake middle") << 8 << 3 << "";
    QTest::newRow("empty well") << 9 << 1 << "";
}

void TestCommandDispatch::statusTextsAreExact()
{
    QFETCH(int, button);
    QFETCH(int, kind);
    QFETCH(QString, text);
    dispatchPress(kPane, centreOf(button), ClickKind(kind));
    QCOMPARE(statusMessage(), text);
    QCOMPARE(isStatusMessageShown(), !text.isEmpty());
}

void TestCommandDispatch::everyKindOfClickIsToldApart()
{
    QCOMPARE(clickKind(Qt::LeftButton), LeftClick);
    QCOMPARE(clickKind(Qt::RightButton), RightClick);
    QCOMPARE(clickKind(Qt::MiddleButton), MiddleClick);
    QCOMPARE(clickKind(Qt::XButton1), OtherClick);
}

void TestCommandDispatch::anotherMouseButtonOnlyClearsTheOverlay()
{
    browseSession().referenceOverlay = true;
    dispatchPress(kPane, centreOf(2), OtherClick);
    QVERIFY(!browseSession().referenceOverlay);
    QCOMPARE(dzUndoStack->getNumUndoItems(), 0);
    QVERIFY(statusMessage().isEmpty());
}

void TestCommandDispatch::nothingHappensWhileBusy()
{
    browseSession().referenceOverlay = true;
    setBusy(true);
    dispatchPress(kPane, centreOf(2), LeftClick);
    setBusy(false);
    QVERIFY(browseSession().referenceOverlay);
    QCOMPARE(dzUndoStack->getNumUndoItems(), 0);
}

void TestCommandDispatch::symmetrizeOfTheWholeFigureIsSilent()
{
    DzBone* bone = m_figure->findBone("lForearmBend");
    bone->select(true);
    dzScene->setPrimarySelection(bone);
    dispatchPress(kPane, centreOf(5), LeftClick); // the root is selected as well
    QCOMPARE(dzUndoStack->getNumUndoItems(), 0);
    m_figure->select(false);
    dispatchPress(kPane, centreOf(5), LeftClick);
    QCOMPARE(dzUndoStack->getUndoCaptions(), QStringList("quillon_stack"));
}

void TestCommandDispatch::swapOfAPropMirrorsIt()
{
    DzNode* prop = new DzNode("prop");
    dzScene->addNode(prop);
    prop->setWSPos(DzVec3(10, 20, 30));
    prop->setWSRot(DzQuat(0.1, 0.2, 0.3, 0.9));
    const DzQuat before = prop->getWSRot();
    dzScene->selectAllNodes(false);
    prop->select(true);
    dispatchPress(kPane, centreOf(4), LeftClick);
    QVERIFY(distance(prop->getWSPos(), DzVec3(-10, 20, 30)) < 1e-4);
    const DzQuat mirrored(before.m_x, -before.m_y, -before.m_z, before.m_w);
    QVERIFY(angleDeg(prop->getWSRot(), mirrored) < 1e-4);
}

void TestCommandDispatch::aResetReallyResets()
{
    DzFloatProperty* bend = m_figure->findBone("lShin")->getXRotControl();
    bend->setValue(40);
    dispatchPress(kPane, centreOf(2), LeftClick);
    QCOMPARE(bend->getValue(), 0.0f);
    QVERIFY(dzUndoStack->undo());
    QCOMPARE(bend->getValue(), 40.0f);
}

QUILLON_TEST(TestCommandDispatch)
#include "test_command_dispatch.moc"
