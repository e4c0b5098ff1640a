// mirror_pass.h - which poses of a scan are an earlier one, that was kept, with left and right
// exchanged.
//
// Of each slot only the components y and z are looked at; each must be nearly the negative of that
// of the other side. A pose that mirrors a kept one is not kept itself.
// Owns: what was kept so far.
#pragma once

#include "finder/box_tree.h"

#include <vector>

namespace quillon {

const int kMirrorSlots = 10; // in the order of a signature
const int kNoMirror = -1;

struct MirrorRow {
    bool takesPart; // neither dropped before nor of the custom library
    float yz[kMirrorSlots * 2]; // y and z of each slot
};

bool areMirroredRows(const MirrorRow& a, const MirrorRow& b);

class MirrorPass {
public:
    explicit MirrorPass(std::vector<MirrorRow> rows);

    // To be asked once of each entry, from 0 on. The first of the entries kept so far that this one
    // mirrors; kNoMirror if there is none, and for an entry that does not take part.
    int firstMirrored(int entry);

private:
    std::vector<MirrorRow> m_rows;
    PointRows m_points;
    std::vector<int> m_leafOf; // by entry; -1: in no tree and mirrored by nothing
    BoxTree m_kept;
};

} // namespace quillon
