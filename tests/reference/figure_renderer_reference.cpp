#include "reference/figure_renderer_reference.h"

#include "reference/raster_reference.h"
#include "reference/scene_mesh_reference.h"

#include <algorithm>
#include <cmath>

namespace quillon {
namespace reference {

namespace {

const Rgb kSkyTop = {0.150f, 0.162f, 0.182f};
const Rgb kSkyBottom = {0.255f, 0.272f, 0.300f};
const Rgb kFloor = {0.232f, 0.246f, 0.270f};
const Rgb kGridLine = {0.340f, 0.358f, 0.390f};
const Rgb kAxisX = {0.560f, 0.270f, 0.270f};
const Rgb kAxisZ = {0.270f, 0.380f, 0.600f};
const float kGridCm = 50;
const float kFloorFadeCm = 620; // the floor ends here
const DzVec3 kSun(0.30f, 1.f, 0.38f); // shadows fall away from it; y 1

Rgb mixed(const Rgb& a, const Rgb& b, float share)
{
    return {a.r + (b.r - a.r) * share, a.g + (b.g - a.g) * share, a.b + (b.b - a.b) * share};
}

QRgb packed(const Rgb& c)
{
    return qRgb(int(c.r * 255.f + 0.5f), int(c.g * 255.f + 0.5f), int(c.b * 255.f + 0.5f));
}

// ---- floor ---------------------------------------------------------------------------------

// Share of a line through 0 of the repeating coordinate, softened over the width of a pixel.
float lineCover(float at, float period, float pixel)
{
    const float from = std::fabs(at - period * std::floor(at / period + 0.5f));
    const float cover = std::min(1.f, std::max(0.f, 1.2f - from / std::max(pixel, 1e-4f)));
    return cover * std::min(1.f, 0.25f * period / pixel); // fine lines fade instead of flickering
}

Rgb floorColor(const Rgb& sky, float x, float z, float pixelX, float pixelZ, float shadow)
{
    const float far_ = std::sqrt(x * x + z * z) / kFloorFadeCm;
    if (far_ >= 1)
        return sky;
    const float fade = (1 - far_) * (1 - far_) * (1 + 2 * far_);
    Rgb floor = kFloor;
    const float lines = std::max(lineCover(x, kGridCm, pixelX), lineCover(z, kGridCm, pixelZ));
    floor = mixed(floor, kGridLine, 0.55f * lines);
    floor = mixed(floor, kAxisZ, 0.8f * lineCover(x, 1e9f, pixelX));
    floor = mixed(floor, kAxisX, 0.8f * lineCover(z, 1e9f, pixelZ));
    floor = mixed(floor, Rgb {0.05f, 0.055f, 0.065f}, 0.72f * shadow);
    return mixed(sky, floor, fade);
}

// One row of the picture. The camera never rolls, so a row meets the floor at one distance.
void paintBackdropRow(
    const View& view, int row, const Mask& shadow, bool floor, int width, QRgb* out)
{
    const float share = float(row) / std::max(1, shadow.height - 1);
    const Rgb sky = mixed(kSkyTop, kSkyBottom, share);
    const float v = (view.centerY - row) / view.focalPx;
    const DzVec3 middle = view.forward + view.up * v;
    const DzVec3 below = view.forward + view.up * (v - 1 / view.focalPx);
    const float t = -view.eye.m_y / middle.m_y;
    const float tBelow = -view.eye.m_y / below.m_y;
    if (!floor || std::fabs(middle.m_y) < 1e-5f || t <= 0 || tBelow <= 0) {
        std::fill(out, out + width, packed(sky));
        return;
    }
    const float stepX = t * view.right.m_x / view.focalPx;
    const float stepZ = t * view.right.m_z / view.focalPx;
    const float startX = view.eye.m_x + t * middle.m_x - view.centerX * stepX;
    const float startZ = view.eye.m_z + t * middle.m_z - view.centerX * stepZ;
    const float downX = std::fabs(tBelow * below.m_x - t * middle.m_x);
    const float downZ = std::fabs(tBelow * below.m_z - t * middle.m_z);
    const unsigned char* cover = &shadow.cover[size_t(row) * width];
    for (int i = 0; i < width; ++i)
        out[i] = packed(floorColor(sky, startX + i * stepX, startZ + i * stepZ,
            std::fabs(stepX) + downX, std::fabs(stepZ) + downZ, cover[i] / 255.f));
}

Mask floorShadow(const View& view, const SceneMesh& mesh, const QSize& size)
{
    Mask mask = makeMask(size.width(), size.height());
    struct Spot {
        float x, y;
        bool seen;
    };
    std::vector<Spot> spots;
    spots.reserve(mesh.vertices.size());
    for (const SceneVertex& vertex : mesh.vertices) {
        Spot spot;
        float depth;
        const DzVec3 onFloor = vertex.position - kSun * std::max(0.f, vertex.position.m_y);
        spot.seen = projectPoint(view, onFloor, &spot.x, &spot.y, &depth);
        spots.push_back(spot);
    }
    for (size_t i = 0; i + 2 < mesh.triangles.size(); i += 3) {
        const Spot& a = spots[mesh.triangles[i]];
        const Spot& b = spots[mesh.triangles[i + 1]];
        const Spot& c = spots[mesh.triangles[i + 2]];
        if (a.seen && b.seen && c.seen)
            fillMask(&mask, {a.x, b.x, c.x}, {a.y, b.y, c.y});
    }
    blurMask(&mask, std::max(1, size.height() / 160));
    return mask;
}

QImage paintBackdrop(const View& view, const SceneMesh& mesh, const QSize& size, bool floor)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    const Mask shadow = floor && view.eye.m_y > 0 ? floorShadow(view, mesh, size)
                                                  : makeMask(size.width(), size.height());
    for (int row = 0; row < size.height(); ++row)
        paintBackdropRow(
            view, row, shadow, floor, size.width(), reinterpret_cast<QRgb*>(image.scanLine(row)));
    return image;
}

// ---- bodies --------------------------------------------------------------------------------

Raster rasterBodies(const View& view, const SceneMesh& mesh, const QSize& size, int samples)
{
    Raster raster = makeRaster(size.width() * samples, size.height() * samples);
    std::vector<RasterVertex> seen;
    seen.reserve(mesh.vertices.size());
    for (const SceneVertex& vertex : mesh.vertices) {
        RasterVertex out = {0, 0, 0, vertex.color, vertex.paint, vertex.cover};
        float depth;
        if (projectPoint(view, vertex.position, &out.x, &out.y, &depth)) {
            out.x = (out.x + 0.5f) * samples - 0.5f;
            out.y = (out.y + 0.5f) * samples - 0.5f;
            out.inverseDepth = 1.f / depth;
        }
        seen.push_back(out);
    }
    for (size_t i = 0; i + 2 < mesh.triangles.size(); i += 3)
        fillTriangle(&raster, seen[mesh.triangles[i]], seen[mesh.triangles[i + 1]],
            seen[mesh.triangles[i + 2]], mesh.ids[i / 3]);
    return raster;
}

// The mean of the samples of a pixel, over the backdrop where some are empty.
void blend(const Raster& raster, int samples, QImage* image)
{
    const float whole = float(samples * samples);
    for (int y = 0; y < image->height(); ++y) {
        QRgb* line = reinterpret_cast<QRgb*>(image->scanLine(y));
        for (int x = 0; x < image->width(); ++x) {
            Rgb sum = {0, 0, 0};
            int covered = 0;
            for (int s = 0; s < samples * samples; ++s) {
                const size_t at
                    = size_t(y * samples + s / samples) * raster.width + x * samples + s % samples;
                if (raster.id[at] < 0)
                    continue;
                const Rgb& c = raster.color[at];
                sum = {sum.r + c.r, sum.g + c.g, sum.b + c.b};
                ++covered;
            }
            if (!covered)
                continue;
            const float rest = (whole - covered) / 255.f;
            line[x] = packed({(sum.r + qRed(line[x]) * rest) / whole,
                (sum.g + qGreen(line[x]) * rest) / whole, (sum.b + qBlue(line[x]) * rest) / whole});
        }
    }
}

void fillPickMap(const Raster& raster, const SceneMesh& mesh, int samples, PickMap* pick)
{
    pick->width = raster.width / samples;
    pick->height = raster.height / samples;
    pick->nodes = mesh.nodes;
    pick->node.clear();
    for (int y = 0; y < pick->height; ++y)
        for (int x = 0; x < pick->width; ++x)
            pick->node.push_back(raster.id[size_t(y) * samples * raster.width + x * samples]);
}

} // namespace

QImage renderSceneImage(
    const QSize& size, const Camera& camera, const RenderOptions& options, PickMap* pick)
{
    if (size.isEmpty())
        return QImage();
    const int samples = std::min(4, std::max(1, options.samples));
    const View view = makeView(camera, size);
    const SceneMesh mesh = sceneMesh(view, options.highlight);
    QImage image = paintBackdrop(view, mesh, size, options.floor);
    const Raster raster = rasterBodies(view, mesh, size, samples);
    blend(raster, samples, &image);
    if (pick)
        fillPickMap(raster, mesh, samples, pick);
    return image;
}

} // namespace reference
} // namespace quillon
