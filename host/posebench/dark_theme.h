// dark_theme.h - the look of the application: Fusion with a dark palette, the same everywhere.
#pragma once

#include <QColor>

class QApplication;
class QPainter;
class QRect;

namespace quillon {

// Colours by role, for widgets that paint themselves.
struct ThemeColors {
    QColor window, panel, field, line, text, dimText, accent, bar, locked, disabled;
};
extern const ThemeColors kTheme;

void applyDarkTheme(QApplication*);

// The mark of what has the keyboard, inside the edge of a rectangle.
void paintFocusFrame(QPainter*, const QRect&);

// Why a list is empty, in its middle.
void paintNote(QPainter*, const QRect& list, const QString& text);

} // namespace quillon
