#include "reference/pass_reference.h"

#include <cmath>

namespace quillon {
namespace reference {

// ---- mirrored

// p and q: y and z of a slot.
static bool componentsMirror(const float* p, const float* q)
{
    return std::fabs(p[0] - (-q[0])) < 0.1f && std::fabs(p[1] - (-q[1])) < 0.1f;
}

static bool isMirrorOf(const MirrorRow& rowA, const MirrorRow& rowB)
{
    const float *a = rowA.yz, *b = rowB.yz;
    return componentsMirror(a, b) // hip
        && componentsMirror(a + 2, b + 2) // torso
        && componentsMirror(a + 4, b + 6) && componentsMirror(a + 6, b + 4) // shins
        && componentsMirror(a + 8, b + 10) && componentsMirror(a + 10, b + 8) // thighs
        && componentsMirror(a + 12, b + 14) && componentsMirror(a + 14, b + 12) // arms
        && componentsMirror(a + 16, b + 18) && componentsMirror(a + 18, b + 16); // forearms
}

// ---- similar

static float score(float distance, float tolerance)
{
    const float s = (distance - 0) / (tolerance - 0) * (0.0f - 1.0f) + 1;
    return s < 0 ? 0 : s > 1 ? 1 : s;
}

static float distance(const float* a, const float* b)
{
    const float x = a[0] - b[0], y = a[1] - b[1], z = a[2] - b[2];
    return std::sqrt(x * x + y * y + z * z);
}

static float partSimilarity(const float* a, const float* b)
{
    const float sY = score(distance(a, b), 0.5f);
    const float sZ = score(distance(a + 3, b + 3), 0.5f);
    if (sY <= 0.001f || sZ <= 0.001f)
        return -1000000;
    return sY < sZ ? sY : sZ;
}

static bool isSimilarPose(const SimilarRow& a, const SimilarRow& b)
{
    if (a.figureCode != b.figureCode)
        return false;
    for (int slot = 0; slot < 10; ++slot) {
        if (partSimilarity(a.images + slot * 6, b.images + slot * 6) < 0)
            return false;
    }
    return true;
}

// ---- the passes

template <typename Row>
static std::vector<int> passOf(
    const std::vector<Row>& rows, bool (*repeats)(const Row& earlier, const Row& later))
{
    std::vector<int> found(rows.size(), -1);
    for (int j = 0; j < int(rows.size()); ++j) {
        for (int i = 0; rows[j].takesPart && found[j] < 0 && i < j; ++i) {
            if (rows[i].takesPart && found[i] < 0 && repeats(rows[i], rows[j]))
                found[j] = i;
        }
    }
    return found;
}

std::vector<int> mirroredPass(const std::vector<MirrorRow>& rows)
{
    return passOf(rows, isMirrorOf);
}

std::vector<int> similarPass(const std::vector<SimilarRow>& rows)
{
    return passOf(rows, isSimilarPose);
}

} // namespace reference
} // namespace quillon
