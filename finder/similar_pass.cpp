#include "finder/similar_pass.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace quillon {

static const int kSimilarNumbers = kPassSlots * kImageNumbers;

// Images of similar poses are less than 0.4996 apart in each number, which is less than 64 of the
// 128 steps to 1, so their bytes differ by no more than this.
static const int kSimilarReach = 64;

// ---- two poses

static bool isTooFar(const float* a, const float* b) // of one axis
{
    const float x = a[0] - b[0], y = a[1] - b[1], z = a[2] - b[2];
    const float score = 1.0f - std::sqrt(x * x + y * y + z * z) / kDuplicateTolerance;
    return score <= kLeastScore;
}

bool areSimilarRows(const SimilarRow& a, const SimilarRow& b)
{
    if (a.figureCode != b.figureCode)
        return false;
    for (int i = 0; i < kSimilarNumbers; i += 3) {
        if (isTooFar(a.images + i, b.images + i))
            return false;
    }
    return true;
}

// ---- the pass

static bool isFinite(const SimilarRow& row)
{
    return std::all_of(
        row.images, row.images + kSimilarNumbers, [](float each) { return std::isfinite(each); });
}

static PointRows pointsOf(const std::vector<SimilarRow>& rows)
{
    return pointRowsOf(int(rows.size()), kSimilarNumbers, kSimilarReach, [&rows](int point) {
        const SimilarRow& row = rows[std::size_t(point)];
        return row.takesPart && isFinite(row) ? row.images : nullptr;
    });
}

SimilarPass::SimilarPass(std::vector<SimilarRow> rows)
    : m_rows(std::move(rows))
    , m_points(pointsOf(m_rows))
    , m_leafOf(m_rows.size(), -1)
{
    std::vector<int> members;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].takesPart)
            members.push_back(int(i));
    }
    const auto codeOf = [this](int entry) { return m_rows[entry].figureCode; };
    std::stable_sort(
        members.begin(), members.end(), [&](int a, int b) { return codeOf(a) < codeOf(b); });
    for (auto from = members.begin(); from != members.end();) {
        const auto to = std::find_if(
            from, members.end(), [&](int entry) { return codeOf(entry) != codeOf(*from); });
        addFigure(std::vector<int>(from, to));
        from = to;
    }
}

void SimilarPass::addFigure(std::vector<int> members)
{
    Figure figure;
    figure.code = m_rows[members.front()].figureCode;
    members.erase(std::remove_if(members.begin(), members.end(),
                      [this](int entry) { return !isFinite(m_rows[entry]); }),
        members.end());
    figure.tree = makeBoxTree(m_points, std::move(members), &m_leafOf);
    m_figures.push_back(std::move(figure));
}

SimilarPass::Figure* SimilarPass::figureOf(int entry)
{
    return &*std::lower_bound(m_figures.begin(), m_figures.end(), m_rows[entry].figureCode,
        [](const Figure& figure, unsigned code) { return figure.code < code; });
}

int SimilarPass::firstSimilar(const std::vector<int>& earlier, int entry) const
{
    const auto found = std::find_if(earlier.begin(), earlier.end(),
        [&](int each) { return areSimilarRows(m_rows[each], m_rows[entry]); });
    return found == earlier.end() ? kNoPoint : *found;
}

static bool isNear(const void* context, int earlier, int later)
{
    const SimilarRow* rows = static_cast<const SimilarRow*>(context);
    return areSimilarRows(rows[earlier], rows[later]);
}

// What is not finite may be similar to anything.
int SimilarPass::search(const Figure& figure, int entry) const
{
    if (m_leafOf[entry] < 0)
        return firstSimilar(figure.kept, entry);
    const PointTest test = {m_rows.data(), isNear};
    const unsigned char* bytes = rowOf(m_points, entry);
    return firstNear(
        figure.tree, m_points, bytes, entry, test, firstSimilar(figure.keptOdd, entry));
}

void SimilarPass::keep(Figure* figure, int entry)
{
    figure->kept.push_back(entry);
    if (m_leafOf[entry] < 0)
        figure->keptOdd.push_back(entry);
    else
        addPoint(&figure->tree, m_points, entry, m_leafOf[entry]);
}

int SimilarPass::firstRepeated(int entry)
{
    if (!m_rows[entry].takesPart)
        return kNoRepeat;
    Figure* figure = figureOf(entry);
    const int found = search(*figure, entry);
    if (found != kNoPoint)
        return found;
    keep(figure, entry);
    return kNoRepeat;
}

} // namespace quillon
