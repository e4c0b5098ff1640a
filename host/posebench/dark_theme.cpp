#include "host/posebench/dark_theme.h"

#include "host/posebench/dark_style.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>

namespace quillon {

const ThemeColors kTheme = {QColor(0x2b, 0x2f, 0x36), QColor(0x32, 0x37, 0x3f),
    QColor(0x22, 0x25, 0x2b), QColor(0x45, 0x4b, 0x55), QColor(0xe2, 0xe5, 0xea),
    QColor(0x9a, 0xa2, 0xae), QColor(0xff, 0xb0, 0x2e), QColor(0x4a, 0x6f, 0xa5),
    QColor(0xd9, 0x6b, 0x5b), QColor(0x7b, 0x83, 0x8f)};

static const int kNoteMarginPx = 20;

static const char* const kStyleSheet
    = "QToolTip { color: #e2e5ea; background: #22252b; border: 1px solid #454b55; padding: 3px; }"
      "QDockWidget::title { background: #32373f; padding: 5px 8px; }"
      "QMainWindow::separator { background: #1d2025; width: 4px; height: 4px; }"
      "QTabBar { qproperty-drawBase: 0; }"
      "QTreeView, QListView { border: none; outline: 0; }"
      "QTreeView::item, QListView::item { padding: 2px 0; }"
      "QLineEdit { padding: 3px 5px; border: 1px solid #454b55; border-radius: 3px; }"
      "QLineEdit:focus { border-color: #ffb02e; }"
      "QStatusBar { color: #9aa2ae; }"
      "QMenu::separator { height: 1px; background: #454b55; margin: 4px 8px; }";

static QPalette darkPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, kTheme.window);
    palette.setColor(QPalette::WindowText, kTheme.text);
    palette.setColor(QPalette::Base, kTheme.field);
    palette.setColor(QPalette::AlternateBase, kTheme.panel);
    palette.setColor(QPalette::Text, kTheme.text);
    palette.setColor(QPalette::Button, kTheme.panel);
    palette.setColor(QPalette::ButtonText, kTheme.text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, kTheme.field);
    palette.setColor(QPalette::ToolTipText, kTheme.text);
    palette.setColor(QPalette::Highlight, kTheme.bar);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, kTheme.accent);
    palette.setColor(QPalette::LinkVisited, kTheme.accent);
    palette.setColor(QPalette::PlaceholderText, kTheme.dimText);
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, kTheme.disabled);
    return palette;
}

void applyDarkTheme(QApplication* app)
{
    app->setStyle(new DarkStyle);
    app->setPalette(darkPalette());
    app->setStyleSheet(QLatin1String(kStyleSheet));
}

void paintFocusFrame(QPainter* painter, const QRect& rect)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(kTheme.accent, 1));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(rect).adjusted(1.5, 0.5, -1.5, -0.5), 3, 3);
}

void paintNote(QPainter* painter, const QRect& list, const QString& text)
{
    painter->setPen(kTheme.dimText);
    painter->drawText(list.adjusted(kNoteMarginPx, kNoteMarginPx, -kNoteMarginPx, -kNoteMarginPx),
        Qt::AlignCenter | Qt::TextWordWrap | Qt::TextWrapAnywhere, text);
}

} // namespace quillon
