// Geometry of the pages: painted and hit-tested rectangles come from one table.
#include "button_numbers.h"
#include "room_tests.h"

#include "finder/browse_session.h"
#include "finder/pose_index.h"
#include "ground/plugin_settings.h"
#include "host/driver/paint_recorder.h"
#include "pane/artwork.h"
#include "pane/button_state.h"
#include "pane/hover.h"
#include "pane/page_layout.h"
#include "pane/page_painter.h"
#include "pane/page_state.h"
#include "pane/text_fit.h"
#include "scene_fixture.h"

#include <QPainter>
#include <QWidget>
#include <QtTest>

using namespace quillon;

// The design on a canvas of 512 x 1024, written down a second time.
struct Expected {
    int number;
    int pages; // 1 main, 2 picker, 4 browsing
    int x, y, w, h;
};

static QVector<Expected> expectedButtons()
{
    QVector<Expected> rows;
    for (int n = 0; n < 16; ++n)
        rows << Expected {n, 1, 30 + 120 * (n % 4), 270 + 102 * (n / 4), 94, 94};
    for (int n = 0; n < 9; ++n)
        rows << Expected {100 + n, 2, 40 + 158 * (n % 3), 280 + 132 * (n / 3), 112, 112};
    const Expected others[] = {{200, 4, 24, 350, 120, 240}, {201, 4, 370, 350, 120, 240},
        {202, 6, 210, 958, 120, 60}, {210, 4, 24, 255, 80, 80}, {211, 4, 122, 255, 80, 80},
        {212, 4, 314, 255, 80, 80}, {213, 4, 410, 255, 80, 80}, {214, 4, 24, 605, 80, 80},
        {215, 4, 122, 605, 80, 60}, {216, 4, 122, 665, 80, 20}, {217, 4, 218, 605, 80, 80},
        {218, 4, 314, 605, 80, 80}, {219, 4, 410, 605, 80, 80}, {220, 4, 36, 710, 50, 50},
        {223, 4, 218, 255, 80, 80}, {224, 4, 158, 352, 40, 40}, {225, 4, 214, 352, 40, 40},
        {226, 4, 266, 352, 40, 40}, {227, 4, 322, 352, 40, 40}};
    for (const Expected& e : others)
        rows << e;
    return rows;
}

static const int kCentres[10][2] = {{258, 450}, {276, 555}, {240, 555}, {270, 509}, {246, 509},
    {280, 454}, {236, 454}, {300, 474}, {216, 474}, {258, 486}};

static QRect pixels(const QSize& pane, int x, int y, int w, int h)
{
    const int left = int(qint64(pane.width()) * x / 512),
              top = int(qint64(pane.height()) * y / 1024);
    const int right = left + int(qint64(pane.width()) * w / 512) - 1;
    const int bottom = top + int(qint64(pane.height()) * h / 1024) - 1;
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

static QRect grown(const QRect& r)
{
    const int w = int(r.width() * 1.05), h = int(r.height() * 1.05);
    return QRect(r.left() - (w - r.width()) / 2, r.top() - (h - r.height()) / 2, w, h);
}

// What is painted and hit, in the order of dispatch.
struct Shape {
    int number;
    QRect drawn, hit;
};

static QVector<Shape> expectedShapes(int page, bool areas, const QSize& pane, const QPoint& pointer)
{
    QVector<Shape> before, after;
    for (const Expected& e : expectedButtons()) {
        if (!(e.pages & page))
            continue;
        QRect r = pixels(pane, e.x, e.y, e.w, e.h);
        if (r.contains(pointer))
            r = grown(r);
        (e.number <= 202 ? before : after) << Shape {e.number, r, r};
    }
    for (int k = 0; areas && k < 10; ++k) {
        const int x = kCentres[k][0], y = kCentres[k][1];
        before << Shape {
            300 + k, pixels(pane, x - 10, y - 10, 20, 20), pixels(pane, x - 12, y - 12, 24, 24)};
    }
    return before + after;
}

static int expectedHit(const QVector<Shape>& shapes, const QPoint& p)
{
    for (const Shape& s : shapes)
        if (s.hit.contains(p))
            return s.number;
    return -1;
}

class Canvas : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        paintPage(&painter, size());
    }
};

static void showPage(int page, int category)
{
    pageState().picker = page == 2;
    browseSession().type = page == 4 ? category : kNotBrowsing;
}

class TestPageLayout : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void tableIsTheDesign();
    void paintedAndHitRectanglesAgreeAtAnySize();
    void aRimIsHitOnlyAfterHoveringInside();
    void theRankButtonOfACustomPoseDoesNotGrow();
    void theLowerAreaWinsWhereSquaresOverlap();
    void areaSquaresExistOnlyForTheReferencePose();
    void grownNeighboursAreHitInAscendingOrder();
    void bannerAndLinkFollowThePage();
    void aLongLineBreaksNearItsMiddle_data();
    void aLongLineBreaksNearItsMiddle();
    void withoutTextOrRoomNothingIsDrawn();
    void aLabelHasRoomForThreeLines_data();
    void aLabelHasRoomForThreeLines();
};

void TestPageLayout::initTestCase()
{
    decodeArtwork();
}

void TestPageLayout::init()
{
    pageState() = PageState();
    browseSession() = BrowseSession();
    pluginSettings() = PluginSettings();
    leaveHover(QSize(512, 1024));
}

void TestPageLayout::tableIsTheDesign()
{
    for (int page : {1, 2, 4}) {
        QVector<Expected> wanted;
        for (const Expected& e : expectedButtons())
            if (e.pages & page)
                wanted << e;
        const std::vector<const ButtonRow*> rows = pageButtons(Page(page));
        QCOMPARE(int(rows.size()), wanted.size() + 2); // banner and link
        for (const Expected& e : wanted) {
            bool found = false;
            for (const ButtonRow* row : rows)
                found |= row->number == e.number && row->x == e.x && row->y == e.y && row->w == e.w
                    && row->h == e.h;
            QVERIFY2(found, qPrintable(QString::number(e.number)));
        }
    }
}

static QString text(const QRectF& r)
{
    return QString("%1 %2 %3 %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

// Pictures that a repaint draws, in order.
static QStringList paintedRects(QWidget* canvas)
{
    QStringList rects;
    for (const DrawRecord& r : recordRepaint(canvas))
        if (QByteArray(r.kind) == "pixmap" || QByteArray(r.kind) == "image")
            rects << text(r.rect);
    return rects;
}

static QRect maybeGrown(const QRect& r, const QPoint& pointer)
{
    return r.contains(pointer) ? grown(r) : r;
}

void TestPageLayout::paintedAndHitRectanglesAgreeAtAnySize()
{
    Random random(17);
    Canvas canvas;
    for (int n = 0; n < 500; ++n) {
        const bool large = n % 50 == 0;
        const QSize size(
            60 + random.below(large ? 1020 : 340), 120 + random.below(large ? 2040 : 680));
        const int page = 1 << random.below(3);
        const bool areas = page == 4 && random.below(2);
        showPage(page, areas ? 8 : random.below(8));
        canvas.resize(size);
        const QRect banner = pixels(size, 0, 0, 512, 202);
        const QRect link
            = page == 4 ? pixels(size, 25, 810, 462, 100) : pixels(size, 25, 730, 462, 180);
        for (int k = 0; k < 20; ++k) {
            const QPoint pointer(random.below(size.width()), random.below(size.height()));
            updateHover(size, pointer);
            const QVector<Shape> shapes = expectedShapes(page, areas, size, pointer);
            QStringList painted = paintedRects(&canvas);
            QVERIFY(painted.removeOne(text(maybeGrown(banner, pointer))));
            QVERIFY(painted.removeOne(text(maybeGrown(link, pointer))));
            for (const Shape& s : shapes) {
                QVERIFY2(painted.removeOne(text(s.drawn)), qPrintable(QString::number(s.number)));
                for (const QPoint& p : {s.hit.topLeft(), s.hit.bottomRight(), s.hit.center(),
                         s.hit.topLeft() - QPoint(1, 1), s.hit.bottomRight() + QPoint(1, 1)})
                    QCOMPARE(
                        numberOf(buttonAt(size, Page(page), p, pointer)), expectedHit(shapes, p));
            }
            QCOMPARE(painted.size(), page == 4 ? 1 : 0); // the body, or which poses are browsed
            const QPoint anywhere(random.below(size.width()), random.below(size.height()));
            QCOMPARE(numberOf(buttonAt(size, Page(page), anywhere, pointer)),
                expectedHit(shapes, anywhere));
            const QRect grownLink = maybeGrown(link, pointer);
            for (const QPoint& p : {grownLink.topLeft(), grownLink.bottomRight()})
                QCOMPARE(numberOf(linkAt(size, Page(page), p, pointer)), int(LinkButton));
        }
    }
}

void TestPageLayout::aRimIsHitOnlyAfterHoveringInside()
{
    const QSize pane(512, 1024);
    const QPoint rim(29, 300), inside(60, 300); // button 0 begins at 30
    QCOMPARE(numberOf(buttonAt(pane, MainPage, rim, QPoint(-1, -1))), int(kNoButton));
    QCOMPARE(numberOf(buttonAt(pane, MainPage, rim, inside)), 0);
}

void TestPageLayout::theRankButtonOfACustomPoseDoesNotGrow()
{
    const QSize pane(512, 1024);
    const QPoint rim(409, 290), inside(450, 290);
    QCOMPARE(numberOf(buttonAt(pane, BrowsingPage, rim, inside)), int(RankButton));
    pluginSettings().currentRank = 3;
    QCOMPARE(numberOf(buttonAt(pane, BrowsingPage, rim, inside)), int(kNoButton));
}

void TestPageLayout::theLowerAreaWinsWhereSquaresOverlap()
{
    showPage(4, 8);
    const QSize pane(512, 1024);
    QCOMPARE(numberOf(buttonAt(pane, BrowsingPage, QPoint(290, 464), QPoint(-1, -1))),
        int(FirstAreaButton) + 5);
    QCOMPARE(numberOf(buttonAt(pane, BrowsingPage, QPoint(247, 452), QPoint(-1, -1))),
        int(FirstAreaButton) + 0);
    QCOMPARE(numberOf(buttonAt(pane, BrowsingPage, QPoint(264, 498), QPoint(-1, -1))),
        int(FirstAreaButton) + 3);
}

void TestPageLayout::areaSquaresExistOnlyForTheReferencePose()
{
    showPage(4, 7);
    QCOMPARE(numberOf(buttonAt(QSize(512, 1024), BrowsingPage, QPoint(258, 450), QPoint(-1, -1))),
        int(kNoButton));
}

void TestPageLayout::grownNeighboursAreHitInAscendingOrder()
{
    // 215 ends where 216 begins; grown, it reaches over it
    const QSize pane(1024, 2048);
    const QPoint border(320, 1331);
    QCOMPARE(numberOf(buttonAt(pane, BrowsingPage, border, QPoint(-1, -1))), 216);
    QCOMPARE(numberOf(buttonAt(pane, BrowsingPage, border, QPoint(320, 1300))), 215);
}

void TestPageLayout::bannerAndLinkFollowThePage()
{
    const QSize pane(512, 1024);
    for (int page : {1, 2, 4}) {
        QCOMPARE(numberOf(linkAt(pane, Page(page), QPoint(256, 100), QPoint(-1, -1))),
            int(BannerButton));
        QCOMPARE(
            numberOf(linkAt(pane, Page(page), QPoint(256, 880), QPoint(-1, -1))), int(LinkButton));
        QCOMPARE(numberOf(linkAt(pane, Page(page), QPoint(256, 760), QPoint(-1, -1))),
            page == 4 ? int(kNoButton) : int(LinkButton));
    }
}

// ---- texts

// Draws a text into a place that is too narrow for it.
class NarrowText : public QWidget {
public:
    explicit NarrowText(const QString& text)
        : m_text(text)
    {
        resize(60, 60);
    }
    QStringList lines()
    {
        QStringList found;
        for (const DrawRecord& each : recordRepaint(this)) {
            if (!each.text.isEmpty())
                found << each.text;
        }
        return found;
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        TextFit fit;
        fit.lines = 2;
        fit.wrap = true;
        drawTextLines(&painter, rect(), QStringList(m_text), Qt::black, fit);
    }

private:
    const QString m_text;
};

void TestPageLayout::aLongLineBreaksNearItsMiddle_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](const char* text, const char* one, const char* two) {
        QTest::newRow(text) << QString(text) << (QStringList() << one << two);
    };
    row("mmmmmmm mmmm", "mmmmmmm", "mmmm");
    row("mmmmmmm_mmmm", "mmmmmmm_", "mmmm");
    row("mmmmmmm-mmmm", "mmmmmmm-", "mmmm");
    row("mmmmmmm.mmmm", "mmmmmmm.", "mmmm");
    row("mmmmmmm/mmmm", "mmmmmmm/", "mmmm");
    row("mmmm/mmmmmmm", "mmmm/", "mmmmmmm");
    row("/mmmmmmmmmmm", "/mmmmm", "mmmmmm"); // too far from the middle
    row("mmmmmmmmmmmm", "mmmmmm", "mmmmmm");
    row("mmm/mmm-mmmm", "mmm/mmm-", "mmmm"); // as far, but behind it
    const QString letters(7, QChar(0x0436)); // Cyrillic ones
    QTest::newRow("no Latin letters")
        << letters + ' ' + letters.left(4) << (QStringList() << letters << letters.left(4));
}

void TestPageLayout::aLongLineBreaksNearItsMiddle()
{
    QFETCH(QString, text);
    QFETCH(QStringList, lines);
    QCOMPARE(NarrowText(text).lines(), lines);
}

void TestPageLayout::withoutTextOrRoomNothingIsDrawn()
{
    QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    const QImage blank = image;
    QPainter painter(&image);
    drawTextLines(&painter, image.rect(), QStringList(), Qt::black, TextFit());
    drawTextLines(&painter, image.rect(), QStringList(QString()), Qt::black, TextFit());
    drawTextLines(&painter, QRect(5, 5, 0, 20), QStringList("mm"), Qt::black, TextFit());
    QVERIFY(image == blank);
    drawTextLines(&painter, image.rect(), QStringList("mm"), Qt::black, TextFit());
    QVERIFY(image != blank);
}

void TestPageLayout::aLabelHasRoomForThreeLines_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("short") << "/c/People/Sitting 01.duf" << (QStringList() << "Sitting 01");
    QTest::newRow("long") << "/c/People/wwwwwwwwwwwwwwwwwwww mmmmmmmmmmmmmmmm.duf"
                          << (QStringList() << "wwwwwwwwwwwwwwwwwwww"
                                            << "mmmmmmmmmmmmmmmm");
}

void TestPageLayout::aLabelHasRoomForThreeLines()
{
    QFETCH(QString, path);
    QFETCH(QStringList, lines);
    createPoseIndex();
    entryToChange(appendPose(path))->hasSignature = true;
    pluginSettings().currentPose = 0;
    showPage(4, Sitting);
    Canvas canvas;
    canvas.resize(512, 1024);
    QStringList found;
    for (const DrawRecord& each : recordRepaint(&canvas)) {
        if (each.text.isEmpty() || each.rect.top() < 736 || each.rect.bottom() > 804)
            continue;
        found << each.text;
        QVERIFY2(each.rect.height() <= 68 / 3 + 1, qPrintable(QString::number(each.rect.height())));
    }
    freePoseIndex();
    QCOMPARE(found, lines);
}

QUILLON_TEST(TestPageLayout)
#include "test_page_layout.moc"
