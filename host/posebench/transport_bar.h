// transport_bar.h - what stands below the ruler of the timeline: range, steps and frame beside each
// other, and where that is too wide, the steps above the frames.
#pragma once

#include <QWidget>

class QHBoxLayout;

class TransportBar : public QWidget {
public:
    TransportBar(QWidget* start, QWidget* steps, QWidget* current, QWidget* end); // owns them
    QSize minimumSizeHint() const override; // as wide as two rows need

protected:
    void resizeEvent(QResizeEvent*) override;

private:
    int oneRowPx() const;
    int twoRowsPx() const;
    void arrange(bool inTwoRows);

    QWidget* m_start;
    QWidget* m_steps;
    QWidget* m_current;
    QWidget* m_end;
    QHBoxLayout* m_upper; // empty in one row
    QHBoxLayout* m_lower;
    bool m_inTwoRows;
};
