// dialog_fields.h - what a user can fill in or press in a dialog, by the names that the user reads.
// Labels are without mnemonics; leading and trailing blanks belong to them, but are not needed to
// find one.
#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVariant>

class QAbstractButton;
class QWidget;

namespace quillon {

QString plainLabel(const QString& label); // "&Yes" -> "Yes", "A && B" -> "A & B"

// Push buttons and the buttons of button boxes that show, in the order of the dialog.
QList<QAbstractButton*> dialogButtons(const QWidget* dialog);
QStringList buttonLabels(const QWidget* dialog);
QAbstractButton* findButton(const QWidget* dialog, const QString& label); // null: none; any case

// Check boxes and radio buttons by their own label (bool); line edits, combo boxes and spin boxes
// by the label that stands for them, else by the title of the group box around them (string); a
// group of radio buttons also by the group's title (the label of the chosen one, empty: none is).
// A group box that can be switched off by its title (bool; its radio buttons only by their own).
// What lies in a group with a title also as "Title/Label".
typedef QPair<QString, QVariant> DialogField;
QList<DialogField> dialogFields(const QWidget* dialog);

// Sets one, by clicks and typed text. False: there is none of that name that takes the value.
bool setDialogField(const QWidget* dialog, const QString& name, const QVariant& value);

} // namespace quillon
