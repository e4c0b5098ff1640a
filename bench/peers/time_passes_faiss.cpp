// time_passes_faiss [--quick] - the passes over mirrored and similar poses beside a flat range
// search of the FAISS library over the images of the similar ones, in the same run and on one
// thread. Prints the rows of row_table.h.
//
// All numbers of two similar poses together lie within the square root of twenty times 0.4995,
// which is the radius; what the search finds has still to be tested, outside of the time. It is
// asked for every kSampleStep-th entry of big tables, each against all, and the time multiplied and
// halved, as the passes hold an entry against earlier ones only. The verdicts that follow must be
// those of the passes, else the row says "DIFFER".
// Where all poses are alike the search finds all pairs, which have no room; so that is left out.
#include "bench/pass_kinds.h"
#include "bench/row_table.h"

#include <faiss/IndexFlat.h>
#include <faiss/impl/AuxIndexStructures.h>
#include <omp.h>

#include <algorithm>
#include <string>

using namespace quillon;
using namespace quillon::reference;

static const int kSizes[] = {1024, 8192, 65536};
static const int kQuickSizes[] = {512, 2048};
static const int kRuns = 3;
static const int kKinds = 3; // random and in clusters
static const int kFullSearch = 8192; // entries
static const int kSampleStep = 8;
static const int kQueriesAtOnce = 256;
static const int kNumbers = kPassSlots * kImageNumbers;
static const float kRadiusSquared = 2 * kPassSlots * 0.4995f * 0.4995f;

namespace {

struct Passed { // per entry
    std::vector<int> verdicts; // of the similar ones: the entry that is repeated, -1: none
    std::vector<bool> kept;
};

} // namespace

static Passed runPasses(const PassTable& table)
{
    std::vector<SimilarRow> rows = table.similar;
    MirrorPass mirrorPass(table.mirror);
    for (int entry = 0; entry < int(rows.size()); ++entry)
        rows[entry].takesPart = mirrorPass.firstMirrored(entry) == kNoMirror;
    SimilarPass similarPass(rows);
    Passed passed;
    for (int entry = 0; entry < int(rows.size()); ++entry) {
        passed.verdicts.push_back(similarPass.firstRepeated(entry));
        passed.kept.push_back(rows[entry].takesPart && passed.verdicts.back() == kNoRepeat);
    }
    return passed;
}

// ---- the peer

// Of what the search found near the entry, the first one kept that is similar to it.
static int firstFound(const PassTable& table, const Passed& passed, int entry,
    const faiss::Index::idx_t* found, std::size_t count)
{
    int first = entry;
    for (std::size_t i = 0; i < count; ++i) {
        const int each = int(found[i]);
        if (each < first && passed.kept[each]
            && areSimilarRows(table.similar[each], table.similar[entry]))
            first = each;
    }
    return first < entry ? first : kNoRepeat;
}

static bool agrees(const PassTable& table, const Passed& passed, int entry,
    const faiss::RangeSearchResult& found, std::size_t query)
{
    const std::size_t from = found.lims[query], to = found.lims[query + 1];
    const bool dropped = passed.verdicts[entry] != kNoRepeat;
    return (!dropped && !passed.kept[entry]) // by the pass before
        || firstFound(table, passed, entry, found.labels + from, to - from)
        == passed.verdicts[entry];
}

// Every step-th entry from 0 on, asked for in turn.
static std::vector<int> queriesOf(int count, int step)
{
    std::vector<int> queries;
    for (int entry = 0; entry < count; entry += step)
        queries.push_back(entry);
    return queries;
}

namespace {

struct FlatSearch {
    double ms;
    bool same; // as the passes' verdicts
};

} // namespace

static FlatSearch timeFlatSearch(const PassTable& table, const Passed& passed, int step)
{
    faiss::IndexFlatL2 index(kNumbers);
    for (const SimilarRow& row : table.similar)
        index.add(1, row.images);
    const std::vector<int> queries = queriesOf(int(table.similar.size()), step);
    FlatSearch search = {0, true};
    for (std::size_t from = 0; from < queries.size(); from += kQueriesAtOnce) {
        const std::size_t count = std::min(queries.size() - from, std::size_t(kQueriesAtOnce));
        std::vector<float> images;
        for (std::size_t i = from; i < from + count; ++i) {
            const float* own = table.similar[queries[i]].images;
            images.insert(images.end(), own, own + kNumbers);
        }
        faiss::RangeSearchResult found(count, true);
        search.ms += bench::fastestMs(
            1, [&] { index.range_search(long(count), images.data(), kRadiusSquared, &found); });
        for (std::size_t i = 0; i < count; ++i)
            search.same = search.same && agrees(table, passed, queries[from + i], found, i);
    }
    search.ms *= step / 2.0;
    return search;
}

// ---- rows

static bool printKind(const bench::PassKind& kind, int count, int runs, bench::RowTable* printed)
{
    const PassTable table = bench::tableOf(kind, count);
    Passed passed;
    bench::Row row;
    row.name = "both passes " + kind.name + ", FAISS flat";
    row.n = count;
    row.ms = bench::fastestMs(runs, [&] { passed = runPasses(table); });
    row.sampled = count > kFullSearch;
    row.checksum = bench::kNoSum;
    for (const int each : passed.verdicts)
        row.checksum = bench::addToSum(row.checksum, std::uint32_t(each));
    const FlatSearch search = timeFlatSearch(table, passed, row.sampled ? kSampleStep : 1);
    row.referenceMs = search.ms;
    row.note = search.same ? "FAISS " + std::to_string(FAISS_VERSION_MAJOR) + "."
            + std::to_string(FAISS_VERSION_MINOR) + "." + std::to_string(FAISS_VERSION_PATCH)
                           : "verdicts DIFFER";
    bench::printRow(row, printed);
    return search.same;
}

int main(int argc, char** argv)
{
    const bool quick = bench::takeQuick(&argc, argv);
    omp_set_num_threads(1);
    bench::RowTable printed;
    bool same = true;
    bench::printHeader();
    const std::vector<bench::PassKind> kinds = bench::passKinds(nullptr);
    for (int kind = 0; kind < kKinds; ++kind) {
        const int* sizes = quick ? kQuickSizes : kSizes;
        for (int i = 0; i < (quick ? 2 : 3); ++i)
            same = printKind(kinds[kind], sizes[i], quick ? 1 : kRuns, &printed) && same;
    }
    return same ? 0 : 1;
}
