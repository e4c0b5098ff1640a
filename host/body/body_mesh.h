// body_mesh.h - the body of a figure as a skinned mesh, made from body_shape once per figure.
// Space: the figure's rest pose, its scale applied, centimetres.
// Owns: a cache of one mesh per figure name. GUI thread only. The first call takes some tenths of a
// second.
#pragma once

#include "host/body/mesh_vertex.h"
#include "host/figures/figure_data.h"

#include <vector>

namespace quillon {

struct BodyMesh {
    std::vector<MeshVertex> vertices;
    std::vector<int> triangles; // three vertices each, counter-clockwise from outside
    std::vector<int> bones; // one a triangle: the row of FigureData::bones that moves it most
};

// Good until the program ends. Figures of one name have one mesh: that of the first call.
const BodyMesh& bodyMesh(const FigureData& data);

} // namespace quillon
