// body_skin.h - which bones move a point of the resting body, and what it is made of.
#pragma once

#include "host/body/body_shape.h"
#include "host/body/mesh_vertex.h"

#include <vector>

namespace quillon {

// A small bone of the face: it moves what is near its end point, less and less up to reach.
struct FaceBone {
    int bone;
    DzVec3 at;
    float reach;
};

struct BodySkin {
    const FigureData* data;
    BodyShape shape;
    std::vector<FaceBone> faceBones;
    std::vector<std::vector<DzVec3>> brows, lips; // lines to paint along
};

BodySkin bodySkin(const FigureData& data);

// near: the lumps to look at. Positions before the figure's own scale.
void weighVertex(const BodySkin& skin, const std::vector<int>& near_, MeshVertex* vertex);
void paintVertex(const BodySkin& skin, const std::vector<int>& near_, MeshVertex* vertex);

} // namespace quillon
