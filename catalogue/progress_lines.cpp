#include "catalogue/progress_lines.h"

#include <cstdio>
#include <unistd.h>

namespace quillon {

static const int kLeastMs = 100; // between two changes of the line

ProgressLines::ProgressLines()
    : m_isTerminal(::isatty(STDERR_FILENO))
{
}

ProgressLines::~ProgressLines()
{
    if (m_isOpen)
        std::fputs("\n", stderr);
}

void ProgressLines::put(const QString& text)
{
    const char* const form
        = m_isTerminal ? "\r\033[Kquillon-catalogue: %s" : "quillon-catalogue: %s\n";
    std::fprintf(stderr, form, text.toUtf8().constData());
    std::fflush(stderr);
    m_isOpen = m_isTerminal;
    m_sinceTold.start();
}

void ProgressLines::show(const QString& phase, const QString& detail)
{
    const bool isNew = phase != m_phase;
    m_phase = phase;
    const bool isDue = m_isTerminal && m_sinceTold.isValid() && m_sinceTold.elapsed() >= kLeastMs;
    if (isNew || isDue)
        put(m_isTerminal ? phase + ' ' + detail : phase);
}

void ProgressLines::say(const QString& text)
{
    put(text);
    if (m_isOpen)
        std::fputs("\n", stderr);
    m_isOpen = false;
}

void ProgressLines::count(int done, int total, int madeNow)
{
    if (!m_sinceFirst.isValid())
        m_sinceFirst.start();
    const int tenth = total > 0 ? done * 10 / total : 10;
    const bool isDue = m_isTerminal ? m_sinceTold.elapsed() >= kLeastMs : tenth != m_tenth;
    if (!isDue && done != total)
        return;
    m_tenth = tenth;
    QString text = QString("%1 of %2 pictures").arg(done).arg(total);
    const double seconds = double(m_sinceFirst.elapsed()) / 1000;
    if (madeNow > 0 && seconds > 0.5) {
        const double aSecond = madeNow / seconds;
        text += QString(", %1 a second").arg(aSecond, 0, 'f', 1);
        if (done < total)
            text += QString(", %1 s left").arg(int((total - done) / aSecond) + 1);
    }
    put(text);
}

} // namespace quillon
