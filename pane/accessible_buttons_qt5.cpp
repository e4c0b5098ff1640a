#include "pane/accessible_buttons.h"

#include "pane/button_state.h"
#include "pane/dzquillonpane.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

#include <map>

namespace quillon {

namespace {

// One painted button. Lives in the toolkit's registry as long as the pane's interface does.
class ButtonInterface : public QAccessibleInterface {
public:
    ButtonInterface(QWidget* pane, const ButtonRow* row)
        : m_pane(pane)
        , m_row(row)
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
    QString text(QAccessible::Text which) const override
    {
        return which == QAccessible::Name ? description().name : QString();
    }
    void setText(QAccessible::Text, const QString&) override
    {
    }
    QRect rect() const override
    {
        const QRect local = description().rect;
        return m_pane ? QRect(m_pane->mapToGlobal(local.topLeft()), local.size()) : QRect();
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
        state.checkable = d.checkable;
        state.checked = d.checked;
        return state;
    }

private:
    ButtonDescription description() const
    {
        if (m_pane)
            for (const ButtonDescription& d : describeButtons(m_pane->size()))
                if (d.row == m_row)
                    return d;
        return {nullptr, QString(), QRect(), false, false};
    }

    QPointer<QWidget> m_pane;
    const ButtonRow* m_row;
};

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
    }

    int childCount() const override
    {
        return int(describeButtons(widget()->size()).size());
    }
    QAccessibleInterface* child(int index) const override
    {
        const std::vector<ButtonDescription> list = describeButtons(widget()->size());
        return index >= 0 && index < int(list.size()) ? interfaceOf(list[size_t(index)].row)
                                                      : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        for (int i = 0, n = childCount(); i < n; ++i)
            if (this->child(i) == child)
                return i;
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        const QPoint position = widget()->mapFromGlobal(QPoint(x, y));
        for (const ButtonDescription& d : describeButtons(widget()->size()))
            if (d.rect.contains(position))
                return interfaceOf(d.row);
        return nullptr;
    }

private:
    QAccessibleInterface* interfaceOf(const ButtonRow* button) const
    {
        const auto found = m_buttons.find(button);
        if (found != m_buttons.end())
            return QAccessible::accessibleInterface(found->second);
        QAccessibleInterface* made = new ButtonInterface(widget(), button);
        m_buttons[button] = QAccessible::registerAccessibleInterface(made);
        return made;
    }

    mutable std::map<const ButtonRow*, QAccessible::Id> m_buttons;
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

} // namespace quillon
