// pass_kinds.h - what the scanner's passes are timed on: random poses, poses in clusters, and poses
// that are all alike. The same everywhere but for the clusters about the poses of an index file.
// Owns: nothing. Without Qt.
#pragma once

#include "reference/pass_tables.h"

#include <string>
#include <vector>

namespace quillon {
namespace bench {

// Normal noise on each component of each quaternion of a centre; without centres: random poses.
struct PassKind {
    std::string name;
    std::vector<reference::Signature> centres;
    double noise;
};

// "random"; "clusters 0.18" and "clusters 0.1" about 400 random centres; with the path of a pose
// index file "index 0.18" and "index 0.1" about its poses, none when it cannot be read; "one
// cluster 0.14", 0.1, 0.05 and 0.02 about the identity: of these the first is the worst for the
// trees, as the poses lie about as far apart as similar ones may. indexPath may be null.
std::vector<PassKind> passKinds(const char* indexPath);

reference::PassTable tableOf(const PassKind& kind, int count); // the same for the same count

} // namespace bench
} // namespace quillon
