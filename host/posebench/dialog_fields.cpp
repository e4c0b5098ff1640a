#include "host/posebench/dialog_fields.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>

namespace quillon {
namespace {

bool shows(const QWidget* widget, const QWidget* dialog)
{
    return widget->isVisibleTo(const_cast<QWidget*>(dialog));
}

// The name may have been written with the mnemonics or without.
bool isNamed(const QString& label, const QString& name)
{
    const QString plain = plainLabel(label).trimmed();
    return plain == name.trimmed() || plain == plainLabel(name).trimmed();
}

QString groupTitle(const QWidget* field, const QWidget* dialog)
{
    for (const QWidget* at = field->parentWidget(); at && at != dialog; at = at->parentWidget())
        if (const QGroupBox* group = qobject_cast<const QGroupBox*>(at))
            return group->title();
    return QString();
}

QString formLabel(const QWidget* field)
{
    for (const QFormLayout* form : field->parentWidget()->findChildren<QFormLayout*>()) {
        const QLabel* label
            = qobject_cast<QLabel*>(form->labelForField(const_cast<QWidget*>(field)));
        if (label)
            return label->text();
    }
    return QString();
}

// The name of a field that carries none itself.
QString nameOf(const QWidget* field, const QWidget* dialog)
{
    for (const QLabel* label : dialog->findChildren<QLabel*>())
        if (label->buddy() == field)
            return label->text();
    const QString inForm = formLabel(field);
    if (!inForm.isEmpty())
        return inForm;
    const QString group = groupTitle(field, dialog);
    return group.isEmpty() ? field->objectName() : group;
}

// Line edits of their own: not those inside spin boxes and combo boxes.
bool isOwnLineEdit(const QLineEdit* edit)
{
    const QWidget* parent = edit->parentWidget();
    return !qobject_cast<const QAbstractSpinBox*>(parent)
        && !qobject_cast<const QComboBox*>(parent);
}

bool type(QLineEdit* edit, const QString& text)
{
    edit->setFocus();
    edit->selectAll();
    edit->insert(text);
    return true;
}

bool setButton(QAbstractButton* button, bool on)
{
    if (button->isChecked() != on)
        button->click();
    return button->isChecked() == on;
}

bool choose(QComboBox* box, const QString& text)
{
    const int i = box->findText(text);
    if (i < 0)
        return false;
    box->setCurrentIndex(i);
    return QMetaObject::invokeMethod(box, "activated", Q_ARG(int, i));
}

// A group is named and the value is the label of one of its radio buttons.
bool setRadioOf(const QWidget* dialog, const QString& group, const QString& label)
{
    for (QRadioButton* radio : dialog->findChildren<QRadioButton*>())
        if (isNamed(groupTitle(radio, dialog), group) && isNamed(radio->text(), label))
            return setButton(radio, true);
    return false;
}

bool setNamedButton(const QWidget* dialog, const QString& name, bool on)
{
    for (QAbstractButton* button : dialog->findChildren<QAbstractButton*>())
        if (button->isCheckable() && isNamed(button->text(), name))
            return setButton(button, on);
    for (QCheckBox* box : dialog->findChildren<QCheckBox*>())
        if (!groupTitle(box, dialog).isEmpty() && isNamed(groupTitle(box, dialog), name))
            return setButton(box, on);
    return false;
}

} // namespace

QString plainLabel(const QString& label)
{
    QString plain;
    for (int i = 0; i < label.size(); ++i) {
        if (label.at(i) == QLatin1Char('&') && i + 1 < label.size())
            ++i;
        plain += label.at(i);
    }
    return plain;
}

QList<QAbstractButton*> dialogButtons(const QWidget* dialog)
{
    if (const QMessageBox* box = qobject_cast<const QMessageBox*>(dialog))
        return box->buttons();
    QList<QAbstractButton*> found;
    for (QPushButton* button : dialog->findChildren<QPushButton*>())
        if (shows(button, dialog))
            found += button;
    return found;
}

QStringList buttonLabels(const QWidget* dialog)
{
    QStringList labels;
    for (const QAbstractButton* button : dialogButtons(dialog))
        labels += plainLabel(button->text());
    return labels;
}

QAbstractButton* findButton(const QWidget* dialog, const QString& label)
{
    for (QAbstractButton* button : dialogButtons(dialog))
        if (isNamed(button->text().toLower(), label.toLower()))
            return button;
    return nullptr;
}

QList<DialogField> dialogFields(const QWidget* dialog)
{
    QList<DialogField> fields;
    for (const QCheckBox* box : dialog->findChildren<QCheckBox*>())
        if (shows(box, dialog))
            fields.append({plainLabel(box->text()), box->isChecked()});
    for (const QRadioButton* radio : dialog->findChildren<QRadioButton*>()) {
        if (!shows(radio, dialog))
            continue;
        fields.append({plainLabel(radio->text()), radio->isChecked()});
        const QString group = plainLabel(groupTitle(radio, dialog));
        if (radio->isChecked() && !group.isEmpty())
            fields.append({group, plainLabel(radio->text())});
    }
    for (const QLineEdit* edit : dialog->findChildren<QLineEdit*>())
        if (shows(edit, dialog) && isOwnLineEdit(edit))
            fields.append({plainLabel(nameOf(edit, dialog)), edit->text()});
    for (const QComboBox* box : dialog->findChildren<QComboBox*>())
        if (shows(box, dialog))
            fields.append({plainLabel(nameOf(box, dialog)), box->currentText()});
    for (const QAbstractSpinBox* box : dialog->findChildren<QAbstractSpinBox*>())
        if (shows(box, dialog))
            fields.append({plainLabel(nameOf(box, dialog)), box->text()});
    return fields;
}

bool setDialogField(const QWidget* dialog, const QString& name, const QVariant& value)
{
    if (value.type() == QVariant::Bool)
        return setNamedButton(dialog, name, value.toBool());
    const QString text = value.toString();
    if (setRadioOf(dialog, name, text))
        return true;
    for (QLineEdit* edit : dialog->findChildren<QLineEdit*>())
        if (isOwnLineEdit(edit) && isNamed(nameOf(edit, dialog), name))
            return type(edit, text);
    for (QComboBox* box : dialog->findChildren<QComboBox*>())
        if (isNamed(nameOf(box, dialog), name))
            return choose(box, text);
    for (QAbstractSpinBox* box : dialog->findChildren<QAbstractSpinBox*>())
        if (isNamed(nameOf(box, dialog), name))
            return type(box->findChild<QLineEdit*>(), text);
    return setNamedButton(dialog, name, value.toBool());
}

} // namespace quillon
