// match_differential.h - the list of matches, as it is found out and remembered, against its
// literal form: an index that is browsed under changing filters, changed and browsed again. Uses
// the pose index, the ranks with their file, the settings and the session of browsing.
#pragma once

#include "reference/index_tables.h"

#include <cstdint>
#include <string>

namespace quillon {
namespace reference {

struct MatchScene {
    const DzSkeleton* figure; // not null
    DzTime time;
    IndexModels models;
};
MatchScene matchScene(const DzSkeleton* figure, DzTime time);

// An index of 8 to mostEntries entries (exactly so many when isFull), counted for six states of
// filters, index and ranks. False with *why as "seed 7, 120 entries: ..." when a list differs. Adds
// the matches of all lists to *found (not null).
enum class IndexSize { Any, Full };
bool matchesAgree(const MatchScene& scene, std::uint64_t seed, int mostEntries, IndexSize size,
    long* found, std::string* why);

} // namespace reference
} // namespace quillon
