#include "ground/status_message.h"

#include "ground/live_panes.h"

#include "dzaction.h"
#include "dzactionmgr.h"

#include <QTimer>

namespace quillon {

struct Message {
    QString text;
    bool shown = false;
};
static Message g_message;
static bool g_busy = false;

void showStatusMessage(const QString& text)
{
    g_message.text = text;
    g_message.shown = true;
    QTimer* timer = paneTimers().status;
    if (timer && !timer->isActive())
        timer->start(kStatusMessageMs);
    repaintPanes();
}

void clearStatusMessage()
{
    g_message = Message();
}

void hideStatusMessage()
{
    g_message.shown = false;
    repaintPanes();
}

const QString& statusMessage()
{
    return g_message.text;
}

bool isStatusMessageShown()
{
    return g_message.shown;
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
