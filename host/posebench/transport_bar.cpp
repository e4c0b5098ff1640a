#include "host/posebench/transport_bar.h"

#include <QHBoxLayout>

#include <algorithm>
#include <initializer_list>

static const int kSidePx = 10;
static const int kAbovePx = 3;
static const int kSpacingPx = 4;

TransportBar::TransportBar(QWidget* start, QWidget* steps, QWidget* current, QWidget* end)
    : m_start(start)
    , m_steps(steps)
    , m_current(current)
    , m_end(end)
    , m_upper(new QHBoxLayout)
    , m_lower(new QHBoxLayout)
    , m_inTwoRows(false)
{
    QVBoxLayout* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kSidePx, kAbovePx, kSidePx, kAbovePx);
    rows->setSpacing(0);
    rows->setSizeConstraint(QLayout::SetNoConstraint); // else the first row's width stays the least
    for (QHBoxLayout* row : {m_upper, m_lower}) {
        row->setSpacing(kSpacingPx);
        rows->addLayout(row);
    }
    arrange(false);
}

static int widthOf(std::initializer_list<const QWidget*> parts)
{
    int width = 2 * kSidePx + (int(parts.size()) - 1) * kSpacingPx;
    for (const QWidget* part : parts)
        width += part->sizeHint().width();
    return width;
}

int TransportBar::oneRowPx() const
{
    return widthOf({m_start, m_steps, m_current, m_end});
}

int TransportBar::twoRowsPx() const
{
    return std::max(widthOf({m_start, m_current, m_end}), widthOf({m_steps}));
}

QSize TransportBar::minimumSizeHint() const
{
    return QSize(twoRowsPx(), QWidget::minimumSizeHint().height());
}

static void emptyRow(QLayout* row)
{
    while (QLayoutItem* item = row->takeAt(0))
        delete item; // not the widget in it
}

void TransportBar::arrange(bool inTwoRows)
{
    m_inTwoRows = inTwoRows;
    emptyRow(m_upper);
    emptyRow(m_lower);
    if (inTwoRows) {
        m_upper->addStretch(1);
        m_upper->addWidget(m_steps);
        m_upper->addStretch(1);
    }
    m_lower->addWidget(m_start);
    m_lower->addStretch(1);
    if (!inTwoRows)
        m_lower->addWidget(m_steps);
    m_lower->addWidget(m_current);
    m_lower->addStretch(1);
    m_lower->addWidget(m_end);
    layout()->activate();
    updateGeometry();
}

void TransportBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_inTwoRows != (width() < oneRowPx()))
        arrange(!m_inTwoRows);
}
