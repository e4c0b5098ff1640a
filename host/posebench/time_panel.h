// time_panel.h - the clock of the scene: a ruler of frames with the keys of the selection, the
// animation range, and stepping and playing. Drag on the ruler, or its arrow keys, Home and End,
// move the playhead. Shows frames of dzScene's time step; the scene keeps ticks.
#pragma once

#include "dzpane.h"

#include "dztime.h"

#include <QTimer>
#include <QVector>

class QSpinBox;
class QToolButton;

class DzTimeRuler : public QWidget {
    Q_OBJECT
public:
    explicit DzTimeRuler(QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void keyPressEvent(QKeyEvent*) override; // Left, Right, Home, End

private:
    int xOf(DzTime t) const;
    DzTime frameTimeAt(int x) const;
};

class DzTimelinePane : public DzPane {
    Q_OBJECT
public:
    DzTimelinePane();

public slots:
    void goToStart();
    void goToEnd();
    void previousFrame();
    void nextFrame();
    void previousKey();
    void nextKey();
    void togglePlay();

private slots:
    void showState();
    void takeFrame(int frame);
    void takeRange();
    void playStep();

private:
    QSpinBox* m_current;
    QSpinBox* m_start;
    QSpinBox* m_end;
    QToolButton* m_play;
    QTimer m_clock;
};

// Times of all keys on the selected nodes' channels, ascending.
QVector<DzTime> selectedKeyTimes();
