// bench_passes_faiss - the pass over similar poses beside a flat range search of the FAISS library
// over the same images, in the same run. All numbers of two similar poses together lie within the
// square root of twenty times 0.4995, which is the radius; what the search finds would still have
// to be tested. Random signatures; the search is asked for every kSampleStep-th entry, each against
// all, and the half of the time multiplied, as the pass holds an entry against earlier ones only.
// Built by hand where the library is installed, with -Itests, -fopenmp, -lfaiss, a BLAS, and the
// files tests/reference/pass_tables.cpp, finder/{box_tree,box_tree_build,similar_pass}.cpp.
#include "reference/pass_tables.h"

#include <faiss/IndexFlat.h>
#include <faiss/impl/AuxIndexStructures.h>
#include <omp.h>

#include <algorithm>
#include <cstdio>
#include <ctime>

using namespace quillon;
using namespace quillon::reference;

static const int kSizes[] = {1024, 8192, 65536};
static const int kRuns = 3;
static const int kSampleStep = 8;
static const int kNumbers = kPassSlots * kImageNumbers;
static const float kRadiusSquared = 2 * kPassSlots * 0.4995f * 0.4995f;

static double nowMs() // of the processor, as the machine may have other work
{
    return double(std::clock()) * 1000 / CLOCKS_PER_SEC;
}

static void runPasses(const PassTable& table)
{
    std::vector<SimilarRow> rows = table.similar;
    MirrorPass mirrorPass(table.mirror);
    for (int entry = 0; entry < int(rows.size()); ++entry)
        rows[entry].takesPart = mirrorPass.firstMirrored(entry) == kNoMirror;
    SimilarPass similarPass(rows);
    for (int entry = 0; entry < int(rows.size()); ++entry)
        similarPass.firstRepeated(entry);
}

static double timePasses(const PassTable& table) // milliseconds of the fastest run
{
    double best = 0;
    for (int i = 0; i < kRuns; ++i) {
        const double start = nowMs();
        runPasses(table);
        const double ms = nowMs() - start;
        best = i == 0 ? ms : std::min(best, ms);
    }
    return best;
}

static double timeFlatSearch(const PassTable& table, int step)
{
    faiss::IndexFlatL2 index(kNumbers);
    std::vector<float> queries;
    for (std::size_t i = 0; i < table.similar.size(); ++i) {
        const float* images = table.similar[i].images;
        index.add(1, images);
        if (i % std::size_t(step) == 0)
            queries.insert(queries.end(), images, images + kNumbers);
    }
    const faiss::Index::idx_t count = faiss::Index::idx_t(queries.size()) / kNumbers;
    faiss::RangeSearchResult found(std::size_t(count), true);
    const double start = nowMs();
    index.range_search(count, queries.data(), kRadiusSquared, &found);
    return (nowMs() - start) * step / 2;
}

int main()
{
    omp_set_num_threads(1);
    std::printf(" count    passes ms     faiss ms    ratio\n");
    for (const int count : kSizes) {
        Dice dice {std::uint64_t(count)};
        const PassTable table = randomTable(count, &dice);
        const double passes = timePasses(table);
        const double faiss = timeFlatSearch(table, count > 8192 ? kSampleStep : 1);
        std::printf("%6d %12.2f %s%11.1f %8.1f\n", count, passes, count > 8192 ? "~" : " ", faiss,
            faiss / passes);
    }
    return 0;
}
