#include "reference/raster_reference.h"

#include <algorithm>
#include <cmath>

namespace quillon {
namespace reference {

Raster makeRaster(int width, int height)
{
    const size_t pixels = size_t(width) * size_t(height);
    return {width, height, std::vector<Rgb>(pixels, Rgb {0, 0, 0}), std::vector<float>(pixels, 0.f),
        std::vector<int>(pixels, -1)};
}

Mask makeMask(int width, int height)
{
    return {width, height, std::vector<unsigned char>(size_t(width) * size_t(height), 0)};
}

namespace {

// Barycentric weights of a triangle as planes over the picture, and the pixels to visit. The
// weights are worked out from differences: products of whole coordinates would lose the small ones.
struct Edges {
    float x[3], y[3], inverseArea;
    float dx0, dx1; // growth from pixel to pixel
    int left, right, top, bottom;

    float weight(int i, int px, int py) const
    {
        const int a = (i + 1) % 3;
        const int b = (i + 2) % 3;
        return ((x[a] - px) * (y[b] - py) - (x[b] - px) * (y[a] - py)) * inverseArea;
    }
};

// False for a triangle without area, outside the picture, or seen from behind when oneSided.
bool makeEdges(
    const float (&x)[3], const float (&y)[3], int width, int height, bool oneSided, Edges* e)
{
    const float area = (x[1] - x[0]) * (y[2] - y[0]) - (x[2] - x[0]) * (y[1] - y[0]);
    if (oneSided ? area >= 0 : std::fabs(area) < 1e-6f) // y grows down: front faces are negative
        return false;
    std::copy(x, x + 3, e->x);
    std::copy(y, y + 3, e->y);
    e->inverseArea = 1.f / area;
    e->dx0 = (y[1] - y[2]) * e->inverseArea;
    e->dx1 = (y[2] - y[0]) * e->inverseArea;
    e->left = std::max(0, int(std::ceil(std::min({x[0], x[1], x[2]}))));
    e->right = std::min(width - 1, int(std::floor(std::max({x[0], x[1], x[2]}))));
    e->top = std::max(0, int(std::ceil(std::min({y[0], y[1], y[2]}))));
    e->bottom = std::min(height - 1, int(std::floor(std::max({y[0], y[1], y[2]}))));
    return e->left <= e->right && e->top <= e->bottom;
}

// The share of the paint at a pixel: a narrow ramp around cover 0.
const float kPaintRampCm = 0.12f;

Rgb shaded(const RasterVertex& a, const RasterVertex& b, const RasterVertex& c, float w0, float w1)
{
    const float w2 = 1.f - w0 - w1;
    const float cover = w0 * a.cover + w1 * b.cover + w2 * c.cover;
    const float share = std::min(1.f, std::max(0.f, 0.5f + cover / kPaintRampCm));
    Rgb bare = {0, 0, 0};
    Rgb paint = {0, 0, 0};
    if (share < 1)
        bare = {w0 * a.color.r + w1 * b.color.r + w2 * c.color.r,
            w0 * a.color.g + w1 * b.color.g + w2 * c.color.g,
            w0 * a.color.b + w1 * b.color.b + w2 * c.color.b};
    if (share > 0)
        paint = {w0 * a.paint.r + w1 * b.paint.r + w2 * c.paint.r,
            w0 * a.paint.g + w1 * b.paint.g + w2 * c.paint.g,
            w0 * a.paint.b + w1 * b.paint.b + w2 * c.paint.b};
    const float rest = 1.f - share;
    return {bare.r * rest + paint.r * share, bare.g * rest + paint.g * share,
        bare.b * rest + paint.b * share};
}

} // namespace

void fillTriangle(
    Raster* raster, const RasterVertex& a, const RasterVertex& b, const RasterVertex& c, int id)
{
    if (a.inverseDepth <= 0 || b.inverseDepth <= 0 || c.inverseDepth <= 0)
        return;
    Edges e;
    if (!makeEdges({a.x, b.x, c.x}, {a.y, b.y, c.y}, raster->width, raster->height, true, &e))
        return;
    const float slack = -1e-4f; // neighbours share their border pixels
    for (int y = e.top; y <= e.bottom; ++y) {
        float w0 = e.weight(0, e.left, y);
        float w1 = e.weight(1, e.left, y);
        size_t at = size_t(y) * raster->width + e.left;
        for (int x = e.left; x <= e.right; ++x, ++at, w0 += e.dx0, w1 += e.dx1) {
            const float w2 = 1.f - w0 - w1;
            if (w0 < slack || w1 < slack || w2 < slack)
                continue;
            const float depth = w0 * a.inverseDepth + w1 * b.inverseDepth + w2 * c.inverseDepth;
            if (depth <= raster->inverseDepth[at])
                continue;
            raster->inverseDepth[at] = depth;
            raster->id[at] = id;
            raster->color[at] = shaded(a, b, c, w0, w1);
        }
    }
}

void fillMask(Mask* mask, const float (&x)[3], const float (&y)[3])
{
    Edges e;
    if (!makeEdges(x, y, mask->width, mask->height, false, &e))
        return;
    for (int row = e.top; row <= e.bottom; ++row) {
        float w0 = e.weight(0, e.left, row);
        float w1 = e.weight(1, e.left, row);
        unsigned char* at = &mask->cover[size_t(row) * mask->width + e.left];
        for (int i = e.left; i <= e.right; ++i, ++at, w0 += e.dx0, w1 += e.dx1)
            if (w0 >= 0 && w1 >= 0 && w0 + w1 <= 1)
                *at = 255;
    }
}

// One running mean along count cells that lie step apart.
static void blurLine(unsigned char* cells, int count, int step, int radius)
{
    static thread_local std::vector<unsigned char> before;
    before.resize(size_t(count));
    for (int i = 0; i < count; ++i)
        before[i] = cells[size_t(i) * step];
    int sum = 0;
    for (int i = -radius; i <= radius; ++i)
        sum += before[std::min(count - 1, std::max(0, i))];
    for (int i = 0; i < count; ++i) {
        cells[size_t(i) * step] = static_cast<unsigned char>(sum / (2 * radius + 1));
        sum += before[std::min(count - 1, i + radius + 1)] - before[std::max(0, i - radius)];
    }
}

void blurMask(Mask* mask, int radius)
{
    if (radius < 1 || mask->cover.empty())
        return;
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < mask->height; ++y)
            blurLine(&mask->cover[size_t(y) * mask->width], mask->width, 1, radius);
        for (int x = 0; x < mask->width; ++x)
            blurLine(&mask->cover[x], mask->height, mask->width, radius);
    }
}

} // namespace reference
} // namespace quillon
