// box_tree.h - finds the earliest of thousands of points that is near another one in every
// dimension.
//
// A point is a row of bytes. The tree knows from the start which points may come and where each has
// its place: sixteen neighbours make a leaf, sixteen leaves a node, sixteen nodes the next, and so
// on. Points are added one after the other; boxes hold what was added, so that a search passes by
// what is empty or far. Sixteen boxes, or sixteen points, are tested at once.
//
// A search rules a point out only if a byte differs by more than the reach; all others are held
// against the caller's own test, so the bytes decide nothing.
// Owns: the places and the boxes; the rows stay the caller's.
#pragma once

#include "finder/byte_lanes.h"

#include <functional>
#include <vector>

namespace quillon {

const int kNoPoint = 0x7fffffff;

struct PointRows {
    int dims = 0; // at most kMostDims
    int reach = 0; // below 127; bytes further apart are not near
    std::vector<ByteLanes> bytes; // per point registersOf(dims), bytes past dims are 0
};
const int kMostDims = 64;
const int kDimsAtOnce = 4; // an order is as long as a multiple of it; so many are looked at before
                           // it is asked whether anything is left
int registersOf(int dims);
const unsigned char* rowOf(const PointRows& rows, int point);

// The rows of so many points. valuesOf: dims values of a point, each finite; null: its row is all
// 0.
typedef std::function<const float*(int point)> ValuesOf;
PointRows pointRowsOf(int count, int dims, int reach, const ValuesOf& valuesOf);

// A value of [-1, 1) as a byte, 128 steps to 1; what is outside becomes the nearest end. Two values
// differ by no more steps than their distance has, rounded up. Not for a NaN.
void putBytes(const float* values, int count, unsigned char* bytes);

// What the bytes cannot tell.
struct PointTest {
    const void* context;
    bool (*isNear)(const void* context, int earlier, int later);
};

// One step of the tree: groups of sixteen boxes, or, at the lowest level, of sixteen points.
struct BoxLevel {
    int dims = 0; // that are looked at
    std::vector<unsigned char> order; // which these are: per group; of points, per sixteen leaves
    std::vector<ByteLanes> low, high; // per group and dimension; high is empty for points
    std::vector<int> first; // per group, the lowest point in it
};

struct BoxTree {
    std::vector<BoxLevel> levels; // from the leaves to the root
    std::vector<int> points; // per leaf and lane, in the order added
    std::vector<unsigned char> filled; // lanes per leaf
};

// A tree without points that has room for these; leafOf gets a value for each of them.
BoxTree makeBoxTree(const PointRows& rows, std::vector<int> points, std::vector<int>* leafOf);

// Points are added in rising order, each once and to the leaf that was made for it.
void addPoint(BoxTree* tree, const PointRows& rows, int point, int leaf);

// The lowest point of those added, and below `below`, that is near the row and passes the test;
// otherwise `below`. The row has the dimensions of the tree.
int firstNear(const BoxTree& tree, const PointRows& rows, const unsigned char* row, int later,
    const PointTest& test, int below);

} // namespace quillon
