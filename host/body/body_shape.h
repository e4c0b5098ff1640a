// body_shape.h - the body of a figure at rest as a smooth solid: a field that is negative inside.
// Space: the figure's rest pose before its own scale, centimetres.
// Made of lumps, each belonging to a bone; the lumps also say which bones move a point.
#pragma once

#include "host/figures/figure_data.h"

#include <vector>

namespace quillon {

enum BodyMaterial { MaterialSkin, MaterialSuit, MaterialHair, MaterialLips, MaterialMouth };

// A round cone from a to b, or an ellipsoid of the given radii about a.
struct Lump {
    int bone; // row of FigureData::bones
    DzVec3 a, b;
    float ra, rb; // cone: radii at both ends
    DzVec3 radii; // ellipsoid; null vector: a cone
    float blend; // width of the soft seam with its neighbours
    bool hair;
    bool carves; // takes material away
    // Worked out once from the above by finishLump.
    DzVec3 axis, inverseRadii, inverseRadii2;
    float length2, inverseLength2, slope, rest2;
};

void finishLump(Lump* lump);

struct BodyShape {
    std::vector<Lump> lumps; // those that add
    std::vector<Lump> carves; // those that take away, applied last
};

BodyShape bodyShape(const FigureData& data);

float lumpDistance(const Lump& lump, const DzVec3& p);
// Of the lumps named by which; all of the carves.
float bodyDistance(const BodyShape& shape, const std::vector<int>& which, const DzVec3& p);
DzVec3 bodyNormal(const BodyShape& shape, const std::vector<int>& which, const DzVec3& p);

// Lumps that can matter within radius of p.
std::vector<int> lumpsNear(const BodyShape& shape, const DzVec3& p, float radius);

} // namespace quillon
