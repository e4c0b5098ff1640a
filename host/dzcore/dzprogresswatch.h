// dzprogresswatch.h - lets an embedding application follow and cancel progresses. Not part of the
// interface that plug-ins see.
#pragma once

#include "dzcore_export.h"

#include <QString>

struct DzProgressRecord {
    enum Event { Started, Changed, Finished };

    Event event;
    int serial; // which progress: 1, 2, ... in order of construction
    QString title; // the text it was made with
    QString info; // the text it shows now
    int position; // 0..total
    int total; // 0: unknown
    int calls; // of step() and update() so far
    bool cancellable;
    bool cancelled;
};

// Called at construction, after every step, update and new text (not only when the window
// repaints), and at the end. True: cancel it, as its Cancel button would; without effect when it
// is not cancellable.
typedef bool (*DzProgressHook)(const DzProgressRecord&);

extern DZCORE_EXPORT DzProgressHook dzProgressHook; // null: nobody watches

// The window of the running progresses is a top-level DzProgressWindow, a QDialog with the object
// name "DzProgressWindow".
