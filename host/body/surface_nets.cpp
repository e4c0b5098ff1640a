#include "host/body/surface_nets.h"

#include <cmath>
#include <unordered_map>

namespace quillon {

namespace {

const int kBlock = 8; // cells along a block's side
const int kSide = kBlock + 1; // samples along it

struct Grid {
    DzVec3 origin;
    float cell;
    int size[3]; // in cells

    long long key(int x, int y, int z) const
    {
        return (static_cast<long long>(z) * (size[1] + 1) + y) * (size[0] + 1) + x;
    }
    DzVec3 at(float x, float y, float z) const
    {
        return origin + DzVec3(x, y, z) * cell;
    }
};

struct Block {
    int x, y, z; // first cell
    float samples[kSide * kSide * kSide];

    float sample(int i, int j, int k) const
    {
        return samples[(k * kSide + j) * kSide + i];
    }
};

typedef std::unordered_map<long long, int> CellVertices;

Grid makeGrid(const DzBox3& box, float cell)
{
    Grid grid = {box.getMin(), cell, {0, 0, 0}};
    for (int i = 0; i < 3; ++i) {
        const int cells = int(std::ceil((box.getMax()[i] - box.getMin()[i]) / cell));
        grid.size[i] = (cells + kBlock - 1) / kBlock * kBlock;
    }
    return grid;
}

void sampleBlock(const Grid& grid, const Field& field, Block* block)
{
    float* out = block->samples;
    for (int k = 0; k < kSide; ++k)
        for (int j = 0; j < kSide; ++j)
            for (int i = 0; i < kSide; ++i)
                *out++ = field.distance(
                    grid.at(float(block->x + i), float(block->y + j), float(block->z + k)));
}

// The mean of the points where the surface crosses the cell's edges; false when it does not.
bool cellPoint(const Grid& grid, const Block& block, int i, int j, int k, DzVec3* point)
{
    DzVec3 sum;
    int crossings = 0;
    for (int axis = 0; axis < 3; ++axis)
        for (int edge = 0; edge < 4; ++edge) {
            int corner[3] = {0, 0, 0};
            corner[(axis + 1) % 3] = edge & 1;
            corner[(axis + 2) % 3] = edge >> 1;
            const float from = block.sample(i + corner[0], j + corner[1], k + corner[2]);
            DzVec3 p(float(block.x + i + corner[0]), float(block.y + j + corner[1]),
                float(block.z + k + corner[2]));
            corner[axis] = 1;
            const float to = block.sample(i + corner[0], j + corner[1], k + corner[2]);
            if ((from < 0) == (to < 0))
                continue;
            p[axis] += from / (from - to);
            sum += p;
            ++crossings;
        }
    if (!crossings)
        return false;
    sum = sum / float(crossings);
    *point = grid.at(sum.m_x, sum.m_y, sum.m_z);
    return true;
}

void makeVertices(
    const Grid& grid, const Block& block, Field* field, CellVertices* vertices, int* next)
{
    for (int k = 0; k < kBlock; ++k)
        for (int j = 0; j < kBlock; ++j)
            for (int i = 0; i < kBlock; ++i) {
                DzVec3 p;
                if (!cellPoint(grid, block, i, j, k, &p) || !field->keeps(p))
                    continue;
                (*vertices)[grid.key(block.x + i, block.y + j, block.z + k)] = (*next)++;
                field->vertexMade(p);
            }
}

// The quad around the grid edge that leaves (x, y, z) along axis, if all four cells have a vertex.
void makeQuad(const Grid& grid, const CellVertices& vertices, const int at[3], int axis,
    bool leaves, std::vector<int>* triangles)
{
    int corner[4];
    for (int n = 0; n < 4; ++n) {
        static const int kSteps[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        int cell[3] = {at[0], at[1], at[2]};
        cell[(axis + 1) % 3] -= kSteps[n][0];
        cell[(axis + 2) % 3] -= kSteps[n][1];
        const auto found = vertices.find(grid.key(cell[0], cell[1], cell[2]));
        if (cell[0] < 0 || cell[1] < 0 || cell[2] < 0 || found == vertices.end())
            return;
        corner[n] = found->second;
    }
    if (!leaves)
        std::swap(corner[1], corner[3]);
    const int order[6] = {0, 1, 2, 0, 2, 3};
    for (int n : order)
        triangles->push_back(corner[n]);
}

void makeQuads(
    const Grid& grid, const Block& block, const CellVertices& vertices, std::vector<int>* triangles)
{
    for (int k = 0; k < kBlock; ++k)
        for (int j = 0; j < kBlock; ++j)
            for (int i = 0; i < kBlock; ++i) {
                const bool inside = block.sample(i, j, k) < 0;
                const int at[3] = {block.x + i, block.y + j, block.z + k};
                for (int axis = 0; axis < 3; ++axis) {
                    const float other
                        = block.sample(i + (axis == 0), j + (axis == 1), k + (axis == 2));
                    if ((other < 0) != inside)
                        makeQuad(grid, vertices, at, axis, inside, triangles);
                }
            }
}

} // namespace

void meshSurface(
    Field* field, const DzBox3& box, float cellCm, int firstVertex, std::vector<int>* triangles)
{
    const Grid grid = makeGrid(box, cellCm);
    const float radius = 0.5f * std::sqrt(3.f) * kBlock * cellCm;
    std::vector<Block> blocks;
    CellVertices vertices;
    int next = firstVertex;
    Block block;
    for (block.z = 0; block.z < grid.size[2]; block.z += kBlock)
        for (block.y = 0; block.y < grid.size[1]; block.y += kBlock)
            for (block.x = 0; block.x < grid.size[0]; block.x += kBlock) {
                const float half = 0.5f * kBlock;
                const DzVec3 centre = grid.at(block.x + half, block.y + half, block.z + half);
                if (std::fabs(field->enterBlock(centre, radius)) > 1.6f * radius)
                    continue;
                sampleBlock(grid, *field, &block);
                makeVertices(grid, block, field, &vertices, &next);
                blocks.push_back(block);
            }
    for (const Block& done : blocks)
        makeQuads(grid, done, vertices, triangles);
}

} // namespace quillon
