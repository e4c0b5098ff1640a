#include "host/posebench/viewport.h"

#include "host/posebench/dark_theme.h"
#include "host/posebench/preset_commands.h"
#include "host/posebench/scene_commands.h"

#include "dznode.h"
#include "dzscene.h"
#include "dzskeleton.h"

#include <QApplication>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

using namespace quillon;

static const float kOrbitDegPerPx = 0.4f;
static const float kZoomPerPx = 1.006f;
static const float kZoomPerNotch = 0.88f;
static const float kFrameShare = 0.86f; // of the picture that a framed selection fills
static const float kOnFloorCm = 0.5f; // a figure this close to the floor stands on it
static const int kHeightLabelGapPx = 10;
static const int kRestMs = 120; // without a movement the picture is sharpened
static const int kFullSamples = 2;
static const int kDragSamples = 1;

ViewportWidget::ViewportWidget(QWidget* parent)
    : QWidget(parent)
    , m_drawnChange(0)
    , m_stale(true)
    , m_hasLowest(false)
    , m_meshOf {0, false}
    , m_samples(kFullSamples)
    , m_dragging(false)
    , m_focusMarked(false)
{
    setObjectName("viewport");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(160, 120);
    setAcceptDrops(true);
    m_rest.setSingleShot(true);
    m_rest.setInterval(kRestMs);
    connect(&m_rest, SIGNAL(timeout()), SLOT(sharpen()));
    if (dzScene) {
        connect(dzScene, SIGNAL(sceneChanged()), SLOT(refresh()));
        connect(dzScene, SIGNAL(timeChanged(DzTime)), SLOT(refresh()));
    }
}

QSize ViewportWidget::sizeHint() const
{
    return QSize(640, 720);
}

const Camera& ViewportWidget::camera() const
{
    return m_camera;
}

void ViewportWidget::setCamera(const Camera& camera)
{
    m_camera = camera;
    redraw(kFullSamples);
}

const RenderOptions& ViewportWidget::renderOptions() const
{
    return m_options;
}

void ViewportWidget::setRenderOptions(const RenderOptions& options)
{
    m_options = options;
    redraw(kFullSamples);
}

QImage ViewportWidget::grabScene()
{
    return renderMesh(mesh(), size(), m_camera, m_options);
}

DzNode* ViewportWidget::nodeAt(const QPoint& px)
{
    PickMap pick;
    RenderOptions quick = m_options;
    quick.samples = 1;
    renderMesh(mesh(), size(), m_camera, quick, &pick);
    return pick.at(px.x(), px.y());
}

// ---- camera --------------------------------------------------------------------------------

void ViewportWidget::frameSelection()
{
    framePoints(&m_camera, selectionPoints(), size(), kFrameShare);
    redraw(kFullSamples);
}

void ViewportWidget::showHome()
{
    setCamera(homeCamera());
}

void ViewportWidget::showView(float yawDeg, float pitchDeg)
{
    m_camera.yawDeg = yawDeg;
    m_camera.pitchDeg = pitchDeg;
    redraw(kFullSamples);
}

void ViewportWidget::refresh()
{
    redraw(QApplication::mouseButtons() == Qt::NoButton ? kFullSamples : kDragSamples);
}

void ViewportWidget::sharpen()
{
    redraw(kFullSamples);
}

void ViewportWidget::redraw(int samples)
{
    m_samples = samples;
    m_stale = true;
    if (samples < kFullSamples)
        m_rest.start();
    update();
}

// ---- mouse and keys ------------------------------------------------------------------------

void ViewportWidget::mousePressEvent(QMouseEvent* event)
{
    m_pressed = m_last = event->pos();
    m_dragging = false;
}

void ViewportWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons())
        return;
    const QPoint pos = event->pos();
    if (!m_dragging && (pos - m_pressed).manhattanLength() < QApplication::startDragDistance())
        return;
    m_dragging = true;
    const QPoint by = pos - m_last;
    m_last = pos;
    const bool pans = (event->buttons() & Qt::MiddleButton)
        || ((event->buttons() & Qt::LeftButton) && (event->modifiers() & Qt::ShiftModifier));
    if (pans)
        panCamera(&m_camera, size(), by.x(), by.y());
    else if (event->buttons() & Qt::LeftButton)
        orbitCamera(&m_camera, -by.x() * kOrbitDegPerPx, by.y() * kOrbitDegPerPx);
    else
        zoomCamera(&m_camera, std::pow(kZoomPerPx, float(by.y())));
    redraw(kDragSamples);
}

void ViewportWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_dragging && event->button() == Qt::LeftButton)
        clickAt(event->pos(), event->modifiers() & Qt::ControlModifier);
    m_dragging = false;
}

void ViewportWidget::wheelEvent(QWheelEvent* event)
{
    zoomCamera(&m_camera, std::pow(kZoomPerNotch, event->angleDelta().y() / 120.f));
    redraw(kDragSamples);
    event->accept();
}

void ViewportWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F)
        frameSelection();
    else if (event->key() == Qt::Key_Home)
        showHome();
    else
        QWidget::keyPressEvent(event);
}

void ViewportWidget::clickAt(const QPoint& px, bool add)
{
    DzNode* node = nodeAt(px);
    if (!add) {
        selectOnly(node);
    } else if (node) {
        node->select(!node->isSelected());
        dzScene->setPrimarySelection(node->isSelected() ? node : dzScene->getPrimarySelection());
    }
}

// ---- painting ------------------------------------------------------------------------------

static QString selectionText()
{
    const DzNode* node = dzScene ? dzScene->getPrimarySelection() : nullptr;
    if (!node)
        return QString();
    const DzSkeleton* figure = node->getSkeleton();
    const QString text = figure && figure != node
        ? QString("%1  /  %2").arg(figure->getLabel(), node->getLabel())
        : node->getLabel();
    const int others = dzScene->getNumSelectedNodes() - 1;
    return others > 0 ? QString("%1  + %2").arg(text).arg(others) : text;
}

// The joint of the primary selection, seen through the body.
static void paintJoint(QPainter* painter, const Camera& camera, const QSize& size)
{
    const DzNode* node = dzScene ? dzScene->getPrimarySelection() : nullptr;
    float x, y, depth;
    if (!node || !projectPoint(makeView(camera, size), node->getWSPos(), &x, &y, &depth))
        return;
    painter->setPen(QPen(QColor(20, 22, 26, 180), 3));
    painter->setBrush(Qt::NoBrush);
    painter->drawEllipse(QPointF(x, y), 4.5, 4.5);
    painter->setPen(QPen(kSelectionColor, 1.5));
    painter->drawEllipse(QPointF(x, y), 4.5, 4.5);
}

static QSize labelSize(const QPainter* painter, const QString& text)
{
    const QRect bounds = painter->fontMetrics().boundingRect(QRect(), Qt::AlignLeft, text);
    return bounds.size() + QSize(18, 10);
}

static void paintLabel(QPainter* painter, const QRect& place, const QString& text)
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(20, 22, 26, 150));
    painter->drawRoundedRect(place, 4, 4);
    painter->setPen(kTheme.text);
    painter->drawText(place.adjusted(9, 5, -9, -5), Qt::AlignLeft, text);
}

void ViewportWidget::paintLegend(QPainter* painter) const
{
    QString text = selectionText();
    if (text.isEmpty())
        return;
    if (m_hasLowest)
        text += QLatin1Char('\n') + heightText(m_lowest.m_y);
    paintLabel(painter, QRect(QPoint(10, 10), labelSize(painter, text)), text);
}

QString quillon::heightText(float cm)
{
    if (std::fabs(cm) < kOnFloorCm)
        return QObject::tr("On the floor");
    const QString length = QString::number(std::fabs(cm), 'f', 1);
    return cm > 0 ? QObject::tr("%1 cm above the floor").arg(length)
                  : QObject::tr("%1 cm below the floor").arg(length);
}

QRect quillon::heightLabelPlace(
    const QSize& label, const QPointF& lowest, const QPointF& floor, const QSize& view)
{
    const QRect inside = QRect(QPoint(), view)
                             .adjusted(kHeightLabelGapPx, kHeightLabelGapPx, -kHeightLabelGapPx,
                                 -kHeightLabelGapPx);
    QRect place(
        QPoint(int(floor.x()) + kHeightLabelGapPx, int((lowest.y() + floor.y()) / 2) - 12), label);
    if (place.right() > inside.right())
        place.moveRight(int(floor.x()) - kHeightLabelGapPx);
    place.moveBottom(std::min(place.bottom(), inside.bottom()));
    place.moveTop(std::max(place.top(), inside.top()));
    place.moveRight(std::min(place.right(), inside.right()));
    place.moveLeft(std::max(place.left(), inside.left()));
    return place;
}

// From the lowest point straight to the floor.
static void paintHeight(
    QPainter* painter, const Camera& camera, const QSize& size, const DzVec3& lowest)
{
    float x, y, floorX, floorY, depth;
    const View view = makeView(camera, size);
    const DzVec3 onFloor(lowest.m_x, 0, lowest.m_z);
    if (std::fabs(lowest.m_y) < kOnFloorCm || !projectPoint(view, lowest, &x, &y, &depth)
        || !projectPoint(view, onFloor, &floorX, &floorY, &depth))
        return;
    painter->setPen(QPen(kTheme.accent, 1.5, Qt::DashLine));
    painter->drawLine(QPointF(x, y), QPointF(floorX, floorY));
    painter->setPen(QPen(kTheme.accent, 1.5));
    painter->drawLine(QPointF(floorX - 6, floorY), QPointF(floorX + 6, floorY));
    const QString text = heightText(lowest.m_y);
    paintLabel(painter,
        heightLabelPlace(labelSize(painter, text), QPointF(x, y), QPointF(floorX, floorY), size),
        text);
}

// All of the skin is computed for it: not anew while only the camera moves.
const SceneMesh& ViewportWidget::mesh()
{
    const MeshOf now = {dzScene ? dzScene->changeCount() : 0, m_options.highlight};
    if (now.change != m_meshOf.change || now.highlight != m_meshOf.highlight) {
        m_mesh = sceneMesh(now.highlight);
        m_meshOf = now;
    }
    return m_mesh;
}

void ViewportWidget::draw()
{
    const unsigned change = dzScene ? dzScene->changeCount() : 0;
    const QSize pixels = size() * devicePixelRatioF();
    if (!m_stale && change == m_drawnChange && m_image.size() == pixels)
        return;
    RenderOptions options = m_options;
    options.samples = m_samples;
    m_image = renderMesh(mesh(), pixels, m_camera, options);
    m_hasLowest = lowestPoint(m_mesh, figureToPose(), &m_lowest);
    m_drawnChange = change;
    m_stale = false;
}

void ViewportWidget::paintEvent(QPaintEvent*)
{
    draw();
    QPainter painter(this);
    painter.drawImage(rect(), m_image); // pixel by pixel, whatever the screen's density
    painter.setRenderHint(QPainter::Antialiasing);
    paintJoint(&painter, m_camera, size());
    if (m_hasLowest)
        paintHeight(&painter, m_camera, size(), m_lowest);
    paintLegend(&painter);
    if (m_focusMarked)
        paintFocusFrame(&painter, rect());
}

// ---- drops ---------------------------------------------------------------------------------

void ViewportWidget::dragEnterEvent(QDragEnterEvent* event)
{
    if (!presetFilesOf(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void ViewportWidget::dropEvent(QDropEvent* event)
{
    const QStringList files = presetFilesOf(event->mimeData());
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    emit presetsDropped(files);
}

// ---- focus ---------------------------------------------------------------------------------

// Marked only when the keyboard brought it: a click needs no mark.
void ViewportWidget::focusInEvent(QFocusEvent* event)
{
    m_focusMarked
        = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    update();
}

void ViewportWidget::focusOutEvent(QFocusEvent*)
{
    m_focusMarked = false;
    update();
}
