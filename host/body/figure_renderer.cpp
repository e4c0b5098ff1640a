#include "host/body/figure_renderer.h"

#include "host/body/raster.h"
#include "host/body/scene_mesh.h"
#include "host/body/together.h"

#include <algorithm>
#include <cmath>

namespace quillon {

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
class BackdropRow {
public:
    BackdropRow(const View& view, const QSize& size, bool floor, int row)
        : m_sky(mixed(kSkyTop, kSkyBottom, float(row) / std::max(1, size.height() - 1)))
    {
        const float v = (view.centerY - row) / view.focalPx;
        const DzVec3 middle = view.forward + view.up * v;
        const DzVec3 below = view.forward + view.up * (v - 1 / view.focalPx);
        const float t = -view.eye.m_y / middle.m_y;
        const float tBelow = -view.eye.m_y / below.m_y;
        m_floor = floor && !(std::fabs(middle.m_y) < 1e-5f || t <= 0 || tBelow <= 0);
        m_stepX = t * view.right.m_x / view.focalPx;
        m_stepZ = t * view.right.m_z / view.focalPx;
        m_startX = view.eye.m_x + t * middle.m_x - view.centerX * m_stepX;
        m_startZ = view.eye.m_z + t * middle.m_z - view.centerX * m_stepZ;
        m_pixelX = std::fabs(m_stepX) + std::fabs(tBelow * below.m_x - t * middle.m_x);
        m_pixelZ = std::fabs(m_stepZ) + std::fabs(tBelow * below.m_z - t * middle.m_z);
    }
    bool hasFloor() const
    {
        return m_floor;
    }
    QRgb sky() const
    {
        return packed(m_sky);
    }
    QRgb floor(int column, float shadow) const
    {
        return packed(floorColor(m_sky, m_startX + column * m_stepX, m_startZ + column * m_stepZ,
            m_pixelX, m_pixelZ, shadow));
    }

private:
    Rgb m_sky;
    bool m_floor;
    float m_startX, m_startZ, m_stepX, m_stepZ; // on the floor, cm; of no meaning without it
    float m_pixelX, m_pixelZ; // what a pixel covers there
};

// ---- shadow --------------------------------------------------------------------------------

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

// ---- backdrop ------------------------------------------------------------------------------

struct Backdrop {
    Camera camera;
    bool floor = false;
    QImage image; // without shadow; null: none yet
};

bool isOf(const Backdrop& b, const Camera& c, const QSize& size, bool floor)
{
    return b.image.size() == size && b.floor == floor && b.camera.target.m_x == c.target.m_x
        && b.camera.target.m_y == c.target.m_y && b.camera.target.m_z == c.target.m_z
        && b.camera.yawDeg == c.yawDeg && b.camera.pitchDeg == c.pitchDeg
        && b.camera.distanceCm == c.distanceCm && b.camera.fieldDeg == c.fieldDeg;
}

QImage emptyBackdrop(const View& view, const QSize& size, bool floor)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y) {
        const BackdropRow row(view, size, floor, y);
        QRgb* out = reinterpret_cast<QRgb*>(image.scanLine(y));
        if (row.hasFloor())
            for (int x = 0; x < size.width(); ++x)
                out[x] = row.floor(x, 0);
        else
            std::fill(out, out + size.width(), row.sky());
    }
    return image;
}

// The one of the last picture, as most cameras stand still.
const QImage& keptBackdrop(const View& view, const Camera& camera, const QSize& size, bool floor)
{
    static Backdrop kept;
    if (!isOf(kept, camera, size, floor))
        kept = {camera, floor, emptyBackdrop(view, size, floor)};
    return kept.image;
}

// Every second row from the first one on.
void paintShadowRows(const View& view, const Mask& shadow, int first, QRgb* image)
{
    for (int y = first; y < shadow.height; y += 2) {
        const BackdropRow row(view, QSize(shadow.width, shadow.height), true, y);
        const unsigned char* cover = &shadow.cover[size_t(y) * size_t(shadow.width)];
        QRgb* out = image + size_t(y) * size_t(shadow.width);
        for (int x = 0; row.hasFloor() && x < shadow.width; ++x)
            if (cover[x])
                out[x] = row.floor(x, cover[x] / 255.f);
    }
}

// shadow: of that size, or of none.
void paintShadow(const View& view, const Mask& shadow, QImage* image)
{
    QRgb* const pixels = reinterpret_cast<QRgb*>(image->bits());
    runTogether([&] { paintShadowRows(view, shadow, 0, pixels); },
        [&] { paintShadowRows(view, shadow, 1, pixels); });
}

// ---- bodies --------------------------------------------------------------------------------

// In samples.
std::vector<RasterPoint> projected(const View& view, const SceneMesh& mesh, int samples)
{
    std::vector<RasterPoint> points;
    points.reserve(mesh.vertices.size());
    for (const SceneVertex& vertex : mesh.vertices) {
        RasterPoint out = {0, 0, 0};
        float depth;
        if (projectPoint(view, vertex.position, &out.x, &out.y, &depth)) {
            out.x = (out.x + 0.5f) * samples - 0.5f;
            out.y = (out.y + 0.5f) * samples - 0.5f;
            out.inverseDepth = 1.f / depth;
        }
        points.push_back(out);
    }
    return points;
}

// The pixels that the points in front of the eye lie in or between.
QRect pixelsOf(const std::vector<RasterPoint>& points, const QSize& size, int samples)
{
    const float right = float(size.width() * samples), bottom = float(size.height() * samples);
    float x[2] = {right, 0}, y[2] = {bottom, 0};
    for (const RasterPoint& point : points) {
        if (point.inverseDepth <= 0)
            continue;
        x[0] = std::min(x[0], point.x);
        x[1] = std::max(x[1], point.x);
        y[0] = std::min(y[0], point.y);
        y[1] = std::max(y[1], point.y);
    }
    if (x[0] > x[1] || y[0] > y[1])
        return QRect();
    const QPoint first(int(std::max(0.f, x[0])) / samples, int(std::max(0.f, y[0])) / samples);
    const QPoint last(int(std::min(right, x[1])) / samples, int(std::min(bottom, y[1])) / samples);
    return QRect(first, last) & QRect(QPoint(), size);
}

// The bodies are drawn band by band, so that the samples stay in the cache.
const int kBandRows = 16; // of pixels

struct Bodies {
    const SceneMesh& mesh;
    QSize size; // of the picture
    int samples; // along each side of a pixel
    std::vector<RasterPoint> points;
    std::vector<PointColor> colors; // of the vertices of front faces; else of no meaning
    QRect pixels;
    std::vector<std::vector<int>> bands; // their triangles, from the top
};

// What faces the eye, by bands; marks its vertices.
void sortIntoBands(Bodies* bodies, std::vector<char>* isFront)
{
    const int bandSamples = kBandRows * bodies->samples;
    const int top = bodies->pixels.top() * bodies->samples;
    const int count = (std::max(0, bodies->pixels.height()) + kBandRows - 1) / kBandRows;
    bodies->bands.resize(size_t(count));
    const std::vector<int>& corners = bodies->mesh.triangles;
    for (size_t i = 0; i + 2 < corners.size(); i += 3) {
        int first, last;
        if (!rowsOf(bodies->points[corners[i]], bodies->points[corners[i + 1]],
                bodies->points[corners[i + 2]], &first, &last))
            continue;
        const int end = std::min(count - 1, (last - top) / bandSamples);
        for (int band = std::max(0, first - top) / bandSamples; band <= end; ++band)
            bodies->bands[size_t(band)].push_back(int(i / 3));
        for (int n = 0; n < 3; ++n)
            (*isFront)[size_t(corners[i + size_t(n)])] = 1;
    }
}

void placeBodies(const View& view, Bodies* bodies)
{
    const std::vector<SceneVertex>& vertices = bodies->mesh.vertices;
    bodies->points = projected(view, bodies->mesh, bodies->samples);
    bodies->pixels = pixelsOf(bodies->points, bodies->size, bodies->samples);
    std::vector<char> isFront(vertices.size(), 0);
    sortIntoBands(bodies, &isFront);
    const Lights lights = makeLights(view);
    bodies->colors.resize(vertices.size());
    for (size_t i = 0; i < vertices.size(); ++i)
        if (isFront[i])
            bodies->colors[i] = lightVertex(vertices[i], lights);
}

Rgb colorOf(const Hit& hit, const Bodies& bodies)
{
    const int* corner = &bodies.mesh.triangles[size_t(hit.triangle) * 3];
    return colorAt(hit, bodies.colors[size_t(corner[0])], bodies.colors[size_t(corner[1])],
        bodies.colors[size_t(corner[2])]);
}

// The mean of the samples of a pixel, over the backdrop where some are empty.
QRgb blended(const Bodies& bodies, const Raster& raster, int x, int y, QRgb backdrop)
{
    const int samples = bodies.samples;
    Rgb sum = {0, 0, 0};
    int covered = 0;
    for (int row = 0; row < samples; ++row)
        for (int column = 0; column < samples; ++column) {
            const size_t at = raster.at(x * samples + column, y * samples + row);
            if (isEmpty(raster, at))
                continue;
            const Rgb c = colorOf(raster.hits[at], bodies);
            sum = {sum.r + c.r, sum.g + c.g, sum.b + c.b};
            ++covered;
        }
    if (!covered)
        return backdrop;
    const float whole = float(samples * samples);
    const float rest = (whole - covered) / 255.f;
    return packed({(sum.r + qRed(backdrop) * rest) / whole,
        (sum.g + qGreen(backdrop) * rest) / whole, (sum.b + qBlue(backdrop) * rest) / whole});
}

// Of one row of pixels.
void pickRow(const Bodies& bodies, const Raster& raster, int y, PickMap* pick)
{
    for (int x = bodies.pixels.left(); x <= bodies.pixels.right(); ++x) {
        const size_t at = raster.at(x * bodies.samples, y * bodies.samples);
        if (!isEmpty(raster, at))
            pick->node[size_t(y) * size_t(pick->width) + size_t(x)]
                = bodies.mesh.ids[size_t(raster.hits[at].triangle)];
    }
}

void fillBand(const Bodies& bodies, size_t band, Raster* raster)
{
    raster->top = (bodies.pixels.top() + int(band) * kBandRows) * bodies.samples;
    clearRaster(raster);
    const std::vector<int>& corners = bodies.mesh.triangles;
    for (const int triangle : bodies.bands[band]) {
        const size_t i = size_t(triangle) * 3;
        fillTriangle(raster, bodies.points[corners[i]], bodies.points[corners[i + 1]],
            bodies.points[corners[i + 2]], triangle);
    }
}

// Where something is in a row of pixels.
RasterSpan pixelSpan(const Bodies& bodies, const Raster& raster, int y)
{
    const int samples = bodies.samples;
    RasterSpan pixels = {bodies.pixels.right() + 1, -1};
    for (int row = 0; row < samples; ++row) {
        const RasterSpan& span = raster.spans[size_t(y * samples + row - raster.top)];
        if (span.first <= span.last)
            pixels = {std::min(pixels.first, span.first / samples),
                std::max(pixels.last, span.last / samples)};
    }
    return pixels;
}

// Every step-th band from the first one on. Bands share no pixel.
void drawBands(const Bodies& bodies, size_t first, size_t step, QRgb* image, PickMap* pick)
{
    const QRect& pixels = bodies.pixels;
    Raster raster = makeRaster(pixels.left() * bodies.samples, 0,
        std::max(0, pixels.width()) * bodies.samples, kBandRows * bodies.samples);
    for (size_t band = first; band < bodies.bands.size(); band += step) {
        fillBand(bodies, band, &raster);
        const int top = pixels.top() + int(band) * kBandRows;
        const int end = std::min(top + kBandRows, pixels.bottom() + 1);
        for (int y = top; y < end; ++y) {
            QRgb* line = image + size_t(y) * size_t(bodies.size.width());
            const RasterSpan span = pixelSpan(bodies, raster, y);
            for (int x = span.first; x <= span.last; ++x)
                line[x] = blended(bodies, raster, x, y, line[x]);
            if (pick)
                pickRow(bodies, raster, y, pick);
        }
    }
}

void drawBodies(const Bodies& bodies, QImage* image, PickMap* pick)
{
    QRgb* const pixels = reinterpret_cast<QRgb*>(image->bits());
    runTogether([&] { drawBands(bodies, 0, 2, pixels, pick); },
        [&] { drawBands(bodies, 1, 2, pixels, pick); });
}

PickMap emptyPickMap(const SceneMesh& mesh, const QSize& size)
{
    PickMap pick;
    pick.width = size.width();
    pick.height = size.height();
    pick.nodes = mesh.nodes;
    pick.node.assign(size_t(size.width()) * size_t(size.height()), -1);
    return pick;
}

} // namespace

DzNode* PickMap::at(int x, int y) const
{
    if (x < 0 || y < 0 || x >= width || y >= height)
        return nullptr;
    const int index = node[size_t(y) * width + x];
    return index < 0 ? nullptr : nodes[index];
}

QImage renderSceneImage(
    const QSize& size, const Camera& camera, const RenderOptions& options, PickMap* pick)
{
    return size.isEmpty() ? QImage()
                          : renderMesh(sceneMesh(options.highlight), size, camera, options, pick);
}

QImage renderMesh(const SceneMesh& mesh, const QSize& size, const Camera& camera,
    const RenderOptions& options, PickMap* pick)
{
    const int samples = std::min(4, std::max(1, options.samples));
    const View view = makeView(camera, size);
    QImage image = keptBackdrop(view, camera, size, options.floor).copy();
    Mask shadow = makeMask(0, 0);
    Bodies bodies = {mesh, size, samples, {}, {}, QRect(), {}};
    runTogether(
        [&] {
            if (options.floor && view.eye.m_y > 0)
                shadow = floorShadow(view, mesh, size);
        },
        [&] { placeBodies(view, &bodies); });
    paintShadow(view, shadow, &image);
    if (pick)
        *pick = emptyPickMap(mesh, size);
    drawBodies(bodies, &image, pick);
    return image;
}

} // namespace quillon
