#include "host/driver/modal_window.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace quillon {
namespace {

QString iconName(QMessageBox::Icon icon)
{
    switch (icon) {
    case QMessageBox::Information:
        return QString("information");
    case QMessageBox::Warning:
        return QString("warning");
    case QMessageBox::Critical:
        return QString("critical");
    case QMessageBox::Question:
        return QString("question");
    case QMessageBox::NoIcon:
        break;
    }
    return QString();
}

QString labelTexts(const QWidget* window)
{
    QStringList lines;
    for (const QLabel* label : window->findChildren<QLabel*>())
        if (!label->text().isEmpty() && label->isVisibleTo(const_cast<QWidget*>(window)))
            lines += label->text();
    return lines.join(QLatin1Char('\n'));
}

} // namespace

ModalRecord describeModal(const QWidget* window)
{
    ModalRecord record;
    record.kind = QString("dialog");
    record.title = window->windowTitle();
    record.buttons = buttonLabels(window);
    record.parentClass
        = window->parentWidget() ? window->parentWidget()->metaObject()->className() : "";
    record.size = window->size();
    if (const QMessageBox* box = qobject_cast<const QMessageBox*>(window)) {
        record.kind = QString("message");
        record.icon = iconName(box->icon());
        record.text = box->text();
    } else if (const QFileDialog* dialog = qobject_cast<const QFileDialog*>(window)) {
        record.kind = QString("file");
        record.filter = dialog->nameFilters().join(QString(";;"));
        record.directory = dialog->directory().absolutePath();
    } else {
        record.text = labelTexts(window);
        record.fields = dialogFields(window);
    }
    return record;
}

void answerFileDialog(QWidget* dialog, const QString& file)
{
    if (QLineEdit* edit = dialog->findChild<QLineEdit*>(QString("fileNameEdit")))
        edit->setText(file);
    QMetaObject::invokeMethod(dialog, "accept", Qt::DirectConnection);
}

QAbstractButton* defaultButton(const QWidget* window)
{
    const QList<QAbstractButton*> buttons = dialogButtons(window);
    for (QAbstractButton* button : buttons) {
        const QPushButton* push = qobject_cast<QPushButton*>(button);
        if (push && push->isDefault())
            return button;
    }
    return buttons.value(0);
}

void dismissModal(QWidget* window)
{
    if (QDialog* dialog = qobject_cast<QDialog*>(window))
        dialog->done(QDialog::Rejected);
    else
        window->hide();
}

} // namespace quillon
