// scene_mesh.h - the scene at the current time as triangles in the world, and the light on them.
// Owns: nothing; the nodes are the scene's. GUI thread only; a second thread helps with the skin.
#pragma once

#include "host/body/camera.h"
#include "host/body/raster.h"

#include <QColor>

#include <vector>

class DzNode;

namespace quillon {

struct MeshVertex;

struct SceneVertex {
    DzVec3 position; // world, cm
    DzVec3 normal; // world, of any length
    float selected; // share of it that is marked as selected
    const MeshVertex* body; // lives with body_mesh's cache; null: the side of a box
};

struct FigureSkin {
    const DzNode* figure;
    size_t first, end; // of its vertices
};

struct SceneMesh {
    std::vector<SceneVertex> vertices;
    std::vector<int> triangles; // three vertices each, counter-clockwise from outside
    std::vector<int> ids; // one a triangle: index into nodes
    std::vector<DzNode*> nodes; // not null; good until the scene changes
    std::vector<FigureSkin> skins;
};

// Of dzScene; empty without one. highlight: selected nodes are tinted with kSelectionColor.
SceneMesh sceneMesh(bool highlight);

// Of that figure's skin, world, cm. False: it is not in the mesh, and *out is untouched.
bool lowestPoint(const SceneMesh& mesh, const DzNode* figure, DzVec3* out);

// Where the skin of a figure is now, world, cm; empty for any other node.
std::vector<DzVec3> skinPoints(const DzNode* figure);

// The lamps go with the camera, so that no view is dark.
struct Lights {
    DzVec3 key, fill, eyeward; // unit, towards the light
    DzVec3 half; // between key and eyeward, unit
};

Lights makeLights(const View& view);
PointColor lightVertex(const SceneVertex& vertex, const Lights& lights);

extern const QColor kSelectionColor;

} // namespace quillon
