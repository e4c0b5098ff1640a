#include "room_tests.h"

#include "host/driver/call_table.h"

#include <QDir>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

using namespace quillon;

class TestCallTable : public QObject {
    Q_OBJECT
private slots:
    void hasARowForEachMarkOfTheHost();
    void hasARowForEachNameOfTheFileCalls();
    void namesAreUnique();
    void knowsOtherWords_data();
    void knowsOtherWords();
    void refusesWhatIsNoCall_data();
    void refusesWhatIsNoCall();
};

// The names that the sources say to the function or macro.
static QStringList namesIn(const QStringList& files, const QString& expression)
{
    QSet<QString> names;
    for (const QString& path : files) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return QStringList("cannot read " + path);
        auto each = QRegularExpression(expression).globalMatch(QString::fromUtf8(file.readAll()));
        while (each.hasNext())
            names.insert(each.next().captured(1));
    }
    QStringList sorted = names.values();
    sorted.sort();
    return sorted;
}

static QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

void TestCallTable::hasARowForEachMarkOfTheHost()
{
    const QDir dzcore(QUILLON_SOURCE_DIR "/host/dzcore");
    QStringList files;
    for (const QString& name : dzcore.entryList({"*.cpp"}))
        files += dzcore.filePath(name);
    QVERIFY(files.size() > 20);
    QCOMPARE(sorted(callNames(CallKind::Host) + callNames(CallKind::Within)),
        namesIn(files, "DZ_HOST_(?:CALL|SEEN)\\(\"(\\w+)\"\\)"));
}

void TestCallTable::hasARowForEachNameOfTheFileCalls()
{
    QCOMPARE(sorted(callNames(CallKind::File)),
        namesIn({QUILLON_SOURCE_DIR "/host/driver/file_calls.cpp"}, "fails\\(\"(\\w+)\""));
}

void TestCallTable::namesAreUnique()
{
    const QStringList all
        = callNames(CallKind::Host) + callNames(CallKind::Within) + callNames(CallKind::File);
    for (const QString& name : all) {
        QCOMPARE(all.count(name), 1);
        QCOMPARE(QString(findCall(name)->name), name);
    }
}

void TestCallTable::knowsOtherWords_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("name");
    const char* const rows[][2] = {{"mkpath", "mkdir"}, {"remove", "unlink"}, {"fsync", "sync"},
        {"flush", "write"}, {"exists", "stat"}, {"entryList", "opendir"}, {"access", "stat"}};
    for (const auto& row : rows)
        QTest::newRow(row[0]) << QString(row[0]) << QString(row[1]);
}

void TestCallTable::knowsOtherWords()
{
    QFETCH(QString, word);
    QFETCH(QString, name);
    QVERIFY(findCall(word));
    QCOMPARE(QString(findCall(word)->name), name);
}

void TestCallTable::refusesWhatIsNoCall_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"", "noSuchCall", "Open", "open ", "mkdirs", "getwspos"})
        QTest::newRow(*name ? name : "empty") << QString(name);
}

void TestCallTable::refusesWhatIsNoCall()
{
    QFETCH(QString, name);
    QVERIFY(!findCall(name));
    QCOMPARE(
        unknownCall(name), QString("'%1' is no call that can be watched; see --help").arg(name));
}

QUILLON_TEST_WITHOUT_APPLICATION(TestCallTable)
#include "test_call_table.moc"
