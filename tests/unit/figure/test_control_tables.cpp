// The control lists of both generations.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/control_tables.h"
#include "figure/figure_lookup.h"
#include "figure/name_index.h"

#include <QSet>
#include <QtTest>

using namespace quillon;

class TestControlTables : public QObject {
    Q_OBJECT
private slots:
    void namesAreUnique();
    void generationsShareBodyControlsAndEyeClosing();
    void theNamesOfAllTablesAre569();
    void namesStandWhereTheyShould_data();
    void namesStandWhereTheyShould();
    void everyNameIsOfAKnownFamily();
    void everyFigureHasEveryControlOfItsGeneration_data();
    void everyFigureHasEveryControlOfItsGeneration();
    void noFigureHasAPoseControlOutsideItsTable_data();
    void noFigureHasAPoseControlOutsideItsTable();
};

static QSet<QString> setOf(const char* const* names, int count)
{
    QSet<QString> set;
    for (int i = 0; i < count; ++i)
        set.insert(QLatin1String(names[i]));
    return set;
}

void TestControlTables::namesAreUnique()
{
    QCOMPARE(setOf(kBodyControlTableG8, kControlCountG8).size(), 250);
    QCOMPARE(setOf(kBodyControlTableG81, kControlCountG81).size(), 248);
}

void TestControlTables::theNamesOfAllTablesAre569()
{
    const QSet<QString> names = setOf(kBoneTable, kBoneCount)
        + setOf(kBodyControlTableG8, kControlCountG8)
        + setOf(kBodyControlTableG81, kControlCountG81);
    QCOMPARE(names.size(), 569);
    QCOMPARE(names.size(), int(kNameCount)); // arrays by name id have this size
    QSet<int> ids;
    for (const QString& name : names) {
        QVERIFY(nameId(name) >= 0 && nameId(name) < kNameCount);
        ids.insert(nameId(name));
    }
    QCOMPARE(ids.size(), 569);
}

void TestControlTables::generationsShareBodyControlsAndEyeClosing()
{
    const QSet<QString> common = setOf(kBodyControlTableG8, kControlCountG8)
                                     .intersect(setOf(kBodyControlTableG81, kControlCountG81));
    int body = 0;
    for (const QString& name : common)
        body += name.startsWith(QLatin1String("pCTRL"));
    QCOMPARE(body, 97);
    QCOMPARE(common.size(), 99);
    QVERIFY(common.contains(QLatin1String("eCTRLEyesClosedL")));
    QVERIFY(common.contains(QLatin1String("eCTRLEyesClosedR")));
}

void TestControlTables::namesStandWhereTheyShould_data()
{
    QTest::addColumn<bool>("genesis81");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    QTest::newRow("8 first") << false << 0 << "pCTRLWaistSide";
    QTest::newRow("8 last body control") << false << 96 << "pCTRLArmsFrntBck";
    QTest::newRow("8 first expression") << false << 97 << "eCTRLSurprised_HD";
    QTest::newRow("8 first corrective") << false << 242 << "pJCMFlexGluteClench_L";
    QTest::newRow("8 last") << false << 249 << "pPBMrBreastsHangForward";
    QTest::newRow("8.1 first") << true << 0 << "pCTRLrFingersOut";
    QTest::newRow("8.1 last body control") << true << 96 << "pCTRLArmsFrntBck";
    QTest::newRow("8.1 eye closing") << true << 97 << "eCTRLEyesClosedR";
    QTest::newRow("8.1 first expression") << true << 99 << "facs_ctrl_Surprised";
    QTest::newRow("8.1 last") << true << 247 << "facs_bs_BrowDownLeft_div2";
}

void TestControlTables::namesStandWhereTheyShould()
{
    QFETCH(bool, genesis81);
    QFETCH(int, number);
    QFETCH(QString, name);
    const char* const* table = genesis81 ? kBodyControlTableG81 : kBodyControlTableG8;
    QCOMPARE(QString(QLatin1String(table[number])), name);
}

void TestControlTables::everyNameIsOfAKnownFamily()
{
    const QRegExp g8(QLatin1String("(pCTRL|eCTRL|ePHM|PHM|CTRL|pJCM|pPBM)[A-Za-z0-9_-]+"));
    const QRegExp g81(
        QLatin1String("(pCTRL|eCTRLEyesClosed|facs_(ctrl|jnt|bs|cbs)_)[A-Za-z0-9_-]+"));
    for (const char* name : kBodyControlTableG8)
        QVERIFY2(g8.exactMatch(QLatin1String(name)), name);
    for (const char* name : kBodyControlTableG81)
        QVERIFY2(g81.exactMatch(QLatin1String(name)), name);
}

void TestControlTables::everyFigureHasEveryControlOfItsGeneration_data()
{
    addFigureRows();
}

void TestControlTables::everyFigureHasEveryControlOfItsGeneration()
{
    QFETCH(QString, figure);
    const FigureFixture f(figure);
    for (int i = 0; i < controlCount(); ++i)
        QVERIFY2(findControl(controlName(i), f.figure), qPrintable(controlName(i)));
}

void TestControlTables::noFigureHasAPoseControlOutsideItsTable_data()
{
    addFigureRows();
}

void TestControlTables::noFigureHasAPoseControlOutsideItsTable()
{
    QFETCH(QString, figure);
    const FigureFixture f(figure);
    const QRegExp pose(QLatin1String("(pCTRL|eCTRL|facs_).*"));
    for (int i = 0; i < f.figure->getNumProperties(); ++i) {
        const QString name = f.figure->getProperty(i)->getName();
        QVERIFY2(!pose.exactMatch(name) || isBodyControl(name), qPrintable(name));
    }
}

QUILLON_TEST(TestControlTables)
#include "test_control_tables.moc"
