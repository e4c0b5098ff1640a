#include "finder/box_tree.h"

#include <algorithm>
#include <cstddef>

namespace quillon {

int registersOf(int dims)
{
    return (dims + kLanes - 1) / kLanes;
}

const unsigned char* rowOf(const PointRows& rows, int point)
{
    return rows.bytes[std::size_t(point) * std::size_t(registersOf(rows.dims))].at;
}

// Clamped first, so that the sum and the product round by less than a thousandth of a step.
void putBytes(const float* values, int count, unsigned char* bytes)
{
    for (int i = 0; i < count; ++i) {
        const float inside = std::max(-1.0f, std::min(1.0f, values[i]));
        bytes[i] = static_cast<unsigned char>(std::min(255, int((inside + 1.0f) * 128.0f)));
    }
}

PointRows pointRowsOf(int count, int dims, int reach, const ValuesOf& valuesOf)
{
    PointRows rows;
    rows.dims = dims;
    rows.reach = reach;
    const std::size_t registers = std::size_t(registersOf(dims));
    rows.bytes.resize(std::size_t(count) * registers);
    for (int point = 0; point < count; ++point) {
        if (const float* values = valuesOf(point))
            putBytes(values, dims, rows.bytes[std::size_t(point) * registers].at);
    }
    return rows;
}

// ---- adding

static void widen(BoxLevel* level, int group, int lane, const unsigned char* row)
{
    const std::size_t start = std::size_t(group) * std::size_t(level->dims);
    for (int i = 0; i < level->dims; ++i) {
        const unsigned char byte = row[level->order[start + i]];
        unsigned char* low = &level->low[start + i].at[lane];
        unsigned char* high = &level->high[start + i].at[lane];
        *low = std::min(*low, byte);
        *high = std::max(*high, byte);
    }
}

static const unsigned char* orderOfLeaf(const BoxLevel& level, int leaf)
{
    return &level.order[std::size_t(leaf / kLanes) * std::size_t(level.dims)];
}

static void putPoint(BoxTree* tree, int leaf, int point, const unsigned char* row)
{
    BoxLevel& level = tree->levels.front();
    const std::size_t start = std::size_t(leaf) * std::size_t(level.dims);
    const int lane = tree->filled[leaf]++;
    const unsigned char* order = orderOfLeaf(level, leaf);
    for (int i = 0; i < level.dims; ++i)
        level.low[start + i].at[lane] = row[order[i]];
    tree->points[leaf * kLanes + lane] = point;
}

void addPoint(BoxTree* tree, const PointRows& rows, int point, int leaf)
{
    const unsigned char* row = rowOf(rows, point);
    putPoint(tree, leaf, point, row);
    int group = leaf;
    for (BoxLevel& level : tree->levels) {
        if (&level != &tree->levels.front()) {
            widen(&level, group / kLanes, group % kLanes, row);
            group /= kLanes;
        }
        level.first[group] = std::min(level.first[group], point);
    }
}

// ---- searching

namespace {

// What is within reach of the query, dimension for dimension.
struct Span {
    ByteLanes low, high, width; // width: high - low
};

struct Search {
    const BoxTree* tree;
    const PointTest* test;
    int later;
    int best;
    Span spans[kMostDims];
};

} // namespace

static void setSpans(const PointRows& rows, const unsigned char* row, Search* search)
{
    for (int dim = 0; dim < rows.dims; ++dim) {
        const int low = std::max(0, row[dim] - rows.reach);
        const int high = std::min(255, row[dim] + rows.reach);
        search->spans[dim] = Span {everyLane(low), everyLane(high), everyLane(high - low)};
    }
}

// What is not 0 is a box that ends below the span or starts above it.
static __m128i boxesOutside(const ByteLanes& low, const ByteLanes& high, const Span& span)
{
    return _mm_or_si128(_mm_subs_epu8(lanesOf(low), lanesOf(span.high)),
        _mm_subs_epu8(lanesOf(span.low), lanesOf(high)));
}

// Likewise a point; one below the span wraps around and lies further up than the span is wide.
static __m128i pointsOutside(const ByteLanes& bytes, const Span& span)
{
    return _mm_subs_epu8(_mm_sub_epi8(lanesOf(bytes), lanesOf(span.low)), lanesOf(span.width));
}

// Those of the lanes that are outside in no dimension of a group's order; outside(i, span) tests
// one.
template <typename Outside>
static unsigned lanesInReach(
    const unsigned char* order, int dims, const Span* spans, unsigned lanes, Outside outside)
{
    __m128i out = _mm_setzero_si128();
    for (int i = 0; i < dims && lanes; i += kDimsAtOnce) {
        out = _mm_or_si128(out, outside(i, spans[order[i]]));
        out = _mm_or_si128(out, outside(i + 1, spans[order[i + 1]]));
        out = _mm_or_si128(out, outside(i + 2, spans[order[i + 2]]));
        out = _mm_or_si128(out, outside(i + 3, spans[order[i + 3]]));
        lanes &= lanesThatAreZero(out);
    }
    return lanes;
}

static void searchLeaf(Search* search, int leaf)
{
    const BoxLevel& level = search->tree->levels.front();
    const std::size_t start = std::size_t(leaf) * std::size_t(level.dims);
    const ByteLanes* bytes = &level.low[start];
    const unsigned char* order = orderOfLeaf(level, leaf);
    const unsigned filled = (1u << search->tree->filled[leaf]) - 1;
    unsigned lanes = lanesInReach(order, level.dims, search->spans, filled,
        [bytes](int i, const Span& span) { return pointsOutside(bytes[i], span); });
    for (; lanes; lanes &= lanes - 1) {
        const int point = search->tree->points[leaf * kLanes + lowestLane(lanes)];
        if (point >= search->best)
            return;
        if (search->test->isNear(search->test->context, point, search->later)) {
            search->best = point;
            return; // the lanes rise
        }
    }
}

static void searchGroup(Search* search, int height, int group)
{
    if (height == 0)
        return searchLeaf(search, group);
    const BoxLevel& level = search->tree->levels[height];
    const BoxLevel& below = search->tree->levels[height - 1];
    const std::size_t start = std::size_t(group) * std::size_t(level.dims);
    const ByteLanes *low = &level.low[start], *high = &level.high[start];
    unsigned lanes = lanesInReach(&level.order[start], level.dims, search->spans, kAllLanes,
        [low, high](int i, const Span& span) { return boxesOutside(low[i], high[i], span); });
    for (; lanes; lanes &= lanes - 1) {
        const int child = group * kLanes + lowestLane(lanes);
        if (below.first[child] < search->best)
            searchGroup(search, height - 1, child);
    }
}

int firstNear(const BoxTree& tree, const PointRows& rows, const unsigned char* row, int later,
    const PointTest& test, int below)
{
    if (tree.levels.empty())
        return below;
    Search search;
    search.tree = &tree;
    search.test = &test;
    search.later = later;
    search.best = below;
    setSpans(rows, row, &search);
    searchGroup(&search, int(tree.levels.size()) - 1, 0);
    return search.best;
}

} // namespace quillon
