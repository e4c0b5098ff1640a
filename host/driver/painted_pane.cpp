#include "host/driver/painted_pane.h"

#include "host/driver/input_events.h"
#include "host/driver/paint_recorder.h"

#include "dzapp.h"
#include "dzmainwindow.h"
#include "dzpane.h"
#include "dzpanemgr.h"

#include <QAccessible>

namespace quillon {

static QAccessibleInterface* childNamed(QWidget* pane, const QString& name)
{
    QAccessibleInterface* parent = QAccessible::queryAccessibleInterface(pane);
    for (int i = 0; parent && i < parent->childCount(); ++i) {
        QAccessibleInterface* child = parent->child(i);
        if (child && child->text(QAccessible::Name).startsWith(name))
            return child;
    }
    return nullptr;
}

QWidget* findPaneWithButton(const QString& name)
{
    const DzMainWindow* window = dzApp->getInterface();
    const QList<DzPane*> panes = window->getPaneMgr()->getPanes();
    for (DzPane* pane : panes)
        if (pane->isVisible() && childNamed(pane, name))
            return pane;
    return nullptr;
}

QStringList paneButtons(QWidget* pane)
{
    QStringList names;
    QAccessibleInterface* parent = QAccessible::queryAccessibleInterface(pane);
    for (int i = 0; parent && i < parent->childCount(); ++i)
        if (QAccessibleInterface* child = parent->child(i))
            names += child->text(QAccessible::Name);
    return names;
}

QRect paneButtonRect(QWidget* pane, const QString& name)
{
    QAccessibleInterface* child = childNamed(pane, name);
    if (!child)
        return QRect();
    const QRect onScreen = child->rect();
    return QRect(pane->mapFromGlobal(onScreen.topLeft()), onScreen.size());
}

bool pressPaneButton(QWidget* pane, const QString& name, Qt::MouseButton button)
{
    const QRect rect = paneButtonRect(pane, name);
    if (rect.isNull())
        return false;
    PointerPress press;
    press.button = button;
    pressPointer(pane, rect.center(), press);
    return true;
}

QList<PaintedLine> paintedLines(QWidget* pane)
{
    QList<PaintedLine> lines;
    for (const DrawRecord& record : recordRepaint(pane))
        if (qstrcmp(record.kind, "text") == 0)
            lines.append({record.text, record.rect.toAlignedRect()});
    return lines;
}

} // namespace quillon
