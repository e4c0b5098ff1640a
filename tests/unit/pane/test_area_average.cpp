#include "room_tests.h"

#include "art/atlas_table.h"
#include "pane/area_average.h"
#include "pane/artwork.h"
#include "reference/scaled_artwork_reference.h"

#include <QtTest>

#include <algorithm>
#include <random>

using namespace quillon;

// Byte for byte the toolkit's smooth scaling, which is of 5.15: another one may count otherwise.
class TestAreaAverage : public QObject {
    Q_OBJECT
private slots:
    void givesTheToolkitsBytes_data();
    void givesTheToolkitsBytes();
    void scalesEveryPieceOfTheArtwork_data();
    void scalesEveryPieceOfTheArtwork();
    void oneColourStaysWhatItIs();
};

static bool isToolkitKnown()
{
    return qstrncmp(qVersion(), "5.15", 4) == 0;
}

// Random colours in blocks of random sizes up to the largest, premultiplied.
static QImage blocks(const QSize& size, int largest)
{
    std::mt19937 dice(unsigned(size.width() * 31 + size.height() + largest));
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    for (int n = size.width() * size.height() * 3 / (largest * largest); n >= 0; --n) {
        const unsigned alpha = dice() % 4 ? 255 : dice() % 256;
        unsigned part[3];
        for (unsigned& each : part)
            each = alpha ? dice() % (alpha + 1) : 0;
        const int left = int(dice() % unsigned(size.width()));
        const int top = int(dice() % unsigned(size.height()));
        const int right = std::min(size.width(), left + 1 + int(dice() % unsigned(largest)));
        const int bottom = std::min(size.height(), top + 1 + int(dice() % unsigned(largest)));
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x)
                reinterpret_cast<QRgb*>(image.scanLine(y))[x]
                    = qRgba(int(part[0]), int(part[1]), int(part[2]), int(alpha));
    }
    return image;
}

void TestAreaAverage::givesTheToolkitsBytes_data()
{
    QTest::addColumn<int>("largest"); // block of one colour
    QTest::addColumn<QSize>("from");
    QTest::addColumn<QSize>("to");
    const QSize from(93, 71);
    QTest::newRow("noise, little smaller") << 1 << from << QSize(92, 70);
    QTest::newRow("noise, two thirds") << 1 << from << QSize(62, 47);
    QTest::newRow("noise, half") << 1 << QSize(90, 72) << QSize(45, 36);
    QTest::newRow("noise, tenth") << 1 << from << QSize(9, 7);
    QTest::newRow("noise, one pixel") << 1 << from << QSize(1, 1);
    QTest::newRow("noise, narrow") << 1 << from << QSize(2, 70);
    QTest::newRow("noise, low") << 1 << from << QSize(92, 1);
    QTest::newRow("small blocks, two thirds") << 4 << from << QSize(62, 47);
    QTest::newRow("blocks, little smaller") << 30 << from << QSize(92, 70);
    QTest::newRow("blocks, two thirds") << 30 << from << QSize(62, 47);
    QTest::newRow("blocks, fifth") << 30 << from << QSize(18, 13);
    QTest::newRow("blocks, large") << 60 << QSize(1406, 605) << QSize(843, 363);
    QTest::newRow("same size") << 30 << from << from;
    QTest::newRow("larger") << 30 << from << QSize(200, 100);
    QTest::newRow("wider and lower") << 30 << from << QSize(94, 50);
    QTest::newRow("as wide and lower") << 30 << from << QSize(93, 50);
    QTest::newRow("narrower and higher") << 30 << from << QSize(50, 72);
}

void TestAreaAverage::givesTheToolkitsBytes()
{
    QFETCH(int, largest);
    QFETCH(QSize, from);
    QFETCH(QSize, to);
    if (!isToolkitKnown())
        return;
    const FlatPicture picture = flatPicture(blocks(from + QSize(20, 30), largest));
    const QRect pieces[]
        = {QRect(QPoint(0, 0), from), QRect(QPoint(7, 11), from), QRect(QPoint(20, 30), from)};
    for (const QRect& piece : pieces)
        QVERIFY(
            scaledPiece(picture, piece, to) == reference::scaledPiece(picture.image, piece, to));
}

void TestAreaAverage::scalesEveryPieceOfTheArtwork_data()
{
    QTest::addColumn<int>("paneWidth");
    for (int width : {100, 256, 333, 400, 512, 768, 1080, 1535, 1536, 1600})
        QTest::newRow(qPrintable(QString::number(width))) << width;
}

void TestAreaAverage::scalesEveryPieceOfTheArtwork()
{
    QFETCH(int, paneWidth);
    if (!isToolkitKnown())
        return;
    decodeArtwork();
    for (int i = 0; i < kAtlasCellCount; ++i) {
        const AtlasCell& cell = kAtlasCells[i];
        const FlatPicture& page = *flatPicture(Picture(int(Picture::MainPage) + int(cell.image)));
        const QRect piece(cell.x, cell.y, cell.w, cell.h);
        const QSize size(cell.w * paneWidth / 1536, cell.h * paneWidth / 1536);
        QVERIFY2(scaledPiece(page, piece, size) == reference::scaledPiece(page.image, piece, size),
            qPrintable(QString("piece %1, state %2").arg(cell.button).arg(cell.state)));
    }
    releasePageArtwork();
}

void TestAreaAverage::oneColourStaysWhatItIs()
{
    const QRgb colours[] = {0, qRgba(0, 0, 0, 1), qRgba(1, 2, 3, 4), qRgba(255, 255, 255, 255),
        qRgba(127, 128, 0, 200)};
    for (const QRgb colour : colours) {
        QImage picture(50, 40, QImage::Format_ARGB32_Premultiplied);
        picture.fill(colour);
        QImage expected(33, 29, QImage::Format_ARGB32_Premultiplied);
        expected.fill(colour);
        QVERIFY(scaledPiece(flatPicture(picture), picture.rect(), expected.size()) == expected);
    }
}

QUILLON_TEST(TestAreaAverage)
#include "test_area_average.moc"
