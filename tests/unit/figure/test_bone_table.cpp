// The order of the bones, by which every per-bone array is indexed.
#include "room_tests.h"

#include "figure/bone_table.h"

#include "host/figures/figure_data.h"

#include <QSet>
#include <QtTest>

using namespace quillon;

class TestBoneTable : public QObject {
    Q_OBJECT
private slots:
    void holds170DifferentNames();
    void groupsBeginWhereTheyShould_data();
    void groupsBeginWhereTheyShould();
    void parentsStandBeforeTheirChildren();
};

void TestBoneTable::holds170DifferentNames()
{
    QSet<QString> names;
    for (const char* name : kBoneTable)
        names.insert(QLatin1String(name));
    QCOMPARE(names.size(), 170);
}

void TestBoneTable::groupsBeginWhereTheyShould_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    QTest::newRow("hip") << 0 << "hip";
    QTest::newRow("left leg") << 2 << "lThighBend";
    QTest::newRow("left toes") << 8 << "lSmallToe4";
    QTest::newRow("right leg") << 18 << "rThighBend";
    QTest::newRow("torso") << 34 << "abdomenLower";
    QTest::newRow("left arm") << 38 << "lCollar";
    QTest::newRow("left hand") << 43 << "lHand";
    QTest::newRow("right arm") << 63 << "rCollar";
    QTest::newRow("right hand") << 68 << "rHand";
    QTest::newRow("neck") << 88 << "neckLower";
    QTest::newRow("head") << 90 << "head";
    QTest::newRow("face") << 91 << "upperTeeth";
    QTest::newRow("upper face") << 117 << "upperFaceRig";
    QTest::newRow("face ends") << 167 << "rEar";
    QTest::newRow("left pectoral") << 168 << "lPectoral";
    QTest::newRow("right pectoral") << 169 << "rPectoral";
}

void TestBoneTable::groupsBeginWhereTheyShould()
{
    QFETCH(int, number);
    QFETCH(QString, name);
    QCOMPARE(QString(QLatin1String(kBoneTable[number])), name);
}

// The stand-in figures list their bones by number, too: two lists made apart agree.
void TestBoneTable::parentsStandBeforeTheirChildren()
{
    QString why;
    const FigureData* data = figureData(QLatin1String("Genesis8Female"), &why);
    QVERIFY2(data, qPrintable(why));
    QCOMPARE(int(data->bones.size()), kBoneCount);
    for (int i = 0; i < kBoneCount; ++i) {
        QCOMPARE(data->bones[i].name, QString(QLatin1String(kBoneTable[i])));
        QVERIFY2(data->bones[i].parent < i, kBoneTable[i]);
    }
}

QUILLON_TEST(TestBoneTable)
#include "test_bone_table.moc"
