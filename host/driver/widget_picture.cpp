#include "host/driver/widget_picture.h"

#include "host/driver/bench_widgets.h"
#include "host/driver/paint_counter.h"
#include "host/posebench/viewport.h"

#include <QPointer>

namespace quillon {

static QPointer<ViewportWidget> g_paused;

void pauseViewport(QWidget* window)
{
    g_paused = window->findChild<ViewportWidget*>();
    if (g_paused)
        g_paused->setUpdatesEnabled(false);
}

QPixmap pictureOf(QWidget* widget)
{
    settle();
    if (g_paused)
        g_paused->setUpdatesEnabled(true);
    pausePaintCounts(true);
    const QPixmap picture = widget->grab();
    pausePaintCounts(false);
    if (g_paused)
        g_paused->setUpdatesEnabled(false);
    return picture;
}

} // namespace quillon
