// common_row.h - the row form that timed programs share, tab separated, a header line first:
// row, n, ms, reference_ms, ratio, exponent, checksum, note. Processor time; "-" where there is
// nothing, "~" before a reference that was extrapolated from a part.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace quillon {

struct CommonRow {
    std::string name;
    long n = 0;
    double ms = 0;
    double referenceMs = -1; // below 0: none
    bool isExtrapolated = false;
    double exponent = 0; // 0: none
    std::uint32_t checksum = 0;
    std::string note = "-";
};

inline void printHeader()
{
    std::printf("row\tn\tms\treference_ms\tratio\texponent\tchecksum\tnote\n");
}

inline void printRow(const CommonRow& row)
{
    std::printf("%s\t%ld\t%.4f\t", row.name.c_str(), row.n, row.ms);
    if (row.referenceMs >= 0)
        std::printf("%s%.4f\t%.1f\t", row.isExtrapolated ? "~" : "", row.referenceMs,
            row.referenceMs / row.ms);
    else
        std::printf("-\t-\t");
    if (row.exponent != 0)
        std::printf("%.2f\t", row.exponent);
    else
        std::printf("-\t");
    std::printf("%08x\t%s\n", row.checksum, row.note.c_str());
    std::fflush(stdout);
}

inline double processorMs()
{
    return double(std::clock()) * 1000 / CLOCKS_PER_SEC;
}

// The median of several runs, each repeated until it has lasted; what one repetition took.
template <typename Work> double medianMs(Work work)
{
    static const int kRuns = 7;
    static const double kLeastMs = 4;
    std::vector<double> runs;
    for (int run = 0; run < kRuns; ++run) {
        const double start = processorMs();
        int times = 0;
        do {
            work();
            ++times;
        } while (processorMs() - start < kLeastMs);
        runs.push_back((processorMs() - start) / times);
    }
    std::sort(runs.begin(), runs.end());
    return runs[runs.size() / 2];
}

// How the time grew from one size to the next.
inline double exponentOf(double ms, long n, double msBefore, long nBefore)
{
    return std::log(ms / msBefore) / std::log(double(n) / double(nBefore));
}

} // namespace quillon
