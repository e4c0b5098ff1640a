// pass_loops.h - the scanner's passes as plain loops with an early end, which the trees of finder/
// took the place of; kept to be timed beside them. Without Qt.
#pragma once

#include "finder/mirror_pass.h"
#include "finder/similar_pass.h"

#include <vector>

namespace quillon {
namespace loops {

// The kept entries lie side by side as each loop found them in its day. Each call holds an entry
// against those of the first `count` ones and gives the first it repeats, as a position; -1: none.
struct Marks {
    float y[kPassSlots], z[kPassSlots];
};
Marks marksOf(const MirrorRow& row);
int firstMirrored(const std::vector<Marks>& kept, int count, const Marks& marks);

struct Vector {
    float x, y, z, w; // w as of the host's vectors
};
struct Probes {
    unsigned figureCode;
    struct {
        Vector y, z;
    } slot[kPassSlots];
};
Probes probesOf(const SimilarRow& row);
int firstSimilar(const std::vector<Probes>& kept, int count, const Probes& probes);

} // namespace loops
} // namespace quillon
