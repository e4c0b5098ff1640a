#include "host/driver/dialog_fields.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
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

const QGroupBox* groupAround(const QWidget* field, const QWidget* dialog) // null: none
{
    for (const QWidget* at = field->parentWidget(); at && at != dialog; at = at->parentWidget())
        if (const QGroupBox* group = qobject_cast<const QGroupBox*>(at))
            return group;
    return nullptr;
}

QString groupTitle(const QWidget* field, const QWidget* dialog)
{
    const QGroupBox* group = groupAround(field, dialog);
    return group ? group->title() : QString();
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

// "Group/Label"; empty outside a group that has a title.
QString nameInGroup(const QWidget* field, const QWidget* dialog, const QString& label)
{
    const QString group = plainLabel(groupTitle(field, dialog)).trimmed();
    const QString plain = plainLabel(label).trimmed();
    return group.isEmpty() || plain.isEmpty() || plain == group ? QString() : group + '/' + plain;
}

// By its own name or by the one with the group's title before it.
bool isCalled(
    const QWidget* field, const QWidget* dialog, const QString& label, const QString& name)
{
    return isNamed(label, name)
        || (name.contains('/') && nameInGroup(field, dialog, label) == plainLabel(name).trimmed());
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

// As by the space bar: it tells its listeners that it was clicked.
bool setGroup(QGroupBox* group, bool on)
{
    if (group->isChecked() != on && group->isEnabled()) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent key(type, Qt::Key_Space, Qt::NoModifier, QString(" "));
            QCoreApplication::sendEvent(group, &key);
        }
    }
    return group->isChecked() == on;
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
        if (button->isCheckable() && isCalled(button, dialog, button->text(), name))
            return setButton(button, on);
    for (QGroupBox* group : dialog->findChildren<QGroupBox*>())
        if (group->isCheckable() && isCalled(group, dialog, group->title(), name))
            return setGroup(group, on);
    for (QCheckBox* box : dialog->findChildren<QCheckBox*>())
        if (!groupTitle(box, dialog).isEmpty() && isNamed(groupTitle(box, dialog), name))
            return setButton(box, on);
    return false;
}

// What has been found so far, and where.
struct FieldList {
    const QWidget* dialog;
    QList<DialogField> fields;

    void add(const QWidget* field, const QString& label, const QVariant& value)
    {
        fields.append({plainLabel(label), value});
        const QString inGroup = nameInGroup(field, dialog, label);
        if (!inGroup.isEmpty())
            fields.append({inGroup, value});
    }
};

void addGroups(FieldList* list) // that can be switched off
{
    for (const QGroupBox* group : list->dialog->findChildren<QGroupBox*>())
        if (shows(group, list->dialog) && group->isCheckable())
            list->add(group, group->title(), group->isChecked());
}

// The radio buttons, and what is chosen in the groups that they form.
void addRadios(FieldList* list)
{
    QMap<const QGroupBox*, QString> chosen;
    for (const QRadioButton* radio : list->dialog->findChildren<QRadioButton*>()) {
        if (!shows(radio, list->dialog))
            continue;
        list->add(radio, radio->text(), radio->isChecked());
        QString& choice = chosen[groupAround(radio, list->dialog)];
        if (radio->isChecked())
            choice = plainLabel(radio->text());
    }
    for (const QGroupBox* group : list->dialog->findChildren<QGroupBox*>())
        if (chosen.contains(group) && !group->title().isEmpty() && !group->isCheckable())
            list->fields.append({plainLabel(group->title()), chosen.value(group)});
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
    FieldList list {dialog, {}};
    for (const QCheckBox* box : dialog->findChildren<QCheckBox*>())
        if (shows(box, dialog))
            list.add(box, box->text(), box->isChecked());
    addGroups(&list);
    addRadios(&list);
    for (const QLineEdit* edit : dialog->findChildren<QLineEdit*>())
        if (shows(edit, dialog) && isOwnLineEdit(edit))
            list.add(edit, nameOf(edit, dialog), edit->text());
    for (const QComboBox* box : dialog->findChildren<QComboBox*>())
        if (shows(box, dialog))
            list.add(box, nameOf(box, dialog), box->currentText());
    for (const QAbstractSpinBox* box : dialog->findChildren<QAbstractSpinBox*>())
        if (shows(box, dialog))
            list.add(box, nameOf(box, dialog), box->text());
    return list.fields;
}

bool setDialogField(const QWidget* dialog, const QString& name, const QVariant& value)
{
    if (value.type() == QVariant::Bool)
        return setNamedButton(dialog, name, value.toBool());
    const QString text = value.toString();
    if (setRadioOf(dialog, name, text))
        return true;
    for (QLineEdit* edit : dialog->findChildren<QLineEdit*>())
        if (isOwnLineEdit(edit) && isCalled(edit, dialog, nameOf(edit, dialog), name))
            return type(edit, text);
    for (QComboBox* box : dialog->findChildren<QComboBox*>())
        if (isCalled(box, dialog, nameOf(box, dialog), name))
            return choose(box, text);
    for (QAbstractSpinBox* box : dialog->findChildren<QAbstractSpinBox*>())
        if (isCalled(box, dialog, nameOf(box, dialog), name))
            return type(box->findChild<QLineEdit*>(), text);
    return setNamedButton(dialog, name, value.toBool());
}

} // namespace quillon
