// Every list of names of the figures, whole: the count and a checksum over the names in order.
#include "room_tests.h"

#include "figure/bone_control_links.h"
#include "figure/bone_table.h"
#include "figure/control_tables.h"
#include "figure/part_tables.h"

#include <QSet>
#include <QStringList>
#include <QtTest>

#include <iterator>

using namespace quillon;

class TestPartTables : public QObject {
    Q_OBJECT
private slots:
    void listsHoldTheseNamesInThisOrder_data();
    void listsHoldTheseNamesInThisOrder();
    void namesAreUnique_data();
    void namesAreUnique();
    void theChecksumTellsNeighboursAndPlacesApart();
};

// CRC-32 over the names, each ended by a line feed.
static unsigned checksum(const QStringList& names)
{
    unsigned crc = ~0u;
    for (const QString& name : names) {
        const QByteArray line = name.toLatin1() + '\n';
        for (int i = 0; i < line.size(); ++i) {
            crc ^= static_cast<unsigned char>(line[i]);
            for (int bit = 0; bit < 8; ++bit)
                crc = crc & 1 ? crc >> 1 ^ 0xedb88320u : crc >> 1;
        }
    }
    return ~crc;
}

template <int Count> static QStringList listOf(const char* const (&names)[Count])
{
    QStringList list;
    for (const char* name : names)
        list << QLatin1String(name);
    return list;
}

// Pattern and controls of each row.
static QStringList bodyCorrectives()
{
    QStringList list;
    for (const CorrectivePair& pair : kBodyCorrectives)
        list << QLatin1String(pair.bone) << listOf(pair.controls);
    return list;
}

static void addList(const char* name, const QStringList& names, int count, unsigned crc)
{
    QTest::newRow(name) << names << count << crc;
}

void TestPartTables::listsHoldTheseNamesInThisOrder_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("count");
    QTest::addColumn<unsigned>("crc");
    addList("bones", listOf(kBoneTable), 170, 0x62397ff3);
    addList("controls 8", listOf(kBodyControlTableG8), 250, 0x624281a6);
    addList("controls 8.1", listOf(kBodyControlTableG81), 248, 0x3eb5509f);
    addList("links 8", listOf(kBoneControlLinksG8), 170, 0x2192e0a2);
    addList("links 8.1", listOf(kBoneControlLinksG81), 170, 0x386a0c44);
    addList("face bones", listOf(kFaceBoneNames), 77, 0xadfa82e0);
    addList("expressions 8", listOf(kExpressionControlsG8), 147, 0x2c5839c2);
    addList("expressions 8.1", listOf(kExpressionControlsG81), 3, 0x133859c0);
    addList("torso and arm controls", listOf(kTorsoArmControls), 30, 0xba6c7aff);
    addList("leg controls", listOf(kLegControls), 6, 0xae70b5da);
    addList("hip controls", listOf(kHipControls), 3, 0xa50d6e2c);
    addList("foot controls", listOf(kFootControls), 16, 0x36bf24c4);
    addList("toe and foot controls", listOf(kToeFootControls), 24, 0x4e88ffce);
    addList("left hand controls", listOf(kLeftHandControls), 17, 0xbe800b29);
    addList("right hand controls", listOf(kRightHandControls), 17, 0x63bca42b);
    addList("upper body bones", listOf(kUpperBodyBones), 20, 0xf8ed85c2);
    addList("leg bones", listOf(kLegBones), 8, 0x44f8275c);
    addList("feet bones", listOf(kFeetBones), 26, 0x96f0ad5e);
    addList("left hand bones", listOf(kLeftHandBones), 20, 0x9afb86b4);
    addList("right hand bones", listOf(kRightHandBones), 20, 0x27ec8a63);
    addList("translatable bones", listOf(kTranslatableBones), 26, 0xde7d1b5d);
    addList("face correctives", listOf(kFaceCorrectives), 10, 0xfe189062);
    addList("body correctives", bodyCorrectives(), 12, 0xdb97b1f3);
}

void TestPartTables::listsHoldTheseNamesInThisOrder()
{
    QFETCH(QStringList, names);
    QFETCH(int, count);
    QFETCH(unsigned, crc);
    QCOMPARE(names.size(), count);
    QCOMPARE(QString::number(checksum(names), 16), QString::number(crc, 16));
}

void TestPartTables::namesAreUnique_data()
{
    listsHoldTheseNamesInThisOrder_data();
}

// Rows of links may repeat: they are lists themselves.
void TestPartTables::namesAreUnique()
{
    QFETCH(QStringList, names);
    QSet<QString> different;
    for (const QString& name : names) {
        if (!name.isEmpty() && !name.startsWith(QLatin1Char('.'))) {
            QVERIFY2(!different.contains(name), qPrintable(name));
            different.insert(name);
        }
    }
}

void TestPartTables::theChecksumTellsNeighboursAndPlacesApart()
{
    const QStringList legs = listOf(kLegBones);
    QCOMPARE(checksum(QStringList(QLatin1String("12345678"))), 0x74245830u); // as others compute it
    for (int i = 1; i < legs.size(); ++i) {
        QStringList exchanged = legs;
        exchanged.move(i - 1, i);
        QVERIFY(checksum(exchanged) != checksum(legs));
    }
    QStringList joined = legs;
    joined[0] += joined.takeAt(1);
    QVERIFY(checksum(joined) != checksum(legs));
}

QUILLON_TEST(TestPartTables)
#include "test_part_tables.moc"
