#include "room_tests.h"

#include "host/posebench/content_library_pane.h"
#include "host/posebench/parameter_panel.h"
#include "host/posebench/posebench_window.h"
#include "host/posebench/scene_commands.h"
#include "host/posebench/time_panel.h"
#include "host/posebench/viewport.h"

#include "dzaction.h"
#include "dzactionmgr.h"
#include "dzapp.h"
#include "dzbone.h"
#include "dzcontentmgr.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

#include <memory>

using namespace quillon;

// An action that a plug-in might bring.
class MenuAction : public DzAction {
    Q_OBJECT
public:
    MenuAction()
        : DzAction("Sample Command", "Does nothing")
    {
    }
    QString getDefaultMenuPath() const override
    {
        return "&Window/Samples";
    }
};

class TestPosebenchWindow : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void firstGroupHasRoomForAPluginPane();
    void panesAreFoundByClassName();
    void windowMenuTogglesPanes();
    void managedActionsGoWhereTheySay();
    void undoMenuShowsCaptions();
    void loadingAFigureSelectsIt();
    void treeFollowsTheSelection();
    void selectingRowsSelectsNodes();
    void treeFilterHidesOthers();
    void dragOnABarIsOneUndoStep();
    void lockAndLimitSwitch();
    void typedValueIsTaken();
    void parameterFilterUsesLabelsAndGroups();
    void rulerSetsWholeFrames();
    void keysOfTheSelectionAreListed();
    void viewportClickSelects();
    void viewportDragsMoveTheCamera();
    void contentPaneRemembersFolders();
    void doubleClickAppliesAPose();
    void deletingIsUndone();

private:
    DzFigure* addFigure();
    QTreeWidget* tree() const;
    DzParameterList* list() const;
    QPoint partOfRow(const QString& label, RowPart part);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<DzApp> m_app;
    std::unique_ptr<DzUndoStack> m_undo;
    std::unique_ptr<DzScene> m_scene;
    std::unique_ptr<PoseBenchWindow> m_window;
};

void TestPosebenchWindow::init()
{
    m_dir.reset(new QTemporaryDir);
    DzAppSetup setup;
    setup.contentDirectories << m_dir->path();
    setup.openUrls = false;
    m_app.reset(new DzApp(setup));
    m_undo.reset(new DzUndoStack);
    m_scene.reset(new DzScene);
    m_window.reset(new PoseBenchWindow);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TestPosebenchWindow::cleanup()
{
    m_window.reset();
    m_scene.reset();
    m_undo.reset();
    m_app.reset();
}

DzFigure* TestPosebenchWindow::addFigure()
{
    QString why;
    return static_cast<DzFigure*>(addFigureToScene("Genesis8Female", &why));
}

QTreeWidget* TestPosebenchWindow::tree() const
{
    return m_window->findChild<QTreeWidget*>("sceneTree");
}

DzParameterList* TestPosebenchWindow::list() const
{
    return m_window->findChild<DzParameterList*>();
}

static DzFloatProperty* channel(const DzNode* node, const char* name)
{
    return static_cast<DzFloatProperty*>(node->findProperty(name));
}

// ---- window --------------------------------------------------------------------------------

void TestPosebenchWindow::firstGroupHasRoomForAPluginPane()
{
    DzPaneGroup* group = m_window->getPaneMgr()->getPaneGroup(0);
    QVERIFY(group->isDocked());
    QCOMPARE(group->getDockArea(), Qt::LeftDockWidgetArea);
    QVERIFY2(group->width() >= 400, qPrintable(QString::number(group->width())));
    QVERIFY2(group->height() >= 800, qPrintable(QString::number(group->height())));
    QVERIFY(m_window->viewport()->width() > 500);
}

void TestPosebenchWindow::panesAreFoundByClassName()
{
    for (const char* name :
        {"DzContentLibraryPane", "DzSceneTreePane", "DzParametersPane", "DzTimelinePane"}) {
        const DzPane* pane = m_window->getPaneMgr()->findPane(name);
        QVERIFY2(pane && pane->isVisible(), name);
        QVERIFY(pane->getPaneGroup());
    }
    QCOMPARE(static_cast<DzPane*>(m_window->contentPane()),
        m_window->getPaneMgr()->findPane("DzContentLibraryPane"));
}

static QMenu* menu(const QList<QAction*>& actions, const QString& title)
{
    for (QAction* action : actions)
        if (action->menu() && action->text().remove('&') == title)
            return action->menu();
    return 0;
}

void TestPosebenchWindow::windowMenuTogglesPanes()
{
    QMenu* window = menu(m_window->menuBar()->actions(), "Window");
    QMenu* panes = menu(window->actions(), "Panes (Tabs)");
    QCOMPARE(panes->actions().size(), 4);
    DzPane* timeline = m_window->getPaneMgr()->findPane("DzTimelinePane");
    for (QAction* action : panes->actions())
        if (action->text().remove('&') == timeline->getLabel()) {
            QVERIFY(action->isChecked());
            action->trigger();
            QVERIFY(!timeline->isVisible());
            action->trigger();
            QVERIFY(timeline->isVisible());
            return;
        }
    QFAIL("the timeline has no entry");
}

void TestPosebenchWindow::managedActionsGoWhereTheySay()
{
    m_window->getActionMgr()->registerAction(new MenuAction);
    QMenu* samples = menu(menu(m_window->menuBar()->actions(), "Window")->actions(), "Samples");
    QVERIFY(samples);
    QCOMPARE(samples->actions().size(), 1);
    QCOMPARE(samples->actions()[0]->text(), QString("Sample Command"));
}

void TestPosebenchWindow::undoMenuShowsCaptions()
{
    QAction* undo = menu(m_window->menuBar()->actions(), "Edit")->actions()[0];
    QAction* redo = menu(m_window->menuBar()->actions(), "Edit")->actions()[1];
    QVERIFY(!undo->isEnabled());
    addFigure();
    QCOMPARE(undo->text(), QString("&Undo Add Genesis 8 Female"));
    QVERIFY(undo->isEnabled() && !redo->isEnabled());
    undo->trigger();
    QCOMPARE(m_scene->getNumNodes(), 0);
    QCOMPARE(redo->text(), QString("&Redo Add Genesis 8 Female"));
    redo->trigger();
    QCOMPARE(m_scene->getNumNodes(), 171);
}

// ---- tree ----------------------------------------------------------------------------------

void TestPosebenchWindow::loadingAFigureSelectsIt()
{
    DzFigure* first = addFigure();
    QCOMPARE(m_scene->getPrimarySelection(), static_cast<DzNode*>(first));
    DzFigure* second = addFigure();
    QCOMPARE(m_scene->getPrimarySelection(), static_cast<DzNode*>(second));
    QCOMPARE(m_scene->getNumSelectedNodes(), 1);
    QCOMPARE(tree()->topLevelItemCount(), 2);
    QCOMPARE(tree()->topLevelItem(1)->text(0), QString("Genesis 8 Female (2)"));
}

void TestPosebenchWindow::treeFollowsTheSelection()
{
    DzFigure* figure = addFigure();
    selectOnly(figure->findBone("lHand"));
    figure->findBone("rHand")->select(true);
    QCOMPARE(tree()->selectedItems().size(), 2);
    QCOMPARE(tree()->currentItem()->text(0), QString("Left Hand"));
    m_scene->selectAllNodes(false);
    QVERIFY(tree()->selectedItems().isEmpty());
}

void TestPosebenchWindow::selectingRowsSelectsNodes()
{
    DzFigure* figure = addFigure();
    QTreeWidgetItem* hip = tree()->topLevelItem(0)->child(0);
    QCOMPARE(hip->text(0), QString("Hip"));
    const auto click = [this](QTreeWidgetItem* item, Qt::KeyboardModifiers keys) {
        tree()->scrollToItem(item);
        QTest::mouseClick(
            tree()->viewport(), Qt::LeftButton, keys, tree()->visualItemRect(item).center());
        QCoreApplication::processEvents();
    };
    click(hip, Qt::NoModifier);
    QCOMPARE(m_scene->getPrimarySelection(), static_cast<DzNode*>(figure->findBone("hip")));
    QVERIFY(!figure->isSelected());
    click(tree()->topLevelItem(0), Qt::ControlModifier);
    QCOMPARE(m_scene->getNumSelectedNodes(), 2);
    QCOMPARE(m_scene->getPrimarySelection(), static_cast<DzNode*>(figure));
}

void TestPosebenchWindow::treeFilterHidesOthers()
{
    addFigure();
    m_window->getPaneMgr()->findPane("DzSceneTreePane")->findChild<QLineEdit*>()->setText("thigh");
    int shown = 0;
    for (QTreeWidgetItemIterator i(tree()); *i; ++i)
        shown += !(*i)->isHidden() && (*i)->text(0).contains("Thigh");
    QCOMPARE(shown, 4);
    QVERIFY(tree()->findItems("Head", Qt::MatchExactly | Qt::MatchRecursive)[0]->isHidden());
}

// ---- parameters ----------------------------------------------------------------------------

QPoint TestPosebenchWindow::partOfRow(const QString& label, RowPart part)
{
    const std::vector<ParameterRow> rows
        = parameterRows(m_scene->getPrimarySelection(), QString(), QSet<QString>());
    list()->verticalScrollBar()->setValue(0);
    int top = 0;
    for (const ParameterRow& row : rows) {
        const QRect rect(0, top, list()->viewport()->width(), rowHeight(row));
        const RowCells cells = rowCells(rect);
        if (row.property && row.text == label)
            return part == LockPart ? cells.lock.center()
                : part == LimitPart ? cells.limit.center()
                : part == ValuePart ? cells.value.center()
                                    : cells.bar.center();
        top += rect.height();
    }
    return QPoint(-1, -1);
}

void TestPosebenchWindow::dragOnABarIsOneUndoStep()
{
    DzBone* shin = addFigure()->findBone("lShin");
    selectOnly(shin);
    const int steps = m_undo->getNumUndoItems();
    const QPoint at = partOfRow("Bend", BarPart);
    QWidget* area = list()->viewport();
    QTest::mousePress(area, Qt::LeftButton, Qt::NoModifier, at);
    for (int x = 1; x <= 40; ++x) {
        QMouseEvent move(
            QEvent::MouseMove, at + QPoint(x, 0), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(area, &move);
    }
    QTest::mouseRelease(area, Qt::LeftButton, Qt::NoModifier, at + QPoint(40, 0));
    const DzFloatProperty* bend = channel(shin, "XRotate");
    QVERIFY2(bend->getValue() > 80 && bend->getValue() < 140,
        qPrintable(QString::number(bend->getValue()))); // the bar's middle is 72
    QCOMPARE(m_undo->getNumUndoItems(), steps + 1);
    QCOMPARE(m_undo->getUndoCaption(), QString("Change Bend"));
    m_undo->undo();
    QCOMPARE(bend->getValue(), 0.f);
}

void TestPosebenchWindow::lockAndLimitSwitch()
{
    DzBone* shin = addFigure()->findBone("lShin");
    selectOnly(shin);
    QTest::mouseClick(
        list()->viewport(), Qt::LeftButton, Qt::NoModifier, partOfRow("Bend", LockPart));
    QVERIFY(channel(shin, "XRotate")->isLocked());
    QTest::mouseClick(
        list()->viewport(), Qt::LeftButton, Qt::NoModifier, partOfRow("Bend", LimitPart));
    QVERIFY(!channel(shin, "XRotate")->isClamped());
    m_undo->undo();
    m_undo->undo();
    QVERIFY(!channel(shin, "XRotate")->isLocked());
    QVERIFY(channel(shin, "XRotate")->isClamped());
}

void TestPosebenchWindow::typedValueIsTaken()
{
    DzBone* shin = addFigure()->findBone("lShin");
    selectOnly(shin);
    QTest::mouseClick(
        list()->viewport(), Qt::LeftButton, Qt::NoModifier, partOfRow("Bend", ValuePart));
    QLineEdit* editor = list()->viewport()->findChild<QLineEdit*>();
    QVERIFY(editor->isVisible());
    editor->setText("33.5");
    QTest::keyClick(editor, Qt::Key_Return);
    QVERIFY(!editor->isVisible());
    QCOMPARE(channel(shin, "XRotate")->getValue(), 33.5f);
}

void TestPosebenchWindow::parameterFilterUsesLabelsAndGroups()
{
    DzFigure* figure = addFigure();
    const QSet<QString> none;
    int all = 0;
    for (const ParameterRow& row : parameterRows(figure, QString(), none))
        all += row.property != 0;
    QVERIFY2(all >= 260, qPrintable(QString::number(all))); // ten transforms, 250 controls
    const std::vector<ParameterRow> fists = parameterRows(figure, "hand fist", none);
    QCOMPARE(int(fists.size()), 3); // a heading, left, right
    QCOMPARE(fists[0].text, QString("Pose Controls/Arms/Hands"));
    const QSet<QString> folded = {"Pose Controls/Arms/Hands"};
    bool hidden = true;
    for (const ParameterRow& row : parameterRows(figure, QString(), folded))
        hidden &= row.text != fists[1].text;
    QVERIFY(hidden);
}

// ---- time ----------------------------------------------------------------------------------

void TestPosebenchWindow::rulerSetsWholeFrames()
{
    DzTimeRuler* ruler = m_window->findChild<DzTimeRuler*>();
    QTest::mouseClick(ruler, Qt::LeftButton, Qt::NoModifier, ruler->rect().center());
    QCOMPARE(m_scene->getTime(), 15 * m_scene->getTimeStep()); // of 30 frames
    QTest::mouseClick(ruler, Qt::LeftButton, Qt::NoModifier, QPoint(ruler->width() - 1, 10));
    QCOMPARE(m_scene->getTime(), m_scene->getAnimRange().getEnd());
}

void TestPosebenchWindow::keysOfTheSelectionAreListed()
{
    DzBone* shin = addFigure()->findBone("lShin");
    channel(shin, "XRotate")->setValue(0, 1);
    channel(shin, "XRotate")->setValue(800, 2);
    channel(shin, "ZRotate")->setValue(800, 2);
    selectOnly(shin);
    const QVector<DzTime> expected = {0, 800};
    QCOMPARE(selectedKeyTimes(), expected);
    DzTimelinePane* pane = m_window->findChild<DzTimelinePane*>();
    pane->nextKey();
    QCOMPARE(m_scene->getTime(), 800);
    pane->nextKey();
    QCOMPARE(m_scene->getTime(), 800);
    pane->previousKey();
    QCOMPARE(m_scene->getTime(), 0);
    pane->nextFrame();
    QCOMPARE(m_scene->getTime(), m_scene->getTimeStep());
}

// ---- viewport ------------------------------------------------------------------------------

void TestPosebenchWindow::viewportClickSelects()
{
    addFigure();
    ViewportWidget* view = m_window->viewport();
    float x, y, depth;
    projectPoint(makeView(view->camera(), view->size()), DzVec3(0, 110, 8), &x, &y, &depth);
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, QPoint(int(x), int(y)));
    const DzNode* belly = m_scene->getPrimarySelection();
    QVERIFY(belly && belly->getName().startsWith("abdomen"));
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, QPoint(5, 200));
    QVERIFY(!m_scene->getPrimarySelection());
}

void TestPosebenchWindow::viewportDragsMoveTheCamera()
{
    ViewportWidget* view = m_window->viewport();
    const Camera before = view->camera();
    const auto drag = [view](Qt::MouseButton button, Qt::KeyboardModifiers keys) {
        const QPoint from = view->rect().center();
        QTest::mousePress(view, button, keys, from);
        QMouseEvent move(QEvent::MouseMove, from + QPoint(60, 30), button, button, keys);
        QCoreApplication::sendEvent(view, &move);
        QTest::mouseRelease(view, button, keys, from + QPoint(60, 30));
    };
    drag(Qt::LeftButton, Qt::NoModifier);
    QVERIFY(view->camera().yawDeg < before.yawDeg && view->camera().pitchDeg > before.pitchDeg);
    QCOMPARE(view->camera().distanceCm, before.distanceCm);
    drag(Qt::RightButton, Qt::NoModifier);
    QVERIFY(view->camera().distanceCm > before.distanceCm);
    drag(Qt::MiddleButton, Qt::NoModifier);
    QVERIFY(!(view->camera().target == before.target));
    view->showHome();
    QCOMPARE(view->camera().yawDeg, before.yawDeg);
    QVERIFY(view->camera().target == before.target);
}

// ---- content -------------------------------------------------------------------------------

void TestPosebenchWindow::contentPaneRemembersFolders()
{
    DzContentLibraryPane* pane = m_window->contentPane();
    QVERIFY(pane->browsedFolders().isEmpty());
    QDir(m_dir->path()).mkpath("People/Poses");
    pane->browseToNativeFolder(m_dir->path() + "/People");
    QCOMPARE(pane->currentFolder(), m_dir->path() + "/People");
    const QAbstractItemModel* items = pane->findChild<QListView*>("contentList")->model();
    QCOMPARE(items->rowCount(), 1);
    QCOMPARE(items->index(0, 0).data().toString(), QString("Poses"));
    pane->browseToNativeFolder("/nowhere");
    QCOMPARE(items->rowCount(), 0);
    QCOMPARE(pane->browsedFolders(),
        QStringList() << m_dir->path() + "/People"
                      << "/nowhere");
}

void TestPosebenchWindow::doubleClickAppliesAPose()
{
    DzFigure* figure = addFigure();
    QFile file(m_dir->path() + "/Bend.duf");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{ \"asset_info\" : { \"type\" : \"preset_pose\" }, \"scene\" : { \"animations\" : "
               "[ { \"url\" : \"name://@selection/lShin:?rotation/x/value\", \"keys\" : "
               "[ [ 0, 40 ] ] } ] } }");
    file.close();
    DzContentLibraryPane* pane = m_window->contentPane();
    pane->browseToNativeFolder(m_dir->path());
    QListView* items = pane->findChild<QListView*>("contentList");
    QCOMPARE(items->model()->rowCount(), 1);
    const QPoint at = items->visualRect(items->model()->index(0, 0)).center();
    QTest::mouseClick(items->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(items->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QCOMPARE(channel(figure->findBone("lShin"), "XRotate")->getValue(), 40.f);
    QCOMPARE(m_undo->getUndoCaption(), QString("Apply Pose Bend"));
    m_undo->undo();
    QCOMPARE(channel(figure->findBone("lShin"), "XRotate")->getValue(), 0.f);
}

void TestPosebenchWindow::deletingIsUndone()
{
    DzFigure* figure = addFigure();
    DzNode* box = addPropToScene("Box", DzVec3(-5, 0, -5), DzVec3(5, 10, 5));
    QVERIFY(removeSelectedNodes());
    QCOMPARE(m_scene->getNumNodes(), 171);
    m_undo->undo();
    QCOMPARE(m_scene->getNumNodes(), 172);
    QCOMPARE(m_scene->findNode("Box"), box);
    selectOnly(figure->findBone("hip"));
    QVERIFY(!removeSelectedNodes()); // a bone is no root
    QCOMPARE(m_scene->getNumNodes(), 172);
}

QUILLON_TEST(TestPosebenchWindow)
#include "test_posebench_window.moc"
