// full_pipe.h - a pipe at a file's name, for what must open plain files only. It holds bytes, and
// both of its ends are open, so that a wrong reader or writer shows in them; one that waits for
// more is ended by a signal. Systems without named pipes have nothing there.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

class FullPipe {
public:
    // Takes the place of a file at the path.
    explicit FullPipe(const QString& path, const QByteArray& bytes = "in the pipe")
        : m_bytes(bytes)
    {
#ifdef Q_OS_UNIX
        static const unsigned kLongestWaitSeconds = 60; // only a wrong one waits at all
        QDir().mkpath(path.section(QLatin1Char('/'), 0, -2));
        QFile::remove(path);
        const QByteArray name = QFile::encodeName(path);
        if (::mkfifo(name.constData(), 0600) == 0)
            m_end = ::open(name.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
        m_filled = m_end >= 0
            && ::write(m_end, m_bytes.constData(), std::size_t(m_bytes.size())) == m_bytes.size();
        ::alarm(kLongestWaitSeconds);
#else
        Q_UNUSED(path);
#endif
    }
    ~FullPipe()
    {
#ifdef Q_OS_UNIX
        ::alarm(0);
        if (m_end >= 0)
            ::close(m_end);
#endif
    }
    // Holds what it held at first: nobody has read from it or written to it.
    bool isUntouched() const
    {
#ifdef Q_OS_UNIX
        int held = 0;
        return m_filled && ::ioctl(m_end, FIONREAD, &held) == 0 && held == m_bytes.size();
#else
        return true;
#endif
    }

private:
    Q_DISABLE_COPY(FullPipe)
    QByteArray m_bytes;
    int m_end = -1;
    bool m_filled = false;
};
