// The tree of byte boxes by itself: its shape, and that it asks of no point that a byte rules out.
#include "room_tests.h"

#include "finder/box_tree.h"

#include <QtTest>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

using namespace quillon;

class TestBoxTree : public QObject {
    Q_OBJECT
private slots:
    void sixteenPointsMakeALeafAndSixteenLeavesANode_data();
    void sixteenPointsMakeALeafAndSixteenLeavesANode();
    void theLowestBytesComeFirst();
    void aPointIsRuledOutByEachOfItsBytes_data();
    void aPointIsRuledOutByEachOfItsBytes();
};

static const int kReach = 10;

static PointRows rowsOf(int points, int dims)
{
    PointRows rows;
    rows.dims = dims;
    rows.reach = kReach;
    rows.bytes.resize(std::size_t(points) * std::size_t(registersOf(dims)));
    return rows;
}

static unsigned char* bytesOfPoint(PointRows* rows, int point)
{
    return rows->bytes[std::size_t(point) * std::size_t(registersOf(rows->dims))].at;
}

static std::vector<int> numbersBelow(int count)
{
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

void TestBoxTree::sixteenPointsMakeALeafAndSixteenLeavesANode_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("groups"); // leaves, nodes and so on up to the root
    QTest::newRow("one point") << 1 << "1 1";
    QTest::newRow("a full leaf") << 16 << "1 1";
    QTest::newRow("one more") << 17 << "2 1";
    QTest::newRow("a full node") << 256 << "16 1";
    QTest::newRow("one more leaf") << 257 << "17 2 1";
    QTest::newRow("one more node") << 4097 << "257 17 2 1";
}

void TestBoxTree::sixteenPointsMakeALeafAndSixteenLeavesANode()
{
    QFETCH(int, points);
    QFETCH(QString, groups);
    PointRows rows = rowsOf(points, 3);
    for (int point = 0; point < points; ++point) {
        for (int dim = 0; dim < 3; ++dim)
            bytesOfPoint(&rows, point)[dim] = static_cast<unsigned char>(point * (37 + dim));
    }
    std::vector<int> leafOf(static_cast<std::size_t>(points), -1);
    const BoxTree tree = makeBoxTree(rows, numbersBelow(points), &leafOf);
    QStringList found;
    for (const BoxLevel& level : tree.levels)
        found << QString::number(level.first.size());
    QCOMPARE(found.join(QString(" ")), groups);
    const int leaves = int(tree.filled.size());
    QCOMPARE(found.first().toInt(), leaves);
    QCOMPARE(int(tree.points.size()), 16 * leaves);
    // Full but for the last.
    std::vector<int> inLeaf(tree.filled.size());
    for (int leaf : leafOf)
        ++inLeaf.at(std::size_t(leaf));
    for (std::size_t leaf = 0; leaf + 1 < inLeaf.size(); ++leaf)
        QCOMPARE(inLeaf[leaf], 16);
    QCOMPARE(inLeaf.back(), points - 16 * (leaves - 1));
}

void TestBoxTree::theLowestBytesComeFirst()
{
    PointRows rows = rowsOf(32, 2);
    for (int point = 0; point < 32; ++point)
        bytesOfPoint(&rows, point)[1] = point % 2 == 0 ? 200 : 0;
    std::vector<int> leafOf(32, -1);
    makeBoxTree(rows, numbersBelow(32), &leafOf);
    for (int point = 0; point < 32; ++point)
        QCOMPARE(leafOf[std::size_t(point)], point % 2 == 0 ? 1 : 0);
}

void TestBoxTree::aPointIsRuledOutByEachOfItsBytes_data()
{
    QTest::addColumn<int>("dims");
    for (int dims : {1, 4, 5, 22, kMostDims})
        QTest::newRow(qPrintable(QString("%1 bytes").arg(dims))) << dims;
}

static bool countCall(const void* context, int, int)
{
    ++*static_cast<int*>(const_cast<void*>(context));
    return true;
}

void TestBoxTree::aPointIsRuledOutByEachOfItsBytes()
{
    QFETCH(int, dims);
    PointRows rows = rowsOf(2, dims); // one in the tree, one that searches
    std::fill_n(bytesOfPoint(&rows, 0), dims, static_cast<unsigned char>(100));
    std::vector<int> leafOf(1);
    BoxTree tree = makeBoxTree(rows, numbersBelow(1), &leafOf);
    addPoint(&tree, rows, 0, leafOf[0]);
    int calls = 0;
    const PointTest test = {&calls, countCall};
    unsigned char* row = bytesOfPoint(&rows, 1);
    for (int dim = 0; dim < dims; ++dim) {
        for (int steps : {-kReach - 1, kReach + 1, -kReach, kReach}) {
            std::fill_n(row, dims, static_cast<unsigned char>(100));
            row[dim] = static_cast<unsigned char>(100 + steps);
            const bool isNear = steps == -kReach || steps == kReach;
            calls = 0;
            QCOMPARE(firstNear(tree, rows, row, 1, test, 1), isNear ? 0 : 1);
            QCOMPARE(calls, isNear ? 1 : 0);
        }
    }
}

QUILLON_TEST_WITHOUT_APPLICATION(TestBoxTree)
#include "test_box_tree.moc"
