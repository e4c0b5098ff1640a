// modal_watch.h - answers the modal windows that a script's doings bring up, and remembers them.
// A window that nobody answers is closed after two seconds and fails the script. The windows of
// running progresses are not among them (bench_progress.h).
// Owns: the queue of answers and the log. GUI thread only.
#pragma once

#include "host/driver/modal_window.h"

#include <QScriptValue>
#include <QVariantMap>

namespace quillon {

struct ExpectedModal {
    QScriptValue given; // the script's own object
    QString title, text; // null: any; otherwise the whole or a part of the window's
    QString button; // label; null: none given
    QString file; // for a file dialog; null: none given
    QVariantMap fields; // name -> bool, text or number
    QScriptValue run; // called with the window before it is answered
};

void startModalWatch();
void stopModalWatch(); // modal windows are the user's again

void expectModal(const ExpectedModal&); // at the end of the queue; the first that fits is taken
QList<ExpectedModal> pendingExpects();
void dropExpects();
QList<ModalRecord> modalLog(); // in order of appearance
void forgetScriptValues(); // before the engine goes

} // namespace quillon
