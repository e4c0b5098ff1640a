// dark_style.h - Fusion with what a dark palette takes from it put back: boxes and radio buttons
// that stand out from their ground, disabled menu entries dimmer than enabled ones.
#pragma once

#include <QProxyStyle>

namespace quillon {

class DarkStyle : public QProxyStyle {
    Q_OBJECT
public:
    DarkStyle(); // of Fusion
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
        QStyleHintReturn* data) const override;
};

} // namespace quillon
