#include "dzprogress.h"
#include "dzapp.h"
#include "dzhostcalls.h"
#include "dzprogresswatch.h"
#include "dzprogresswindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>

#include <algorithm>
#include <vector>

DzProgressHook dzProgressHook = nullptr;

static const int kRefreshMs = 33; // repaint and run events at most this often

struct DzProgress::Private {
    DzProgressRecord record;
    bool enabled, closeOnFinish, showElapsed, running;
    bool hasRow; // in the window
};

// The running progresses, outermost first, and their window. GUI thread only.
static std::vector<DzProgress*> g_running;
static QPointer<DzProgressWindow> g_window;
static QElapsedTimer g_sinceRefresh;
static int g_serial = 0;

DzProgress::DzProgress(
    const QString& info, int totalSteps, bool isCancellable, bool showTimeElapsed)
    : d(new Private)
{
    const DzProgressRecord record = {DzProgressRecord::Started, ++g_serial, info, info, 0,
        std::max(0, totalSteps), 0, isCancellable, false};
    d->record = record;
    d->enabled = !DZ_HOST_CALL("openProgress");
    d->closeOnFinish = true;
    d->showElapsed = showTimeElapsed;
    d->running = true;
    d->hasRow = false;
    g_running.push_back(this);
    openRow();
    tell();
    refresh(true);
}

DzProgress::~DzProgress()
{
    finish();
    delete d;
}

// Progresses made while others run share the window of the outermost.
void DzProgress::openRow()
{
    if (!d->enabled || !qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    if (!g_window)
        g_window
            = new DzProgressWindow(dzApp ? dzApp->getDialogParent() : nullptr, d->record.title);
    g_window->addRow();
    d->hasRow = true;
    updateCancelButton();
    if (d->showElapsed)
        g_window->showElapsed(true);
    g_window->show();
}

void DzProgress::updateCancelButton()
{
    DzProgressWindow::CancelState state = DzProgressWindow::NotCancellable;
    for (const DzProgress* p : g_running) {
        const DzProgressRecord& r = p->d->record;
        if (r.cancellable && !r.cancelled)
            state = DzProgressWindow::Cancellable;
        else if (r.cancelled && state == DzProgressWindow::NotCancellable)
            state = DzProgressWindow::Cancelling;
    }
    if (g_window)
        g_window->setCancelState(state);
}

void DzProgress::tell()
{
    if (dzProgressHook && dzProgressHook(d->record) && d->record.cancellable
        && d->record.event != DzProgressRecord::Finished)
        cancel();
}

void DzProgress::refresh(bool atOnce)
{
    if (!d->enabled || !d->running)
        return;
    if (!atOnce && g_sinceRefresh.isValid() && g_sinceRefresh.elapsed() < kRefreshMs)
        return;
    if (g_window) {
        int row = 0;
        for (const DzProgress* p : g_running) {
            const DzProgressRecord& r = p->d->record;
            if (p->d->hasRow)
                g_window->setRow(row++, r.info, r.position, r.total);
        }
        g_window->updateElapsed();
    }
    QCoreApplication::processEvents();
    g_sinceRefresh.start(); // after the events, which take time of their own
}

void DzProgress::moveTo(int position)
{
    if (!d->running)
        return;
    DzProgressRecord& r = d->record;
    r.position = std::max(0, r.total > 0 ? std::min(position, r.total) : position);
    r.event = DzProgressRecord::Changed;
    ++r.calls;
    tell();
    refresh(false);
}

void DzProgress::step()
{
    step(1);
}

void DzProgress::step(int n)
{
    moveTo(d->record.position + n);
}

void DzProgress::update(int position)
{
    moveTo(position);
}

void DzProgress::setInfo(const QString& info)
{
    if (!d->running)
        return;
    d->record.info = info;
    d->record.event = DzProgressRecord::Changed;
    tell();
    refresh(false);
}

void DzProgress::setCurrentInfo(const QString& info)
{
    if (!g_running.empty())
        g_running.back()->setInfo(info);
}

void DzProgress::enable(bool onOff)
{
    d->enabled = onOff;
    if (onOff && d->running && !d->hasRow && g_running.back() == this)
        openRow();
    refresh(true);
}

void DzProgress::setCloseOnFinish(bool onOff)
{
    d->closeOnFinish = onOff;
}

void DzProgress::cancel()
{
    if (!d->running)
        return;
    d->record.cancelled = true;
    updateCancelButton();
}

void DzProgress::cancelByUser()
{
    for (DzProgress* p : g_running) {
        if (p->d->record.cancellable)
            p->cancel();
    }
}

bool DzProgress::isCancelled() const
{
    if (DZ_HOST_CALL("isCancelled"))
        return false;
    return d->record.cancelled;
}

bool DzProgress::isActive()
{
    return !g_running.empty();
}

void DzProgress::finish()
{
    if (!d->running)
        return;
    while (g_running.back() != this) // an outer one ends its inner ones
        g_running.back()->finish();
    d->record.event = DzProgressRecord::Finished;
    tell();
    const bool last = g_running.size() == 1;
    if (last && g_window && !d->closeOnFinish) {
        refresh(true);
        if (g_window)
            g_window->leaveOpen();
        g_window = nullptr;
    }
    d->running = false;
    g_running.pop_back();
    closeRow(last);
}

void DzProgress::closeRow(bool last)
{
    if (!g_window)
        return;
    if (d->hasRow)
        g_window->removeRow();
    d->hasRow = false;
    if (!last) {
        updateCancelButton();
        return;
    }
    g_window->hide();
    g_window->deleteLater();
    g_window = nullptr;
}
