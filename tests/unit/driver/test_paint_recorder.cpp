#include "room_tests.h"

#include "host/driver/paint_counter.h"
#include "host/driver/paint_recorder.h"

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QtTest>

#include <functional>

using namespace quillon;

typedef std::function<void(QPainter*)> Paint;
Q_DECLARE_METATYPE(Paint)

class Canvas : public QWidget {
public:
    explicit Canvas(const Paint& p)
        : paint(p)
    {
        resize(400, 300);
    }
    Paint paint;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        paint(&painter);
    }
};

static QStringList textsOf(QWidget* widget)
{
    QStringList texts;
    for (const DrawRecord& record : recordRepaint(widget))
        if (qstrcmp(record.kind, "text") == 0)
            texts += record.text;
    return texts;
}

static DrawRecord onlyRecord(const Paint& paint)
{
    Canvas canvas(paint);
    const QList<DrawRecord> records = recordRepaint(&canvas);
    return records.size() == 1 ? records.first() : DrawRecord {"not one record", {}, {}, {}, {}};
}

class TestPaintRecorder : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void tellsEachLineOnce_data();
    void tellsEachLineOnce();
    void tellsShapesWithPlaceAndColour();
    void opacityIsPartOfTheColour();
    void whatIsNeitherFilledNorStrokedIsNotDrawn();
    void tellsChildrenAtTheirPlaces();
    void countsRepaintsButNotRecordings();
};

void TestPaintRecorder::initTestCase()
{
    startPaintCounts();
}

void TestPaintRecorder::tellsEachLineOnce_data()
{
    QTest::addColumn<Paint>("paint");
    QTest::addColumn<QStringList>("lines");
    const QRect all(10, 10, 380, 280);
    const QString mixed = QString::fromUtf8("a \xd0\xb6 \xe6\xbc\xa2 b"); // three scripts, one line
    QTest::newRow("at a point") << Paint([](QPainter* p) { p->drawText(10, 20, "one two"); })
                                << QStringList {"one two"};
    QTest::newRow("line breaks") << Paint([all](QPainter* p) { p->drawText(all, 0, "a\n\nb c"); })
                                 << QStringList {"a", "b c"};
    QTest::newRow("centred, same words")
        << Paint([all](QPainter* p) { p->drawText(all, Qt::AlignCenter, "x\nx"); })
        << QStringList {"x", "x"};
    QTest::newRow("several fonts")
        << Paint([all, mixed](QPainter* p) { p->drawText(all, 0, mixed); }) << QStringList {mixed};
    QTest::newRow("two texts side by side") << Paint([](QPainter* p) {
        p->drawText(10, 20, "left");
        p->drawText(200, 20, "right");
    }) << QStringList {"left", "right"};
    QTest::newRow("blanks at both ends")
        << Paint([](QPainter* p) { p->drawText(10, 20, " a "); }) << QStringList {" a "};
    QTest::newRow("turned") << Paint([](QPainter* p) {
        p->rotate(30);
        p->drawText(100, 20, "turned text");
    }) << QStringList {"turned text"};
}

void TestPaintRecorder::tellsEachLineOnce()
{
    QFETCH(Paint, paint);
    QFETCH(QStringList, lines);
    Canvas canvas(paint);
    QCOMPARE(textsOf(&canvas), lines);
}

void TestPaintRecorder::tellsShapesWithPlaceAndColour()
{
    const DrawRecord filled = onlyRecord([](QPainter* p) {
        p->translate(5, 6);
        p->scale(2, 2);
        p->fillRect(QRectF(1, 2, 30, 40), QColor(1, 2, 3));
    });
    QCOMPARE(filled.kind, "rect");
    QCOMPARE(filled.rect, QRectF(7, 10, 60, 80));
    QCOMPARE(filled.colour, QColor(1, 2, 3));
    QVERIFY(!filled.pen.isValid());

    const DrawRecord line = onlyRecord([](QPainter* p) {
        p->setPen(Qt::red);
        p->drawLine(50, 60, 20, 10);
    });
    QCOMPARE(line.kind, "line");
    QCOMPARE(line.rect, QRectF(20, 10, 30, 50));
    QCOMPARE(line.colour, QColor(Qt::red));

    const DrawRecord picture = onlyRecord([](QPainter* p) {
        QPixmap pixmap(8, 4);
        pixmap.fill(Qt::blue);
        p->drawPixmap(QRect(3, 4, 16, 8), pixmap);
    });
    QCOMPARE(picture.kind, "pixmap");
    QCOMPARE(picture.rect, QRectF(3, 4, 16, 8));
    QVERIFY(!picture.colour.isValid());
}

void TestPaintRecorder::opacityIsPartOfTheColour()
{
    const DrawRecord half = onlyRecord([](QPainter* p) {
        p->setOpacity(0.5);
        p->fillRect(QRect(0, 0, 10, 10), QColor(10, 20, 30));
    });
    QCOMPARE(half.colour.rgb() & 0xffffff, QRgb(0x0a141e));
    QVERIFY(qAbs(half.colour.alphaF() - 0.5) < 0.01); // eight bits of alpha
}

void TestPaintRecorder::whatIsNeitherFilledNorStrokedIsNotDrawn()
{
    Canvas canvas([](QPainter* p) {
        p->setPen(Qt::NoPen);
        p->drawRect(0, 0, 10, 10);
        p->drawLine(0, 0, 10, 10);
    });
    QVERIFY(recordRepaint(&canvas).isEmpty());
}

void TestPaintRecorder::tellsChildrenAtTheirPlaces()
{
    QWidget parent;
    parent.resize(300, 200);
    QLabel* label = new QLabel("a label", &parent);
    label->setGeometry(100, 50, 150, 30);
    QPushButton* button = new QPushButton("press me", &parent);
    button->setGeometry(20, 120, 150, 40);
    QCOMPARE(textsOf(&parent), (QStringList {"a label", "press me"}));
    QRectF place;
    for (const DrawRecord& record : recordRepaint(&parent))
        if (record.text == "a label")
            place = record.rect;
    QVERIFY2(
        QRectF(label->geometry()).contains(place), qPrintable(QTest::toString(place.toRect())));
}

void TestPaintRecorder::countsRepaintsButNotRecordings()
{
    Canvas canvas([](QPainter*) {});
    canvas.show();
    QVERIFY(QTest::qWaitForWindowExposed(&canvas));
    canvas.repaint();
    const int before = paintCount(&canvas);
    QVERIFY(before >= 1);
    recordRepaint(&canvas);
    QCOMPARE(paintCount(&canvas), before);
    canvas.repaint();
    QCOMPARE(paintCount(&canvas), before + 1);
}

QUILLON_TEST(TestPaintRecorder)
#include "test_paint_recorder.moc"
