// dzdockstrip.h - what is left of a minimised dock window: a narrow button with its title, upright
// in a column, that restores it. Not part of the interface that plug-ins see.
#pragma once

#include <QAbstractButton>

class DzDockStrip : public QAbstractButton {
    Q_OBJECT
public:
    explicit DzDockStrip(QWidget* parent);

    static int extentPx(); // its narrow side
    void setUpright(bool); // text runs from bottom to top
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;

private:
    bool m_upright;
};
