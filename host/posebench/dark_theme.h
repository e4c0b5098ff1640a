// dark_theme.h - the look of the application: Fusion with a dark palette, the same everywhere.
#pragma once

#include <QColor>

class QApplication;

namespace quillon {

// Colours by role, for widgets that paint themselves.
struct ThemeColors {
    QColor window, panel, field, line, text, dimText, accent, bar, locked;
};
extern const ThemeColors kTheme;

void applyDarkTheme(QApplication*);

} // namespace quillon
