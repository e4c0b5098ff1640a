#include "bench/picture_rows.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <vector>

#include <zlib.h>

namespace quillon {

static double ownThreadMs()
{
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

static Times timeOnce(const std::function<void()>& run)
{
    const auto wall = std::chrono::steady_clock::now();
    const double own = ownThreadMs();
    const std::clock_t start = std::clock();
    run();
    const std::clock_t end = std::clock();
    const double ownMs = ownThreadMs() - own;
    const std::chrono::duration<double, std::milli> passed
        = std::chrono::steady_clock::now() - wall;
    return {double(end - start) * 1000 / CLOCKS_PER_SEC, ownMs, passed.count()};
}

Times timeAt(double place, int runs, const std::function<void()>& run)
{
    std::vector<double> ms, ownMs, wallMs;
    for (int i = 0; i < runs; ++i) {
        const Times each = timeOnce(run);
        ms.push_back(each.ms);
        ownMs.push_back(each.ownMs);
        wallMs.push_back(each.wallMs);
    }
    for (std::vector<double>* each : {&ms, &ownMs, &wallMs})
        std::sort(each->begin(), each->end());
    const std::size_t at = std::size_t(place * runs);
    return {ms[at], ownMs[at], wallMs[at]};
}

quint32 crcOf(const QImage& image, quint32 before)
{
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    uLong crc = before;
    for (int y = 0; y < pixels.height(); ++y)
        crc = crc32(crc, pixels.constScanLine(y), uInt(pixels.width() * 4));
    return quint32(crc);
}

bool agrees(const PictureRow& row)
{
    return row.literal.ms == 0 || row.crc == row.literalCrc;
}

void printHeader()
{
    std::printf("row\tn\tms\treference_ms\tratio\texponent\tchecksum\tnote\n");
}

void print(const PictureRow& row, const PictureRow* before)
{
    const bool isWall = row.clock == Clock::Wall;
    std::printf("%s\t%.0f\t%.2f\t", row.name, row.n, isWall ? row.now.wallMs : row.now.ms);
    if (row.literal.ms > 0)
        std::printf("%.2f\t%.2f\t", row.literal.ms, row.literal.ms / row.now.ms);
    else
        std::printf("-\t-\t");
    if (before)
        std::printf("%.2f\t", std::log(row.now.ms / before->now.ms) / std::log(row.n / before->n));
    else
        std::printf("-\t");
    std::printf("%08x\town thread %.2f, %s %.2f ms%s\n", row.crc, row.now.ownMs,
        isWall ? "processor" : "wall", isWall ? row.now.ms : row.now.wallMs,
        agrees(row) ? "" : "; the literal form draws other bytes");
    std::fflush(stdout);
}

} // namespace quillon
