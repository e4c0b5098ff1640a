// checksum_passes - one checksum of the verdicts of the scanner's passes over made-up tables, and
// of the search of the yaw table for made-up hips, the same from each compiler at each level of
// optimization; four_builds.sh compares them.
#include "reference/image_differential.h"
#include "reference/pass_differential.h"

#include <cstdio>

using namespace quillon::reference;

int main()
{
    std::uint64_t sum = 0;
    for (std::uint64_t seed = 1; seed <= 120; ++seed)
        sum = sum * 31 + checksumOf(fastVerdicts(tableOf(seed, 600))) + checksumOfImages(seed, 600);
    std::printf("%016llx\n", static_cast<unsigned long long>(sum));
    return 0;
}
