#include "dzdockstrip.h"

#include <QPainter>
#include <QStyleOption>

static const int kExtentPx = 24;
static const int kMarginPx = 6;

DzDockStrip::DzDockStrip(QWidget* parent)
    : QAbstractButton(parent)
    , m_upright(true)
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
}

int DzDockStrip::extentPx()
{
    return kExtentPx;
}

void DzDockStrip::setUpright(bool upright)
{
    m_upright = upright;
    setSizePolicy(upright ? QSizePolicy::Fixed : QSizePolicy::Expanding,
        upright ? QSizePolicy::Expanding : QSizePolicy::Fixed);
    updateGeometry();
    update();
}

QSize DzDockStrip::sizeHint() const
{
    const int length = fontMetrics().boundingRect(text()).width() + 2 * kMarginPx + kExtentPx;
    return m_upright ? QSize(kExtentPx, length) : QSize(length, kExtentPx);
}

void DzDockStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOptionButton option;
    option.initFrom(this);
    option.state |= isDown() ? QStyle::State_Sunken : QStyle::State_Raised;
    style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, this);

    QRect area = rect();
    if (m_upright) { // paint along the x axis of a frame that stands on its left side
        painter.translate(0, height());
        painter.rotate(-90);
        area = QRect(0, 0, height(), width());
    }
    const QString shown
        = fontMetrics().elidedText(text(), Qt::ElideRight, area.width() - 2 * kMarginPx);
    painter.setPen(palette().color(QPalette::ButtonText));
    const int start = m_upright ? Qt::AlignRight : Qt::AlignLeft; // upright: at the top
    painter.drawText(area.adjusted(kMarginPx, 0, -kMarginPx, 0), Qt::AlignVCenter | start, shown);
}
