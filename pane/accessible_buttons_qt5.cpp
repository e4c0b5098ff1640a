#include "pane/accessible_buttons.h"

#include "pane/button_state.h"
#include "pane/dzquillonpane.h"
#include "pane/hover.h"
#include "pane/page_painter.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QMouseEvent>
#include <QPointer>

#include <map>

namespace quillon {

namespace {

// What the painted things have in common: no object, no children. Lives in the toolkit's registry
// as long as the pane's interface does.
class PaintedInterface : public QAccessibleInterface {
public:
    explicit PaintedInterface(QWidget* pane)
        : m_pane(pane)
    {
    }

    bool isValid() const override
    {
        return m_pane;
    }
    QObject* object() const override
    {
        return nullptr;
    }
    QAccessibleInterface* childAt(int, int) const override
    {
        return nullptr;
    }
    QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_pane);
    }
    QAccessibleInterface* child(int) const override
    {
        return nullptr;
    }
    int childCount() const override
    {
        return 0;
    }
    int indexOfChild(const QAccessibleInterface*) const override
    {
        return -1;
    }
    void setText(QAccessible::Text, const QString&) override
    {
    }
    QRect rect() const override
    {
        const QRect local = localRect();
        return m_pane ? QRect(m_pane->mapToGlobal(local.topLeft()), local.size()) : QRect();
    }

protected:
    virtual QRect localRect() const = 0;
    QPointer<QWidget> m_pane;
};

// ---- buttons -------------------------------------------------------------------------------

struct ActionRow {
    Qt::MouseButton button;
    const char* name; // null: the toolkit's word for a press
    const char* description;
    Operation ButtonRow::*operation; // null there: the button does not know that click
};

const ActionRow kActions[] = {
    {Qt::LeftButton, nullptr, "Presses the button", &ButtonRow::left},
    {Qt::RightButton, "Right click", "Presses it with the right mouse button", &ButtonRow::right},
    {Qt::MiddleButton, "Middle click", "Presses it with the middle mouse button",
        &ButtonRow::middle},
};

QString actionName(const ActionRow& row)
{
    return row.name ? QString::fromLatin1(row.name) : QAccessibleActionInterface::pressAction();
}

class ButtonInterface : public PaintedInterface, public QAccessibleActionInterface {
public:
    ButtonInterface(QWidget* pane, const ButtonRow* row)
        : PaintedInterface(pane)
        , m_row(row)
    {
    }

    QString text(QAccessible::Text which) const override
    {
        return which == QAccessible::Name ? description().name : QString();
    }
    QAccessible::Role role() const override
    {
        return m_row->look == Look::Link ? QAccessible::Link
            : isSwitch(*m_row)           ? QAccessible::CheckBox
                                         : QAccessible::Button;
    }
    QAccessible::State state() const override
    {
        const ButtonDescription d = description();
        QAccessible::State state;
        state.invisible = !d.row; // of another page
        state.disabled = d.disabled;
        state.checkable = d.checkable;
        state.checked = d.checked;
        state.hotTracked = d.row && d.rect.contains(hoverPosition());
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override
    {
        QStringList names;
        for (const ActionRow& row : kActions)
            if (row.button == Qt::LeftButton || m_row->*row.operation)
                names << actionName(row);
        return names;
    }
    QString localizedActionDescription(const QString& name) const override
    {
        for (const ActionRow& row : kActions)
            if (name == actionName(row))
                return QString::fromLatin1(row.description);
        return QString();
    }
    QStringList keyBindingsForAction(const QString&) const override
    {
        return QStringList();
    }
    void doAction(const QString& name) override
    {
        for (const ActionRow& row : kActions)
            if (name == actionName(row) && actionNames().contains(name))
                press(row.button);
    }

private:
    ButtonDescription description() const
    {
        if (m_pane)
            for (const ButtonDescription& d : describeButtons(m_pane->size()))
                if (d.row == m_row)
                    return d;
        return {nullptr, QString(), QRect(), false, false, false};
    }
    QRect localRect() const override
    {
        return description().rect;
    }
    // Later, as the mouse would: whoever asks need not wait for a dialog to close. A window that
    // keeps the mouse from the pane keeps this from it, too.
    void press(Qt::MouseButton button) const
    {
        const ButtonDescription d = description();
        const QWidget* modal = QApplication::activeModalWidget();
        if (!d.row || d.disabled || (modal && !modal->isAncestorOf(m_pane)))
            return;
        const QPoint at = d.rect.center();
        const QPointF screen = m_pane->mapToGlobal(at);
        QApplication::postEvent(m_pane,
            new QMouseEvent(QEvent::MouseButtonPress, at, screen, button, button, Qt::NoModifier));
        QApplication::postEvent(m_pane,
            new QMouseEvent(
                QEvent::MouseButtonRelease, at, screen, button, Qt::NoButton, Qt::NoModifier));
        // The pointer stayed where it was.
        QApplication::postEvent(m_pane,
            m_pane->underMouse() ? new QMouseEvent(
                QEvent::MouseMove, hoverPosition(), Qt::NoButton, Qt::NoButton, Qt::NoModifier)
                                 : new QEvent(QEvent::Leave));
    }

    const ButtonRow* m_row;
};

// ---- texts ---------------------------------------------------------------------------------

class TextInterface : public PaintedInterface {
public:
    TextInterface(QWidget* pane, PageText which)
        : PaintedInterface(pane)
        , m_which(which)
    {
    }

    QString text(QAccessible::Text which) const override
    {
        return which == QAccessible::Name ? pageText(m_which) : QString();
    }
    QAccessible::Role role() const override
    {
        return m_which == MessageText ? QAccessible::AlertMessage : QAccessible::StaticText;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.readOnly = true;
        state.invisible = pageText(m_which).isEmpty();
        return state;
    }

private:
    QRect localRect() const override
    {
        return m_pane ? pageTextRect(m_pane->size(), m_which) : QRect();
    }

    PageText m_which;
};

// ---- pane ----------------------------------------------------------------------------------

class PaneInterface : public QAccessibleWidget {
public:
    explicit PaneInterface(QWidget* pane)
        : QAccessibleWidget(pane, QAccessible::Pane, QLatin1String("Quillon"))
    {
    }
    ~PaneInterface() override
    {
        for (const auto& button : m_buttons)
            QAccessible::deleteAccessibleInterface(button.second);
        for (const auto& text : m_texts)
            QAccessible::deleteAccessibleInterface(text.second);
    }

    int childCount() const override
    {
        return int(children().size());
    }
    QAccessibleInterface* child(int index) const override
    {
        const std::vector<QAccessibleInterface*> list = children();
        return index >= 0 && index < int(list.size()) ? list[size_t(index)] : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        const std::vector<QAccessibleInterface*> list = children();
        for (size_t i = 0; i < list.size(); ++i)
            if (list[i] == child)
                return int(i);
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        for (QAccessibleInterface* child : children())
            if (child->rect().contains(x, y))
                return child;
        return nullptr;
    }

    void announceChanges()
    {
        for (int i = 0; i < kPageTexts; ++i) {
            const QString text = pageText(PageText(i));
            if (text == m_said[i])
                continue;
            m_said[i] = text;
            QAccessibleEvent event(interfaceOf(PageText(i)), QAccessible::NameChanged);
            QAccessible::updateAccessibility(&event);
        }
        for (const ButtonDescription& d : describeButtons(widget()->size()))
            if (d.checkable)
                announceSwitch(d);
    }

private:
    std::vector<QAccessibleInterface*> children() const
    {
        std::vector<QAccessibleInterface*> list;
        for (const ButtonDescription& d : describeButtons(widget()->size()))
            list.push_back(interfaceOf(d.row));
        for (int i = 0; i < kPageTexts; ++i)
            if (!pageText(PageText(i)).isEmpty())
                list.push_back(interfaceOf(PageText(i)));
        return list;
    }
    void announceSwitch(const ButtonDescription& d)
    {
        const auto known = m_checked.find(d.row);
        const bool changed = known != m_checked.end() && known->second != d.checked;
        m_checked[d.row] = d.checked;
        if (!changed)
            return;
        QAccessible::State what;
        what.checked = true; // that this is what changed
        QAccessibleStateChangeEvent event(interfaceOf(d.row), what);
        QAccessible::updateAccessibility(&event);
    }
    QAccessibleInterface* interfaceOf(const ButtonRow* button) const
    {
        const auto found = m_buttons.find(button);
        if (found != m_buttons.end())
            return QAccessible::accessibleInterface(found->second);
        QAccessibleInterface* made = new ButtonInterface(widget(), button);
        m_buttons[button] = QAccessible::registerAccessibleInterface(made);
        return made;
    }
    QAccessibleInterface* interfaceOf(PageText text) const
    {
        const auto found = m_texts.find(text);
        if (found != m_texts.end())
            return QAccessible::accessibleInterface(found->second);
        QAccessibleInterface* made = new TextInterface(widget(), text);
        m_texts[text] = QAccessible::registerAccessibleInterface(made);
        return made;
    }

    mutable std::map<const ButtonRow*, QAccessible::Id> m_buttons;
    mutable std::map<PageText, QAccessible::Id> m_texts;
    QString m_said[kPageTexts]; // as announced last
    std::map<const ButtonRow*, bool> m_checked; // likewise
};

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    DzQuillonPane* pane = qobject_cast<DzQuillonPane*>(object);
    return pane ? new PaneInterface(pane) : nullptr;
}

} // namespace

void installAccessibleButtons()
{
    QAccessible::removeFactory(makeInterface);
    QAccessible::installFactory(makeInterface);
}

void removeAccessibleButtons()
{
    QAccessible::removeFactory(makeInterface);
}

void announceChanges(QWidget* pane)
{
    if (!QAccessible::isActive())
        return;
    auto* described = dynamic_cast<PaneInterface*>(QAccessible::queryAccessibleInterface(pane));
    if (described)
        described->announceChanges();
}

} // namespace quillon
