// In Qt 4.8 children without objects are numbers of their parent's interface, counted from 1.
#include "pane/accessible_buttons.h"

#include "pane/button_state.h"
#include "pane/dzquillonpane.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace quillon {

namespace {

class PaneInterface : public QAccessibleWidget {
public:
    explicit PaneInterface(QWidget* pane)
        : QAccessibleWidget(pane, QAccessible::Pane, QLatin1String("Quillon"))
    {
    }

    int childCount() const override
    {
        return int(describeButtons(widget()->size()).size());
    }
    int childAt(int x, int y) const override
    {
        if (!rect(0).contains(x, y))
            return -1;
        const QPoint position = widget()->mapFromGlobal(QPoint(x, y));
        const std::vector<ButtonDescription> list = describeButtons(widget()->size());
        for (size_t i = 0; i < list.size(); ++i)
            if (list[i].rect.contains(position))
                return int(i) + 1;
        return 0;
    }
    QRect rect(int child) const override
    {
        if (child == 0)
            return QAccessibleWidget::rect(0);
        const QRect local = description(child).rect;
        return QRect(widget()->mapToGlobal(local.topLeft()), local.size());
    }
    QString text(Text which, int child) const override
    {
        if (child == 0)
            return QAccessibleWidget::text(which, 0);
        return which == Name ? description(child).name : QString();
    }
    Role role(int child) const override
    {
        if (child == 0)
            return QAccessibleWidget::role(0);
        const ButtonRow* row = description(child).row;
        if (!row)
            return NoRole;
        return row->look == Look::Link ? Link : isSwitch(*row) ? CheckBox : PushButton;
    }
    State state(int child) const override
    {
        if (child == 0)
            return QAccessibleWidget::state(0);
        const ButtonDescription d = description(child);
        return (d.checked ? Checked : Normal) | (d.disabled ? Unavailable : Normal);
    }

private:
    ButtonDescription description(int child) const
    {
        const std::vector<ButtonDescription> list = describeButtons(widget()->size());
        if (child >= 1 && child <= int(list.size()))
            return list[size_t(child) - 1];
        return {nullptr, QString(), QRect(), false, false, false};
    }
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

// Children without objects have no events of their own here.
void announceChanges(QWidget* pane)
{
    if (QAccessible::isActive())
        QAccessible::updateAccessibility(pane, 0, QAccessible::NameChanged);
}

} // namespace quillon
