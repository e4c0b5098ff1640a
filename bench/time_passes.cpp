// time_passes [INDEX] [--quick] - the scanner's passes over mirrored and over similar poses, as
// the scan runs them, beside the plain loops they took the place of.
//
// Prints the rows of row_table.h: each pass and both, for each kind and size, the fastest of the
// runs; as a checksum that of the verdicts. Loops over more entries than kFullLoop are timed for
// every kSampleStep-th entry and the time multiplied. The loop's verdicts must be the same.
// --quick: small sizes once; says only whether the verdicts are the same.
#include "bench/pass_kinds.h"
#include "bench/pass_loops.h"
#include "bench/row_table.h"

#include <cstdio>
#include <string>

using namespace quillon;
using namespace quillon::reference;

static const int kSizes[] = {1024, 8192, 65536};
static const int kQuickSizes[] = {512, 2048};
static const int kRuns = 3;
static const int kFullLoop = 8192;
static const int kSampleStep = 32;

typedef std::vector<int> Verdicts; // the entry that is repeated, -1: none

// ---- the passes and their loops

static Verdicts runMirror(const PassTable& table)
{
    MirrorPass pass(table.mirror);
    Verdicts verdicts;
    for (int entry = 0; entry < int(table.mirror.size()); ++entry)
        verdicts.push_back(pass.firstMirrored(entry));
    return verdicts;
}

static Verdicts runSimilar(const PassTable& table)
{
    SimilarPass pass(table.similar);
    Verdicts verdicts;
    for (int entry = 0; entry < int(table.similar.size()); ++entry)
        verdicts.push_back(pass.firstRepeated(entry));
    return verdicts;
}

namespace {

struct LoopTime {
    double ms;
    bool same; // verdicts
};

} // namespace

// The loop over every step-th entry, each against what the pass had kept before it.
template <typename Kept, typename Row>
static LoopTime timeLoop(const std::vector<Row>& rows, const Verdicts& verdicts, int step,
    Kept (*keptOf)(const Row&), int (*firstOf)(const std::vector<Kept>&, int, const Kept&))
{
    std::vector<Kept> kept;
    std::vector<int> entries, counts;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        counts.push_back(int(kept.size()));
        if (rows[i].takesPart && verdicts[i] < 0) {
            kept.push_back(keptOf(rows[i]));
            entries.push_back(int(i));
        }
    }
    LoopTime time = {0, true};
    const double start = bench::processorMs();
    for (std::size_t i = std::size_t(step) / 2; i < rows.size(); i += std::size_t(step)) {
        const int at = rows[i].takesPart ? firstOf(kept, counts[i], keptOf(rows[i])) : -1;
        time.same = time.same && (at < 0 ? -1 : entries[at]) == verdicts[i];
    }
    time.ms = (bench::processorMs() - start) * step;
    return time;
}

static LoopTime loopMirror(const PassTable& table, const Verdicts& verdicts, int step)
{
    return timeLoop(table.mirror, verdicts, step, loops::marksOf, loops::firstMirrored);
}

static LoopTime loopSimilar(const PassTable& table, const Verdicts& verdicts, int step)
{
    return timeLoop(table.similar, verdicts, step, loops::probesOf, loops::firstSimilar);
}

namespace {

struct Pass {
    Verdicts (*run)(const PassTable&);
    LoopTime (*loop)(const PassTable&, const Verdicts&, int step);
};

const Pass kMirrored = {runMirror, loopMirror};
const Pass kSimilar = {runSimilar, loopSimilar};

struct Result {
    double ms = 0, loopMs = 0;
    long dropped = 0;
    std::uint32_t checksum = bench::kNoSum;
    bool same = true;
};

} // namespace

// ---- one row

static void addVerdicts(const Verdicts& verdicts, Result* result)
{
    for (const int each : verdicts) {
        result->dropped += each >= 0;
        result->checksum = bench::addToSum(result->checksum, std::uint32_t(each));
    }
}

static Result timePass(const Pass& pass, const PassTable& table, int runs)
{
    Result result;
    Verdicts verdicts;
    result.ms = bench::fastestMs(runs, [&] { verdicts = pass.run(table); });
    addVerdicts(verdicts, &result);
    const int step = int(table.mirror.size()) > kFullLoop ? kSampleStep : 1;
    const LoopTime loop = pass.loop(table, verdicts, step);
    result.loopMs = loop.ms;
    result.same = loop.same;
    return result;
}

static void dropMirrored(PassTable* table)
{
    const Verdicts verdicts = runMirror(*table);
    for (std::size_t i = 0; i < verdicts.size(); ++i)
        table->similar[i].takesPart = table->similar[i].takesPart && verdicts[i] < 0;
}

static Result sumOf(const Result& a, const Result& b)
{
    Result sum;
    sum.ms = a.ms + b.ms;
    sum.loopMs = a.loopMs + b.loopMs;
    sum.dropped = a.dropped + b.dropped;
    sum.checksum = a.checksum * 31 + b.checksum;
    sum.same = a.same && b.same;
    return sum;
}

static bench::Row rowOf(const std::string& name, int count, const Result& result)
{
    bench::Row row;
    row.name = name;
    row.n = count;
    row.ms = result.ms;
    row.referenceMs = result.loopMs;
    row.sampled = count > kFullLoop;
    row.checksum = result.checksum;
    row.note = result.same ? std::to_string(result.dropped) + " dropped" : "verdicts DIFFER";
    return row;
}

static bool runKind(const bench::PassKind& kind, int count, int runs, bench::RowTable* printed)
{
    PassTable table = bench::tableOf(kind, count);
    const Result mirrored = timePass(kMirrored, table, runs);
    dropMirrored(&table);
    const Result similar = timePass(kSimilar, table, runs);
    const Result both = sumOf(mirrored, similar);
    if (printed) {
        bench::printRow(rowOf("mirrored " + kind.name, count, mirrored), printed);
        bench::printRow(rowOf("similar " + kind.name, count, similar), printed);
        bench::printRow(rowOf("both passes " + kind.name, count, both), printed);
    }
    return both.same;
}

int main(int argc, char** argv)
{
    const bool quick = bench::takeQuick(&argc, argv);
    bench::RowTable printed;
    bool same = true;
    if (!quick)
        bench::printHeader();
    for (const bench::PassKind& kind : bench::passKinds(argc > 1 ? argv[1] : nullptr)) {
        const int* sizes = quick ? kQuickSizes : kSizes;
        for (int i = 0; i < (quick ? 2 : 3); ++i)
            same = runKind(kind, sizes[i], quick ? 1 : kRuns, quick ? nullptr : &printed) && same;
    }
    std::fprintf(stderr, "%s\n", same ? "all verdicts are those of the loops" : "VERDICTS DIFFER");
    return same ? 0 : 1;
}
