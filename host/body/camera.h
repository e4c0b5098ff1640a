// camera.h - where the viewport looks from. A value; perspective with square pixels.
// World: right-handed, Y up, centimetres; yaw 0 looks at a figure's face, from +Z.
#pragma once

#include "dzbox3.h"

#include <QSize>

#include <vector>

namespace quillon {

struct Camera {
    DzVec3 target = DzVec3(0, 88, 0);
    float yawDeg = 0; // turn of the eye about the target, to the figure's left
    float pitchDeg = 6; // eye above the target's level; -89..89
    float distanceCm = 400;
    float fieldDeg = 30; // height of the picture as an angle
};

// A camera set to a picture size. Pixels grow right and down; depth grows away from the eye.
struct View {
    DzVec3 eye, right, up, forward;
    float focalPx;
    float centerX, centerY;
};

View makeView(const Camera& camera, const QSize& size);
// False for a point closer than a centimetre to the eye's plane.
bool projectPoint(const View& view, const DzVec3& world, float* x, float* y, float* depth);

void orbitCamera(Camera* camera, float yawDeg, float pitchDeg);
void panCamera(Camera* camera, const QSize& size, float dxPx, float dyPx);
void zoomCamera(Camera* camera, float factor); // below 1: closer; kept within 10 cm and 50 m
void frameBox(Camera* camera, const DzBox3& box, const QSize& size); // invalid box: home
// Looks at the middle of the points, from as near as all of them lie in the middle part of the
// picture, fill of its width or height. No points: home.
void framePoints(Camera* camera, const std::vector<DzVec3>& points, const QSize& size, float fill);
Camera homeCamera();

} // namespace quillon
