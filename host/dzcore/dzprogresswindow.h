// dzprogresswindow.h - the window of the running progresses: one line of text and one bar for
// each, elapsed time, Cancel. Not part of the interface that plug-ins see.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QList>

class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

class DzProgressWindow : public QDialog {
    Q_OBJECT
public:
    enum CancelState { NotCancellable, Cancellable, Cancelling };

    DzProgressWindow(QWidget* parent, const QString& title);

    // Rows are a stack: the last one is the innermost progress.
    void addRow();
    void removeRow();
    void setRow(int i, const QString& info, int position, int total);
    void setCancelState(CancelState);
    void showElapsed(bool);
    void updateElapsed();
    void leaveOpen(); // finished: the button closes the window, which then deletes itself

public slots:
    void reject() override; // Escape, the title bar's cross and the button

private:
    struct Row {
        QLabel* info;
        QProgressBar* bar;
    };
    QList<Row> m_rows;
    QVBoxLayout* m_rowLayout;
    QLabel* m_elapsed;
    QPushButton* m_button;
    QElapsedTimer m_clock;
    CancelState m_cancelState;
    bool m_finished;
};
