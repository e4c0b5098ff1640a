#include "reference/pass_differential.h"

#include "reference/pass_reference.h"

#include <algorithm>
#include <cstddef>

namespace quillon {
namespace reference {

// ---- verdicts

static void dropMirrored(const std::vector<int>& mirrored, std::vector<SimilarRow>* rows)
{
    for (std::size_t i = 0; i < rows->size(); ++i)
        (*rows)[i].takesPart = (*rows)[i].takesPart && mirrored[i] < 0;
}

PassVerdicts fastVerdicts(PassTable table)
{
    PassVerdicts verdicts;
    const int count = int(table.mirror.size());
    MirrorPass mirrorPass(table.mirror);
    for (int entry = 0; entry < count; ++entry)
        verdicts.mirrored.push_back(mirrorPass.firstMirrored(entry));
    dropMirrored(verdicts.mirrored, &table.similar);
    SimilarPass similarPass(table.similar);
    for (int entry = 0; entry < count; ++entry)
        verdicts.similar.push_back(similarPass.firstRepeated(entry));
    return verdicts;
}

PassVerdicts literalVerdicts(PassTable table)
{
    PassVerdicts verdicts;
    verdicts.mirrored = reference::mirroredPass(table.mirror);
    dropMirrored(verdicts.mirrored, &table.similar);
    verdicts.similar = reference::similarPass(table.similar);
    return verdicts;
}

static std::uint64_t mixed(std::uint64_t sum, const std::vector<int>& numbers)
{
    for (const int each : numbers)
        sum = (sum ^ std::uint64_t(std::uint32_t(each))) * 1099511628211u;
    return sum;
}

std::uint64_t checksumOf(const PassVerdicts& verdicts)
{
    return mixed(mixed(14695981039346656037u, verdicts.mirrored), verdicts.similar);
}

// ---- comparing

static bool sameNumbers(const char* pass, const std::vector<int>& fast,
    const std::vector<int>& literal, std::string* why)
{
    const auto different = std::mismatch(literal.begin(), literal.end(), fast.begin());
    if (different.first == literal.end())
        return true;
    *why = std::to_string(fast.size()) + " entries: " + pass + " of entry "
        + std::to_string(different.first - literal.begin()) + " is "
        + std::to_string(*different.second) + " and literally " + std::to_string(*different.first);
    return false;
}

bool verdictsAgree(const PassTable& table, std::string* why)
{
    const PassVerdicts fast = fastVerdicts(table), literal = literalVerdicts(table);
    return sameNumbers("mirrored", fast.mirrored, literal.mirrored, why)
        && sameNumbers("similar", fast.similar, literal.similar, why);
}

// ---- tables by seed

static PassTable clusters(int count, Dice* dice)
{
    std::vector<Signature> centres(1 + dice->below(30));
    for (Signature& centre : centres)
        centre = randomSignature(dice);
    return clusteredTable(count, centres, 0.3 * dice->unit(), dice);
}

// As of people that stand: most slots are near the identity.
static PassTable uprights(int count, Dice* dice)
{
    Signature upright;
    for (Quat& q : upright.slot)
        q = Quat {0, 0, 0, 1};
    std::vector<Signature> centres(1 + dice->below(60), upright);
    for (Signature& centre : centres) {
        for (std::uint32_t i = dice->below(5); i > 0; --i) {
            const std::uint32_t slot = dice->below(kPassSlots);
            centre.slot[slot] = randomSignature(dice).slot[slot];
        }
    }
    return clusteredTable(count, centres, 0.2 * dice->unit(), dice);
}

PassTable tableOf(std::uint64_t seed, int mostEntries)
{
    Dice dice(seed);
    const int count = 1 + int(dice.below(std::uint32_t(mostEntries)));
    switch (seed % 6) {
    case 0:
        return randomTable(count, &dice);
    case 1:
        return clusters(count, &dice);
    case 2:
        return uprights(count, &dice);
    default:
        return adversarialTable(count, &dice);
    }
}

bool passesAgree(std::uint64_t seed, int mostEntries, std::string* why)
{
    if (verdictsAgree(tableOf(seed, mostEntries), why))
        return true;
    *why = "seed " + std::to_string(seed) + ", " + *why;
    return false;
}

} // namespace reference
} // namespace quillon
