// dzprogress.h - a modal window that tells how far a long operation is.
//
// The outermost progress opens the window, titled with its first text; progresses made while it
// runs show as further lines of the same window. Steps and new texts repaint the window and run
// the event loop, at most about 30 times a second, so that Cancel works; input to other windows
// is blocked meanwhile. The one who works asks isCancelled(); nothing is interrupted by force.
// GUI thread only. Ends in reverse order of construction (an outer one ends its inner ones).
#pragma once

#include "dzcore_export.h"

#include <QString>

class DZCORE_EXPORT DzProgress {
public:
    // totalSteps 0: unknown, the bar only shows that something happens.
    explicit DzProgress(const QString& info, int totalSteps = 0, bool isCancellable = false,
        bool showTimeElapsed = false);
    ~DzProgress(); // finishes

    void step(); // by 1
    void step(int n);
    void update(int position); // 0..totalSteps, cut to that range
    void setInfo(const QString&); // the line above the bar; the window's title stays
    static void setCurrentInfo(const QString&); // of the innermost running one

    void enable(bool onOff); // off: counts on, but shows nothing and runs no events
    void setCloseOnFinish(bool onOff); // default on; off: the user closes the window
    void cancel(); // as if the user had; also when the user cannot
    void finish(); // later calls have no effect on the window

    bool isCancelled() const; // stays true after finish()
    static bool isActive(); // one is running

private:
    Q_DISABLE_COPY(DzProgress)
    friend class DzProgressWindow;
    static void cancelByUser(); // every running one that may be cancelled
    static void updateCancelButton();
    void openRow();
    void closeRow(bool last);
    void moveTo(int position);
    void tell();
    void refresh(bool atOnce);

    struct Private;
    Private* d;
};
