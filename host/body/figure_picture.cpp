#include "host/body/figure_picture.h"

#include "host/body/figure_renderer.h"

#include "dzbone.h"
#include "dzskeleton.h"

#include <vector>

namespace quillon {

static const float kFleshCm = 12; // skin is this far from the bones' origins, at most
static const float kFrameShare = 0.92f; // of the picture that the figure fills

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

QImage figurePicture(const DzSkeleton* figure, float yawDeg, float pitchDeg, const QSize& size)
{
    Camera camera = homeCamera();
    camera.yawDeg = yawDeg;
    camera.pitchDeg = pitchDeg;
    framePoints(&camera, corners(figure), size, kFrameShare);
    RenderOptions options;
    options.highlight = false;
    return renderSceneImage(size, camera, options);
}

} // namespace quillon
