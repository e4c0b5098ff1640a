// surface_nets.h - turns a field that is negative inside into a mesh of quads, two triangles each,
// counter-clockwise seen from outside.
#pragma once

#include "dzbox3.h"

#include <vector>

namespace quillon {

// What is meshed; called block by block.
class Field {
public:
    virtual ~Field()
    {
    }
    // Prepares for points within radius of centre; the distance there, roughly.
    virtual float enterBlock(const DzVec3& centre, float radius) = 0;
    virtual float distance(const DzVec3& p) const = 0;
    virtual bool keeps(const DzVec3& vertex) const = 0; // false: leave a hole there
    virtual void vertexMade(const DzVec3& p) = 0; // in the order of the vertices
};

// Appends triples of vertex numbers, counted from firstVertex.
void meshSurface(
    Field* field, const DzBox3& box, float cellCm, int firstVertex, std::vector<int>* triangles);

} // namespace quillon
