// figure_renderer.h - draws the scene: figures as shaded bodies, other nodes as boxes, the floor
// with grid and shadow. Needs no window. The same scene and camera give the same picture.
// Owns: the backdrop of the last picture, beside the cache of body_mesh. GUI thread only; a second
// thread helps while a picture is drawn, and the picture does not depend on it.
#pragma once

#include "host/body/camera.h"

#include <QImage>

#include <vector>

class DzNode;

namespace quillon {

struct SceneMesh;

struct RenderOptions {
    bool floor = true;
    bool highlight = true; // of selected nodes
    int samples = 2; // along each side of a pixel, 1..4
};

// What is seen where.
struct PickMap {
    int width = 0, height = 0;
    std::vector<int> node; // per pixel: index into nodes, -1 nothing
    std::vector<DzNode*> nodes;

    DzNode* at(int x, int y) const; // null: nothing there
};

// The scene dzScene at its current time, ARGB32_Premultiplied and opaque. pick may be null.
QImage renderSceneImage(const QSize& size, const Camera& camera,
    const RenderOptions& options = RenderOptions(), PickMap* pick = nullptr);

// The same of a mesh that was made of the scene as it is now, with that highlight.
QImage renderMesh(const SceneMesh& mesh, const QSize& size, const Camera& camera,
    const RenderOptions& options, PickMap* pick = nullptr);

} // namespace quillon
