// The places of the points in a tree of boxes, and which dimensions each group looks at first.
#include "finder/box_tree.h"

#include <algorithm>
#include <cstdlib>

namespace quillon {

static const int kSplitSample = 64; // rows that tell where to split; 64 * 255 fits 16 bits
static const int kOrderPairs = 1024; // pairs that tell which dimensions to look at first
static const int kBoxDims = 24; // of a group of boxes
static const int kDimsAtOnce = 4; // orders are as long as a multiple of it

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

// Pairs that are the same on each machine; neighbours in the table are often from one folder.
static int otherOf(int pair, int count)
{
    return int((std::size_t(pair) * 40503u + 12345u) % std::size_t(count));
}

// Dimensions so that each rules out as many as possible of the pairs that are left by those before.
static std::vector<unsigned char> tellingOrder(const PointRows& rows, const Range& range)
{
    std::vector<std::pair<int, int>> pairs;
    for (int i = 0; i < kOrderPairs; ++i)
        pairs.emplace_back(
            samplePoint(range, i, kOrderPairs), range.first[otherOf(i, range.count)]);
    std::vector<unsigned char> order, left;
    for (int dim = 0; dim < rows.dims; ++dim)
        left.push_back(static_cast<unsigned char>(dim));
    while (!left.empty()) {
        std::vector<int> ruledOut(left.size(), 0);
        for (const std::pair<int, int>& pair : pairs) {
            const unsigned char* a = rowOf(rows, pair.first);
            const unsigned char* b = rowOf(rows, pair.second);
            for (std::size_t i = 0; i < left.size(); ++i)
                ruledOut[i] += std::abs(a[left[i]] - b[left[i]]) > rows.reach;
        }
        const auto best = std::max_element(ruledOut.begin(), ruledOut.end()) - ruledOut.begin();
        const unsigned char dim = left[best];
        order.push_back(dim);
        left.erase(left.begin() + best);
        pairs.erase(std::remove_if(pairs.begin(), pairs.end(),
                        [&](const std::pair<int, int>& pair) {
                            const int a = rowOf(rows, pair.first)[dim];
                            return std::abs(a - rowOf(rows, pair.second)[dim]) > rows.reach;
                        }),
            pairs.end());
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
    } while (groupsOf(points, height++) > 1);
}

static void splitLevel(const PointRows& rows, const std::vector<unsigned char>& common, int height,
    std::vector<int>* points, BoxLevel* level)
{
    const std::size_t size = boxSize(height + 1);
    std::vector<int> spare;
    std::vector<unsigned char> splits;
    for (std::size_t from = 0; from < points->size(); from += size) {
        const int count = int(std::min(size, points->size() - from));
        splits.clear();
        if (height > 0)
            splitGroup(
                rows, Range {points->data() + from, count}, boxSize(height), &splits, &spare);
        appendOrder(splits, common, level->dims, &level->order);
    }
}

BoxTree makeBoxTree(const PointRows& rows, std::vector<int> points, std::vector<int>* leafOf)
{
    BoxTree tree;
    if (points.empty())
        return tree;
    makeLevels(rows, points.size(), &tree);
    const std::vector<unsigned char> common
        = tellingOrder(rows, Range {points.data(), int(points.size())});
    for (int height = int(tree.levels.size()) - 1; height >= 0; --height)
        splitLevel(rows, common, height, &points, &tree.levels[height]);
    for (std::size_t place = 0; place < points.size(); ++place)
        (*leafOf)[points[place]] = int(place) / kLanes;
    tree.points.resize(groupsOf(points.size(), 0) * std::size_t(kLanes), kNoPoint);
    tree.filled.resize(groupsOf(points.size(), 0), 0);
    return tree;
}

} // namespace quillon
