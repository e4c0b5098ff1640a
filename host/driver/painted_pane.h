// painted_pane.h - a pane that draws its own buttons, used by somebody who can see and press it but
// knows nothing of its insides: buttons by what assistive technology is told of them, texts as they
// are painted. A button's name may be given by its beginning.
// Owns: nothing. GUI thread only.
#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

class QWidget;

namespace quillon {

// A visible pane of the window that shows such a button; null: there is none.
QWidget* findPaneWithButton(const QString& name);

QStringList paneButtons(QWidget* pane); // whole names, in the pane's order
QRect paneButtonRect(QWidget* pane, const QString& name); // in the pane; null: it shows none

// False: the pane shows no such button.
bool pressPaneButton(QWidget* pane, const QString& name, Qt::MouseButton = Qt::LeftButton);

struct PaintedLine {
    QString text;
    QRect rect; // in the pane
};
QList<PaintedLine> paintedLines(QWidget* pane); // of a repaint, in its order

} // namespace quillon
