#include "bench/pass_loops.h"

#include <algorithm>
#include <cmath>

namespace quillon {
namespace loops {

static const int kOtherSide[] = {0, 1, 3, 2, 5, 4, 7, 6, 9, 8};

template <typename Kept, typename Test>
static int firstOf(const std::vector<Kept>& kept, int count, Test test)
{
    const auto found = std::find_if(kept.begin(), kept.begin() + count, test);
    return found == kept.begin() + count ? -1 : int(found - kept.begin());
}

// ---- mirrored

Marks marksOf(const MirrorRow& row)
{
    Marks marks;
    for (int slot = 0; slot < kPassSlots; ++slot) {
        marks.y[slot] = row.yz[2 * slot];
        marks.z[slot] = row.yz[2 * slot + 1];
    }
    return marks;
}

static bool areOpposite(float a, float b)
{
    return std::fabs(a - -b) < 0.1f;
}

static bool areMirrored(const Marks& a, const Marks& b)
{
    for (int slot = 0; slot < kPassSlots; ++slot) {
        const int other = kOtherSide[slot];
        if (!areOpposite(a.y[slot], b.y[other]) || !areOpposite(a.z[slot], b.z[other]))
            return false;
    }
    return true;
}

int firstMirrored(const std::vector<Marks>& kept, int count, const Marks& marks)
{
    return firstOf(kept, count, [&](const Marks& each) { return areMirrored(each, marks); });
}

// ---- similar

Probes probesOf(const SimilarRow& row)
{
    Probes probes;
    probes.figureCode = row.figureCode;
    for (int slot = 0; slot < kPassSlots; ++slot) {
        const float* image = row.images + slot * kImageNumbers;
        probes.slot[slot].y = Vector {image[0], image[1], image[2], 0};
        probes.slot[slot].z = Vector {image[3], image[4], image[5], 0};
    }
    return probes;
}

static float scoreOf(const Vector& a, const Vector& b)
{
    const float x = a.x - b.x, y = a.y - b.y, z = a.z - b.z;
    const float score = 1.0f - std::sqrt(x * x + y * y + z * z) / 0.5f;
    return std::max(0.0f, std::min(1.0f, score));
}

static bool areSimilar(const Probes& a, const Probes& b)
{
    if (a.figureCode != b.figureCode)
        return false;
    for (int slot = 0; slot < kPassSlots; ++slot) {
        const float y = scoreOf(a.slot[slot].y, b.slot[slot].y);
        if (std::min(y, scoreOf(a.slot[slot].z, b.slot[slot].z)) <= 0.001f)
            return false;
    }
    return true;
}

int firstSimilar(const std::vector<Probes>& kept, int count, const Probes& probes)
{
    return firstOf(kept, count, [&](const Probes& each) { return areSimilar(each, probes); });
}

} // namespace loops
} // namespace quillon
