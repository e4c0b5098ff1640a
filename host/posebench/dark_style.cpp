#include "host/posebench/dark_style.h"

#include "host/posebench/dark_theme.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace quillon {

static const qreal kRing = 1.5; // width of the outline, pixels

DarkStyle::DarkStyle()
    : QProxyStyle(QStyleFactory::create("Fusion"))
{
}

static QColor markColor(const QStyleOption* option)
{
    return option->state & QStyle::State_Enabled ? kTheme.text : kTheme.disabled;
}

static void outlinePen(QPainter* painter, const QStyleOption* option)
{
    const bool enabled = option->state & QStyle::State_Enabled;
    const bool marked = option->state & (QStyle::State_HasFocus | QStyle::State_MouseOver);
    painter->setPen(QPen(!enabled ? kTheme.disabled
            : marked              ? kTheme.accent
                                  : kTheme.dimText,
        kRing));
    painter->setBrush(kTheme.field);
}

static void drawBox(const QStyleOption* option, QPainter* painter)
{
    const QRectF box = QRectF(option->rect).adjusted(1, 1, -1, -1);
    outlinePen(painter, option);
    painter->drawRoundedRect(box, 2, 2);
    painter->setPen(QPen(markColor(option), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    const auto at = [&box](qreal x, qreal y) {
        return box.topLeft() + QPointF(x * box.width(), y * box.height());
    };
    if (option->state & QStyle::State_On)
        painter->drawPolyline(QPolygonF({at(0.22, 0.52), at(0.42, 0.74), at(0.8, 0.26)}));
    else if (option->state & QStyle::State_NoChange)
        painter->drawLine(at(0.25, 0.5), at(0.75, 0.5));
}

static void drawRadio(const QStyleOption* option, QPainter* painter)
{
    const QRectF ring = QRectF(option->rect).adjusted(1, 1, -1, -1);
    outlinePen(painter, option);
    painter->drawEllipse(ring);
    if (!(option->state & QStyle::State_On))
        return;
    painter->setPen(Qt::NoPen);
    painter->setBrush(markColor(option));
    painter->drawEllipse(ring.center(), ring.width() * 0.27, ring.height() * 0.27);
}

void DarkStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
    QPainter* painter, const QWidget* widget) const
{
    if (element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton)
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (element == PE_IndicatorCheckBox)
        drawBox(option, painter);
    else
        drawRadio(option, painter);
    painter->restore();
}

// Fusion writes menu entries in the colour of enabled text, whatever their state.
void DarkStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
    const QWidget* widget) const
{
    const auto* entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element != CE_MenuItem || !entry || entry->state & State_Enabled)
        return QProxyStyle::drawControl(element, option, painter, widget);
    QStyleOptionMenuItem dim = *entry;
    for (QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        dim.palette.setColor(role, kTheme.disabled);
    QProxyStyle::drawControl(element, &dim, painter, widget);
}

// The light copy below a disabled text outshines the text itself.
int DarkStyle::styleHint(
    StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const
{
    return hint == SH_EtchDisabledText ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
}

} // namespace quillon
