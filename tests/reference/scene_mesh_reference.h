// scene_mesh_reference.h - the scene as lit triangles, vertex by vertex: the literal form of
// host/body/scene_mesh.
#pragma once

#include "host/body/camera.h"
#include "reference/raster_reference.h"

#include <vector>

class DzNode;

namespace quillon {
namespace reference {

struct SceneVertex {
    DzVec3 position; // world, cm
    Rgb color, paint; // lit
    float cover; // as in raster.h
};

struct SceneMesh {
    std::vector<SceneVertex> vertices;
    std::vector<int> triangles; // three vertices each, counter-clockwise from outside
    std::vector<int> ids; // one a triangle: index into nodes
    std::vector<DzNode*> nodes;
};

SceneMesh sceneMesh(const View& view, bool highlight);

} // namespace reference
} // namespace quillon
