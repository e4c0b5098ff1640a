// compare_forms [TABLES [MOST [SEED]]] - the Pose Finder's fast forms against their literal ones,
// on so many tables (1000) of up to so many entries (2000), from the seed on (1): the scanner's
// passes, what is near a figure's orientation, the matches of browsing, and words, figure code and
// hash of texts of up to 32 bytes an entry. With 1000 tables or more also one each of 65,536
// entries, and of 512 KiB. Says for each how much was found. Ends with 1 and tells the seed if a
// result differs.
#include "finder_fixture.h"

#include "reference/image_differential.h"
#include "reference/match_differential.h"
#include "reference/pass_differential.h"
#include "reference/text_differential.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace quillon;
using namespace quillon::reference;

namespace {
struct Extent {
    int tables, mostEntries;
    std::uint64_t firstSeed;
    bool hasFull;
    std::uint64_t end() const
    {
        return firstSeed + std::uint64_t(tables);
    }
};
} // namespace

static const int kFullIndex = 65536;
static const int kFullText = 512 * 1024;

static void tell(const Extent& extent, const char* what, const std::string& found)
{
    std::printf("%s: %d %sagree; %s\n", what, extent.tables,
        extent.hasFull ? "and a full one " : "", found.c_str());
    std::fflush(stdout);
}

// ---- the passes

static long dropped(const std::vector<int>& verdicts)
{
    return long(
        std::count_if(verdicts.begin(), verdicts.end(), [](int each) { return each >= 0; }));
}

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

static bool comparePasses(const Extent& extent, std::string* why)
{
    long mirrored = 0, similar = 0;
    for (std::uint64_t seed = extent.firstSeed; seed < extent.end(); ++seed) {
        if (!passesAgree(seed, extent.mostEntries, why))
            return false;
        const PassVerdicts verdicts = fastVerdicts(tableOf(seed, extent.mostEntries));
        mirrored += dropped(verdicts.mirrored);
        similar += dropped(verdicts.similar);
    }
    if (extent.hasFull && !fullTableAgrees(extent.firstSeed, why))
        return false;
    tell(extent, "passes",
        std::to_string(mirrored) + " mirrored and " + std::to_string(similar) + " similar");
    return true;
}

// ---- browsing

static bool compareImages(const Extent& extent, std::string* why)
{
    for (std::uint64_t seed = extent.firstSeed; seed < extent.end(); ++seed) {
        if (!imagesAgree(seed, extent.mostEntries, why))
            return false;
    }
    if (extent.hasFull && !imagesAgree(extent.firstSeed, kFullIndex, why))
        return false;
    tell(extent, "orientations", "up to " + std::to_string(extent.mostEntries) + " each");
    return true;
}

static bool compareMatches(const Extent& extent, std::string* why)
{
    FinderFixture f;
    const MatchScene scene = matchScene(f.figure, f.time());
    long found = 0;
    for (std::uint64_t seed = extent.firstSeed; seed < extent.end(); ++seed) {
        if (!matchesAgree(scene, seed, extent.mostEntries, IndexSize::Any, &found, why))
            return false;
    }
    if (extent.hasFull
        && !matchesAgree(scene, extent.firstSeed, kFullIndex, IndexSize::Full, &found, why))
        return false;
    tell(extent, "matches", std::to_string(found) + " in six lists each");
    return true;
}

// ---- texts

static bool compareTexts(const Extent& extent, std::string* why)
{
    static const int kBytesPerEntry = 32;
    long bodies = 0;
    for (std::uint64_t seed = extent.firstSeed; seed < extent.end(); ++seed) {
        if (!textsAgree(seed, extent.mostEntries * kBytesPerEntry, &bodies, why))
            return false;
    }
    if (extent.hasFull && !textsAgree(extent.firstSeed, kFullText, &bodies, why))
        return false;
    tell(extent, "texts", std::to_string(bodies) + " of a body");
    return true;
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Extent extent;
    extent.tables = argc > 1 ? std::atoi(argv[1]) : 1000;
    extent.mostEntries = std::max(8, argc > 2 ? std::atoi(argv[2]) : 2000);
    extent.firstSeed = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 1;
    extent.hasFull = extent.tables >= 1000;
    std::string why;
    for (const auto compare : {compareTexts, compareImages, compareMatches, comparePasses}) {
        if (!compare(extent, &why)) {
            std::fprintf(stderr, "%s\n", why.c_str());
            return 1;
        }
    }
    return 0;
}
