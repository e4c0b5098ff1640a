// raster.h - a picture with depth into which triangles are filled. Software only, no toolkit.
// Depths are inverse distances: larger is nearer, 0 is nothing there. A triangle leaves where in it
// a sample lies, so that only what is seen in the end is coloured.
#pragma once

#include <memory>
#include <vector>

namespace quillon {

struct Rgb {
    float r, g, b; // 0..1, as shown
};

struct RasterPoint {
    float x, y; // pixels; integers are pixel centres
    float inverseDepth; // 0 or less: behind the eye
};

struct PointColor {
    Rgb color;
    Rgb paint; // over the colour where ...
    float cover; // ... this is above 0; the edge is sharp between points
};

// What is nearest at a pixel.
struct Hit {
    int triangle; // as it was called
    float w0, w1; // weights of its first two points; the third has the rest of 1
};

struct RasterSpan {
    int first, last; // columns; none where first is larger
};

// A part of a larger picture, in whose pixels points are given. The part may be moved.
struct Raster {
    int left, top, width, height;
    std::vector<RasterSpan> spans; // of each row: outside of it nothing is
    std::vector<float> inverseDepth;
    std::unique_ptr<Hit[]> hits; // as many; of no meaning where nothing is

    size_t at(int x, int y) const // of a pixel of the picture
    {
        return size_t(y - top) * size_t(width) + size_t(x - left);
    }
};

inline bool isEmpty(const Raster& raster, size_t at)
{
    return raster.inverseDepth[at] == 0;
}

Raster makeRaster(int left, int top, int width, int height); // empty
void clearRaster(Raster* raster);

// The rows that a triangle is filled in. False: none.
bool rowsOf(
    const RasterPoint& a, const RasterPoint& b, const RasterPoint& c, int* first, int* last);

// Front faces only: counter-clockwise as seen. A triangle with a point behind the eye is left out.
void fillTriangle(
    Raster* raster, const RasterPoint& a, const RasterPoint& b, const RasterPoint& c, int triangle);

Rgb colorAt(const Hit& hit, const PointColor& a, const PointColor& b, const PointColor& c);

// Coverage without depth, either side: what casts a shadow.
struct Mask {
    int width, height;
    std::vector<unsigned char> cover;
};

Mask makeMask(int width, int height);
void fillMask(Mask* mask, const float (&x)[3], const float (&y)[3]);
void blurMask(Mask* mask, int radius); // three box passes, near a bell curve

} // namespace quillon
