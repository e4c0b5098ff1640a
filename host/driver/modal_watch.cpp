#include "host/driver/modal_watch.h"

#include "host/driver/script_engine.h"
#include "host/driver/script_values.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

namespace quillon {
namespace {

const int kPatienceMs = 2000;

QList<ExpectedModal> g_expected;
QList<ModalRecord> g_log;
QList<QPointer<QWidget>> g_answeredFiles; // file dialogs whose file was given

QString nameForUser(const ModalRecord& record)
{
    return QString("\"%1\": %2").arg(record.title, record.text);
}

bool fits(const ExpectedModal& expected, const ModalRecord& record)
{
    return record.title.contains(expected.title) && record.text.contains(expected.text);
}

bool takeExpected(const ModalRecord& record, bool namedOnly, ExpectedModal* out)
{
    for (int i = 0; i < g_expected.size(); ++i) {
        const bool named = !g_expected.at(i).title.isEmpty() || !g_expected.at(i).text.isEmpty();
        if ((namedOnly && !named) || !fits(g_expected.at(i), record))
            continue;
        *out = g_expected.takeAt(i);
        return true;
    }
    return false;
}

void failAndDismiss(const QPointer<QWidget>& window, const QString& message)
{
    failScript(message);
    if (window)
        dismissModal(window);
}

// Closes the window and fails the script when it is still there after a while.
void setDeadline(QWidget* window, const QString& message)
{
    const QPointer<QWidget> guarded(window);
    QTimer::singleShot(kPatienceMs, window, [guarded, message] {
        if (guarded && guarded->isVisible())
            failAndDismiss(guarded, message);
    });
}

void pressButton(QWidget* window, const ExpectedModal& expected, const ModalRecord& record)
{
    QAbstractButton* button
        = expected.button.isNull() ? defaultButton(window) : findButton(window, expected.button);
    if (button && button->isEnabled())
        return button->click();
    failAndDismiss(window,
        QString("no button '%1' can be pressed in the window %2 (buttons: %3)")
            .arg(expected.button, nameForUser(record), record.buttons.join(QString(", "))));
}

bool fillIn(QWidget* window, const ExpectedModal& expected, const ModalRecord& record)
{
    QStringList left = expected.fields.keys();
    for (int before = left.size() + 1; !left.isEmpty() && left.size() < before;) {
        before = left.size(); // one may be disabled until another is set: try again
        for (const QString& name : QStringList(left))
            if (setDialogField(window, name, expected.fields.value(name)))
                left.removeOne(name);
    }
    if (left.isEmpty())
        return true;
    const QString name = left.first();
    failAndDismiss(window,
        QString("no field '%1' takes '%2' in the window %3")
            .arg(name, expected.fields.value(name).toString(), nameForUser(record)));
    return false;
}

void giveAnswer(QWidget* window, int logIndex, const ExpectedModal& expected)
{
    const ModalRecord record = g_log.at(logIndex);
    const QPointer<QWidget> guarded(window);
    if (expected.run.isFunction())
        callBack(expected.run, toScript(scriptEngine(), window));
    if (!guarded || !guarded->isVisible())
        return; // the script has closed it
    if (scriptIsEnding())
        return dismissModal(window);
    if (!fillIn(window, expected, record))
        return;
    if (!expected.file.isNull() && qobject_cast<QFileDialog*>(window)) {
        if (expected.file.isEmpty())
            return dismissModal(window); // as if cancelled
        g_log[logIndex].answer = expected.file;
        g_answeredFiles += guarded;
        answerFileDialog(window, expected.file);
    } else {
        pressButton(window, expected, record);
    }
    if (guarded && guarded->isVisible()) {
        if (scriptIsEnding())
            return dismissModal(window);
        setDeadline(
            window, QString("the answer did not close the window %1").arg(nameForUser(record)));
    }
}

// A file dialog asks back before it replaces a file: part of giving it the name, unless the
// script wants to answer that itself.
bool confirmsReplacing(QWidget* window)
{
    return qobject_cast<QMessageBox*>(window) && window->parentWidget()
        && g_answeredFiles.contains(window->parentWidget());
}

void rememberPresses(QWidget* window, int logIndex)
{
    for (QAbstractButton* button : dialogButtons(window))
        QObject::connect(button, &QAbstractButton::pressed, window,
            [button, logIndex] { g_log[logIndex].answer = plainLabel(button->text()); });
}

void attend(QWidget* window)
{
    if (!window->isVisible())
        return;
    if (scriptIsEnding())
        return dismissModal(window);
    const ModalRecord record = describeModal(window);
    const bool replacing = confirmsReplacing(window);
    ExpectedModal expected;
    const bool found = takeExpected(record, replacing, &expected);
    if (replacing && !found) {
        if (QAbstractButton* yes = findButton(window, QString("Yes")))
            yes->click();
        return;
    }
    g_log.append(record);
    rememberPresses(window, g_log.size() - 1);
    if (found)
        giveAnswer(window, g_log.size() - 1, expected);
    else
        setDeadline(window, QString("nobody answered the window %1").arg(nameForUser(record)));
}

class ModalWatch : public QObject {
public:
    explicit ModalWatch(QObject* parent)
        : QObject(parent)
    {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (!receiver->isWidgetType() || event->type() != QEvent::Show)
            return false;
        QWidget* window = static_cast<QWidget*>(receiver);
        if (window->isWindow() && window->isModal() && !window->inherits("DzProgressWindow"))
            QTimer::singleShot(0, window, [window] { attend(window); });
        return false;
    }
};
QPointer<ModalWatch> g_watch;

} // namespace

void startModalWatch()
{
    if (!g_watch)
        g_watch = new ModalWatch(qApp);
}

void stopModalWatch()
{
    delete g_watch;
}

void expectModal(const ExpectedModal& expected)
{
    g_expected.append(expected);
}

QList<ExpectedModal> pendingExpects()
{
    return g_expected;
}

void dropExpects()
{
    g_expected.clear();
}

QList<ModalRecord> modalLog()
{
    return g_log;
}

void forgetScriptValues()
{
    dropExpects();
}

} // namespace quillon
