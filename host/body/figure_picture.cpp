#include "host/body/figure_picture.h"

#include "host/body/figure_renderer.h"

#include "dzbone.h"
#include "dzskeleton.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace quillon {

static const float kFleshCm = 12; // skin is this far from the bones' origins, at most
static const float kFrameShare = 0.92f; // of the picture that the figure fills
static const int kFitSteps = 4; // each brings the distance closer to the right one

static std::vector<DzVec3> corners(const DzSkeleton* figure)
{
    std::vector<DzVec3> points;
    DzBoneList bones;
    figure->getAllBones(bones);
    for (const DzBone* bone : std::as_const(bones)) {
        const DzVec3 origin = bone->getWSPos();
        for (int i = 0; i < 6; ++i) {
            DzVec3 around = origin;
            around[i / 2] += i % 2 ? kFleshCm : -kFleshCm;
            points.push_back(around);
        }
    }
    return points;
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

static void fit(Camera* camera, const std::vector<DzVec3>& points, const QSize& size)
{
    DzBox3 box;
    for (const DzVec3& point : points)
        box.include(point);
    frameBox(camera, box, size); // from far enough for all of it
    for (int step = 0; step < kFitSteps; ++step) {
        const float share = reach(*camera, points, size);
        if (share <= 0)
            return;
        zoomCamera(camera, share / kFrameShare);
    }
}

QImage figurePicture(const DzSkeleton* figure, float yawDeg, float pitchDeg, const QSize& size)
{
    Camera camera = homeCamera();
    camera.yawDeg = yawDeg;
    camera.pitchDeg = pitchDeg;
    fit(&camera, corners(figure), size);
    RenderOptions options;
    options.highlight = false;
    return renderSceneImage(size, camera, options);
}

} // namespace quillon
