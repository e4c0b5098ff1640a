#include "host/driver/bench_input.h"

#include "host/driver/bench_widgets.h"
#include "host/driver/input_events.h"
#include "host/driver/script_values.h"
#include "host/driver/widget_size.h"

#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPointer>
#include <QWidget>

QT_BEGIN_NAMESPACE
// Of QtGui, the entry that its own test library uses: the widget's say on a shortcut, then the
// shortcuts themselves. True: one of them was triggered.
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject*, ulong timestamp, int key,
    Qt::KeyboardModifiers, const QString& text, bool autorepeat, ushort count);
QT_END_NAMESPACE

namespace quillon {
namespace {

struct Named {
    const char* name;
    int value;
};

const Named kButtons[] = {
    {"left", Qt::LeftButton},
    {"right", Qt::RightButton},
    {"middle", Qt::MiddleButton},
    {"x1", Qt::XButton1},
    {"x2", Qt::XButton2},
};

const Named kModifiers[] = {
    {"shift", Qt::ShiftModifier},
    {"ctrl", Qt::ControlModifier},
    {"control", Qt::ControlModifier},
    {"alt", Qt::AltModifier},
    {"meta", Qt::MetaModifier},
};

template <std::size_t N> int valueOf(const Named (&rows)[N], const QString& name) // 0: unknown
{
    for (const Named& row : rows)
        if (name.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0)
            return row.value;
    return 0;
}

// "shift", "ctrl+alt", ["shift", "alt"]
bool readModifiers(const QScriptValue& value, Qt::KeyboardModifiers* out)
{
    *out = Qt::NoModifier;
    if (!value.isValid() || value.isUndefined() || value.isNull())
        return true;
    const QString text
        = value.isArray() ? value.toVariant().toStringList().join('+') : value.toString();
    for (const QString& name : text.split('+', Qt::SkipEmptyParts)) {
        const int modifier = valueOf(kModifiers, name.trimmed());
        if (!modifier)
            return false;
        *out |= Qt::KeyboardModifier(modifier);
    }
    return true;
}

QPoint pointArgument(QScriptContext* context)
{
    return QPoint(intArgument(context, 1, 0), intArgument(context, 2, 0));
}

// What the option says, or otherwise when it was left out; 0, null and "" are no, as ever.
bool optionOf(const QScriptValue& options, const char* name, bool otherwise)
{
    const QScriptValue value = options.property(QString(name));
    return value.isValid() && !value.isUndefined() ? value.toBool() : otherwise;
}

QScriptValue press(QScriptContext* context, QScriptEngine*)
{
    QWidget* widget = widgetArgument(context, 0);
    if (!widget)
        return QScriptValue();
    const QString buttonName = hasArgument(context, 3) ? textArgument(context, 3) : QString("left");
    const int button = valueOf(kButtons, buttonName);
    const QScriptValue options = context->argument(4);
    Qt::KeyboardModifiers modifiers;
    if (!button)
        return throwError(context, QString("'%1' is no mouse button").arg(buttonName));
    if (!readModifiers(options.property("modifiers"), &modifiers))
        return throwError(context, QString("unknown modifier key"));
    PointerPress given;
    given.button = Qt::MouseButton(button);
    given.modifiers = modifiers;
    given.move = optionOf(options, "move", true);
    given.twice = optionOf(options, "double", false);
    given.through = optionOf(options, "through", false);
    return pressPointer(widget, pointArgument(context), given);
}

QScriptValue move(QScriptContext* context, QScriptEngine*)
{
    QWidget* widget = widgetArgument(context, 0);
    return widget ? QScriptValue(movePointer(widget, pointArgument(context))) : QScriptValue();
}

QScriptValue resize(QScriptContext* context, QScriptEngine* engine)
{
    QWidget* widget = widgetArgument(context, 0);
    if (!widget)
        return QScriptValue();
    const QSize size(intArgument(context, 1, 0), intArgument(context, 2, 0));
    if (size.width() < 1 || size.height() < 1)
        return throwError(context, QString("a widget is at least one pixel wide and high"));
    giveSize(widget, size);
    QScriptValue given = engine->newArray(2);
    given.setProperty(0, widget->width());
    given.setProperty(1, widget->height());
    return given;
}

// Sees whether a key event climbs above the widget that it was meant for: nobody below took it.
class ClimbWatch : public QObject {
public:
    explicit ClimbWatch(QWidget* top)
        : m_top(top)
        , m_climbed(false)
    {
        qApp->installEventFilter(this);
    }
    bool climbed() const
    {
        return m_climbed;
    }
    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        const QWidget* widget = qobject_cast<QWidget*>(receiver);
        if (event->type() == QEvent::KeyPress && m_top && widget && widget != m_top
            && widget->isAncestorOf(m_top))
            m_climbed = true;
        return false;
    }

private:
    QPointer<QWidget> m_top;
    bool m_climbed;
};

bool sendKey(QWidget* meant, int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    QWidget* focused = meant->focusWidget();
    QPointer<QWidget> target = meant->isWindow() && focused ? focused : meant;
    const ulong nowMs = nextInputMs();
    if (qt_sendShortcutOverrideEvent(target, nowMs, key, modifiers, text, false, 1) || !target)
        return false; // it was a shortcut of the host, or the widget is gone
    ClimbWatch watch(meant);
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
    sendSpontaneous(target, &down);
    const bool accepted = down.isAccepted() && !watch.climbed();
    QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
    if (target)
        sendSpontaneous(target, &up);
    return accepted;
}

// With modifiers as in Qt::Key + Qt::KeyboardModifiers; Qt::Key_unknown when it is no single key.
int keyArgument(QScriptContext* context, int i)
{
    if (context->argument(i).isNumber())
        return context->argument(i).toInt32();
    const QString name = textArgument(context, i);
    const QKeySequence sequence(name == QString(" ") ? QString("Space") : name);
    return sequence.count() == 1 ? sequence[0] : Qt::Key_unknown;
}

// One key by its number, or as a shortcut is written ("A", "Ctrl+Z", "Escape", "Space"); a single
// lower-case letter types that letter. True: the widget (in a window: what has the focus there)
// accepted it.
QScriptValue key(QScriptContext* context, QScriptEngine*)
{
    QWidget* widget = widgetArgument(context, 0);
    if (!widget)
        return QScriptValue();
    const QString name = textArgument(context, 1);
    const int code = keyArgument(context, 1);
    const int keyCode = code & ~int(Qt::KeyboardModifierMask);
    if (keyCode == Qt::Key_unknown || keyCode == 0)
        return throwError(context, QString("'%1' is no key").arg(name));
    const Qt::KeyboardModifiers modifiers(code & int(Qt::KeyboardModifierMask));
    const bool printable = keyCode >= 0x20 && keyCode < 0x1000 && !(modifiers & ~Qt::ShiftModifier);
    const QString text = !printable ? QString() : name.size() == 1 ? name : QString(QChar(keyCode));
    settle();
    const bool accepted = !isBlocked(widget) && sendKey(widget, keyCode, modifiers, text);
    settle();
    return accepted;
}

// The class name of the widget that has the keyboard focus; empty: none has it.
QScriptValue focus(QScriptContext*, QScriptEngine*)
{
    settle();
    const QWidget* widget = QApplication::focusWidget();
    return QString(widget ? widget->metaObject()->className() : "");
}

const NativeRow kInput[] = {
    {"press", press},
    {"move", move},
    {"resize", resize},
    {"key", key},
    {"focus", focus},
};

} // namespace

void addInputFunctions(QScriptValue bench)
{
    addNatives(bench, kInput);
}

} // namespace quillon
