// pass_tables.h - made-up signatures for the scanner's passes: random, in clusters, and such as lie
// on the very edge of what the passes tell apart. The same seed gives the same table everywhere.
// Without Qt.
#pragma once

#include "finder/mirror_pass.h"
#include "finder/similar_pass.h"

#include <cstdint>
#include <vector>

namespace quillon {
namespace reference {

// Numbers that no library makes differently.
class Dice {
public:
    explicit Dice(std::uint64_t seed);
    std::uint32_t below(std::uint32_t count);
    double unit(); // [0, 1)
    double normal();

private:
    std::uint64_t m_state;
};

struct Quat {
    double x, y, z, w;
};
struct Signature {
    Quat slot[kPassSlots];
};
Signature randomSignature(Dice* dice);
// Normal noise on each component of each quaternion, made unit length again.
Signature noisy(const Signature& signature, double noise, Dice* dice);

// What the passes look at. All entries take part and are for one figure.
struct PassTable {
    std::vector<MirrorRow> mirror;
    std::vector<SimilarRow> similar;
};
void addSignature(const Signature& signature, PassTable* table);

PassTable randomTable(int count, Dice* dice);
PassTable clusteredTable(
    int count, const std::vector<Signature>& centres, double noise, Dice* dice);

// Random and clustered entries, copies, turned and mirrored ones, numbers moved to within a few
// units in the last place of a limit, numbers that are none, two figures, entries that are out.
PassTable adversarialTable(int count, Dice* dice);

} // namespace reference
} // namespace quillon
