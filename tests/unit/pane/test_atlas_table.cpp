#include "room_tests.h"

#include "art/atlas_table.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QtTest>

#include <cmath>
#include <cstdlib>

using namespace quillon;

namespace {

constexpr int kMegapixel = 1000 * 1000;

// Two edge maps that share less than this are different shapes. Recolouring alone gives 1.
constexpr double kSameShape = 0.75;

struct EmbeddedPng {
    const unsigned char* bytes;
    int size;
};

EmbeddedPng embeddedPage(int image)
{
    switch (AtlasImage(image)) {
    case AtlasImage::Main:
        return {kPageMainPng, kPageMainPngSize};
    case AtlasImage::Picker:
        return {kPagePickerPng, kPagePickerPngSize};
    case AtlasImage::Browsing:
        return {kPageBrowsingPng, kPageBrowsingPngSize};
    }
    return {nullptr, 0};
}

QImage decoded(const EmbeddedPng& png)
{
    return QImage::fromData(png.bytes, png.size, "PNG").convertToFormat(QImage::Format_ARGB32);
}

QRect rectOf(const AtlasCell& cell)
{
    return QRect(cell.x, cell.y, cell.w, cell.h);
}

int difference(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b))
        + std::abs(qBlue(a) - qBlue(b)) + std::abs(qAlpha(a) - qAlpha(b));
}

// White where a pixel differs clearly from its right or lower neighbour: what is left of a picture
// when colour is taken away.
QImage edgeMap(const QImage& picture)
{
    QImage map(picture.size(), QImage::Format_ARGB32);
    map.fill(Qt::black);
    for (int y = 0; y + 1 < picture.height(); ++y)
        for (int x = 0; x + 1 < picture.width(); ++x) {
            const QRgb here = picture.pixel(x, y);
            if (difference(here, picture.pixel(x + 1, y)) > 24
                || difference(here, picture.pixel(x, y + 1)) > 24)
                map.setPixel(x, y, qRgb(255, 255, 255));
        }
    return map;
}

// Share of edge pixels that both pictures have, of those that either has.
double sharedEdges(const QImage& a, const QImage& b)
{
    const QImage mapA = edgeMap(a);
    const QImage mapB = edgeMap(b);
    int both = 0, either = 0;
    for (int y = 0; y < mapA.height(); ++y)
        for (int x = 0; x < mapA.width(); ++x) {
            const bool inA = qRed(mapA.pixel(x, y)) > 0;
            const bool inB = qRed(mapB.pixel(x, y)) > 0;
            both += inA && inB;
            either += inA || inB;
        }
    return either ? double(both) / either : 1.0;
}

double linear(int channel)
{
    const double c = channel / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(QRgb c)
{
    return 0.2126 * linear(qRed(c)) + 0.7152 * linear(qGreen(c)) + 0.0722 * linear(qBlue(c));
}

double contrast(QRgb light, QRgb dark)
{
    return (luminance(light) + 0.05) / (luminance(dark) + 0.05);
}

struct NeededArt {
    int firstButton, lastButton;
    int states;
    AtlasImage image;
    int w, h; // canvas units
};

// clang-format off
const NeededArt kNeededArt[] = {
    {  0,  15, 1, AtlasImage::Main,      94,  94},
    {100, 108, 1, AtlasImage::Picker,   112, 112},
    {200, 201, 1, AtlasImage::Browsing, 120, 240},
    {210, 212, 2, AtlasImage::Browsing,  80,  80},
    {213, 213, 4, AtlasImage::Browsing,  80,  80},
    {214, 214, 2, AtlasImage::Browsing,  80,  80},
    {215, 215, 2, AtlasImage::Browsing,  80,  60},
    {216, 216, 2, AtlasImage::Browsing,  80,  20},
    {217, 219, 2, AtlasImage::Browsing,  80,  80},
    {220, 220, 2, AtlasImage::Browsing,  50,  50},
    {223, 223, 2, AtlasImage::Browsing,  80,  80},
    {224, 227, 2, AtlasImage::Browsing,  40,  40},
    {400, 400, 1, AtlasImage::Main,     512, 202},
    {kArtNotice, kArtNotice, 1, AtlasImage::Main, kNoticePlace.w, kNoticePlace.h},
    {kArtBody, kArtBody, 1, AtlasImage::Browsing, kBodyPlace.w, kBodyPlace.h},
    {kArtBodyArea, kArtBodyArea, 2, AtlasImage::Browsing, 20, 20},
};
// clang-format on

} // namespace

class TestAtlasTable : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyButtonAndStateHasArt_data();
    void everyButtonAndStateHasArt();
    void bothPagesHaveTheirBackButton();
    void linkHasATallAndALowShape();
    void unknownPiecesAreRefused();
    void picturesHaveTheSizesOfTheTable();
    void cellsDoNotOverlap();
    void gutterAroundCellsIsEmpty();
    void pagesStayUnderSixMegapixels();
    void noCellIsBlank();
    void notTwoCellsAreTheSame();
    void recolouringAloneKeepsTheEdges();
    void statesDifferInShape_data();
    void statesDifferInShape();
    void bothTextGreysReadOnTextPlaces_data();
    void bothTextGreysReadOnTextPlaces();
    void groundColoursCarryMidGreyText();
    void areaSquaresStandOnTheBody_data();
    void areaSquaresStandOnTheBody();
    void iconIsASmallSquareWithContrast();

private:
    QImage pictureOf(int button, int state) const
    {
        const AtlasCell* cell = atlasCell(button, state);
        return cell ? m_pages[int(cell->image)].copy(rectOf(*cell)) : QImage();
    }

    QImage m_pages[kAtlasImageCount];
};

void TestAtlasTable::initTestCase()
{
    for (int i = 0; i < kAtlasImageCount; ++i) {
        m_pages[i] = decoded(embeddedPage(i));
        QVERIFY(!m_pages[i].isNull());
    }
}

void TestAtlasTable::everyButtonAndStateHasArt_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("image");
    QTest::addColumn<QSize>("size");
    for (const NeededArt& need : kNeededArt)
        for (int button = need.firstButton; button <= need.lastButton; ++button)
            for (int state = 0; state < need.states; ++state)
                QTest::newRow(qPrintable(QString("%1 state %2").arg(button).arg(state)))
                    << button << state << int(need.image)
                    << QSize(need.w * kAtlasScale, need.h * kAtlasScale);
}

void TestAtlasTable::everyButtonAndStateHasArt()
{
    QFETCH(int, button);
    QFETCH(int, state);
    QFETCH(int, image);
    QFETCH(QSize, size);
    const AtlasCell* cell = atlasCell(button, state);
    QVERIFY(cell);
    QCOMPARE(cell->button, button);
    QCOMPARE(cell->state, state);
    QCOMPARE(int(cell->image), image);
    QCOMPARE(QSize(cell->w, cell->h), size);
}

void TestAtlasTable::bothPagesHaveTheirBackButton()
{
    const AtlasCell* toMain = atlasCell(202, 0);
    const AtlasCell* toPicker = atlasCell(202, 1);
    QVERIFY(toMain && toPicker);
    QVERIFY(toMain->image == AtlasImage::Picker && toPicker->image == AtlasImage::Browsing);
    QCOMPARE(QSize(toMain->w, toMain->h), QSize(360, 180));
    QCOMPARE(QSize(toPicker->w, toPicker->h), QSize(360, 180));
}

void TestAtlasTable::linkHasATallAndALowShape()
{
    const AtlasCell* tall = atlasCell(401, 0);
    const AtlasCell* low = atlasCell(401, 1);
    QVERIFY(tall && low);
    QCOMPARE(QSize(tall->w, tall->h), QSize(462 * kAtlasScale, 180 * kAtlasScale));
    QCOMPARE(QSize(low->w, low->h), QSize(462 * kAtlasScale, 100 * kAtlasScale));
}

void TestAtlasTable::unknownPiecesAreRefused()
{
    QVERIFY(!atlasCell(-1));
    QVERIFY(!atlasCell(16));
    QVERIFY(!atlasCell(203));
    QVERIFY(!atlasCell(213, 4));
    QVERIFY(!atlasCell(0, 1));
    QVERIFY(!atlasCell(kArtBodyArea + 1));
}

void TestAtlasTable::picturesHaveTheSizesOfTheTable()
{
    for (int i = 0; i < kAtlasImageCount; ++i)
        QCOMPARE(m_pages[i].size(), QSize(kAtlasSizes[i].w, kAtlasSizes[i].h));
    for (int i = 0; i < kAtlasCellCount; ++i) {
        const AtlasCell& cell = kAtlasCells[i];
        QVERIFY(m_pages[int(cell.image)].rect().contains(rectOf(cell)));
    }
}

void TestAtlasTable::cellsDoNotOverlap()
{
    for (int i = 0; i < kAtlasCellCount; ++i)
        for (int k = 0; k < i; ++k) {
            const AtlasCell& a = kAtlasCells[i];
            const AtlasCell& b = kAtlasCells[k];
            if (a.image != b.image)
                continue;
            QVERIFY2(!rectOf(a).intersects(rectOf(b)),
                qPrintable(QString("%1 and %2").arg(a.button).arg(b.button)));
        }
}

// Scaling a cell smoothly may look one pixel over its rim.
void TestAtlasTable::gutterAroundCellsIsEmpty()
{
    QImage rest[kAtlasImageCount];
    for (int i = 0; i < kAtlasImageCount; ++i)
        rest[i] = m_pages[i];
    for (int i = 0; i < kAtlasCellCount; ++i) {
        const QRect cell = rectOf(kAtlasCells[i]);
        QImage& page = rest[int(kAtlasCells[i].image)];
        QVERIFY(page.rect().contains(cell.adjusted(-1, -1, 1, 1)));
        for (int k = 0; k < kAtlasCellCount; ++k)
            if (k != i && kAtlasCells[k].image == kAtlasCells[i].image)
                QVERIFY(!rectOf(kAtlasCells[k]).intersects(cell.adjusted(-1, -1, 1, 1)));
        for (int y = cell.top(); y <= cell.bottom(); ++y)
            for (int x = cell.left(); x <= cell.right(); ++x)
                page.setPixel(x, y, 0);
    }
    for (const QImage& page : rest)
        for (int y = 0; y < page.height(); ++y)
            for (int x = 0; x < page.width(); ++x)
                QVERIFY(qAlpha(page.pixel(x, y)) == 0);
}

void TestAtlasTable::pagesStayUnderSixMegapixels()
{
    int pixels = 0;
    for (const QImage& page : m_pages)
        pixels += page.width() * page.height();
    for (int i = 0; i < kAtlasCellCount; ++i)
        if (kAtlasCells[i].button == 400 || kAtlasCells[i].button == 401)
            pixels -= kAtlasCells[i].w * kAtlasCells[i].h;
    QVERIFY2(pixels <= 6 * kMegapixel, qPrintable(QString::number(pixels)));
}

void TestAtlasTable::noCellIsBlank()
{
    for (int i = 0; i < kAtlasCellCount; ++i) {
        const AtlasCell& cell = kAtlasCells[i];
        const QImage picture = m_pages[int(cell.image)].copy(rectOf(cell));
        int opaque = 0, edges = 0;
        const QImage map = edgeMap(picture);
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                opaque += qAlpha(picture.pixel(x, y)) == 255;
                edges += qRed(map.pixel(x, y)) > 0;
            }
        const QByteArray name
            = QByteArray::number(cell.button) + '/' + QByteArray::number(cell.state);
        QVERIFY2(opaque * 20 > picture.width() * picture.height(), name);
        QVERIFY2(edges >= picture.width(), name);
    }
}

void TestAtlasTable::notTwoCellsAreTheSame()
{
    for (int i = 0; i < kAtlasCellCount; ++i)
        for (int k = 0; k < i; ++k) {
            const AtlasCell& a = kAtlasCells[i];
            const AtlasCell& b = kAtlasCells[k];
            if (a.w != b.w || a.h != b.h || (a.button >= 9 && a.button <= 11))
                continue; // the wells are alike on purpose
            QVERIFY2(pictureOf(a.button, a.state) != pictureOf(b.button, b.state),
                qPrintable(QString("%1 and %2").arg(a.button).arg(b.button)));
        }
}

// The measure of statesDifferInShape must not mistake another colour for another shape.
void TestAtlasTable::recolouringAloneKeepsTheEdges()
{
    const QImage lit = pictureOf(214, 1);
    QVERIFY(!lit.isNull());
    QImage recoloured = lit;
    for (int y = 0; y < lit.height(); ++y)
        for (int x = 0; x < lit.width(); ++x) {
            const QRgb c = lit.pixel(x, y);
            recoloured.setPixel(x, y, qRgba(qBlue(c), qRed(c), qGreen(c), qAlpha(c)));
        }
    QVERIFY(recoloured != lit);
    QVERIFY(sharedEdges(lit, recoloured) > kSameShape);
    QVERIFY(sharedEdges(lit, lit) == 1.0);
}

void TestAtlasTable::statesDifferInShape_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    for (int i = 1; i < kAtlasCellCount; ++i)
        for (int k = 0; k < i; ++k)
            if (kAtlasCells[i].button == kAtlasCells[k].button && kAtlasCells[i].button != 401)
                QTest::newRow(qPrintable(QString("%1: %2 and %3")
                                             .arg(kAtlasCells[i].button)
                                             .arg(kAtlasCells[k].state)
                                             .arg(kAtlasCells[i].state)))
                    << kAtlasCells[i].button << kAtlasCells[k].state << kAtlasCells[i].state;
}

void TestAtlasTable::statesDifferInShape()
{
    QFETCH(int, button);
    QFETCH(int, first);
    QFETCH(int, second);
    const QImage a = pictureOf(button, first);
    const QImage b = pictureOf(button, second);
    QCOMPARE(a.size(), b.size());
    const double full = sharedEdges(a, b);
    QVERIFY2(full < kSameShape, qPrintable(QString::number(full)));

    // And as small as they get, in a pane of 300 x 600 pixels.
    const QSize tiny(
        a.width() * 300 / (512 * kAtlasScale), a.height() * 600 / (1024 * kAtlasScale));
    const QImage smallA = a.scaled(tiny, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage smallB = b.scaled(tiny, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const double scaled = sharedEdges(smallA, smallB);
    QVERIFY2(scaled < kSameShape, qPrintable(QString::number(scaled)));
}

void TestAtlasTable::bothTextGreysReadOnTextPlaces_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("state");
    QTest::addColumn<QRect>("place");
    const auto rect = [](const ArtPlace& p) { return QRect(p.x, p.y, p.w, p.h); };
    QTest::newRow("header") << 400 << 0 << rect(kHeaderTextPlace);
    QTest::newRow("notice") << kArtNotice << 0 << rect(kNoticeTextPlace);
    QTest::newRow("link") << 401 << 0 << rect(kLinkTextPlace);
    QTest::newRow("low link") << 401 << 1 << rect(kLinkLowTextPlace);
}

void TestAtlasTable::bothTextGreysReadOnTextPlaces()
{
    QFETCH(int, button);
    QFETCH(int, state);
    QFETCH(QRect, place);
    const QImage picture = pictureOf(button, state);
    const QRect px(place.topLeft() * kAtlasScale, place.size() * kAtlasScale);
    QVERIFY(picture.rect().contains(px));
    for (int y = px.top(); y <= px.bottom(); ++y)
        for (int x = px.left(); x <= px.right(); ++x) {
            const QRgb c = picture.pixel(x, y);
            QVERIFY(qAlpha(c) == 255);
            QVERIFY(contrast(qRgb(128, 128, 128), c) >= 4.5);
            QVERIFY(contrast(qRgb(192, 192, 192), c) >= 4.5);
        }
}

void TestAtlasTable::groundColoursCarryMidGreyText()
{
    QVERIFY(contrast(qRgb(128, 128, 128), kArtColourGround) >= 4.5);
    QVERIFY(contrast(qRgb(128, 128, 128), kArtColourPanel) >= 4.5);
    QVERIFY(contrast(kArtColourTeal, kArtColourGround) >= 4.5);
    QVERIFY(contrast(kArtColourAmber, kArtColourGround) >= 4.5);
}

void TestAtlasTable::areaSquaresStandOnTheBody_data()
{
    QTest::addColumn<QPoint>("centre");
    QTest::newRow("torso") << QPoint(258, 450);
    QTest::newRow("left shin") << QPoint(276, 555);
    QTest::newRow("right shin") << QPoint(240, 555);
    QTest::newRow("left thigh") << QPoint(270, 509);
    QTest::newRow("right thigh") << QPoint(246, 509);
    QTest::newRow("left arm") << QPoint(280, 454);
    QTest::newRow("right arm") << QPoint(236, 454);
    QTest::newRow("left forearm") << QPoint(300, 474);
    QTest::newRow("right forearm") << QPoint(216, 474);
    QTest::newRow("hip") << QPoint(258, 486);
}

void TestAtlasTable::areaSquaresStandOnTheBody()
{
    QFETCH(QPoint, centre);
    const QImage body = pictureOf(kArtBody, 0);
    const QPoint px = (centre - QPoint(kBodyPlace.x, kBodyPlace.y)) * kAtlasScale;
    QVERIFY(body.rect().contains(px));
    QVERIFY(qAlpha(body.pixel(px)) == 255);
}

void TestAtlasTable::iconIsASmallSquareWithContrast()
{
    const QImage icon = decoded({kIconPng, kIconPngSize});
    QCOMPARE(icon.size(), QSize(64, 64));
    const QImage tiny = icon.scaled(16, 16, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double lightest = 0.0, darkest = 1.0;
    for (int y = 0; y < tiny.height(); ++y)
        for (int x = 0; x < tiny.width(); ++x)
            if (qAlpha(tiny.pixel(x, y)) == 255) {
                lightest = qMax(lightest, luminance(tiny.pixel(x, y)));
                darkest = qMin(darkest, luminance(tiny.pixel(x, y)));
            }
    QVERIFY((lightest + 0.05) / (darkest + 0.05) >= 7.0);
}

QUILLON_TEST(TestAtlasTable)
#include "test_atlas_table.moc"
