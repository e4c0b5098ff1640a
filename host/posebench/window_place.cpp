#include "host/posebench/window_place.h"

#include "dzappsettings.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

#include <algorithm>

namespace quillon {

static const QSize kFramePx(8, 40); // what a desktop draws around a window, at most
static const char kGroup[] = "window";
static const char kGeometry[] = "geometry";
static const char kLayout[] = "layout";
static const int kLayoutVersion = 1; // of the panels that there are

QRect fittedPlace(const QSize& wanted, const QRect& available)
{
    QRect place(QPoint(), wanted.boundedTo(available.size() - kFramePx));
    place.moveCenter(available.center());
    place.moveTop(std::max(place.top(), available.top() + kFramePx.height() * 3 / 4));
    return place;
}

static QByteArray kept(const char* key)
{
    DzAppSettings settings((QLatin1String(kGroup)));
    return QByteArray::fromBase64(settings.getStringValue(QLatin1String(key)).toLatin1());
}

static void keep(const char* key, const QByteArray& value)
{
    DzAppSettings settings((QLatin1String(kGroup)));
    settings.setStringValue(QLatin1String(key), QString::fromLatin1(value.toBase64()));
}

static bool isOnAScreen(const QRect& rect)
{
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen->availableGeometry().contains(rect))
            return true;
    return false;
}

bool restorePlace(QMainWindow* window)
{
    const QByteArray geometry = kept(kGeometry);
    if (geometry.isEmpty() || !window->restoreGeometry(geometry))
        return false;
    if (!window->isMaximized() && !isOnAScreen(window->geometry()))
        window->setGeometry(
            fittedPlace(window->size(), QGuiApplication::primaryScreen()->availableGeometry()));
    window->restoreState(kept(kLayout), kLayoutVersion);
    return true;
}

void rememberPlace(const QMainWindow* window)
{
    keep(kGeometry, window->saveGeometry());
    keep(kLayout, window->saveState(kLayoutVersion));
}

} // namespace quillon
