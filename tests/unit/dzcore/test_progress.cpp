// The progress window: what it shows, how it is cancelled, nesting, and what a watcher sees.
#include "frame_fixture.h"
#include "room_tests.h"

#include "dzprogress.h"
#include "dzprogresswatch.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QtTest>

static QDialog* progressWindow() // null: none is shown
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->objectName() == "DzProgressWindow" && window->isVisible())
            return qobject_cast<QDialog*>(window);
    }
    return nullptr;
}

static QStringList infoTexts() // from top to bottom
{
    QMap<int, QString> byPlace;
    const QList<QLabel*> labels = progressWindow()->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (label->isVisible())
            byPlace.insert(label->y(), label->text());
    }
    return byPlace.values();
}

static QPushButton* button()
{
    return progressWindow()->findChild<QPushButton*>();
}

static QList<DzProgressRecord> g_seen;
static QString g_cancelAtInfo; // the watcher cancels when a text begins so

static bool watch(const DzProgressRecord& record)
{
    g_seen.append(record);
    return !g_cancelAtInfo.isEmpty() && record.info.startsWith(g_cancelAtInfo);
}

class TestProgress : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void opensAModalWindowAndClosesIt();
    void theBarAndTheTextFollow();
    void anUnknownTotalMakesABusyBar();
    void positionsStayInRange();
    void cancelButtonCancels();
    void escapeCancels();
    void withoutCancelNothingCancels();
    void codeMayCancel();
    void innerProgressesShareTheWindow();
    void cancellingReachesInnerAndOuter();
    void anOuterOneEndsItsInnerOnes();
    void currentInfoIsThatOfTheInnermost();
    void elapsedTimeIsShownWhenAsked();
    void staysOpenWhenToldTo();
    void disabledItShowsNothingAndRunsNoEvents();
    void runsEventsAtABoundedRate();
    void aWatcherSeesEveryStep();
    void aWatcherCancels();
    void aWatcherCannotCancelWhatIsNotCancellable();
    void finishedItTakesNothingMore();
    void itsParentIsTheActiveDialog();
    void failsWhenTheHostCallIsToldTo();
};

void TestProgress::init()
{
    g_seen.clear();
    g_cancelAtInfo.clear();
    dzProgressHook = nullptr;
}

void TestProgress::cleanup()
{
    QVERIFY(!DzProgress::isActive());
    QVERIFY(!progressWindow());
    dzProgressHook = nullptr;
    dzHostCallHook = nullptr;
}

void TestProgress::opensAModalWindowAndClosesIt()
{
    QVERIFY(!DzProgress::isActive());
    {
        DzProgress progress("Scanning...", 100);
        QVERIFY(DzProgress::isActive());
        QVERIFY(progressWindow());
        QCOMPARE(progressWindow()->windowTitle(), QString("Scanning..."));
        QCOMPARE(QApplication::activeModalWidget(), static_cast<QWidget*>(progressWindow()));
    }
    QVERIFY(!DzProgress::isActive());
    QVERIFY(!QApplication::activeModalWidget());
}

// Turns the event loop once more than the bounded rate would.
static void refreshNow(DzProgress* progress)
{
    progress->enable(true);
}

void TestProgress::theBarAndTheTextFollow()
{
    DzProgress progress("Scanning...", 100);
    QProgressBar* bar = progressWindow()->findChild<QProgressBar*>();
    QCOMPARE(bar->maximum(), 100);
    progress.step(50);
    progress.step();
    progress.setInfo("Indexing poses... 3 of 9");
    refreshNow(&progress);
    QCOMPARE(bar->value(), 51);
    QCOMPARE(infoTexts(), QStringList("Indexing poses... 3 of 9"));
    QCOMPARE(progressWindow()->windowTitle(), QString("Scanning..."));
    progress.update(7);
    refreshNow(&progress);
    QCOMPARE(bar->value(), 7);
}

void TestProgress::anUnknownTotalMakesABusyBar()
{
    DzProgress progress("Working");
    const QProgressBar* bar = progressWindow()->findChild<QProgressBar*>();
    QCOMPARE(bar->maximum(), 0);
    progress.step();
    refreshNow(&progress);
    QCOMPARE(bar->maximum(), 0);
}

void TestProgress::positionsStayInRange()
{
    dzProgressHook = watch;
    DzProgress progress("Working", 10);
    progress.update(99);
    QCOMPARE(g_seen.last().position, 10);
    progress.update(-5);
    QCOMPARE(g_seen.last().position, 0);
    progress.step(3);
    QCOMPARE(g_seen.last().position, 3);
}

void TestProgress::cancelButtonCancels()
{
    DzProgress progress("Working", 10, true);
    QVERIFY(button()->isVisible());
    QCOMPARE(button()->text(), QString("&Cancel"));
    QVERIFY(!progress.isCancelled());
    QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(progress.isCancelled());
    QVERIFY(!button()->isEnabled());
    QVERIFY(progressWindow()); // it goes when the work ends
    progress.finish();
    QVERIFY(progress.isCancelled());
}

void TestProgress::escapeCancels()
{
    DzProgress progress("Working", 10, true);
    QTest::keyClick(progressWindow(), Qt::Key_Escape);
    QVERIFY(progress.isCancelled());
    QVERIFY(progressWindow());
}

void TestProgress::withoutCancelNothingCancels()
{
    DzProgress progress("Working", 10);
    QVERIFY(!button()->isVisible());
    QTest::keyClick(progressWindow(), Qt::Key_Escape);
    progressWindow()->close();
    QVERIFY(!progress.isCancelled());
    QVERIFY(progressWindow());
}

void TestProgress::codeMayCancel()
{
    DzProgress progress("Working", 10);
    progress.cancel();
    QVERIFY(progress.isCancelled());
}

void TestProgress::innerProgressesShareTheWindow()
{
    DzProgress outer("Outer", 10);
    QDialog* window = progressWindow();
    {
        DzProgress inner("Inner", 5);
        QCOMPARE(progressWindow(), window);
        QCOMPARE(window->windowTitle(), QString("Outer"));
        QCOMPARE(infoTexts(),
            QStringList() << "Outer"
                          << "Inner");
        QCOMPARE(window->findChildren<QProgressBar*>().size(), 2);
    }
    QCOMPARE(progressWindow(), window);
    QCOMPARE(infoTexts(), QStringList() << "Outer");
    QVERIFY(DzProgress::isActive());
}

void TestProgress::cancellingReachesInnerAndOuter()
{
    DzProgress outer("Outer", 10, true);
    DzProgress middle("Middle", 10, false);
    DzProgress inner("Inner", 5, true);
    QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(outer.isCancelled());
    QVERIFY(!middle.isCancelled());
    QVERIFY(inner.isCancelled());
}

void TestProgress::anOuterOneEndsItsInnerOnes()
{
    DzProgress outer("Outer", 10);
    DzProgress inner("Inner", 5);
    outer.finish();
    QVERIFY(!DzProgress::isActive());
    QVERIFY(!progressWindow());
    inner.step(); // harmless
    inner.finish();
}

void TestProgress::currentInfoIsThatOfTheInnermost()
{
    DzProgress::setCurrentInfo("nobody listens");
    DzProgress outer("Outer", 10);
    DzProgress inner("Inner", 5);
    DzProgress::setCurrentInfo("news");
    refreshNow(&inner);
    QCOMPARE(infoTexts(),
        QStringList() << "Outer"
                      << "news");
}

void TestProgress::elapsedTimeIsShownWhenAsked()
{
    DzProgress progress("Working", 10, false, true);
    QCOMPARE(infoTexts(),
        QStringList() << "Working"
                      << "Elapsed: 0:00:00");
}

void TestProgress::staysOpenWhenToldTo()
{
    DzProgress progress("Working", 10, true);
    progress.setCloseOnFinish(false);
    progress.finish();
    QVERIFY(!DzProgress::isActive());
    QVERIFY(progressWindow());
    QCOMPARE(button()->text(), QString("&Close"));
    {
        DzProgress next("Next", 10); // has a window of its own
        QVERIFY(DzProgress::isActive());
    }
    QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(!progressWindow());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TestProgress::disabledItShowsNothingAndRunsNoEvents()
{
    QTimer timer;
    QSignalSpy fired(&timer, SIGNAL(timeout()));
    DzProgress progress("Working", 1000);
    progress.enable(false);
    timer.start(0);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 100)
        progress.step();
    QCOMPARE(fired.count(), 0);
    progress.enable(true);
    QVERIFY(fired.count() > 0);
}

// The bound is 33 ms; a slower machine only makes it fewer.
void TestProgress::runsEventsAtABoundedRate()
{
    QTimer timer;
    QSignalSpy fired(&timer, SIGNAL(timeout()));
    DzProgress progress("Working", 1000000);
    timer.start(0);
    int steps = 0;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 300) {
        progress.step();
        ++steps;
    }
    QVERIFY2(fired.count() >= 1, "the event loop never ran");
    QVERIFY2(fired.count() <= 10, qPrintable(QString::number(fired.count())));
    QVERIFY2(steps > 10000, qPrintable(QString::number(steps))); // a step costs next to nothing
}

void TestProgress::aWatcherSeesEveryStep()
{
    dzProgressHook = watch;
    {
        DzProgress progress("Scanning...", 100, true);
        progress.step(50);
        progress.setInfo("Indexing poses... 0 of 2");
        progress.update(50);
    }
    QCOMPARE(g_seen.size(), 5);
    QCOMPARE(int(g_seen.at(0).event), int(DzProgressRecord::Started));
    QCOMPARE(g_seen.at(0).title, QString("Scanning..."));
    QCOMPARE(g_seen.at(0).total, 100);
    QVERIFY(g_seen.at(0).cancellable);
    QCOMPARE(g_seen.at(1).position, 50);
    QCOMPARE(g_seen.at(1).calls, 1);
    QCOMPARE(g_seen.at(2).info, QString("Indexing poses... 0 of 2"));
    QCOMPARE(g_seen.at(2).title, QString("Scanning..."));
    QCOMPARE(g_seen.at(3).calls, 2);
    QCOMPARE(int(g_seen.at(4).event), int(DzProgressRecord::Finished));
    QVERIFY(!g_seen.at(4).cancelled);
}

void TestProgress::aWatcherCancels()
{
    dzProgressHook = watch;
    g_cancelAtInfo = "Indexing";
    DzProgress progress("Scanning...", 100, true);
    progress.setInfo("Reading");
    QVERIFY(!progress.isCancelled());
    progress.setInfo("Indexing poses... 0 of 2");
    QVERIFY(progress.isCancelled());
}

void TestProgress::aWatcherCannotCancelWhatIsNotCancellable()
{
    dzProgressHook = watch;
    g_cancelAtInfo = "Scanning";
    DzProgress progress("Scanning...", 100);
    progress.step();
    QVERIFY(!progress.isCancelled());
}

void TestProgress::finishedItTakesNothingMore()
{
    dzProgressHook = watch;
    DzProgress progress("Working", 10, true);
    progress.finish();
    const int seen = g_seen.size();
    progress.step();
    progress.setInfo("late");
    progress.cancel();
    progress.finish();
    progress.enable(true);
    QCOMPARE(g_seen.size(), seen);
    QVERIFY(!progress.isCancelled());
    QVERIFY(!progressWindow());
}

void TestProgress::itsParentIsTheActiveDialog()
{
    HostFixture host;
    host.window.show();
    {
        DzProgress progress("Working", 10);
        QCOMPARE(progressWindow()->parentWidget(), static_cast<QWidget*>(&host.window));
    }
    QDialog dialog(&host.window);
    dialog.setModal(true);
    dialog.show();
    DzProgress progress("Working", 10);
    QCOMPARE(progressWindow()->parentWidget(), static_cast<QWidget*>(&dialog));
    progress.finish();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

static bool failOpen(const char* name, const void*)
{
    return qstrcmp(name, "openProgress") == 0;
}

void TestProgress::failsWhenTheHostCallIsToldTo()
{
    dzHostCallHook = failOpen;
    DzProgress progress("Working", 10, true);
    dzHostCallHook = nullptr;
    QVERIFY(!progressWindow());
    progress.step();
    progress.setInfo("goes on unseen");
    QVERIFY(!progress.isCancelled());
}

QUILLON_TEST(TestProgress)
#include "test_progress.moc"
