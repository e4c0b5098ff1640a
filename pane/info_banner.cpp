#include "pane/info_banner.h"

#include "ground/live_panes.h"
#include "ground/plugin_settings.h"

#include <QTimer>

namespace quillon {

static bool g_visible = false;

bool isBannerVisible()
{
    return g_visible;
}

void hideBanner()
{
    g_visible = false;
}

static void startTimer(int milliseconds)
{
    if (QTimer* timer = paneTimers().banner)
        timer->start(milliseconds);
}

void startBanner()
{
    startTimer(kBannerFirstMs);
}

void bannerSeen()
{
    const QTimer* timer = paneTimers().banner;
    if (g_visible && !pluginSettings().muteUpdateNotice && timer && !timer->isActive())
        startTimer(kBannerSeenMs);
}

void bannerTimerFired()
{
    g_visible = !g_visible;
    if (!g_visible)
        startTimer(kBannerPauseMs);
    repaintPanes();
}

} // namespace quillon
