// scan_report.h - what a progress window told while it ran, summed up by phase.
// Input: info texts of the form "What is done... 3 of 600" or "What is done... 600".
// Owns: nothing.
#pragma once

#include "host/driver/bench_progress.h"

#include <QStringList>

namespace quillon {

struct PhaseCount {
    QString name; // "What is done"
    int in; // how many it goes through; without a total: how many it has found
    int shown; // of how many it told
    double seconds;
};

// Phases in order. A text without a number belongs to none.
QList<PhaseCount> countPhases(const QList<ProgressEntry>& log, qint64 endMs);

// A table of the phases, one a line, below a line of headings. left: how many are there after the
// last phase.
QStringList phaseTable(const QList<PhaseCount>& phases, int left);

} // namespace quillon
