// viewport.h - the picture of the scene, with a camera moved by the mouse.
//   left click   selects what is under the pointer (Ctrl adds, empty floor clears)
//   left drag    orbits          middle drag, Shift + left drag   pans
//   right drag   zooms, so does the wheel      F  frames the selection      Home  first view
//   drop of .duf files   tells which, for the selected figure
// A line leads from the lowest point of the selected figure to the floor, with its length.
// While it moves it is drawn with fewer samples and sharpened when it rests.
#pragma once

#include "host/body/camera.h"
#include "host/body/figure_renderer.h"
#include "host/body/scene_mesh.h"

#include <QPoint>
#include <QTimer>
#include <QWidget>

namespace quillon {

// "12.3 cm above the floor"; a figure that stands on it is told so.
QString heightText(float cm);

// Beside the middle of the line from the lowest point to the floor, on the side where there is
// room, and nowhere outside of the view.
QRect heightLabelPlace(
    const QSize& label, const QPointF& lowest, const QPointF& floor, const QSize& view);

} // namespace quillon

class ViewportWidget : public QWidget {
    Q_OBJECT
public:
    explicit ViewportWidget(QWidget* parent = nullptr);

    const quillon::Camera& camera() const;
    void setCamera(const quillon::Camera&);
    const quillon::RenderOptions& renderOptions() const;
    void setRenderOptions(const quillon::RenderOptions&);
    QImage grabScene(); // at the widget's size, full samples
    DzNode* nodeAt(const QPoint& px); // null: nothing there
    QSize sizeHint() const override;

public slots:
    void frameSelection();
    void showHome();
    void showView(float yawDeg, float pitchDeg); // same target and distance
    void refresh(); // the scene changed

signals:
    void presetsDropped(const QStringList& files);

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void focusInEvent(QFocusEvent*) override;
    void dragEnterEvent(QDragEnterEvent*) override;
    void dropEvent(QDropEvent*) override;
    void focusOutEvent(QFocusEvent*) override;

private slots:
    void sharpen();

private:
    void redraw(int samples);
    void clickAt(const QPoint& px, bool add);
    void paintLegend(QPainter*) const;
    const quillon::SceneMesh& mesh(); // of the scene as it is now
    void draw(); // m_image and what stands beside it, if they are not of this scene

    quillon::Camera m_camera;
    quillon::RenderOptions m_options;
    QImage m_image;
    unsigned m_drawnChange; // dzScene's change count of m_image
    bool m_stale;
    bool m_hasLowest;
    DzVec3 m_lowest; // point of the selected figure, world, cm; of no meaning without a figure
    quillon::SceneMesh m_mesh;
    struct MeshOf {
        unsigned change; // dzScene's change count, of its time, too
        bool highlight;
    } m_meshOf;
    int m_samples;
    QPoint m_pressed, m_last;
    bool m_dragging;
    bool m_focusMarked;
    QTimer m_rest;
};
