// scene_mesh.h - the scene at the current time as lit triangles in the world.
// Owns: nothing; the nodes are the scene's. GUI thread only.
#pragma once

#include "host/body/camera.h"
#include "host/body/raster.h"

#include <QColor>

#include <vector>

class DzNode;

namespace quillon {

struct SceneVertex {
    DzVec3 position; // world, cm
    Rgb color, paint; // lit
    float cover; // as in raster.h
};

struct SceneMesh {
    std::vector<SceneVertex> vertices;
    std::vector<int> triangles; // three vertices each, counter-clockwise from outside
    std::vector<int> ids; // one a triangle: index into nodes
    std::vector<DzNode*> nodes; // not null; good until the scene changes
};

// Of dzScene; empty without one. highlight: selected nodes are tinted with kSelectionColor.
SceneMesh sceneMesh(const View& view, bool highlight);

extern const QColor kSelectionColor;

} // namespace quillon
