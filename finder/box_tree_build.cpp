// The places of the points in a tree of boxes, and which dimensions each group looks at first.
#include "finder/box_tree.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <numeric>

namespace quillon {

static const int kSplitSample = 64; // rows that tell where to split; 64 * 255 fits 16 bits
static const int kOrderPairs = 64; // pairs that tell which dimensions to look at first
static const int kBoxDims = 24; // of a group of boxes

// ---- which dimension tells most

namespace {

// Points that lie side by side in one array.
struct Range {
    int* first;
    int count;
};

struct DimSums {
    alignas(16) unsigned short at[kMostDims];
};

} // namespace

static void addLanes(__m128i bytes, unsigned short* sums)
{
    const __m128i zero = _mm_setzero_si128();
    __m128i* low = reinterpret_cast<__m128i*>(sums);
    __m128i* high = reinterpret_cast<__m128i*>(sums + 8);
    _mm_store_si128(low, _mm_add_epi16(_mm_load_si128(low), _mm_unpacklo_epi8(bytes, zero)));
    _mm_store_si128(high, _mm_add_epi16(_mm_load_si128(high), _mm_unpackhi_epi8(bytes, zero)));
}

static const ByteLanes* lanesOfRow(const PointRows& rows, int point)
{
    return &rows.bytes[std::size_t(point) * std::size_t(registersOf(rows.dims))];
}

static int samplePoint(const Range& range, int sample, int samples)
{
    return range.first[std::size_t(sample) * std::size_t(range.count) / std::size_t(samples)];
}

static void meanOf(const PointRows& rows, const Range& range, int samples, ByteLanes* mean)
{
    const int registers = registersOf(rows.dims);
    DimSums sums = {};
    for (int sample = 0; sample < samples; ++sample) {
        const ByteLanes* row = lanesOfRow(rows, samplePoint(range, sample, samples));
        for (int i = 0; i < registers; ++i)
            addLanes(lanesOf(row[i]), sums.at + i * kLanes);
    }
    for (int dim = 0; dim < registers * kLanes; ++dim)
        mean[dim / kLanes].at[dim % kLanes] = static_cast<unsigned char>(sums.at[dim] / samples);
}

// The dimension in which the points lie furthest from their mean; what is more than the reach
// counts as the reach, as a search is spared one side then already.
static int mostTellingDim(const PointRows& rows, const Range& range)
{
    const int registers = registersOf(rows.dims);
    const int samples = std::min(kSplitSample, range.count);
    ByteLanes mean[kMostDims / kLanes];
    meanOf(rows, range, samples, mean);
    const __m128i reach = lanesOf(everyLane(rows.reach));
    DimSums sums = {};
    for (int sample = 0; sample < samples; ++sample) {
        const ByteLanes* row = lanesOfRow(rows, samplePoint(range, sample, samples));
        for (int i = 0; i < registers; ++i) {
            const __m128i a = lanesOf(row[i]), b = lanesOf(mean[i]);
            const __m128i distance = _mm_or_si128(_mm_subs_epu8(a, b), _mm_subs_epu8(b, a));
            addLanes(_mm_min_epu8(distance, reach), sums.at + i * kLanes);
        }
    }
    return int(std::max_element(sums.at, sums.at + rows.dims) - sums.at);
}

// ---- places

// The `left` points with the lowest bytes first; both sides keep their order.
static void partitionBy(
    const PointRows& rows, int dim, const Range& range, int left, std::vector<int>* spare)
{
    int counts[256] = {};
    for (int i = 0; i < range.count; ++i)
        ++counts[rowOf(rows, range.first[i])[dim]];
    int pivot = 0, below = 0;
    while (below + counts[pivot] < left)
        below += counts[pivot++];
    int ofPivot = left - below, kept = 0;
    spare->clear();
    for (int i = 0; i < range.count; ++i) {
        const int point = range.first[i];
        const int byte = rowOf(rows, point)[dim];
        if (byte < pivot || (byte == pivot && ofPivot-- > 0))
            range.first[kept++] = point;
        else
            spare->push_back(point);
    }
    std::copy(spare->begin(), spare->end(), range.first + kept);
}

static std::size_t boxSize(int height) // points below one box of a group of this height
{
    std::size_t size = 1;
    for (int i = 0; i < height; ++i)
        size *= std::size_t(kLanes);
    return size;
}

// Splits in halves down to single boxes; only whole boxes lie left of a split. The dimensions are
// noted from the widest split on.
static void splitGroup(const PointRows& rows, const Range& group, std::size_t box,
    std::vector<unsigned char>* dims, std::vector<int>* spare)
{
    std::vector<Range> ranges(1, group);
    for (std::size_t next = 0; next < ranges.size(); ++next) {
        const Range range = ranges[next];
        const std::size_t boxes = (std::size_t(range.count) + box - 1) / box;
        if (boxes <= 1)
            continue;
        const int left = int((boxes + 1) / 2 * box);
        const int dim = mostTellingDim(rows, range);
        partitionBy(rows, dim, range, left, spare);
        dims->push_back(static_cast<unsigned char>(dim));
        ranges.push_back(Range {range.first, left});
        ranges.push_back(Range {range.first + left, range.count - left});
    }
}

// ---- orders

namespace {

// Per dimension, the pairs of points that it rules out; bit n: pair n.
struct RuledOut {
    std::uint64_t pairs[kMostDims];
};

} // namespace

// Pairs from all over the range; 28 n + 31 is odd, so no point is its own partner.
static RuledOut ruledOutPairs(const PointRows& rows, const Range& range)
{
    RuledOut result = {};
    for (int pair = 0; pair < kOrderPairs; ++pair) {
        const unsigned char* a = rowOf(rows, samplePoint(range, pair, kOrderPairs));
        const int other = (pair * 29 + 31) % kOrderPairs;
        const unsigned char* b = rowOf(rows, samplePoint(range, other, kOrderPairs));
        for (int dim = 0; dim < rows.dims; ++dim)
            result.pairs[dim] |= std::uint64_t(std::abs(a[dim] - b[dim]) > rows.reach) << pair;
    }
    return result;
}

static int bitsIn(std::uint64_t bits)
{
    bits -= bits >> 1 & 0x5555555555555555u;
    bits = (bits & 0x3333333333333333u) + (bits >> 2 & 0x3333333333333333u);
    return int(((bits + (bits >> 4)) & 0x0f0f0f0f0f0f0f0fu) * 0x0101010101010101u >> 56);
}

// Dimensions so that each rules out as many as possible of the pairs that are left by those before;
// when none is left, or none goes, again of all.
static std::vector<unsigned char> tellingOrder(const PointRows& rows, const Range& range)
{
    const RuledOut ruledOut = ruledOutPairs(rows, range);
    std::vector<unsigned char> order, dims(std::size_t(rows.dims));
    std::iota(dims.begin(), dims.end(), static_cast<unsigned char>(0));
    std::uint64_t left = ~std::uint64_t(0);
    while (!dims.empty()) {
        const auto best = std::max_element(dims.begin(), dims.end(), [&](int a, int b) {
            return bitsIn(ruledOut.pairs[a] & left) < bitsIn(ruledOut.pairs[b] & left);
        });
        const std::uint64_t gone = ruledOut.pairs[*best] & left;
        if (gone == 0 && left != ~std::uint64_t(0)) {
            left = ~std::uint64_t(0);
            continue;
        }
        left &= ~gone;
        order.push_back(*best);
        dims.erase(best);
    }
    return order;
}

static void appendOrder(const std::vector<unsigned char>& splits,
    const std::vector<unsigned char>& rest, int dims, std::vector<unsigned char>* order)
{
    std::vector<unsigned char> own;
    const auto add = [&](unsigned char dim) {
        if (std::find(own.begin(), own.end(), dim) == own.end())
            own.push_back(dim);
    };
    std::for_each(splits.begin(), splits.end(), add);
    std::for_each(rest.begin(), rest.end(), add);
    own.resize(std::size_t(dims), own.back());
    order->insert(order->end(), own.begin(), own.end());
}

// ---- the tree

static int roundedUp(int dims)
{
    return (dims + kDimsAtOnce - 1) / kDimsAtOnce * kDimsAtOnce;
}

static BoxLevel makeLevel(int dims, std::size_t groups, bool ofPoints)
{
    BoxLevel level;
    level.dims = roundedUp(dims);
    level.low.resize(groups * std::size_t(level.dims), everyLane(255));
    if (!ofPoints)
        level.high.resize(level.low.size(), everyLane(0));
    level.first.resize(groups, kNoPoint);
    return level;
}

static std::size_t groupsOf(std::size_t points, int height)
{
    const std::size_t size = boxSize(height + 1);
    return (points + size - 1) / size;
}

static void makeLevels(const PointRows& rows, std::size_t points, BoxTree* tree)
{
    int height = 0;
    do {
        const int dims = height == 0 ? rows.dims : std::min(kBoxDims, rows.dims);
        tree->levels.push_back(makeLevel(dims, groupsOf(points, height), height == 0));
    } while (groupsOf(points, height++) > 1 || height == 1);
}

// Leaves look at the dimensions in the order of the node above them.
static void splitLevel(const PointRows& rows, int height, std::vector<int>* points, BoxTree* tree)
{
    const std::size_t size = boxSize(height + 1);
    std::vector<int> spare;
    std::vector<unsigned char> splits;
    for (std::size_t from = 0; from < points->size(); from += size) {
        const Range group = {points->data() + from, int(std::min(size, points->size() - from))};
        splits.clear();
        splitGroup(rows, group, boxSize(height), &splits, &spare);
        const std::vector<unsigned char> telling = tellingOrder(rows, group);
        appendOrder(splits, telling, tree->levels[height].dims, &tree->levels[height].order);
        if (height == 1)
            appendOrder({}, telling, tree->levels[0].dims, &tree->levels[0].order);
    }
}

BoxTree makeBoxTree(const PointRows& rows, std::vector<int> points, std::vector<int>* leafOf)
{
    BoxTree tree;
    if (points.empty())
        return tree;
    makeLevels(rows, points.size(), &tree);
    for (int height = int(tree.levels.size()) - 1; height > 0; --height)
        splitLevel(rows, height, &points, &tree);
    for (std::size_t place = 0; place < points.size(); ++place)
        (*leafOf)[points[place]] = int(place) / kLanes;
    tree.points.resize(groupsOf(points.size(), 0) * std::size_t(kLanes), kNoPoint);
    tree.filled.resize(groupsOf(points.size(), 0), 0);
    return tree;
}

} // namespace quillon
