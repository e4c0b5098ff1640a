// The maker's own pose files, told by their paths.
#include "finder_fixture.h"
#include "room_tests.h"

#include "finder/pose_pair_products.h"

using namespace quillon;

class TestPosePairProducts : public QObject {
    Q_OBJECT
private slots:
    void kindsAreToldByPath_data();
    void kindsAreToldByPath();
    void labelsFollowKindAndFigure_data();
    void labelsFollowKindAndFigure();
    void entriesOutsideTheIndexHaveNoLabel();
    void productsAreFourteen();
    void foldersAreThoseOfTheFiguresPoses_data();
    void foldersAreThoseOfTheFiguresPoses();
    void keysAreFolders_data();
    void keysAreFolders();
    void titlesAreFileNames_data();
    void titlesAreFileNames();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

void TestPosePairProducts::kindsAreToldByPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("isMakerFile");
    QTest::addColumn<int>("kind");
    const auto row = [](const char* name, const char* path, bool maker, int kind) {
        QTest::newRow(name) << s(path) << maker << kind;
    };
    row("woman and man", "/c/data/Brannoc/poses/001/012f0.duf", true, 1);
    row("first of two", "/c/data/Brannoc/poses/001/012fa.duf", true, 2);
    row("second of two", "/c/data/Brannoc/poses/001/012fb.duf", true, 2);
    row("single", "/c/data/Brannoc/poses/001/012f.duf", true, 0);
    row("folder in any case", "/c/DATA/brannoc/POSES/001/012f0.duf", true, 1);
    row("ending in capitals", "/c/data/Brannoc/poses/001/012f0.DUF", true, 0);
    row("letter in capitals", "/c/data/Brannoc/poses/001/012fA.duf", true, 0);
    row("both endings", "/c/data/Brannoc/poses/001/a.duf/0.duf", true, 1);
    row("another maker", "/c/People/poses/012f0.duf", false, 0);
    row("custom library", "/c/data/Brannoc/Quillon/custom/0.duf", false, 0);
    row("nothing", "", false, 0);
}

void TestPosePairProducts::kindsAreToldByPath()
{
    QFETCH(QString, path);
    QFETCH(bool, isMakerFile);
    QFETCH(int, kind);
    QCOMPARE(posePairKind(path).isMakerFile, isMakerFile);
    QCOMPARE(posePairKind(path).kind, kind);
}

void TestPosePairProducts::labelsFollowKindAndFigure_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("label");
    const auto row = [](const char* name, const char* file, int code, const char* label) {
        QTest::newRow(name) << s(file) << code << s(label);
    };
    row("F+M", "data/Brannoc/poses/001/012f0.duf", 8, "This is a pose PAIR product (F+M)");
    row("F+F", "data/Brannoc/poses/001/012fa.duf", 8, "This is a pose PAIR product (F+F)");
    row("M+F", "data/Brannoc/poses/001/012m0.duf", 264, "This is a pose PAIR product (M+F)");
    row("M+M", "data/Brannoc/poses/001/012mb.duf", 264, "This is a pose PAIR product (M+M)");
    row("female", "data/Brannoc/poses/001/012f.duf", 8, "This is a G8 FEMALE product");
    row("male", "data/Brannoc/poses/001/012m.duf", 264, "This is a G8 MALE product");
    row("other code", "data/Brannoc/poses/001/012f0.duf", 2, "");
    row("other code, single", "data/Brannoc/poses/001/012f.duf", 0, "");
    row("another maker", "People/012f0.duf", 8, "");
}

void TestPosePairProducts::labelsFollowKindAndFigure()
{
    QFETCH(QString, file);
    QFETCH(int, code);
    QFETCH(QString, label);
    StoreFixture f;
    const int entry = addEntry(s("/c/") + file, 1, quint32(code));
    QCOMPARE(productLabel(entry), label);
}

void TestPosePairProducts::entriesOutsideTheIndexHaveNoLabel()
{
    StoreFixture f;
    QCOMPARE(productLabel(-1), QString());
    QCOMPARE(productLabel(0), QString());
}

void TestPosePairProducts::productsAreFourteen()
{
    QRegExp form(s("Brannoc/[^/]+/[A-Z0-9]{2,4} "));
    QSet<QString> paths;
    for (int n = 1; n <= 14; ++n) {
        const QString path = productPath(QString("%1").arg(n, 3, 10, QLatin1Char('0')));
        QVERIFY2(form.exactMatch(path), qPrintable(path));
        paths.insert(path);
    }
    QCOMPARE(paths.size(), 14);
    for (const char* number : {"000", "015", "1", "", "0010"})
        QCOMPARE(productPath(s(number)), QString());
}

void TestPosePairProducts::foldersAreThoseOfTheFiguresPoses_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");
    const QString first = s("Poses/") + productPath(s("001"));
    const QString last = s("Poses/") + productPath(s("014"));
    QTest::newRow("female") << s("/c/data/Brannoc/poses/001/012f0.duf")
                            << s("/c/People/Genesis 8 Female/") + first + s("012");
    QTest::newRow("male") << s("/c/data/Brannoc/poses/014/007m0.duf")
                          << s("/c/People/Genesis 8 Male/") + last + s("007");
    QTest::newRow("anything but f is male") << s("/c/data/Brannoc/poses/014/007F0.duf")
                                            << s("/c/People/Genesis 8 Male/") + last + s("007");
    QTest::newRow("the last of two")
        << s("/data/Brannoc/poses/x/data/Brannoc/poses/001/012f.duf")
        << s("/data/Brannoc/poses/x/People/Genesis 8 Female/") + first + s("012");
    QTest::newRow("in a folder below") << s("/c/data/Brannoc/poses/001/sub/012f0.duf")
                                       << s("/c/People/Genesis 8 Female/") + first + s("012");
    QTest::newRow("unknown number") << s("/c/data/Brannoc/poses/099/012f0.duf") << QString();
    QTest::newRow("no number") << s("/c/data/Brannoc/poses") << QString();
    QTest::newRow("another maker") << s("/c/People/a.duf") << QString();
}

void TestPosePairProducts::foldersAreThoseOfTheFiguresPoses()
{
    QFETCH(QString, path);
    QFETCH(QString, folder);
    QCOMPARE(productFolder(path), folder);
}

void TestPosePairProducts::keysAreFolders_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("key");
    QTest::newRow("file in a folder") << s("/c/Poses/Sit/a.duf") << s("/c/Poses/Sit/");
    QTest::newRow("at the top") << s("/a.duf") << s("/");
    QTest::newRow("no folder") << s("a.duf") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestPosePairProducts::keysAreFolders()
{
    QFETCH(QString, path);
    QFETCH(QString, key);
    QCOMPARE(productKey(path), key);
}

void TestPosePairProducts::titlesAreFileNames_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("whole");
    QTest::addColumn<QString>("title");
    QTest::newRow("file in a folder") << s("/c/Sit down.duf") << s("Sit down.duf") << s("Sit down");
    QTest::newRow("no folder") << s("a.duf") << s("a.duf") << s("a");
    QTest::newRow("dots") << s("/c/a.b.duf") << s("a.b.duf") << s("a.b");
    QTest::newRow("only an ending") << s("/c/.duf") << s(".duf") << QString();
    QTest::newRow("shorter than an ending") << s("/c/ab") << s("ab") << QString();
    QTest::newRow("a folder") << s("/c/") << QString() << QString();
    QTest::newRow("empty") << QString() << QString() << QString();
}

void TestPosePairProducts::titlesAreFileNames()
{
    QFETCH(QString, path);
    QFETCH(QString, whole);
    QFETCH(QString, title);
    QCOMPARE(poseFileTitle(path, true), whole);
    QCOMPARE(poseFileTitle(path, false), title);
}

QUILLON_TEST(TestPosePairProducts)
#include "test_pose_pair_products.moc"
