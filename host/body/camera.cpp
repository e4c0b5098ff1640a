#include "host/body/camera.h"

#include <algorithm>
#include <cmath>

namespace quillon {

static const float kRadPerDeg = float(M_PI / 180);
static const float kNearestCm = 10;
static const float kFarthestCm = 5000;
static const float kFrameMargin = 1.15f;
static const int kFitSteps = 4; // each brings the distance closer to the right one

View makeView(const Camera& camera, const QSize& size)
{
    const float yaw = camera.yawDeg * kRadPerDeg;
    const float pitch = camera.pitchDeg * kRadPerDeg;
    const DzVec3 back(
        std::sin(yaw) * std::cos(pitch), std::sin(pitch), std::cos(yaw) * std::cos(pitch));
    View view;
    view.eye = camera.target + back * camera.distanceCm;
    view.forward = -back;
    view.right = view.forward.cross(DzVec3(0, 1, 0)).normalized();
    view.up = view.right.cross(view.forward);
    view.focalPx = 0.5f * size.height() / std::tan(0.5f * camera.fieldDeg * kRadPerDeg);
    view.centerX = 0.5f * size.width();
    view.centerY = 0.5f * size.height();
    return view;
}

bool projectPoint(const View& view, const DzVec3& world, float* x, float* y, float* depth)
{
    const DzVec3 from = world - view.eye;
    *depth = from.dot(view.forward);
    if (*depth < 1.f)
        return false;
    *x = view.centerX + view.focalPx * from.dot(view.right) / *depth;
    *y = view.centerY - view.focalPx * from.dot(view.up) / *depth;
    return true;
}

void orbitCamera(Camera* camera, float yawDeg, float pitchDeg)
{
    camera->yawDeg = std::fmod(camera->yawDeg + yawDeg, 360.f);
    camera->pitchDeg = std::min(89.f, std::max(-89.f, camera->pitchDeg + pitchDeg));
}

void panCamera(Camera* camera, const QSize& size, float dxPx, float dyPx)
{
    const View view = makeView(*camera, size);
    const float cmPerPx = camera->distanceCm / view.focalPx;
    camera->target += (view.up * dyPx - view.right * dxPx) * cmPerPx;
}

void zoomCamera(Camera* camera, float factor)
{
    camera->distanceCm = std::min(kFarthestCm, std::max(kNearestCm, camera->distanceCm * factor));
}

void frameBox(Camera* camera, const DzBox3& box, const QSize& size)
{
    if (!box.isValid()) {
        *camera = homeCamera();
        return;
    }
    const float radius = 0.5f * (box.getMax() - box.getMin()).length();
    const float narrow = std::min(1.f, float(size.width()) / std::max(1, size.height()));
    const float half = std::tan(0.5f * camera->fieldDeg * kRadPerDeg) * narrow;
    camera->target = box.getCenter();
    camera->distanceCm = std::max(kNearestCm, kFrameMargin * radius / half);
}

// The largest distance of a point from the picture's middle; 1 is the edge. A negative number: a
// point lies behind the eye.
static float reach(const Camera& camera, const std::vector<DzVec3>& points, const QSize& size)
{
    const View view = makeView(camera, size);
    float largest = 0;
    for (const DzVec3& point : points) {
        float x, y, depth;
        if (!projectPoint(view, point, &x, &y, &depth))
            return -1;
        largest
            = std::max({largest, std::fabs(x / view.centerX - 1), std::fabs(y / view.centerY - 1)});
    }
    return largest;
}

void framePoints(Camera* camera, const std::vector<DzVec3>& points, const QSize& size, float fill)
{
    DzBox3 box;
    for (const DzVec3& point : points)
        box.include(point);
    frameBox(camera, box, size); // from far enough for all of it
    for (int step = 0; step < kFitSteps; ++step) {
        const float share = reach(*camera, points, size);
        if (share <= 0)
            return;
        zoomCamera(camera, share / fill);
    }
}

Camera homeCamera()
{
    return Camera();
}

} // namespace quillon
