// viewport.h - the picture of the scene, with a camera moved by the mouse.
//   left click   selects what is under the pointer (Ctrl adds, empty floor clears)
//   left drag    orbits          middle drag, Shift + left drag   pans
//   right drag   zooms, so does the wheel      F  frames the selection      Home  first view
// While it moves it is drawn with fewer samples and sharpened when it rests.
#pragma once

#include "host/body/camera.h"
#include "host/body/figure_renderer.h"

#include <QPoint>
#include <QTimer>
#include <QWidget>

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

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void focusInEvent(QFocusEvent*) override;
    void focusOutEvent(QFocusEvent*) override;

private slots:
    void sharpen();

private:
    void redraw(int samples);
    void clickAt(const QPoint& px, bool add);
    void paintLegend(QPainter*) const;

    quillon::Camera m_camera;
    quillon::RenderOptions m_options;
    QImage m_image;
    quillon::PickMap m_pick;
    unsigned m_drawnChange; // dzScene's change count of m_image
    bool m_stale;
    int m_samples;
    QPoint m_pressed, m_last;
    bool m_dragging;
    bool m_focusMarked;
    QTimer m_rest;
};
