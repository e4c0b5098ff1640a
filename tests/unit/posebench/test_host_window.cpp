#include "room_tests.h"

#include "bench_window_fixture.h"

#include "host/posebench/dark_theme.h"
#include "host/posebench/parameter_panel.h"
#include "host/posebench/reading_order.h"
#include "host/posebench/status_line.h"
#include "host/posebench/time_panel.h"
#include "host/posebench/viewport.h"
#include "host/posebench/window_place.h"

#include "dzfloatproperty.h"
#include "dzpane.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"

#include <QCheckBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QScreen>
#include <QSpinBox>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QStyleOptionButton>
#include <QTabBar>

#include <cmath>
#include <memory>

using namespace quillon;

// The window itself: its place, what Tab reaches, what can be told apart by eye.
class TestHostWindow : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void fitsASmallScreen_data();
    void fitsASmallScreen();
    void needsNoMoreThanASmallScreen();
    void comesBackWhereItWas();
    void aPlaceOffTheScreenIsNotTaken_data();
    void aPlaceOffTheScreenIsNotTaken();
    void tabVisitsEveryControlOnce();
    void backtabGoesTheOtherWay();
    void tabPassesAHiddenTabBar();
    void readingGoesColumnByColumn();
    void sliderKeysChangeOneValue();
    void enterTypesIntoASlider();
    void rulerKeysStepThroughFrames();
    void timelineIsWholeAtAnyWidth_data();
    void timelineIsWholeAtAnyWidth();
    void disabledEntriesAreDimmer();
    void disabledTextsAreDimmer();
    void boxesStandOut_data();
    void boxesStandOut();
    void statusBarIsNeverEmpty();
    void listsWithoutRowsSayWhy();

private:
    std::unique_ptr<BenchWindow> m_bench;
};

void TestHostWindow::init()
{
    m_bench.reset(new BenchWindow);
}

void TestHostWindow::cleanup()
{
    m_bench.reset();
}

// ---- place ---------------------------------------------------------------------------------

void TestHostWindow::fitsASmallScreen_data()
{
    QTest::addColumn<QRect>("screen");
    QTest::newRow("1280x720") << QRect(0, 0, 1280, 720);
    QTest::newRow("a panel on top") << QRect(0, 28, 1366, 740);
    QTest::newRow("right of another one") << QRect(1920, 0, 1280, 1024);
    QTest::newRow("large") << QRect(0, 0, 3840, 2160);
}

void TestHostWindow::fitsASmallScreen()
{
    QFETCH(QRect, screen);
    const QRect place = fittedPlace(QSize(1500, 950), screen);
    QVERIFY(screen.contains(place.adjusted(-4, -30, 4, 4))); // with a desktop's frame around it
    QVERIFY(place.width() >= std::min(1500, screen.width() - 8));
    QVERIFY(place.height() >= std::min(950, screen.height() - 40));
}

void TestHostWindow::needsNoMoreThanASmallScreen()
{
    m_bench->addFigure();
    const QSize least = m_bench->window->minimumSizeHint();
    QVERIFY2(least.width() <= 1000 && least.height() <= 680,
        qPrintable(QString("%1 x %2").arg(least.width()).arg(least.height())));
}

// Panels are known by their names, which the next run gives anew.
static QList<QDockWidget*> panelsOf(const PoseBenchWindow& window)
{
    return window.findChildren<QDockWidget*>();
}

void TestHostWindow::comesBackWhereItWas()
{
    panelsOf(*m_bench->window)[1]->hide();
    m_bench->window->setMinimumSize(1, 1); // the screen of a test has 800 x 600
    m_bench->window->setGeometry(37, 41, 730, 500);
    rememberPlace(m_bench->window.get());
    PoseBenchWindow later;
    for (int i = 0; i < panelsOf(later).size(); ++i)
        panelsOf(later)[i]->setObjectName(panelsOf(*m_bench->window)[i]->objectName());
    later.setMinimumSize(1, 1);
    QVERIFY(restorePlace(&later));
    QCOMPARE(later.geometry(), QRect(37, 41, 730, 500));
    QVERIFY(panelsOf(later)[1]->isHidden());
    QVERIFY(!panelsOf(later)[0]->isHidden());
}

void TestHostWindow::aPlaceOffTheScreenIsNotTaken_data()
{
    QTest::addColumn<QRect>("place"); // the screen of a test has 800 x 600
    QTest::newRow("on a screen that is gone") << QRect(5000, 5000, 700, 500);
    QTest::newRow("half of it on the left") << QRect(-350, 60, 700, 500);
    QTest::newRow("its title above the edge") << QRect(20, -90, 700, 500);
    QTest::newRow("larger than the screen") << QRect(-100, -100, 1600, 1200);
}

void TestHostWindow::aPlaceOffTheScreenIsNotTaken()
{
    QFETCH(QRect, place);
    QVERIFY(!restorePlace(m_bench->window.get())); // nothing was kept
    m_bench->window->setMinimumSize(1, 1);
    m_bench->window->setGeometry(place);
    rememberPlace(m_bench->window.get());
    PoseBenchWindow later;
    later.setMinimumSize(1, 1);
    QVERIFY(restorePlace(&later));
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(screen.contains(later.geometry()));
}

// ---- keyboard ------------------------------------------------------------------------------

static QList<QWidget*> visited(QMainWindow* window, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QList<QWidget*> seen;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(window->focusWidget(), key, modifiers);
        if (seen.contains(window->focusWidget()))
            break;
        seen << window->focusWidget();
    }
    return seen;
}

static bool canBeReached(const QWidget* widget)
{
    return widget->isVisible() && widget->isEnabled() && !widget->focusProxy()
        && (widget->focusPolicy() & Qt::TabFocus);
}

void TestHostWindow::tabVisitsEveryControlOnce()
{
    m_bench->addFigure();
    const QList<QWidget*> seen = visited(m_bench->window.get(), Qt::Key_Tab, Qt::NoModifier);
    for (QWidget* widget : m_bench->window->findChildren<QWidget*>())
        if (canBeReached(widget))
            QVERIFY2(seen.contains(widget),
                qPrintable(widget->metaObject()->className() + (" " + widget->objectName())));
    for (const char* name : {"contentList", "viewport", "sceneTree", "parameterList", "timeRuler",
             "startFrame", "currentFrame", "endFrame"})
        QVERIFY2(seen.contains(m_bench->window->findChild<QWidget*>(name)), name);
}

void TestHostWindow::backtabGoesTheOtherWay()
{
    QList<QWidget*> there = visited(m_bench->window.get(), Qt::Key_Tab, Qt::NoModifier);
    m_bench->window->viewport()->setFocus();
    QList<QWidget*> back = visited(m_bench->window.get(), Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(there.size() > 15);
    std::reverse(back.begin(), back.end()); // both end with the viewport
    std::rotate(back.begin(), back.begin() + 1, back.end());
    QCOMPARE(back, there);
}

void TestHostWindow::tabPassesAHiddenTabBar()
{
    DzPaneGroup* group = m_bench->window->getPaneMgr()->getPaneGroup(0);
    DzPane* second = new DzPane("Second");
    m_bench->window->getPaneMgr()->addPane(second);
    second->moveToGroup(group);
    group->showPane(second);
    QTabBar* bar = group->findChild<QTabBar*>();
    QVERIFY(bar->isVisible());
    bar->setFocus();
    for (int i = 0; i < 25; ++i)
        QTest::keyClick(m_bench->window->focusWidget(), Qt::Key_Tab);
    QVERIFY(visited(m_bench->window.get(), Qt::Key_Tab, Qt::NoModifier).size() > 10);
}

void TestHostWindow::readingGoesColumnByColumn()
{
    const QList<QWidget*> order = readingOrder(m_bench->window.get());
    int last = -1;
    for (const char* name : {"contentList", "viewport", "timeRuler", "startFrame", "currentFrame",
             "endFrame", "sceneTree", "parameterList"}) {
        const int at = order.indexOf(m_bench->window->findChild<QWidget*>(name));
        QVERIFY2(at > last, name);
        last = at;
    }
}

void TestHostWindow::sliderKeysChangeOneValue()
{
    DzFigure* figure = m_bench->addFigure();
    QWidget* list = m_bench->window->findChild<QWidget*>("parameterList");
    list->setFocus(Qt::TabFocusReason);
    DzFloatProperty* x = figure->getXPosControl();
    const int steps = m_bench->undo.getNumUndoItems();
    QTest::keyClick(list, Qt::Key_Right);
    QCOMPARE(x->getValue(), x->getSensitivity());
    QCOMPARE(m_bench->undo.getNumUndoItems(), steps + 1);
    QTest::keyClick(list, Qt::Key_Left, Qt::ShiftModifier);
    QVERIFY(std::fabs(x->getValue() + 9 * x->getSensitivity()) < 1e-4f);
    QTest::keyClick(list, Qt::Key_L);
    QVERIFY(x->isLocked());
    const float locked = x->getValue();
    QTest::keyClick(list, Qt::Key_Right);
    QCOMPARE(x->getValue(), locked);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Right);
    QCOMPARE(figure->getYPosControl()->getValue(), figure->getYPosControl()->getSensitivity());
}

void TestHostWindow::enterTypesIntoASlider()
{
    DzFigure* figure = m_bench->addFigure();
    QWidget* list = m_bench->window->findChild<QWidget*>("parameterList");
    list->setFocus(Qt::TabFocusReason);
    QTest::keyClick(list, Qt::Key_Return);
    QLineEdit* editor = list->findChild<QLineEdit*>();
    QVERIFY(editor->hasFocus());
    QTest::keyClicks(editor, "12.5");
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(figure->getXPosControl()->getValue(), 12.5f);
    QVERIFY(list->hasFocus()); // and goes on from there
    QTest::keyClick(list, Qt::Key_Return);
    QTest::keyClicks(editor, "99");
    QTest::keyClick(editor, Qt::Key_Escape);
    QVERIFY(!editor->isVisible() && list->hasFocus());
    QCOMPARE(figure->getXPosControl()->getValue(), 12.5f);
}

void TestHostWindow::rulerKeysStepThroughFrames()
{
    QWidget* ruler = m_bench->window->findChild<QWidget*>("timeRuler");
    const DzTime step = m_bench->scene.getTimeStep();
    QTest::keyClick(ruler, Qt::Key_Right);
    QCOMPARE(m_bench->scene.getTime(), step);
    QTest::keyClick(ruler, Qt::Key_End);
    QCOMPARE(m_bench->scene.getTime(), m_bench->scene.getAnimRange().getEnd());
    QTest::keyClick(ruler, Qt::Key_Right); // no further
    QCOMPARE(m_bench->scene.getTime(), m_bench->scene.getAnimRange().getEnd());
    QTest::keyClick(ruler, Qt::Key_Home);
    QCOMPARE(m_bench->scene.getTime(), m_bench->scene.getAnimRange().getStart());
}

// ---- looks ---------------------------------------------------------------------------------

static double luminance(QRgb color)
{
    const auto linear = [](int channel) {
        const double c = channel / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color))
        + 0.0722 * linear(qBlue(color));
}

static double contrast(QRgb a, QRgb b)
{
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// The strongest contrast to the ground of any pixel in a rectangle.
static double strongest(const QImage& image, const QRect& rect, QRgb ground)
{
    double most = 1;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            most = std::max(most, contrast(image.pixel(x, y), ground));
    return most;
}

void TestHostWindow::timelineIsWholeAtAnyWidth_data()
{
    QTest::addColumn<int>("width");
    for (int width : {1200, 640, 560, 500, 400, 0})
        QTest::newRow(qPrintable(QString::number(width))) << width;
}

// Captions, fields and buttons have the room that they want, and none lies over another.
void TestHostWindow::timelineIsWholeAtAnyWidth()
{
    QFETCH(int, width);
    DzTimelinePane pane;
    const QWidget* bar = pane.findChild<QSpinBox*>("startFrame")->parentWidget()->parentWidget();
    QCOMPARE(bar->minimumWidth(), 0); // else the columns beside it give way in place of its row
    pane.show();
    pane.resize(1000, 200);
    pane.resize(std::max(width, pane.minimumSizeHint().width()), 200);
    QCoreApplication::processEvents(); // its parts move to another row
    QVERIFY(pane.minimumSizeHint().width() <= 400);
    QList<QPair<QWidget*, QRect>> parts;
    for (QWidget* part : pane.findChildren<QWidget*>())
        if (qobject_cast<QLabel*>(part) || part->focusPolicy() & Qt::TabFocus)
            if (part->objectName() != "timeRuler" && !qobject_cast<QLineEdit*>(part))
                parts << qMakePair(part, QRect(part->mapTo(&pane, QPoint()), part->size()));
    QCOMPARE(parts.size(), 13); // three captions, three fields, seven buttons
    for (int i = 0; i < parts.size(); ++i) {
        const QRect place = parts[i].second;
        QVERIFY(pane.rect().contains(place));
        const QWidget* part = parts[i].first; // fields have a fixed width
        QVERIFY2(place.width() >= std::min(part->sizeHint().width(), part->maximumWidth()),
            qPrintable(QString("%1: %2").arg(part->accessibleName()).arg(place.width())));
        for (int k = 0; k < i; ++k)
            QVERIFY2(
                !place.intersects(parts[k].second), qPrintable(QString("%1 %2").arg(i).arg(k)));
    }
}

void TestHostWindow::disabledEntriesAreDimmer()
{
    QMenu menu;
    QAction* on = menu.addAction("Entry");
    QAction* off = menu.addAction("Entry");
    off->setEnabled(false);
    menu.show();
    const QImage image = menu.grab().toImage();
    const QRgb ground = image.pixel(menu.width() / 2, menu.actionGeometry(on).top() + 1);
    const double enabled = strongest(image, menu.actionGeometry(on), ground);
    const double disabled = strongest(image, menu.actionGeometry(off), ground);
    QVERIFY2(disabled < 0.6 * enabled && disabled > 2,
        qPrintable(QString("%1 to %2").arg(disabled).arg(enabled)));
}

void TestHostWindow::disabledTextsAreDimmer()
{
    QLabel label("Text");
    const QImage on = label.grab().toImage();
    label.setEnabled(false);
    const QImage off = label.grab().toImage();
    const double enabled = strongest(on, on.rect(), kTheme.window.rgb());
    const double disabled = strongest(off, off.rect(), kTheme.window.rgb());
    QVERIFY2(disabled < 0.6 * enabled && disabled > 2,
        qPrintable(QString("%1 to %2").arg(disabled).arg(enabled)));
}

void TestHostWindow::boxesStandOut_data()
{
    QTest::addColumn<bool>("radio");
    QTest::addColumn<bool>("checked");
    QTest::newRow("empty box") << false << false;
    QTest::newRow("checked box") << false << true;
    QTest::newRow("empty radio button") << true << false;
    QTest::newRow("chosen radio button") << true << true;
}

// Every side of the outline, and the mark inside it.
void TestHostWindow::boxesStandOut()
{
    QFETCH(bool, radio);
    QFETCH(bool, checked);
    std::unique_ptr<QAbstractButton> button;
    if (radio)
        button.reset(new QRadioButton);
    else
        button.reset(new QCheckBox);
    button->setCheckable(true);
    button->setChecked(checked);
    button->resize(60, 30);
    const QImage image = button->grab().toImage();
    QStyleOptionButton option;
    option.initFrom(button.get());
    const QRect box = button->style()->subElementRect(
        radio ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator, &option,
        button.get());
    const QRgb ground = image.pixel(58, 1);
    QCOMPARE(QColor(ground), kTheme.window);
    const QPoint c = box.center();
    for (const QRect& side : {QRect(box.left(), c.y(), 3, 1), QRect(box.right() - 2, c.y(), 3, 1),
             QRect(c.x(), box.top(), 1, 3), QRect(c.x(), box.bottom() - 2, 1, 3)}) {
        const double found = strongest(image, side, ground);
        QVERIFY2(found >= 3, qPrintable(QString::number(found)));
    }
    const QRect inside = box.adjusted(4, 4, -4, -4);
    QCOMPARE(strongest(image, inside, kTheme.field.rgb()) >= 3, checked);
}

void TestHostWindow::statusBarIsNeverEmpty()
{
    QStatusBar* bar = m_bench->window->statusBar();
    QVERIFY(bar->currentMessage().contains("Load a figure"));
    m_bench->addFigure();
    QVERIFY(bar->currentMessage().contains("Genesis 8 Female"));
    bar->showMessage("Something was done", 1);
    QCOMPARE(bar->currentMessage(), QString("Something was done"));
    selectOnly(nullptr);
    QCOMPARE(bar->currentMessage(), QString("Something was done")); // not cut short
    QTRY_VERIFY(bar->currentMessage() != "Something was done");
    QVERIFY(bar->currentMessage().contains("Click a figure"));
    QStatusTipEvent overAnEntry((QString()));
    QCoreApplication::sendEvent(m_bench->window.get(), &overAnEntry);
    QVERIFY(!bar->currentMessage().isEmpty());
    m_bench->window->statusLine()->say("Something was saved");
    const QTimer* timer = bar->findChild<QTimer*>(); // after which it goes, too
    QVERIFY(timer && timer->isActive() && timer->interval() >= 5000);
}

// Of the text's colour in the middle of a list.
static bool hasNote(QAbstractScrollArea* list)
{
    const QImage image = list->viewport()->grab().toImage();
    const QRect middle(0, image.height() / 2 - 15, image.width(), 30);
    return strongest(image, middle, image.pixel(2, 2)) > 3;
}

void TestHostWindow::listsWithoutRowsSayWhy()
{
    auto* tree = m_bench->window->findChild<QAbstractScrollArea*>("sceneTree");
    auto* sliders = m_bench->window->findChild<QAbstractScrollArea*>("parameterList");
    QVERIFY(hasNote(tree)); // no figure yet
    m_bench->addFigure();
    for (QAbstractScrollArea* list : {tree, sliders}) {
        list->parentWidget()
            ->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly)
            ->setText("nothing of that name");
        QVERIFY2(hasNote(list), qPrintable(list->objectName()));
    }
}

QUILLON_TEST(TestHostWindow)
#include "test_host_window.moc"
