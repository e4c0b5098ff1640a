#include "host/body/raster.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace quillon {

static const RasterSpan kNoSpan = {INT_MAX, INT_MIN};

Raster makeRaster(int left, int top, int width, int height)
{
    const size_t pixels = size_t(width) * size_t(height);
    return {left, top, width, height, std::vector<RasterSpan>(size_t(height), kNoSpan),
        std::vector<float>(pixels, 0.f), std::unique_ptr<Hit[]>(new Hit[pixels])};
}

void clearRaster(Raster* raster)
{
    for (size_t row = 0; row < raster->spans.size(); ++row) {
        RasterSpan& span = raster->spans[row];
        if (span.first <= span.last) {
            float* const cells = &raster->inverseDepth[row * size_t(raster->width)];
            std::fill(
                cells + (span.first - raster->left), cells + (span.last - raster->left) + 1, 0.f);
        }
        span = kNoSpan;
    }
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

struct Bounds {
    int left, top, right, bottom; // right and bottom are inside
};

// The pixels from the first to the last coordinate, no less than low and no more than high. False:
// there is none, or the last is out of reach.
bool clampSpan(float first, float last, int low, int high, int* from, int* to)
{
    if (!(last >= 0 && last < 2147483648.f))
        return false;
    const float start = std::max(0.f, first);
    *from = std::max(low, int(start) + (start > float(int(start)))); // ceil
    *to = std::min(high, int(last)); // floor
    return *from <= *to;
}

// Twice that of the triangle. y grows down: front faces are negative.
float areaOf(const float (&x)[3], const float (&y)[3])
{
    return (x[1] - x[0]) * (y[2] - y[0]) - (x[2] - x[0]) * (y[1] - y[0]);
}

// False for a triangle without area, outside the bounds, or seen from behind when oneSided.
bool makeEdges(
    const float (&x)[3], const float (&y)[3], const Bounds& bounds, bool oneSided, Edges* e)
{
    const float area = areaOf(x, y);
    if (oneSided ? area >= 0 : std::fabs(area) < 1e-6f)
        return false;
    if (!clampSpan(std::min({x[0], x[1], x[2]}), std::max({x[0], x[1], x[2]}), bounds.left,
            bounds.right, &e->left, &e->right)
        || !clampSpan(std::min({y[0], y[1], y[2]}), std::max({y[0], y[1], y[2]}), bounds.top,
            bounds.bottom, &e->top, &e->bottom))
        return false;
    std::copy(x, x + 3, e->x);
    std::copy(y, y + 3, e->y);
    e->inverseArea = 1.f / area;
    e->dx0 = (y[1] - y[2]) * e->inverseArea;
    e->dx1 = (y[2] - y[0]) * e->inverseArea;
    return true;
}

const float kSlack = -1e-4f; // neighbours share their border pixels

// Whether the rest of the row is outside as well: a weight that falls does not rise again.
bool isPassed(float weight, float growth)
{
    return weight < kSlack && growth <= 0;
}

// The share of the paint at a pixel: a narrow ramp around cover 0.
const float kPaintRampCm = 0.12f;

} // namespace

bool rowsOf(const RasterPoint& a, const RasterPoint& b, const RasterPoint& c, int* first, int* last)
{
    if (a.inverseDepth <= 0 || b.inverseDepth <= 0 || c.inverseDepth <= 0
        || areaOf({a.x, b.x, c.x}, {a.y, b.y, c.y}) >= 0)
        return false;
    return clampSpan(std::min({a.y, b.y, c.y}), std::max({a.y, b.y, c.y}), 0, INT_MAX, first, last);
}

void fillTriangle(
    Raster* raster, const RasterPoint& a, const RasterPoint& b, const RasterPoint& c, int triangle)
{
    if (a.inverseDepth <= 0 || b.inverseDepth <= 0 || c.inverseDepth <= 0)
        return;
    const Bounds bounds = {raster->left, raster->top, raster->left + raster->width - 1,
        raster->top + raster->height - 1};
    Edges e;
    if (!makeEdges({a.x, b.x, c.x}, {a.y, b.y, c.y}, bounds, true, &e))
        return;
    for (int y = e.top; y <= e.bottom; ++y) {
        RasterSpan& span = raster->spans[size_t(y - raster->top)];
        span = {std::min(span.first, e.left), std::max(span.last, e.right)};
        float w0 = e.weight(0, e.left, y);
        float w1 = e.weight(1, e.left, y);
        size_t at = raster->at(e.left, y);
        for (int x = e.left; x <= e.right; ++x, ++at, w0 += e.dx0, w1 += e.dx1) {
            const float w2 = 1.f - w0 - w1;
            if (w0 < kSlack || w1 < kSlack || w2 < kSlack) {
                if (isPassed(w0, e.dx0) || isPassed(w1, e.dx1))
                    break;
                continue;
            }
            const float depth = w0 * a.inverseDepth + w1 * b.inverseDepth + w2 * c.inverseDepth;
            if (depth <= raster->inverseDepth[at])
                continue;
            raster->inverseDepth[at] = depth;
            raster->hits[at] = {triangle, w0, w1};
        }
    }
}

Rgb colorAt(const Hit& hit, const PointColor& a, const PointColor& b, const PointColor& c)
{
    const float w0 = hit.w0;
    const float w1 = hit.w1;
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

void fillMask(Mask* mask, const float (&x)[3], const float (&y)[3])
{
    Edges e;
    if (!makeEdges(x, y, {0, 0, mask->width - 1, mask->height - 1}, false, &e))
        return;
    for (int row = e.top; row <= e.bottom; ++row) {
        float w0 = e.weight(0, e.left, row);
        float w1 = e.weight(1, e.left, row);
        unsigned char* at = &mask->cover[size_t(row) * mask->width + e.left];
        for (int i = e.left; i <= e.right; ++i, ++at, w0 += e.dx0, w1 += e.dx1) {
            if (w0 >= 0 && w1 >= 0 && w0 + w1 <= 1)
                *at = 255;
            else if (isPassed(w0, e.dx0) || isPassed(w1, e.dx1))
                break;
        }
    }
}

// ---- blur --------------------------------------------------------------------------------------

namespace {

// What is covered and what three passes can reach of the rest. Beyond it all stays empty.
Bounds blurBounds(const Mask& mask, int radius)
{
    Bounds box = {mask.width, mask.height, -1, -1};
    for (int y = 0; y < mask.height; ++y) {
        const unsigned char* row = &mask.cover[size_t(y) * size_t(mask.width)];
        const unsigned char* end = row + mask.width;
        const unsigned char* first = std::find_if(row, end, [](unsigned char c) { return c; });
        if (first == end)
            continue;
        while (!end[-1])
            --end;
        box = {std::min(box.left, int(first - row)), std::min(box.top, y),
            std::max(box.right, int(end - row) - 1), y};
    }
    const int reach = 3 * radius;
    return {std::max(0, box.left - reach), std::max(0, box.top - reach),
        std::min(mask.width - 1, box.right + reach), std::min(mask.height - 1, box.bottom + reach)};
}

// Running means over 2 * radius + 1 cells of a row; the ends are repeated beyond them.
void blurRow(
    const unsigned char* from, int count, int radius, const unsigned char* means, unsigned char* to)
{
    int sum = 0;
    for (int i = -radius; i <= radius; ++i)
        sum += from[std::min(count - 1, std::max(0, i))];
    for (int i = 0; i < count; ++i) {
        to[i] = means[sum];
        sum += from[std::min(count - 1, i + radius + 1)] - from[std::max(0, i - radius)];
    }
}

// The same down the columns of a block, all of them row by row.
void blurColumns(const std::vector<unsigned char>& from, int width, int radius,
    const unsigned char* means, unsigned char* to, size_t toStride)
{
    const int height = int(from.size()) / width;
    const auto rowAt = [&](int y) {
        return &from[size_t(std::min(height - 1, std::max(0, y))) * size_t(width)];
    };
    std::vector<int> sums(size_t(width), 0);
    for (int y = -radius; y <= radius; ++y)
        for (int x = 0; x < width; ++x)
            sums[size_t(x)] += rowAt(y)[x];
    for (int y = 0; y < height; ++y, to += toStride) {
        const unsigned char* enters = rowAt(y + radius + 1);
        const unsigned char* leaves = rowAt(y - radius);
        for (int x = 0; x < width; ++x) {
            to[x] = means[sums[size_t(x)]];
            sums[size_t(x)] += enters[x] - leaves[x];
        }
    }
}

} // namespace

void blurMask(Mask* mask, int radius)
{
    if (radius < 1 || mask->cover.empty())
        return;
    const Bounds box = blurBounds(*mask, radius);
    const int width = box.right - box.left + 1;
    const int height = box.bottom - box.top + 1;
    if (width <= 0 || height <= 0)
        return;
    std::vector<unsigned char> means; // by sum
    for (int sum = 0; sum <= 255 * (2 * radius + 1); ++sum)
        means.push_back(static_cast<unsigned char>(sum / (2 * radius + 1)));
    std::vector<unsigned char> block(size_t(width) * size_t(height));
    unsigned char* cells = &mask->cover[size_t(box.top) * size_t(mask->width) + size_t(box.left)];
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < height; ++y)
            blurRow(cells + size_t(y) * size_t(mask->width), width, radius, means.data(),
                &block[size_t(y) * size_t(width)]);
        blurColumns(block, width, radius, means.data(), cells, size_t(mask->width));
    }
}

} // namespace quillon
