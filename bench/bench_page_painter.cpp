// A full repaint of each page, artwork already scaled for the size, and the first repaint after a
// change of size. Limits: 8 ms at 1080 x 2160, 2 ms at 400 x 800.
#include "pane/artwork.h"
#include "pane/hover.h"
#include "pane/page_painter.h"
#include "finder/browse_session.h"
#include "pane/page_state.h"
#include "pane/scaled_artwork.h"
#include "ground/version_text.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>

using namespace quillon;

namespace {

void showPage(int page)
{
    pageState().picker = page == 1;
    browseSession().type = page == 2 ? 8 : kNotBrowsing;
}

void repaint(QImage* canvas)
{
    QPainter painter(canvas);
    paintPage(&painter, canvas->size());
}

// A fold over all pixels: painting less cannot pass for speed.
double checksumOf(const QImage& image)
{
    quint32 sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        const QRgb* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            sum = sum * 33 + row[x];
    }
    return sum;
}

void repaintPage(benchmark::State& state)
{
    showPage(int(state.range(0)));
    QImage canvas(int(state.range(1)), int(state.range(2)), QImage::Format_ARGB32_Premultiplied);
    updateHover(canvas.size(), QPoint(canvas.width() / 8, canvas.height() * 3 / 10));
    repaint(&canvas);
    for (auto _ : state)
        repaint(&canvas);
    state.counters["checksum"] = checksumOf(canvas);
}

void repaintAfterResize(benchmark::State& state)
{
    showPage(int(state.range(0)));
    QImage canvas(int(state.range(1)), int(state.range(2)), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        dropScaledArtwork();
        repaint(&canvas);
    }
    state.counters["checksum"] = checksumOf(canvas);
}

void pagesAndSizes(benchmark::internal::Benchmark* b)
{
    for (int page = 0; page < 3; ++page) {
        b->Args({page, 400, 800});
        b->Args({page, 1080, 2160});
    }
    b->ArgNames({"page", "w", "h"})->Unit(benchmark::kMillisecond);
}

BENCHMARK(repaintPage)->Apply(pagesAndSizes);
BENCHMARK(repaintAfterResize)->Apply(pagesAndSizes);

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    decodeArtwork();
    buildVersionText();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
