#include "bench/row_table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <time.h>

namespace quillon {
namespace bench {

// ---- rows

static std::string cell(const char* format, double value, bool known)
{
    char text[64] = "-";
    if (known)
        std::snprintf(text, sizeof text, format, value);
    return text;
}

// Four digits that count, without an exponent.
static std::string msCell(double ms)
{
    const int digits = ms < 0.01 ? 6 : ms < 1 ? 4 : ms < 100 ? 3 : 1;
    const char format[] = {'%', '.', char('0' + digits), 'f', '\0'};
    return cell(format, ms, ms >= 0);
}

static std::string ratioCell(const Row& row)
{
    const double ratio = row.referenceMs / row.ms;
    return cell(ratio < 1 ? "%.3f" : "%.1f", ratio, row.ms > 0 && row.referenceMs >= 0);
}

static std::string exponentCell(const Row& row, const RowTable& table)
{
    const auto before = std::find_if(table.rows.rbegin(), table.rows.rend(),
        [&row](const Row& each) { return each.name == row.name; });
    const bool known = before != table.rows.rend() && before->n > 0 && row.n > before->n
        && before->ms > 0 && row.ms > 0;
    if (!known)
        return "-";
    return cell("%.2f", std::log(row.ms / before->ms) / std::log(double(row.n) / before->n), true);
}

static std::string sumCell(std::uint32_t checksum)
{
    char text[16];
    std::snprintf(text, sizeof text, "%08x", checksum);
    return checksum ? text : "-";
}

void printHeader()
{
    std::printf("row\tn\tms\treference_ms\tratio\texponent\tchecksum\tnote\n");
}

void printRow(const Row& row, RowTable* table)
{
    const std::string cells[] = {row.name, cell("%.0f", double(row.n), row.n > 0), msCell(row.ms),
        (row.sampled ? "~" : "") + msCell(row.referenceMs), ratioCell(row),
        exponentCell(row, *table), sumCell(row.checksum), row.note.empty() ? "-" : row.note};
    std::string line;
    for (const std::string& each : cells)
        line += (line.empty() ? "" : "\t") + each;
    std::puts(line.c_str());
    std::fflush(stdout);
    table->rows.push_back(row);
}

// ---- time, sums, arguments

double processorMs()
{
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

std::uint32_t addToSum(std::uint32_t sum, std::uint32_t number)
{
    return (sum ^ number) * 16777619u;
}

bool takeQuick(int* argc, char** argv)
{
    char** end = argv + *argc;
    char** kept = std::remove_if(
        argv + 1, end, [](const char* each) { return std::strcmp(each, "--quick") == 0; });
    *argc = int(kept - argv);
    return kept != end;
}

} // namespace bench
} // namespace quillon
