#include "frame_fixture.h"
#include "room_tests.h"

#include "ground/live_panes.h"
#include "ground/status_message.h"

#include "dzaction.h"
#include "dzactionmgr.h"

#include <QTimer>
#include <QtTest>

using namespace quillon;

// Counts repaints.
class Canvas : public QWidget {
public:
    int paints = 0;
    int newPaints()
    {
        QApplication::processEvents();
        const int seen = paints;
        paints = 0;
        return seen;
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        ++paints;
    }
};

// Found by the name of its class, as the plug-in's own is.
class QuillonAboutAction : public DzAction {
    Q_OBJECT
public:
    QuillonAboutAction()
        : DzAction("About", QString())
    {
    }
};

class TestStatusMessage : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<Canvas> m_canvas;
    std::unique_ptr<QTimer> m_timer;

private slots:
    void init()
    {
        m_canvas.reset(new Canvas);
        m_timer.reset(new QTimer);
        m_timer->setSingleShot(true);
        enterPane(m_canvas.get());
        paneTimers().status = m_timer.get();
        m_canvas->show();
        clearStatusMessage();
        m_canvas->newPaints();
    }
    void cleanup()
    {
        setBusy(false);
        forgetHostManagers();
        paneTimers() = PaneTimers();
        leavePane(m_canvas.get());
        m_canvas.reset();
        m_timer.reset();
    }

    void showingStoresTheTextStartsTheTimerAndRepaints()
    {
        QVERIFY(!isStatusMessageShown());
        showStatusMessage("\r\n\r\nReset succeeded\r\n\r\n");
        QCOMPARE(statusMessage(), QString("\r\n\r\nReset succeeded\r\n\r\n"));
        QVERIFY(isStatusMessageShown());
        QVERIFY(m_timer->isActive());
        QCOMPARE(m_timer->interval(), 3000);
        QCOMPARE(m_canvas->newPaints(), 1);
    }

    void aSecondTextReplacesTheFirstButNotItsTime()
    {
        showStatusMessage("first");
        const int timer = m_timer->timerId();
        showStatusMessage("second");
        QCOMPARE(m_timer->timerId(), timer); // a restart would give another
        QCOMPARE(statusMessage(), QString("second"));
        QVERIFY(isStatusMessageShown());
    }

    void theTimersEndHidesTheTextAndRepaints()
    {
        showStatusMessage("text");
        m_canvas->newPaints();
        hideStatusMessage();
        QVERIFY(!isStatusMessageShown());
        QCOMPARE(statusMessage(), QString("text"));
        QCOMPARE(m_canvas->newPaints(), 1);
    }

    void clearingLeavesTheTimerRunning()
    {
        showStatusMessage("text");
        const int timer = m_timer->timerId();
        clearStatusMessage();
        QVERIFY(!isStatusMessageShown());
        QVERIFY(statusMessage().isEmpty());
        QCOMPARE(m_timer->timerId(), timer);
    }

    void refreshingRepaintsEveryPane()
    {
        Canvas second;
        enterPane(&second);
        second.show();
        second.newPaints();
        m_canvas->newPaints();
        refreshPane();
        QCOMPARE(m_canvas->newPaints(), 1);
        QCOMPARE(second.newPaints(), 1);
        QCOMPARE(leavePane(&second), 1);
    }

    void busySuppressesTheRefreshAndNothingElse()
    {
        HostFixture host;
        DzAction* about = new QuillonAboutAction;
        host.window.getActionMgr()->registerAction(about);
        cacheHostManagers();
        about->setEnabled(false);
        setBusy(true);
        QVERIFY(isBusy());
        refreshPane();
        QVERIFY(!about->isEnabled());
        QCOMPARE(m_canvas->newPaints(), 0);
        showStatusMessage("text");
        QCOMPARE(m_canvas->newPaints(), 1);
        setBusy(false);
        refreshPane();
        QVERIFY(about->isEnabled());
        QCOMPARE(m_canvas->newPaints(), 1);
    }

    void withoutTheAboutActionTheRefreshStillRepaints()
    {
        HostFixture host;
        cacheHostManagers();
        refreshPane();
        QCOMPARE(m_canvas->newPaints(), 1);
        forgetHostManagers();
        refreshPane();
        QCOMPARE(m_canvas->newPaints(), 1);
    }

    void withoutAPaneAMessageIsOnlyKept()
    {
        leavePane(m_canvas.get());
        paneTimers() = PaneTimers();
        showStatusMessage("text");
        QVERIFY(isStatusMessageShown());
        QVERIFY(!m_timer->isActive());
        QVERIFY(!currentPane());
        QCOMPARE(m_canvas->newPaints(), 0);
    }
};

QUILLON_TEST(TestStatusMessage)
#include "test_status_message.moc"
