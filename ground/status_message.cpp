#include "ground/status_message.h"

#include "ground/live_panes.h"

#include "dzaction.h"
#include "dzactionmgr.h"

#include <QTimer>

namespace quillon {

static QString g_text;
static bool g_shown = false;
static bool g_busy = false;

void showStatusMessage(const QString& text)
{
    g_text = text;
    g_shown = true;
    QTimer* timer = paneTimers().status;
    if (timer && !timer->isActive())
        timer->start(kStatusMessageMs);
    repaintPanes();
}

void clearStatusMessage()
{
    g_text.clear();
    g_shown = false;
}

void hideStatusMessage()
{
    g_shown = false;
    repaintPanes();
}

const QString& statusMessage()
{
    return g_text;
}

bool isStatusMessageShown()
{
    return g_shown;
}

bool isBusy()
{
    return g_busy;
}

void setBusy(bool busy)
{
    g_busy = busy;
}

void enableAboutAction()
{
    DzActionMgr* actions = hostManagers().actions;
    DzAction* about = actions ? actions->findAction(QLatin1String("QuillonAboutAction")) : nullptr;
    if (about)
        about->setEnabled(true);
}

void refreshPane()
{
    if (g_busy)
        return;
    enableAboutAction();
    repaintPanes();
}

} // namespace quillon
