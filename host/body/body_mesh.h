// body_mesh.h - the body of a figure as a skinned mesh, made from body_shape once per figure.
// Space: the figure's rest pose, its scale applied, centimetres.
// Owns: a cache of one mesh per figure name. GUI thread only. The first call takes some tenths of a
// second.
#pragma once

#include "host/body/body_shape.h"

#include <QRgb>

namespace quillon {

const float kNoPaintCm = -3; // cover of a vertex far from any paint

struct MeshVertex {
    DzVec3 position, normal;
    int bone[4]; // rows of FigureData::bones, the strongest first
    float weight[4]; // sum 1; unused ones 0
    QRgb color;
    QRgb paint; // suit, hair, brows or lips, where cover is above 0
    float cover; // cm inside the painted area, or to it when negative
    float openness; // share of the surroundings that light reaches, 0..1
};

struct BodyMesh {
    std::vector<MeshVertex> vertices;
    std::vector<int> triangles; // three vertices each, counter-clockwise from outside
};

const BodyMesh& bodyMesh(const FigureData& data);

} // namespace quillon
