#include "host/posebench/time_panel.h"

#include "host/posebench/dark_theme.h"
#include "host/posebench/transport_bar.h"

#include "dzfloatproperty.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QSpinBox>
#include <QToolButton>

#include <algorithm>

using quillon::kTheme;

static const int kMarginPx = 14;
static const int kRulerHeightPx = 40;
static const int kBoxWidthPx = 52; // five digits
static const int kLabelGapPx = 46; // between numbers on the ruler
static const int kFramesPerSecond = 30;
static const int kLastFrame = 100000;

static int frameOf(DzTime t)
{
    return t / dzScene->getTimeStep();
}

QVector<DzTime> selectedKeyTimes()
{
    QVector<DzTime> times;
    for (int i = 0; i < dzScene->getNumSelectedNodes(); ++i) {
        const DzNode* node = dzScene->getSelectedNode(i);
        for (int p = 0; p < node->getNumProperties(); ++p)
            for (int k = 0; k < node->getProperty(p)->getNumKeys(); ++k)
                times << node->getProperty(p)->getKeyTime(k);
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

// ---- ruler ---------------------------------------------------------------------------------

DzTimeRuler::DzTimeRuler(QWidget* parent)
    : QWidget(parent)
{
    setObjectName("timeRuler");
    setMinimumHeight(kRulerHeightPx);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setToolTip(tr("Drag to move through time"));
    setFocusPolicy(Qt::StrongFocus);
}

QSize DzTimeRuler::sizeHint() const
{
    return QSize(400, kRulerHeightPx);
}

int DzTimeRuler::xOf(DzTime t) const
{
    const DzTimeRange range = dzScene->getAnimRange();
    const double span = std::max(1, range.getDuration());
    return kMarginPx + int((width() - 2 * kMarginPx) * double(t - range.getStart()) / span + 0.5);
}

DzTime DzTimeRuler::frameTimeAt(int x) const
{
    const DzTimeRange range = dzScene->getAnimRange();
    const double share = double(x - kMarginPx) / std::max(1, width() - 2 * kMarginPx);
    const double time
        = range.getStart() + std::min(1.0, std::max(0.0, share)) * range.getDuration();
    const DzTime step = dzScene->getTimeStep();
    return DzTime(time / step + 0.5) * step;
}

// Frames between numbers so that these have room: 1, 2, 5, 10, 20, 50 ...
static int labelStep(double pxPerFrame)
{
    for (int decade = 1; decade < kLastFrame; decade *= 10)
        for (int digit : {1, 2, 5})
            if (digit * decade * pxPerFrame >= kLabelGapPx)
                return digit * decade;
    return kLastFrame;
}

void DzTimeRuler::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kTheme.field);
    const DzTimeRange range = dzScene->getAnimRange();
    const int first = frameOf(range.getStart());
    const int last = frameOf(range.getEnd());
    const double pxPerFrame = double(width() - 2 * kMarginPx) / std::max(1, last - first);
    const int numbered = labelStep(pxPerFrame);
    const int marked = pxPerFrame >= 4 ? 1 : std::max(1, numbered / 5);
    for (int frame = first; frame <= last; frame += marked) {
        const int x = xOf(frame * dzScene->getTimeStep());
        const bool big = frame % numbered == 0;
        painter.setPen(big ? kTheme.dimText : kTheme.line);
        painter.drawLine(x, height() - (big ? 12 : 7), x, height() - 1);
        if (big)
            painter.drawText(
                QRect(x - 30, 3, 60, height() - 18), Qt::AlignHCenter, QString::number(frame));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kTheme.accent);
    for (DzTime key : selectedKeyTimes()) {
        const QPointF at(xOf(key) + 0.5, height() - 7);
        painter.drawPolygon(QPolygonF(
            {at + QPointF(0, -4), at + QPointF(4, 0), at + QPointF(0, 4), at + QPointF(-4, 0)}));
    }
    const int now = xOf(dzScene->getTime());
    painter.setPen(QPen(kTheme.text, 1.5));
    painter.drawLine(QPointF(now + 0.5, 4), QPointF(now + 0.5, height()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(kTheme.text);
    painter.drawPolygon(
        QPolygonF({QPointF(now - 5, 0), QPointF(now + 6, 0), QPointF(now + 0.5, 8)}));
    if (hasFocus())
        quillon::paintFocusFrame(&painter, rect());
}

void DzTimeRuler::mousePressEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton)
        dzScene->setTime(frameTimeAt(event->pos().x()));
}

void DzTimeRuler::mouseMoveEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

void DzTimeRuler::keyPressEvent(QKeyEvent* event)
{
    const DzTimeRange range = dzScene->getAnimRange();
    const DzTime now = dzScene->getTime(), step = dzScene->getTimeStep();
    switch (event->modifiers() ? 0 : event->key()) {
    case Qt::Key_Left:
        return dzScene->setTime(std::max(range.getStart(), now - step));
    case Qt::Key_Right:
        return dzScene->setTime(std::min(range.getEnd(), now + step));
    case Qt::Key_Home:
        return dzScene->setTime(range.getStart());
    case Qt::Key_End:
        return dzScene->setTime(range.getEnd());
    default:
        event->ignore();
    }
}

// ---- pane ----------------------------------------------------------------------------------

// Arrows and bars as characters: '<' and '>' triangles, '|' a bar, '=' the pause sign, '.' a dot.
static QIcon stepIcon(const char* shapes)
{
    const int side = 32;
    const int count = int(qstrlen(shapes));
    const qreal width = 9;
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kTheme.text);
    for (int i = 0; i < count; ++i) {
        const qreal x = side / 2.0 + (i - count / 2.0) * width * 1.15;
        const QRectF cell(x, 9, width, 14);
        if (shapes[i] == '|' || shapes[i] == '=')
            painter.drawRect(cell.adjusted(3, 0, -3, 0));
        else if (shapes[i] == '.')
            painter.drawEllipse(cell.center(), 3, 3);
        else if (shapes[i] == '<')
            painter.drawPolygon(QPolygonF(
                {cell.topRight(), cell.bottomRight(), QPointF(cell.left(), cell.center().y())}));
        else
            painter.drawPolygon(QPolygonF(
                {cell.topLeft(), cell.bottomLeft(), QPointF(cell.right(), cell.center().y())}));
    }
    return QIcon(picture);
}

static QToolButton* stepButton(
    const char* shapes, const QString& tip, DzTimelinePane* pane, const char* slot, QLayout* bar)
{
    QToolButton* button = new QToolButton;
    button->setIcon(stepIcon(shapes));
    button->setIconSize(QSize(20, 20));
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoRaise(true);
    QObject::connect(button, SIGNAL(clicked()), pane, slot);
    bar->addWidget(button);
    return button;
}

static QWidget* partOfBar(QHBoxLayout** layout)
{
    QWidget* part = new QWidget;
    *layout = new QHBoxLayout(part);
    (*layout)->setContentsMargins(0, 0, 0, 0);
    (*layout)->setSpacing(4);
    return part;
}

static QWidget* frameBox(const QString& caption, const char* name, QSpinBox** spinBox)
{
    QHBoxLayout* bar;
    QWidget* part = partOfBar(&bar);
    QSpinBox* box = new QSpinBox;
    box->setObjectName(QLatin1String(name));
    box->setRange(-kLastFrame, kLastFrame);
    box->setKeyboardTracking(false);
    box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    box->setFixedWidth(kBoxWidthPx);
    box->setAlignment(Qt::AlignRight);
    box->setAccessibleName(caption);
    bar->addWidget(new QLabel(caption));
    bar->addWidget(box);
    *spinBox = box;
    return part;
}

DzTimelinePane::DzTimelinePane()
    : DzPane(tr("Timeline"))
{
    QHBoxLayout* bar;
    QWidget* steps = partOfBar(&bar);
    stepButton("|<", tr("First frame"), this, SLOT(goToStart()), bar);
    stepButton("<.", tr("Previous key"), this, SLOT(previousKey()), bar);
    stepButton("<|", tr("Previous frame"), this, SLOT(previousFrame()), bar);
    m_play = stepButton(">", tr("Play"), this, SLOT(togglePlay()), bar);
    stepButton("|>", tr("Next frame"), this, SLOT(nextFrame()), bar);
    stepButton(".>", tr("Next key"), this, SLOT(nextKey()), bar);
    stepButton(">|", tr("Last frame"), this, SLOT(goToEnd()), bar);
    QWidget* start = frameBox(tr("Start"), "startFrame", &m_start);
    QWidget* current = frameBox(tr("Frame"), "currentFrame", &m_current);
    QWidget* end = frameBox(tr("End"), "endFrame", &m_end);
    QVBoxLayout* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new DzTimeRuler);
    layout->addWidget(new TransportBar(start, steps, current, end));
    layout->addStretch(1);
    m_clock.setInterval(1000 / kFramesPerSecond);
    connect(&m_clock, SIGNAL(timeout()), SLOT(playStep()));
    connect(m_current, SIGNAL(valueChanged(int)), SLOT(takeFrame(int)));
    connect(m_start, SIGNAL(valueChanged(int)), SLOT(takeRange()));
    connect(m_end, SIGNAL(valueChanged(int)), SLOT(takeRange()));
    connect(dzScene, SIGNAL(timeChanged(DzTime)), SLOT(showState()));
    connect(dzScene, SIGNAL(animRangeChanged()), SLOT(showState()));
    connect(dzScene, SIGNAL(sceneChanged()), SLOT(showState()));
    showState();
}

void DzTimelinePane::showState()
{
    const DzTimeRange range = dzScene->getAnimRange();
    const QPair<QSpinBox*, DzTime> shown[]
        = {{m_current, dzScene->getTime()}, {m_start, range.getStart()}, {m_end, range.getEnd()}};
    for (const auto& box : shown) {
        const bool blocked = box.first->blockSignals(true);
        box.first->setValue(frameOf(box.second));
        box.first->blockSignals(blocked);
    }
    findChild<DzTimeRuler*>()->update();
}

void DzTimelinePane::takeFrame(int frame)
{
    dzScene->setTime(frame * dzScene->getTimeStep());
}

void DzTimelinePane::takeRange()
{
    const DzTime step = dzScene->getTimeStep();
    const int end = std::max(m_start->value() + 1, m_end->value());
    DzUndoStackHold hold;
    dzScene->setAnimRange(DzTimeRange(m_start->value() * step, end * step));
    hold.accept(tr("Change Animation Range"));
}

void DzTimelinePane::goToStart()
{
    dzScene->setTime(dzScene->getAnimRange().getStart());
}

void DzTimelinePane::goToEnd()
{
    dzScene->setTime(dzScene->getAnimRange().getEnd());
}

void DzTimelinePane::previousFrame()
{
    takeFrame(frameOf(dzScene->getTime()) - 1);
}

void DzTimelinePane::nextFrame()
{
    takeFrame(frameOf(dzScene->getTime()) + 1);
}

void DzTimelinePane::previousKey()
{
    const QVector<DzTime> keys = selectedKeyTimes();
    const auto next = std::lower_bound(keys.begin(), keys.end(), dzScene->getTime());
    if (next != keys.begin())
        dzScene->setTime(*(next - 1));
}

void DzTimelinePane::nextKey()
{
    const QVector<DzTime> keys = selectedKeyTimes();
    const auto next = std::upper_bound(keys.begin(), keys.end(), dzScene->getTime());
    if (next != keys.end())
        dzScene->setTime(*next);
}

void DzTimelinePane::togglePlay()
{
    const bool starts = !m_clock.isActive();
    if (starts)
        m_clock.start();
    else
        m_clock.stop();
    m_play->setIcon(stepIcon(starts ? "==" : ">"));
    m_play->setToolTip(starts ? tr("Pause") : tr("Play"));
    m_play->setAccessibleName(m_play->toolTip());
}

void DzTimelinePane::playStep()
{
    const DzTime next = dzScene->getTime() + dzScene->getTimeStep();
    const DzTimeRange range = dzScene->getAnimRange();
    dzScene->setTime(next > range.getEnd() ? range.getStart() : next);
}
