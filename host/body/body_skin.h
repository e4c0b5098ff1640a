// body_skin.h - which bones move a point of the resting body, and what it is made of.
// Space: the figure's rest pose before its own scale, centimetres. Owns: nothing.
#pragma once

#include "host/body/body_shape.h"
#include "host/body/mesh_vertex.h"

#include <vector>

namespace quillon {

// A small bone of the face: it moves what is near its end point, less and less up to reach.
struct FaceBone {
    int bone; // row of FigureData::bones
    DzVec3 at; // its end point
    float reach; // cm, at most 3
};

struct BodySkin {
    const FigureData* data; // not null; has to outlive this
    BodyShape shape;
    std::vector<FaceBone> faceBones;
    std::vector<std::vector<DzVec3>> brows, lips; // lines to paint along
};

BodySkin bodySkin(const FigureData& data);

// Of a vertex, not null, whose position is set: bones and weights; colour, paint and cover.
// near_: rows of the shape's lumps that are looked at, so as lumpsNear() gives them.
void weighVertex(const BodySkin& skin, const std::vector<int>& near_, MeshVertex* vertex);
void paintVertex(const BodySkin& skin, const std::vector<int>& near_, MeshVertex* vertex);

} // namespace quillon
