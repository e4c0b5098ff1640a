// trial_pane.h - a plug-in pane made for trying the program that loads it: it shows what reached it
// and does on demand what plug-ins do. It has one painted button for each of its doings.
#pragma once

#include "dzaction.h"
#include "dzpane.h"

#include <QStringList>
#include <QTimer>

class TrialPane : public DzPane {
    Q_OBJECT
public:
    TrialPane();
    ~TrialPane() override;

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void enterEvent(QEvent*) override;
    void leaveEvent(QEvent*) override;
    void keyPressEvent(QKeyEvent*) override;

private slots:
    void timeIsUp();

private:
    void note(const QString& line);
    void doButton(int button);

    QStringList m_lines;
};

class TrialPaneAction : public DzPaneAction {
    Q_OBJECT
public:
    TrialPaneAction();
};

class TrialAction : public DzAction { // tells in a message box that it was triggered
    Q_OBJECT
public:
    TrialAction();

protected slots:
    void executeAction() override;
};
