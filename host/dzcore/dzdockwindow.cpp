#include "dzdockwindow.h"
#include "dzdockstrip.h"
#include "dzhostcalls.h"

#include <QDockWidget>
#include <QLayout>
#include <QMainWindow>
#include <QScriptEngine>
#include <QVBoxLayout>

DzDockWindow::DzDockWindow(QMainWindow* mainWindow)
    : m_mainWindow(mainWindow)
    , m_frame(new QDockWidget(mainWindow))
    , m_layout(new QVBoxLayout(this))
    , m_strip(new DzDockStrip(this))
    , m_area(Qt::RightDockWidgetArea)
    , m_minimized(false)
    , m_showing(false)
    , m_hideAfterShowing(false)
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_strip);
    m_strip->hide();
    connect(m_strip, SIGNAL(clicked()), SLOT(restore()));

    m_frame->hide();
    m_frame->setWidget(this);
    mainWindow->addDockWidget(m_area, m_frame);
    m_frame->setFloating(true);
    m_frame->hide();
    connect(m_frame, SIGNAL(topLevelChanged(bool)), SLOT(frameFloatingChanged(bool)));
    connect(m_frame, SIGNAL(dockLocationChanged(Qt::DockWidgetArea)),
        SLOT(frameAreaChanged(Qt::DockWidgetArea)));
}

DzDockWindow::~DzDockWindow()
{
    if (!m_frame)
        return; // it is the one who deletes this widget
    m_frame->hide();
    m_frame->deleteLater();
}

int DzDockWindow::width() const
{
    return QWidget::width();
}

int DzDockWindow::height() const
{
    return QWidget::height();
}

QScriptValue DzDockWindow::scriptFunction(const char* signature)
{
    if (!engine())
        return QScriptValue();
    const QScriptValue self = engine()->newQObject(
        this, QScriptEngine::QtOwnership, QScriptEngine::PreferExistingWrapperObject);
    return self.property(QLatin1String(signature));
}

QScriptValue DzDockWindow::scriptWidth()
{
    return scriptFunction("width()");
}

QScriptValue DzDockWindow::scriptHeight()
{
    return scriptFunction("height()");
}

// The frame's own margins and title bar are not known beforehand (they depend on the style and on
// the window system), so they are measured.
void DzDockWindow::resize(int w, int h)
{
    if (DZ_HOST_CALL("resize") || !m_frame || isDocked())
        return;
    const QSize wanted(w, h);
    if (m_minimized) {
        m_sizeBefore = wanted;
        return;
    }
    m_frame->resize(wanted);
    m_frame->layout()->setGeometry(m_frame->rect());
    m_frame->resize(m_frame->size() + wanted - size());
    m_frame->layout()->setGeometry(m_frame->rect());
}

void DzDockWindow::resize(const QSize& size)
{
    resize(size.width(), size.height());
}

bool DzDockWindow::isDocked() const
{
    return m_frame && !m_frame->isFloating();
}

bool DzDockWindow::isMinimized() const
{
    return m_minimized;
}

bool DzDockWindow::isShown() const
{
    return m_frame && !m_frame->isHidden();
}

Qt::DockWidgetArea DzDockWindow::getDockArea() const
{
    return isDocked() && m_mainWindow ? m_mainWindow->dockWidgetArea(m_frame)
                                      : Qt::NoDockWidgetArea;
}

QDockWidget* DzDockWindow::getFrame() const
{
    return m_frame;
}

bool DzDockWindow::collapsesToColumn() const
{
    const Qt::DockWidgetArea area = getDockArea();
    return area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea;
}

static QWidget* emptyTitleBar(QWidget* parent)
{
    QWidget* bar = new QWidget(parent);
    QVBoxLayout* nothing = new QVBoxLayout(bar); // gives it a size hint, of zero
    nothing->setContentsMargins(0, 0, 0, 0);
    return bar;
}

void DzDockWindow::applyStripLimits()
{
    const bool column = m_minimized && collapsesToColumn();
    m_strip->setUpright(column);
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    if (column)
        setFixedWidth(DzDockStrip::extentPx());
    else if (m_minimized)
        setFixedHeight(DzDockStrip::extentPx());
    // While it is docked and minimised the strip stands for the title bar, which is wider.
    const bool stripOnly = m_minimized && isDocked();
    QWidget* ownTitle = m_frame->titleBarWidget();
    if (stripOnly && !ownTitle) {
        m_frame->setTitleBarWidget(emptyTitleBar(m_frame));
    } else if (!stripOnly && ownTitle) {
        m_frame->setTitleBarWidget(nullptr);
        ownTitle->deleteLater();
    }
}

void DzDockWindow::minimize()
{
    if (DZ_HOST_CALL("minimize") || m_minimized || !m_frame)
        return;
    m_sizeBefore = size();
    m_minimized = true;
    if (m_body)
        m_body->hide();
    m_strip->show();
    applyStripLimits();
    emit minimizedChanged(true);
}

void DzDockWindow::restore()
{
    if (DZ_HOST_CALL("restore") || !m_minimized || !m_frame)
        return;
    m_minimized = false;
    m_strip->hide();
    applyStripLimits();
    if (m_body)
        m_body->show();
    giveBack(m_sizeBefore);
    emit minimizedChanged(false);
}

void DzDockWindow::toggleMinimized()
{
    if (m_minimized)
        restore();
    else
        minimize();
}

// A dock area keeps the sizes that it has; it is made to take the old one by a minimum for as long
// as one layout pass takes.
void DzDockWindow::giveBack(const QSize& sizeBefore)
{
    if (!isDocked()) {
        resize(sizeBefore);
        return;
    }
    if (!m_mainWindow || !m_mainWindow->layout())
        return;
    if (collapsesToColumn())
        setMinimumWidth(sizeBefore.width());
    else
        setMinimumHeight(sizeBefore.height());
    m_frame->layout()->activate();
    m_mainWindow->layout()->activate();
    setMinimumSize(0, 0);
}

void DzDockWindow::dock()
{
    dock(m_area);
}

void DzDockWindow::dock(Qt::DockWidgetArea area)
{
    if (!m_frame || !m_mainWindow || getDockArea() == area)
        return;
    const bool hidden = m_frame->isHidden();
    m_frame->setFloating(false);
    m_mainWindow->addDockWidget(area, m_frame);
    m_area = area;
    m_frame->setVisible(!hidden);
    if (m_minimized)
        applyStripLimits();
}

void DzDockWindow::undock()
{
    if (!m_frame || !isDocked())
        return;
    const bool hidden = m_frame->isHidden();
    m_frame->setFloating(true);
    m_frame->setVisible(!hidden);
}

void DzDockWindow::frameFloatingChanged(bool floating)
{
    if (m_minimized)
        applyStripLimits();
    emit dockedChanged(!floating);
}

void DzDockWindow::frameAreaChanged(Qt::DockWidgetArea area)
{
    if (area != Qt::NoDockWidgetArea)
        m_area = area;
    if (m_minimized)
        applyStripLimits();
}

void DzDockWindow::setBody(QWidget* body)
{
    Q_ASSERT_X(!m_body, "DzDockWindow::setBody", "once");
    m_body = body;
    m_layout->addWidget(body, 1);
}

void DzDockWindow::setFrameTitle(const QString& title)
{
    if (m_frame)
        m_frame->setWindowTitle(title);
    m_strip->setText(title);
    m_strip->setToolTip(tr("Restore %1").arg(title));
}

void DzDockWindow::showFrame()
{
    if (!m_frame)
        return;
    m_showing = true;
    m_hideAfterShowing = false;
    m_frame->show();
    m_frame->raise();
    m_showing = false;
    if (m_hideAfterShowing)
        m_frame->hide();
}

void DzDockWindow::hideFrame()
{
    m_hideAfterShowing = true; // a window hidden while it is being shown would stay mapped
    if (m_frame && !m_showing)
        m_frame->hide();
}
