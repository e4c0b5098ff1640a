#include "host/posebench/pane_buttons.h"

#include "dzapp.h"
#include "dzmainwindow.h"
#include "dzpane.h"
#include "dzpanemgr.h"

#include <QAccessible>

namespace quillon {

static QAccessibleInterface* childNamed(QWidget* pane, const QString& beginning)
{
    QAccessibleInterface* parent = QAccessible::queryAccessibleInterface(pane);
    for (int i = 0; parent && i < parent->childCount(); ++i) {
        QAccessibleInterface* child = parent->child(i);
        if (child && child->actionInterface()
            && child->text(QAccessible::Name).startsWith(beginning))
            return child;
    }
    return nullptr;
}

static QAccessibleInterface* findButton(const QString& beginning)
{
    const DzMainWindow* window = dzApp ? dzApp->getInterface() : nullptr;
    if (!window)
        return nullptr;
    const QList<DzPane*> panes = window->getPaneMgr()->getPanes();
    for (DzPane* pane : panes)
        if (QAccessibleInterface* child = childNamed(pane, beginning))
            return child;
    return nullptr;
}

QString paneButtonName(const QString& beginning)
{
    const QAccessibleInterface* button = findButton(beginning);
    return button ? button->text(QAccessible::Name) : QString();
}

// The first action of a control is what a press of it does.
static QString actionOf(const QStringList& names, PaneClick click)
{
    if (click == PaneClick::Left)
        return names.value(0);
    const QString word = click == PaneClick::Right ? "right" : "middle";
    for (const QString& name : names)
        if (name.startsWith(word, Qt::CaseInsensitive))
            return name;
    return QString();
}

bool clickPaneButton(const QString& beginning, PaneClick click)
{
    QAccessibleInterface* button = findButton(beginning);
    if (!button || button->state().disabled)
        return false;
    const QString action = actionOf(button->actionInterface()->actionNames(), click);
    if (action.isEmpty())
        return false;
    button->actionInterface()->doAction(action);
    return true;
}

} // namespace quillon
