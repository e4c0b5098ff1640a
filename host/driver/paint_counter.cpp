#include "host/driver/paint_counter.h"

#include <QApplication>
#include <QEvent>
#include <QHash>
#include <QWidget>

namespace quillon {
namespace {

class PaintCounter : public QObject {
public:
    explicit PaintCounter(QObject* parent)
        : QObject(parent)
    {
    }
    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !paused && receiver->isWidgetType())
            count(receiver);
        return false;
    }
    void count(QObject* receiver)
    {
        if (!counts.contains(receiver)) // a later widget may get the same address
            connect(
                receiver, &QObject::destroyed, this, [this, receiver] { counts.remove(receiver); });
        ++counts[receiver];
    }

    QHash<const QObject*, int> counts;
    bool paused = false;
};
PaintCounter* g_counter = nullptr; // a child of the application

} // namespace

void startPaintCounts()
{
    g_counter = new PaintCounter(qApp);
    qApp->installEventFilter(g_counter);
}

void pausePaintCounts(bool onOff)
{
    if (g_counter)
        g_counter->paused = onOff;
}

int paintCount(const QWidget* widget)
{
    return g_counter ? g_counter->counts.value(widget) : 0;
}

} // namespace quillon
