#include "room_tests.h"

#include "catalogue/catalogue_contents.h"
#include "catalogue/page_data.h"

#include <QSet>
#include <QtTest>

using namespace quillon;

class TestCatalogueContents : public QObject {
    Q_OBJECT
private slots:
    void fileIsNamedByWhereItLies_data();
    void fileIsNamedByWhereItLies();
    void everyVerdictHasAWordOfItsOwn();
    void dataOfThePageCannotEndItsScript();
    void partnersAreNumbers();
};

void TestCatalogueContents::fileIsNamedByWhereItLies_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("directory");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::newRow("in a folder") << "/c/People/Sit/a.b.duf" << 0 << "People/Sit"
                                 << "a.b";
    QTest::newRow("at the top") << "/c/a.duf" << 0 << ""
                                << "a";
    QTest::newRow("directory within another") << "/c/more/Sit/a.duf" << 1 << "Sit"
                                              << "a";
    QTest::newRow("like a directory's name") << "/c/more2/a.duf" << 0 << "more2"
                                             << "a";
    QTest::newRow("in none") << "/d/Sit/a.duf" << -1 << "/d/Sit"
                             << "a";
    QTest::newRow("the maker's") << "/c/data/Brannoc/poses/002/012f0.duf" << 0
                                 << "People/Genesis 8 Female/Poses/Brannoc/Bench for Two"
                                 << "BT02 012";
}

void TestCatalogueContents::fileIsNamedByWhereItLies()
{
    QFETCH(QString, path);
    QFETCH(int, directory);
    QFETCH(QString, folder);
    QFETCH(QString, name);
    const CatalogueFile file = catalogueFile(path, {"/c", "/c/more"});
    QCOMPARE(file.path, path);
    QCOMPARE(file.directory, directory);
    QCOMPARE(file.name, name);
    QCOMPARE(file.folder, folder);
}

void TestCatalogueContents::everyVerdictHasAWordOfItsOwn()
{
    QSet<QByteArray> words;
    for (int verdict = int(Verdict::Indexed); verdict <= int(Verdict::SimilarTo); ++verdict)
        words.insert(verdictWord(Verdict(verdict)));
    QCOMPARE(words.size(), int(Verdict::SimilarTo) + 1);
    QVERIFY(hasPartner(Verdict::SameContent) && hasPartner(Verdict::MirrorOf));
    QVERIFY(hasPartner(Verdict::SimilarTo) && !hasPartner(Verdict::MakerVariant));
}

static LeftOutFile leftOut(const char* path, Verdict verdict, const char* partner = "")
{
    return {catalogueFile(QString::fromUtf8(path), {"/c"}), verdict, partner};
}

void TestCatalogueContents::dataOfThePageCannotEndItsScript()
{
    CatalogueContents contents;
    contents.directories << "/c";
    contents.leftOut = {leftOut("/c/</script><b>\xe2\x80\xa8\"\\.duf", Verdict::NotAPose)};
    const QByteArray data = pageData(contents, true);
    QVERIFY(!data.contains('<'));
    QVERIFY(!data.contains("\xe2\x80\xa8"));
    QVERIFY(data.contains("\\u003c/script>\\u003cb>\\u2028\\\"\\\\"));
}

void TestCatalogueContents::partnersAreNumbers()
{
    CatalogueContents contents;
    contents.directories << "/c";
    contents.leftOut = {leftOut("/c/a.duf", Verdict::NotAPose),
        leftOut("/c/b.duf", Verdict::SameContent, "/c/a.duf"),
        leftOut("/c/c.duf", Verdict::MirrorOf, "/c/b.duf"),
        leftOut("/c/d.duf", Verdict::SimilarTo, "/c/gone.duf")};
    QVERIFY(pageData(contents, true).contains("\"partner\":[-1,-2,-3,-1]"));
}

QUILLON_TEST(TestCatalogueContents)
#include "test_catalogue_contents.moc"
