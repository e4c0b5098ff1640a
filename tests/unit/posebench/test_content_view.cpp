#include "room_tests.h"

#include "host/posebench/content_model.h"
#include "host/posebench/content_view.h"
#include "host/posebench/dark_theme.h"
#include "host/posebench/thumbnail_store.h"

#include <QImage>
#include <QPainter>

using namespace quillon;

// Tiles of the content library: names of any length, all of one size.
class TestContentView : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void namesWrap_data();
    void namesWrap();
    void longNamesEndInAnEllipsis();
    void asManyLinesArePaintedAsANameHas_data();
    void asManyLinesArePaintedAsANameHas();
    void tilesAreOfOneSizeWhateverTheirNames();
    void aLargerFontHasRoomForAllLines();
    void toolTipTellsTheWholeName();
    void anEmptyListSaysWhy();
    void rootsAreToldApartByTheirEnds_data();
    void rootsAreToldApartByTheirEnds();
};

static const int kWidthPx = 110;
static const int kMostLines = 3;
// Letters without a gap from top to bottom: a line of them is one band of painted rows.
static const char kTwoLines[] = "HHHHHHHH HHHHHHHH";
static const char kThreeLines[] = "HHHHHHHH HHHHHHHH HHHHHHHH";
static const char kTooLong[] = "HHHHHHHH HHHHHHHH HHHHHHHH HHHHHHHH HHHHHHHH";

void TestContentView::initTestCase()
{
    applyDarkTheme(qApp);
}

// ---- lines ---------------------------------------------------------------------------------

void TestContentView::namesWrap_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("lines");
    QTest::newRow("short") << "Sit" << 1;
    QTest::newRow("words") << "Sit on the chair, left" << 2;
    QTest::newRow("words of a file") << "Leaning_against_a_wall" << 2;
    QTest::newRow("one long word") << "Pneumonoultramicroscopic" << 2;
    QTest::newRow("three lines of words") << "Leaning on a wall with one leg bent" << 3;
}

void TestContentView::namesWrap()
{
    QFETCH(QString, name);
    QFETCH(int, lines);
    const QFont font("DejaVu Sans", 9);
    const QStringList found = tileLines(name, font, kWidthPx, kMostLines);
    QCOMPARE(found.size(), lines);
    for (const QString& line : found)
        QVERIFY2(QFontMetrics(font).horizontalAdvance(line) <= kWidthPx, qPrintable(line));
    QCOMPARE(found.join("").remove(' '), QString(name).remove(' ')); // nothing is left out
    const bool wholeWords
        = name.mid(found[0].size()).startsWith(' ') || found[0].endsWith('_') || lines == 1;
    QVERIFY2(wholeWords || name.startsWith("Pneumono"), qPrintable(found[0]));
}

void TestContentView::longNamesEndInAnEllipsis()
{
    const QString name = "A name that needs far more than three lines of a narrow tile to be told";
    const QFont font("DejaVu Sans", 9);
    const QStringList lines = tileLines(name, font, kWidthPx, kMostLines);
    QCOMPARE(lines.size(), kMostLines);
    QVERIFY(lines.last().endsWith(QChar(0x2026)));
    QVERIFY(QFontMetrics(font).horizontalAdvance(lines.last()) <= kWidthPx);
    QVERIFY(name.startsWith(lines[0] + ' ' + lines[1] + ' ' + lines[2].chopped(1)));
}

// ---- painting ------------------------------------------------------------------------------

struct Tiles {
    explicit Tiles(const QStringList& names)
        : store({QString(), QString(), 0}, nullptr)
        , model(&store)
    {
        std::vector<ContentEntry> entries;
        for (const QString& name : names)
            entries.push_back({name, "/c/" + name + ".duf", false});
        model.setEntries(std::move(entries));
        view.setModel(&model);
        view.resize(500, 700);
    }
    QSize tile() const
    {
        return view.visualRect(model.index(0, 0)).size();
    }

    ThumbnailStore store;
    ContentModel model;
    ContentView view;
};

// Bands of painted rows from a height on, and where the last one ends.
static int bands(const QImage& image, int fromY, int* end)
{
    int count = 0;
    bool within = false;
    for (int y = fromY; y < image.height(); ++y) {
        bool painted = false;
        for (int x = 0; x < image.width(); ++x)
            painted |= image.pixelColor(x, y).lightness() > 128;
        count += painted && !within;
        within = painted;
        if (painted)
            *end = y;
    }
    return count;
}

static QImage paintedTile(const Tiles& tiles, int row)
{
    const QSize size = tiles.tile();
    QImage image(size + QSize(0, 60), QImage::Format_RGB32); // what is painted below would be seen
    image.fill(kTheme.field);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.initFrom(&tiles.view);
    option.font = tiles.view.font();
    option.fontMetrics = QFontMetrics(option.font);
    option.rect = QRect(QPoint(), size);
    option.state = QStyle::State_Enabled;
    tiles.view.itemDelegate()->paint(&painter, option, tiles.model.index(row, 0));
    return image;
}

void TestContentView::asManyLinesArePaintedAsANameHas_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("lines");
    QTest::newRow("one") << "HHH" << 1;
    QTest::newRow("two") << kTwoLines << 2;
    QTest::newRow("three") << kThreeLines << 3;
    QTest::newRow("more than have room") << kTooLong << 3;
}

void TestContentView::asManyLinesArePaintedAsANameHas()
{
    QFETCH(QString, name);
    QFETCH(int, lines);
    const Tiles tiles(QStringList {name});
    int end = 0;
    QCOMPARE(bands(paintedTile(tiles, 0), 108, &end), lines); // below the picture
    QVERIFY(end < tiles.tile().height());
}

void TestContentView::tilesAreOfOneSizeWhateverTheirNames()
{
    Tiles tiles(QStringList {"a", kTwoLines, kTooLong, "b", kThreeLines, "c", "d", "e"});
    const QSize grid = tiles.view.gridSize();
    const QRect first = tiles.view.visualRect(tiles.model.index(0, 0));
    QVERIFY(QRect(QPoint(), grid).contains(first));
    for (int i = 1; i < tiles.model.rowCount(); ++i) {
        const QRect place = tiles.view.visualRect(tiles.model.index(i, 0));
        const QPoint by = place.topLeft() - first.topLeft();
        QCOMPARE(place.size(), first.size());
        QCOMPARE(QPoint(by.x() % grid.width(), by.y() % grid.height()), QPoint());
        QVERIFY(place != tiles.view.visualRect(tiles.model.index(i - 1, 0)));
    }
    QVERIFY(tiles.view.uniformItemSizes()); // what opens tens of thousands at once
}

void TestContentView::aLargerFontHasRoomForAllLines()
{
    Tiles tiles(QStringList {"HHHHHH HHHHHH HHHHHH HHHHHH HHHHHH"});
    const int before = tiles.tile().height();
    QFont large = tiles.view.font();
    large.setPixelSize(2 * QFontInfo(large).pixelSize());
    tiles.view.setFont(large);
    QVERIFY(tiles.tile().height() > before);
    QVERIFY(tiles.view.gridSize().height() >= tiles.tile().height()); // none lies over another
    int end = 0;
    QCOMPARE(bands(paintedTile(tiles, 0), 108, &end), 3);
    QVERIFY(end < tiles.tile().height());
}

void TestContentView::toolTipTellsTheWholeName()
{
    const Tiles tiles(QStringList {QString(kTooLong) + " <i>"});
    const QString tip = tiles.model.index(0, 0).data(Qt::ToolTipRole).toString();
    QVERIFY2(
        tip.contains("<b>" + QString(kTooLong) + " &lt;i&gt;</b>"), qPrintable(tip)); // as text
}

void TestContentView::anEmptyListSaysWhy()
{
    Tiles tiles(QStringList {});
    tiles.view.setTextWhenEmpty("HHHH");
    int end = 0;
    QCOMPARE(bands(tiles.view.viewport()->grab().toImage(), 0, &end), 1);
    QVERIFY(std::abs(end - tiles.view.viewport()->height() / 2) < 30);
    Tiles full(QStringList {"HHH"});
    const QImage without = full.view.viewport()->grab().toImage();
    full.view.setTextWhenEmpty("HHHH");
    QCOMPARE(full.view.viewport()->grab().toImage(), without);
}

// ---- roots ---------------------------------------------------------------------------------

void TestContentView::rootsAreToldApartByTheirEnds_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("none") << QStringList() << QStringList();
    QTest::newRow("different") << QStringList({"/a/content", "/a/poses"})
                               << QStringList({"content", "poses"});
    QTest::newRow("alike at the end") << QStringList({"/a/old/lib", "/b/new/lib", "/c"})
                                      << QStringList({"old/lib", "new/lib", "/c"});
    QTest::newRow("one in the other")
        << QStringList({"/lib", "/a/lib"}) << QStringList({"/lib", "lib"});
    QTest::newRow("one twice") << QStringList({"/a/lib", "/a/lib"}) << QStringList({"lib", "lib"});
}

void TestContentView::rootsAreToldApartByTheirEnds()
{
    QFETCH(QStringList, paths);
    QFETCH(QStringList, names);
    QCOMPARE(shortNames(paths), names);
}

QUILLON_TEST(TestContentView)
#include "test_content_view.moc"
