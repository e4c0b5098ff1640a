#include "room_tests.h"

#include "catalogue/catalogue_options.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace quillon;

class TestCatalogueOptions : public QObject {
    Q_OBJECT
private slots:
    void readsWhatIsAsked();
    void foldersBecomeAbsolute();
    void helpAndWorkerNeedNothingElse();
    void refusesWhatMakesNoSense_data();
    void refusesWhatMakesNoSense();
};

void TestCatalogueOptions::readsWhatIsAsked()
{
    QTemporaryDir a, b, home;
    CatalogueOptions options;
    QString why;
    QVERIFY(QDir(home.path()).mkdir("data"));
    QVERIFY2(readCatalogueOptions(
                 {"/nowhere/out", "--content", a.path(), "--home", home.path(), "--content",
                     b.path(), "--figure", "Genesis8_1Male", "--jobs", "3"},
                 &options, &why),
        qPrintable(why));
    QCOMPARE(options.output, QString("/nowhere/out"));
    QCOMPARE(options.content, QStringList({a.path(), b.path()}));
    QCOMPARE(options.home, home.path());
    QCOMPARE(options.figure, QString("Genesis8_1Male"));
    QCOMPARE(options.workers, 3);
}

void TestCatalogueOptions::foldersBecomeAbsolute()
{
    CatalogueOptions options;
    QString why;
    QVERIFY(readCatalogueOptions({"out", "--content", "."}, &options, &why));
    QCOMPARE(options.output, QDir::currentPath() + "/out");
    QCOMPARE(options.content, QStringList(QDir::currentPath()));
    QVERIFY(readCatalogueOptions({"out/", "--content", QDir::currentPath() + "/"}, &options, &why));
    QCOMPARE(options.output, QDir::currentPath() + "/out");
    QCOMPARE(options.content, QStringList(QDir::currentPath()));
}

void TestCatalogueOptions::helpAndWorkerNeedNothingElse()
{
    CatalogueOptions options;
    QString why;
    QVERIFY(readCatalogueOptions({"--help"}, &options, &why) && options.help);
    QVERIFY(readCatalogueOptions({"--worker"}, &options, &why) && options.worker);
    QVERIFY(!options.help);
    for (const char* word : {"OUT", "--content DIR", "--home DIR", "--figure NAME", "--jobs N"})
        QVERIFY2(catalogueHelp().contains(word), word);
}

void TestCatalogueOptions::refusesWhatMakesNoSense_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("why");
    QTest::newRow("nothing") << QStringList() << "no folder to write to";
    QTest::newRow("no content") << QStringList("out") << "no content directory: --content DIR";
    QTest::newRow("two outputs") << QStringList({"a", "b", "--content", "."})
                                 << "more than one folder to write to: 'b'";
    QTest::newRow("content is missing") << QStringList({"out", "--content", "no such"})
                                        << "--content: there is no folder 'no such'";
    QTest::newRow("option without value")
        << QStringList({"out", "--content"}) << "--content: there is no folder ''";
    QTest::newRow("home is missing") << QStringList({"out", "--content", ".", "--home", "no such"})
                                     << "--home: there is no folder 'no such'";
    QTest::newRow("home without data") << QStringList({"out", "--content", ".", "--home", "/dev"})
                                       << "--home: there is no folder 'data' in '/dev'";
    QTest::newRow("figure") << QStringList({"out", "--content", ".", "--figure", "Nobody"})
                            << "--figure: there is no figure 'Nobody'";
    QTest::newRow("no jobs") << QStringList({"out", "--content", ".", "--jobs", "0"})
                             << "--jobs is a number from 1 to 64, not '0'";
    QTest::newRow("jobs in words") << QStringList({"out", "--content", ".", "--jobs", "two"})
                                   << "--jobs is a number from 1 to 64, not 'two'";
    QTest::newRow("too many jobs") << QStringList({"out", "--content", ".", "--jobs", "65"})
                                   << "--jobs is a number from 1 to 64, not '65'";
    QTest::newRow("unknown") << QStringList({"out", "--content", ".", "--scan", "x"})
                             << "there is no option '--scan'";
}

void TestCatalogueOptions::refusesWhatMakesNoSense()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, why);
    CatalogueOptions options;
    QString told;
    QVERIFY(!readCatalogueOptions(arguments, &options, &told));
    QCOMPARE(told, why);
}

QUILLON_TEST(TestCatalogueOptions)
#include "test_catalogue_options.moc"
