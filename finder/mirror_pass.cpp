#include "finder/mirror_pass.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace quillon {

static const float kMirrorTolerance = 0.1f;
static const int kMirrorNumbers = kMirrorSlots * 2;

// 0.1 is less than 13 of the 128 steps to 1, so bytes of what is nearer differ by no more.
static const int kMirrorReach = 13;

// The slot of the other side; hip and torso are their own.
static const int kOther[kMirrorSlots] = {0, 1, 3, 2, 5, 4, 7, 6, 9, 8};

// ---- two poses

static bool areOpposite(float a, float b)
{
    return std::fabs(a - -b) < kMirrorTolerance;
}

bool areMirroredRows(const MirrorRow& a, const MirrorRow& b)
{
    for (int slot = 0; slot < kMirrorSlots; ++slot) {
        const float* mine = a.yz + 2 * slot;
        const float* others = b.yz + 2 * kOther[slot];
        if (!areOpposite(mine[0], others[0]) || !areOpposite(mine[1], others[1]))
            return false;
    }
    return true;
}

// ---- the pass

// What is not finite is opposite to nothing.
static bool canMirror(const MirrorRow& row)
{
    return row.takesPart && std::all_of(row.yz, row.yz + kMirrorNumbers, [](float each) {
        return std::isfinite(each);
    });
}

static PointRows pointsOf(const std::vector<MirrorRow>& rows)
{
    return pointRowsOf(int(rows.size()), kMirrorNumbers, kMirrorReach, [&rows](int point) {
        const MirrorRow& row = rows[std::size_t(point)];
        return canMirror(row) ? row.yz : nullptr;
    });
}

MirrorPass::MirrorPass(std::vector<MirrorRow> rows)
    : m_rows(std::move(rows))
    , m_points(pointsOf(m_rows))
    , m_leafOf(m_rows.size(), -1)
{
    std::vector<int> points;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (canMirror(m_rows[i]))
            points.push_back(int(i));
    }
    m_kept = makeBoxTree(m_points, std::move(points), &m_leafOf);
}

static void putMirroredBytes(const MirrorRow& row, unsigned char* bytes)
{
    float mirrored[kMirrorNumbers];
    for (int slot = 0; slot < kMirrorSlots; ++slot) {
        mirrored[2 * slot] = -row.yz[2 * kOther[slot]];
        mirrored[2 * slot + 1] = -row.yz[2 * kOther[slot] + 1];
    }
    putBytes(mirrored, kMirrorNumbers, bytes);
}

static bool isMirrored(const void* context, int earlier, int later)
{
    const MirrorRow* rows = static_cast<const MirrorRow*>(context);
    return areMirroredRows(rows[earlier], rows[later]);
}

int MirrorPass::firstMirrored(int entry)
{
    if (m_leafOf[entry] < 0)
        return kNoMirror;
    unsigned char mirrored[kMirrorNumbers];
    putMirroredBytes(m_rows[entry], mirrored);
    const PointTest test = {m_rows.data(), isMirrored};
    const int found = firstNear(m_kept, m_points, mirrored, entry, test, kNoPoint);
    if (found != kNoPoint)
        return found;
    addPoint(&m_kept, m_points, entry, m_leafOf[entry]);
    return kNoMirror;
}

} // namespace quillon
