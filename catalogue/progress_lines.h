// progress_lines.h - tells on stderr how far the work is: in place on a terminal, else as lines, of
// which there are few. Owns: when it last told.
#pragma once

#include <QElapsedTimer>
#include <QString>

namespace quillon {

class ProgressLines {
public:
    ProgressLines();
    ~ProgressLines(); // ends the line that is shown in place

    // What is being done now, with what changes within it; told at most ten times a second on a
    // terminal. Elsewhere once for each phase.
    void show(const QString& phase, const QString& detail);
    // A line that stays.
    void say(const QString& text);

    // "312 of 600 pictures, 24 a second, 12 s left", told at most every tenth of the whole where
    // there is no terminal.
    void count(int done, int total, int madeNow);

private:
    void put(const QString& text);

    bool m_isTerminal;
    bool m_isOpen = false; // a line is shown in place
    QString m_phase;
    int m_tenth = -1;
    QElapsedTimer m_sinceTold, m_sinceFirst;
};

} // namespace quillon
