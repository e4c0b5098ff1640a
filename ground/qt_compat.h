// qt_compat.h - the calls that have no spelling common to Qt 4.8 and Qt 5.15.
// The only file that asks for the Qt version; one small function for each such call.
#pragma once

#include <QFontMetrics>
#include <QPaintDevice>
#include <QString>

namespace quillon {

// Seeds the toolkit's generator of the calling thread.
inline void seedRandom(uint seed)
{
#if QT_VERSION >= 0x050f00
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    qsrand(seed);
    QT_WARNING_POP
#else
    qsrand(seed);
#endif
}

// Advance width in pixels.
inline int textWidth(const QFontMetrics& metrics, const QString& text)
{
#if QT_VERSION >= 0x050f00
    return metrics.horizontalAdvance(text);
#else
    return metrics.width(text);
#endif
}

// Pixels of the device for one of the coordinates that widgets use; 1 where there is no difference.
inline double pixelRatio(const QPaintDevice* device)
{
#if QT_VERSION >= 0x050600
    return device ? double(device->devicePixelRatioF()) : 1;
#else
    Q_UNUSED(device);
    return 1;
#endif
}

} // namespace quillon
