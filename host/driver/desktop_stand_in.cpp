#include "host/driver/desktop_stand_in.h"

#include "dzapp.h"
#include "dzmainwindow.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QWindow> // the signal carries one

namespace quillon {
namespace {

bool isOffscreen()
{
    return QApplication::platformName() == QLatin1String("offscreen");
}

void activateSomeWindow()
{
    QWidget* modal = QApplication::activeModalWidget();
    QWidget* window = modal || !dzApp ? modal : dzApp->getInterface();
    if (!QApplication::activeWindow() && window && window->isVisible())
        window->activateWindow();
}

class DesktopStandIn : public QObject {
public:
    explicit DesktopStandIn(QObject* parent)
        : QObject(parent)
        , m_offscreen(isOffscreen())
    {
        qApp->installEventFilter(this);
        if (m_offscreen) // with a display no window is active when the user is elsewhere
            connect(qApp, &QGuiApplication::focusWindowChanged, this, activateSomeWindow);
    }
    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::Hide:
            if (receiver->isWidgetType() && static_cast<QWidget*>(receiver)->isModal())
                QTimer::singleShot(0, this, activateSomeWindow);
            return false;
        case QEvent::MouseMove:
        case QEvent::Enter:
        case QEvent::Leave:
            // The platform moves its pointer and tells the windows; scripts do that by themselves.
            return m_offscreen && receiver->isWindowType();
        default:
            return false;
        }
    }

private:
    bool m_offscreen;
};
QPointer<DesktopStandIn> g_standIn;

} // namespace

void startDesktopStandIn()
{
    if (!g_standIn)
        g_standIn = new DesktopStandIn(qApp);
}

void stopDesktopStandIn()
{
    delete g_standIn;
}

void setPointerPos(const QPoint& onScreen)
{
    if (g_standIn && isOffscreen())
        QCursor::setPos(onScreen);
}

} // namespace quillon
