// time_drawing [--quick] - drawing beside its literal forms: the pane after a change of its size,
// all pieces of the artwork at a new size, and the scene's picture.
//
// Prints tab-separated rows: what, how many pixels (n), milliseconds, those of the literal form,
// their ratio, the exponent of growth since the row before of the same name, and a CRC of the
// picture. Milliseconds are of the processor, in all threads together, the fastest run; those of
// the thread that draws and the wall's stand in the note. Both forms must draw the same bytes.
// --quick: each once; says only whether the bytes are the same.
#include "art/atlas_table.h"
#include "bench/picture_rows.h"
#include "finder/browse_session.h"
#include "ground/version_text.h"
#include "host/figures/figure_loader.h"
#include "pane/artwork.h"
#include "pane/page_painter.h"
#include "pane/page_state.h"
#include "pane/scaled_artwork.h"
#include "reference/figure_renderer_reference.h"
#include "reference/scaled_artwork_reference.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QApplication>
#include <QPainter>

#include <cstdio>
#include <cstring>
#include <functional>

using namespace quillon;

static const int kRuns = 15;
static bool g_quick = false;
static bool g_same = true;

static Times fastest(const std::function<void()>& run)
{
    return timeAt(0, g_quick ? 1 : kRuns, run);
}

static void take(const PictureRow& row, const PictureRow* before)
{
    g_same = g_same && agrees(row);
    if (!g_quick)
        print(row, before);
}

// ---- the pane ----------------------------------------------------------------------------------

static const QSize kPaneSizes[] = {{400, 800}, {1080, 2160}};
static const char* const kPageRows[] = {"resize_main", "resize_picker", "resize_browsing"};

static void paintPane(QImage* canvas)
{
    QPainter painter(canvas);
    paintPage(&painter, canvas->size());
}

static void timePages()
{
    for (int page = 0; page < 3; ++page) {
        pageState().picker = page == 1;
        browseSession().type = page == 2 ? 8 : kNotBrowsing;
        PictureRow before;
        for (const QSize& size : kPaneSizes) {
            QImage canvas(size, QImage::Format_ARGB32_Premultiplied);
            const Times now = fastest([&] {
                dropScaledArtwork();
                paintPane(&canvas);
            });
            const PictureRow row = {kPageRows[page], double(size.width()) * size.height(), now,
                Times(), crcOf(canvas), 0};
            take(row, &size == kPaneSizes ? nullptr : &before);
            before = row;
        }
    }
    pageState() = PageState();
    browseSession() = BrowseSession();
}

// Every piece of the artwork, as large as it is in a pane of that width.
typedef std::function<void(const AtlasCell&, const QRect&)> DrawPiece;

static void drawPieces(int paneWidth, const DrawPiece& draw)
{
    for (int i = 0; i < kAtlasCellCount; ++i) {
        const AtlasCell& cell = kAtlasCells[i];
        const int unit = kAtlasScale * 512;
        draw(cell, QRect(0, 0, cell.w * paneWidth / unit, cell.h * paneWidth / unit));
    }
}

static quint32 crcOfPieces(int paneWidth, const DrawPiece& draw, QImage* canvas)
{
    quint32 crc = 0;
    drawPieces(paneWidth, [&](const AtlasCell& cell, const QRect& place) {
        canvas->fill(Qt::transparent);
        draw(cell, place);
        crc = crcOf(canvas->copy(place), crc);
    });
    return crc;
}

static void timePieces()
{
    PictureRow before;
    for (const QSize& size : kPaneSizes) {
        QImage canvas(size, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&canvas);
        const DrawPiece drawNow = [&](const AtlasCell& cell, const QRect& place) {
            drawArtwork(&painter, place, cell.button, cell.state);
        };
        const DrawPiece drawLiteral = [&](const AtlasCell& cell, const QRect& place) {
            const QPixmap page = picture(Picture(int(Picture::MainPage) + int(cell.image)));
            painter.drawImage(place.topLeft(),
                reference::scaledPiece(
                    page.toImage(), QRect(cell.x, cell.y, cell.w, cell.h), place.size()));
        };
        const Times now = fastest([&] {
            dropScaledArtwork();
            drawPieces(size.width(), drawNow);
        });
        const Times literal = fastest([&] { drawPieces(size.width(), drawLiteral); });
        const PictureRow row = {"artwork", double(size.width()) * size.height(), now, literal,
            crcOfPieces(size.width(), drawNow, &canvas),
            crcOfPieces(size.width(), drawLiteral, &canvas)};
        take(row, &size == kPaneSizes ? nullptr : &before);
        before = row;
    }
}

// ---- the scene's picture -----------------------------------------------------------------------

static const QSize kSceneSizes[] = {{380, 390}, {760, 780}, {1520, 1560}};

static void poseFigure(DzSkeleton* figure)
{
    figure->findBone(QLatin1String("lShldrBend"))->getZRotControl()->setValue(-50);
    figure->findBone(QLatin1String("rForearmBend"))->getYRotControl()->setValue(80);
    figure->findBone(QLatin1String("lThighBend"))->getXRotControl()->setValue(-60);
    figure->findBone(QLatin1String("lShin"))->getXRotControl()->setValue(70);
    figure->findBone(QLatin1String("head"))->getYRotControl()->setValue(20);
}

static void timeScene(const char* rowName, const char* figureName, bool selected)
{
    DzUndoStack undoStack;
    DzScene scene;
    QString why;
    DzFigure* figure = loadFigure(QLatin1String(figureName), &why);
    if (!figure)
        qFatal("%s", qPrintable(why));
    scene.addNode(figure);
    figure->select(selected);
    poseFigure(figure);
    Camera camera;
    camera.yawDeg = 20;
    PictureRow before;
    for (const QSize& size : kSceneSizes) {
        QImage image, literalImage;
        renderSceneImage(size, camera); // the mesh is made once
        const Times now = fastest([&] { image = renderSceneImage(size, camera); });
        const Times literal
            = fastest([&] { literalImage = reference::renderSceneImage(size, camera); });
        const PictureRow row = {rowName, double(size.width()) * size.height(), now, literal,
            crcOf(image), crcOf(literalImage)};
        take(row, &size == kSceneSizes ? nullptr : &before);
        before = row;
    }
}

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    g_quick = argc > 1 && std::strcmp(argv[argc - 1], "--quick") == 0;
    if (!g_quick)
        printHeader();
    decodeArtwork();
    buildVersionText();
    timePages();
    timePieces();
    releasePageArtwork();
    timeScene("scene_female", "Genesis8Female", true);
    timeScene("scene_male", "Genesis8_1Male", false);
    if (g_quick || !g_same)
        std::printf(
            "%s\n", g_same ? "all pictures are those of the literal forms" : "BYTES DIFFER");
    return g_same ? 0 : 1;
}
