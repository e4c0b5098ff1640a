// qt_test_compat.h - what the tests need that Qt 4.8 and Qt 5.15 spell differently, and calls of
// plain functions by signals and by the event loop, for which 4.8 has no connect.
#pragma once

#include <QApplication>
#include <QMetaObject>
#include <QObject>
#include <QProcess>
#include <QWidget>
#include <QtTest>

#include <functional>
#include <utility>

// Calls a function at each of a signal's emissions, as QSignalSpy counts them: no class for moc.
class SignalCall : public QObject {
public:
    // signal: what SIGNAL() gives. arguments[1] points to the signal's first argument.
    SignalCall(QObject* sender, const char* signal, std::function<void(void** arguments)> call)
        : QObject(sender)
        , m_call(std::move(call))
    {
        const QByteArray name = QMetaObject::normalizedSignature(signal + 1);
        const int number = sender->metaObject()->indexOfSignal(name.constData());
        Q_ASSERT_X(number >= 0, "SignalCall", name.constData());
        QMetaObject::connect(sender, number, this, ownMethod(), Qt::DirectConnection, nullptr);
    }
    int qt_metacall(QMetaObject::Call kind, int method, void** arguments) override
    {
        method = QObject::qt_metacall(kind, method, arguments);
        if (method == 0 && kind == QMetaObject::InvokeMetaMethod)
            m_call(arguments);
        return method < 0 ? method : method - 1;
    }

private:
    static int ownMethod()
    {
        return QObject::staticMetaObject.methodCount();
    }
    std::function<void(void**)> m_call;
};

// The sender owns the connection.
inline void onSignal(
    QObject* sender, const char* signal, std::function<void(void** arguments)> call)
{
    new SignalCall(sender, signal, std::move(call));
}

// While it lives, calls a function at every turn of the event loop.
class EveryTurn : public QObject {
public:
    explicit EveryTurn(std::function<void()> call)
        : m_call(std::move(call))
    {
        startTimer(0);
    }

protected:
    void timerEvent(QTimerEvent*) override
    {
        m_call();
    }

private:
    std::function<void()> m_call;
};

// Calls a function once, at the event loop's next turn, unless the owner has gone by then.
class NextTurn : public QObject {
public:
    NextTurn(QObject* owner, std::function<void()> call)
        : QObject(owner)
        , m_call(std::move(call))
    {
        m_timer = startTimer(0);
    }

protected:
    void timerEvent(QTimerEvent*) override
    {
        killTimer(m_timer);
        deleteLater();
        m_call();
    }

private:
    std::function<void()> m_call;
    int m_timer;
};

inline void atNextTurn(QObject* owner, std::function<void()> call)
{
    new NextTurn(owner, std::move(call));
}

// False: the window system has not shown it in time.
inline bool waitForWindowShown(QWidget* window)
{
#if QT_VERSION >= 0x050000
    return QTest::qWaitForWindowExposed(window);
#else
    return QTest::qWaitForWindowShown(window);
#endif
}

// False: it does not have the keys in time.
inline bool waitForWindowActive(QWidget* window)
{
#if QT_VERSION >= 0x050000
    return QTest::qWaitForWindowActive(window);
#else
    QApplication::setActiveWindow(window);
    return QTest::qWaitForWindowShown(window) && window->isActiveWindow();
#endif
}

// Of a process that has been started.
inline qint64 processIdOf(const QProcess& process)
{
#if QT_VERSION >= 0x050000
    return process.processId();
#else
    return qint64(process.pid());
#endif
}
