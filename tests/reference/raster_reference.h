// raster_reference.h - triangles filled pixel by pixel: the literal form of host/body/raster.
#pragma once

#include <vector>

namespace quillon {
namespace reference {

struct Rgb {
    float r, g, b; // 0..1, as shown
};

struct RasterVertex {
    float x, y; // pixels; integers are pixel centres
    float inverseDepth; // 0 or less: behind the eye
    Rgb color;
    Rgb paint; // over the colour where ...
    float cover; // ... this is above 0; the edge is sharp between vertices
};

struct Raster {
    int width, height;
    std::vector<Rgb> color;
    std::vector<float> inverseDepth;
    std::vector<int> id; // what covers the pixel; -1: nothing
};

Raster makeRaster(int width, int height); // empty

// Front faces only: counter-clockwise as seen. A triangle with a vertex behind the eye is left out.
void fillTriangle(
    Raster* raster, const RasterVertex& a, const RasterVertex& b, const RasterVertex& c, int id);

// Coverage without depth, either side: what casts a shadow.
struct Mask {
    int width, height;
    std::vector<unsigned char> cover;
};

Mask makeMask(int width, int height);
void fillMask(Mask* mask, const float (&x)[3], const float (&y)[3]);
void blurMask(Mask* mask, int radius); // three box passes, near a bell curve

} // namespace reference
} // namespace quillon
