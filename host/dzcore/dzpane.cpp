#include "dzpane.h"
#include "dzapp.h"
#include "dzhostcalls.h"
#include "dzmainwindow.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"

#include <QEvent>

DzPane::DzPane(const QString& label)
    : m_label(label)
    , m_visible(false)
    , m_moving(false)
{
}

DzPane::~DzPane()
{
    m_moving = true; // nobody is told any more
    if (m_group)
        m_group->removePane(this);
    if (m_paneMgr)
        m_paneMgr->forgetPane(this);
}

QString DzPane::getLabel() const
{
    return m_label;
}

void DzPane::setLabel(const QString& label)
{
    if (label == m_label)
        return;
    m_label = label;
    if (m_group)
        m_group->updateTitle();
    emit labelChanged(label);
}

DzPaneGroup* DzPane::getPaneGroup() const
{
    if (DZ_HOST_CALL("getPaneGroup"))
        return nullptr;
    return m_group;
}

void DzPane::moveToGroup(DzPaneGroup* group)
{
    if (DZ_HOST_CALL("moveToGroup") || !group)
        return;
    placeIn(group);
}

void DzPane::placeIn(DzPaneGroup* group)
{
    if (group == m_group || !group->m_paneMgr)
        return;
    group->m_paneMgr->addPane(this);
    DzPaneGroup* before = m_group;
    const bool withTab = !before || before->hasTab(this);
    const bool outermost = !m_moving;
    m_moving = true;
    m_group = group; // show events below already find the new group
    if (before)
        before->removePane(this);
    group->insertPane(this, withTab);
    if (outermost)
        m_moving = false;
    if (m_group == group) // else a show event has moved it on, and said so
        emit paneGroupChanged(before, group);
    tellVisibility();
}

void DzPane::showPane()
{
    if (DZ_HOST_CALL("showPane"))
        return;
    DzPaneMgr* panes = m_paneMgr;
    if (!panes && dzApp && dzApp->getInterface())
        panes = dzApp->getInterface()->getPaneMgr();
    if (panes)
        panes->showPane(this);
    else
        show(); // no main window: a window of its own
}

void DzPane::hidePane()
{
    if (DZ_HOST_CALL("hidePane"))
        return;
    if (m_group)
        m_group->hidePane(this);
    else
        hide();
}

bool DzPane::event(QEvent* event)
{
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide)
        tellVisibility();
    return handled;
}

void DzPane::tellVisibility()
{
    if (m_moving || isVisible() == m_visible)
        return;
    m_visible = !m_visible;
    emit visibilityChanged(m_visible);
}
