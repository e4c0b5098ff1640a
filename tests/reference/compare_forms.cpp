// compare_passes [TABLES [MOST [SEED]]] - the scanner's passes against their literal forms on so
// many tables (1000) of up to so many entries (2000), from the seed on (1), and, if there are 1000
// or more, on one of 65,536. Says how many entries were dropped, and the seed if a verdict differs.
#include "reference/pass_differential.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace quillon;
using namespace quillon::reference;

static const int kFullIndex = 65536;

static bool fullTableAgrees(std::uint64_t seed, std::string* why)
{
    Dice dice(seed);
    PassTable table = adversarialTable(kFullIndex / 4, &dice);
    const PassTable unlike = randomTable(kFullIndex - kFullIndex / 4, &dice);
    table.mirror.insert(table.mirror.end(), unlike.mirror.begin(), unlike.mirror.end());
    table.similar.insert(table.similar.end(), unlike.similar.begin(), unlike.similar.end());
    if (verdictsAgree(table, why))
        return true;
    *why = "seed " + std::to_string(seed) + ", " + *why;
    return false;
}

static long dropped(const std::vector<int>& verdicts)
{
    return long(
        std::count_if(verdicts.begin(), verdicts.end(), [](int each) { return each >= 0; }));
}

int main(int argc, char** argv)
{
    const int tables = argc > 1 ? std::atoi(argv[1]) : 1000;
    const int most = argc > 2 ? std::atoi(argv[2]) : 2000;
    const std::uint64_t seed = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 1;
    std::string why;
    long mirrored = 0, similar = 0;
    for (int i = 0; i < tables; ++i) {
        if (!passesAgree(seed + std::uint64_t(i), most, &why)) {
            std::fprintf(stderr, "%s\n", why.c_str());
            return 1;
        }
        const PassVerdicts verdicts = fastVerdicts(tableOf(seed + std::uint64_t(i), most));
        mirrored += dropped(verdicts.mirrored);
        similar += dropped(verdicts.similar);
    }
    std::printf("%d tables agree; dropped: %ld mirrored, %ld similar\n", tables, mirrored, similar);
    if (tables >= 1000 && !fullTableAgrees(seed, &why)) {
        std::fprintf(stderr, "%s\n", why.c_str());
        return 1;
    }
    return 0;
}
