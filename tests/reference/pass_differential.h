// pass_differential.h - holds the scanner's passes against their literal forms on made-up tables.
// Without Qt.
#pragma once

#include "reference/pass_tables.h"

#include <cstdint>
#include <string>

namespace quillon {
namespace reference {

// The passes one after the other: what the first drops takes no part in the second. Per entry the
// one that it repeats, -1: none.
struct PassVerdicts {
    std::vector<int> mirrored, similar;
};
PassVerdicts fastVerdicts(PassTable table);
PassVerdicts literalVerdicts(PassTable table);
std::uint64_t checksumOf(const PassVerdicts& verdicts);

// A table of the kind, the size (1 to mostEntries) and the content that the seed stands for.
PassTable tableOf(std::uint64_t seed, int mostEntries);

// False with *why as "seed 7, 120 entries: ..." when one verdict differs.
bool passesAgree(std::uint64_t seed, int mostEntries, std::string* why);
bool verdictsAgree(const PassTable& table, std::string* why);

} // namespace reference
} // namespace quillon
