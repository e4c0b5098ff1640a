// mesh_vertex.h - one vertex of a resting body: where it is, which bones move it, what it is
// painted with. A value. Centimetres; whose space the position is in, its maker says.
#pragma once

#include "dzvec3.h"

#include <QRgb>

namespace quillon {

const float kNoPaintCm = -3; // cover of a vertex far from any paint; the largest cover is 3

struct MeshVertex {
    DzVec3 position;
    DzVec3 normal; // unit length, outwards
    int bone[4]; // rows of FigureData::bones, the strongest first
    float weight[4]; // sum 1; unused ones 0, at the end
    QRgb color; // opaque, unlit
    QRgb paint; // suit, hair, brows or lips, where cover is above 0
    float cover; // cm inside the painted area, or to it when negative
    float openness; // share of the surroundings that light reaches, 0..1
};

} // namespace quillon
