#include "host/posebench/status_line.h"

#include "dzfigure.h"
#include "dzscene.h"

#include <QStatusBar>

static const int kMessageMs = 8000;

static bool hasFigure()
{
    for (int i = 0; i < dzScene->getNumNodes(); ++i)
        if (qobject_cast<const DzFigure*>(dzScene->getNode(i)))
            return true;
    return false;
}

static QString restingText()
{
    const DzNode* node = dzScene->getPrimarySelection();
    if (node)
        return QObject::tr(
            "%1 is selected. Drag turns the view, the wheel zooms, F shows all of it.")
            .arg(node->getLabel());
    if (hasFigure())
        return QObject::tr("Click a figure to select it.");
    return QObject::tr("Load a figure: File > Load Figure, or Ctrl+1 to Ctrl+4.");
}

StatusLine::StatusLine(QStatusBar* bar)
    : QObject(bar)
    , m_bar(bar)
    , m_resting(true)
{
    connect(bar, SIGNAL(messageChanged(QString)), SLOT(messageDidChange(QString)));
    for (const char* signal : {SIGNAL(primarySelectionChanged(DzNode*)), SIGNAL(nodeListChanged()),
             SIGNAL(sceneCleared())})
        connect(dzScene, signal, SLOT(rest()));
    rest();
}

void StatusLine::say(const QString& text)
{
    m_bar->showMessage(text, kMessageMs);
}

void StatusLine::rest()
{
    if (!m_resting)
        return;
    m_bar->showMessage(restingText());
    m_resting = true;
}

void StatusLine::messageDidChange(const QString& text)
{
    m_resting = text.isEmpty() || text == restingText();
    if (text.isEmpty())
        rest();
}
