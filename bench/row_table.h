// row_table.h - what the programs that measure the Pose Finder print: rows with tabs between their
// cells, one header line, on stdout. Nothing else belongs there; words for people go to stderr.
//
//     row  n  ms  reference_ms  ratio  exponent  checksum  note
//
// ms is processor time, as the machine may have other work; "-" stands where there is nothing. A
// reference that was timed for a part and multiplied has a "~" before it. The ratio is reference by
// own time. The exponent is that of growth since the row of the same name before it.
// Owns: nothing; each program keeps its own table. Without Qt.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillon {
namespace bench {

struct Row {
    std::string name; // with what was measured on, such as "similar random"; no tabs
    long n = 0; // entries, bytes or files; 0: nothing
    double ms = -1; // below 0: nothing
    double referenceMs = -1; // of the form that the row is held against; below 0: nothing
    bool sampled = false; // the reference is extrapolated
    std::uint32_t checksum = 0; // of all results; 0: nothing
    std::string note; // plain words; a program that saw a wrong result says "DIFFERS" here
};

// The rows printed so far.
struct RowTable {
    std::vector<Row> rows;
};
void printHeader();
void printRow(const Row& row, RowTable* table);

// Milliseconds of processor time of this process, of all its threads; resolution 1 ns.
double processorMs();

// The fastest of some runs of one call.
template <typename Call> double fastestMs(int runs, Call call)
{
    double best = -1;
    for (int i = 0; i < runs; ++i) {
        const double start = processorMs();
        call();
        const double ms = processorMs() - start;
        best = best < 0 || ms < best ? ms : best;
    }
    return best;
}

// FNV-1a, a number at a time.
const std::uint32_t kNoSum = 2166136261u;
std::uint32_t addToSum(std::uint32_t sum, std::uint32_t number);

// Whether "--quick" is among the arguments, which is then taken out of them: small sizes, once,
// only to see whether the results are right.
bool takeQuick(int* argc, char** argv);

} // namespace bench
} // namespace quillon
