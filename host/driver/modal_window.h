// modal_window.h - what can be told of a modal window, and the ways to answer one.
#pragma once

#include "host/driver/dialog_fields.h"

#include <QSize>
#include <QString>
#include <QStringList>

class QAbstractButton;
class QWidget;

namespace quillon {

struct ModalRecord {
    QString kind; // "message", "file", "dialog"
    QString icon; // of a message: "information", "warning", "critical", "question", ""
    QString title;
    QString text; // of a message; of others the texts of their labels, one a line
    QStringList buttons; // labels without mnemonics
    QString answer; // label of the button pressed last, or the file given; empty: none
    QString parentClass; // empty: no parent
    QSize size; // pixels
    QList<DialogField> fields; // as they were when it opened
    QString filter, directory; // of a file dialog; filters joined by ";;"
};

ModalRecord describeModal(const QWidget* window);

// Types the file's name and accepts. A confirmation that this brings up is a window of its own.
void answerFileDialog(QWidget* dialog, const QString& file);

// The button that Enter would press: the default one, else the first; null: there is none.
QAbstractButton* defaultButton(const QWidget* window);

void dismissModal(QWidget* window); // as Escape would, but without asking the window

} // namespace quillon
