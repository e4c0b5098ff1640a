// status_line.h - the status bar of the window: the last message, and when that is over what can be
// done next. It is never empty.
#pragma once

#include <QObject>

class QStatusBar;

class StatusLine : public QObject {
    Q_OBJECT
public:
    explicit StatusLine(QStatusBar* bar);

public slots:
    void say(const QString& text); // for some seconds

private slots:
    void rest(); // says what can be done next, if nothing else is said
    void messageDidChange(const QString& text);

private:
    QStatusBar* m_bar;
    bool m_resting;
};
