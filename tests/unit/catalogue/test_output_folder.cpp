#include "room_tests.h"
#include "without_rights.h"

#include "catalogue/output_folder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

using namespace quillon;

class TestOutputFolder : public QObject {
    Q_OBJECT
private slots:
    void takesWhatIsNewEmptyOrACatalogue_data();
    void takesWhatIsNewEmptyOrACatalogue();
    void refusingWritesNothing();
    void writesWholeFilesWithTheirFolders();
    void aFileThatCannotBeWrittenIsTold();
    void aFullDiskLeavesTheOlderFile_data();
    void aFullDiskLeavesTheOlderFile();
};

static bool put(const QString& file, const QByteArray& bytes)
{
    QFile out(file);
    return out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size();
}

void TestOutputFolder::takesWhatIsNewEmptyOrACatalogue_data()
{
    QTest::addColumn<QString>("file"); // in the folder; empty: none
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("takes");
    QTest::newRow("empty") << QString() << QByteArray() << true;
    QTest::newRow("a file") << "notes.txt" << QByteArray("x") << false;
    QTest::newRow("a hidden file") << ".notes" << QByteArray("x") << false;
    QTest::newRow("a page without data") << "index.htm" << QByteArray("<html>") << false;
    const QByteArray marked = "{\"format\": \"quillon-catalogue\", \"version\": 1}";
    QTest::newRow("a catalogue") << "catalogue.json" << marked << true;
    QTest::newRow("a catalogue cut short") << "catalogue.json" << marked.left(40) << false;
    QTest::newRow("another catalogue.json")
        << "catalogue.json" << QByteArray("{\"format\": \"mail-order\"}") << false;
    QTest::newRow("the word as a value")
        << "catalogue.json" << QByteArray("[\"quillon-catalogue\"]") << false;
}

void TestOutputFolder::takesWhatIsNewEmptyOrACatalogue()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, takes);
    QTemporaryDir dir;
    QVERIFY(file.isEmpty() || put(dir.filePath(file), bytes));
    QString why;
    QCOMPARE(canTakeCatalogue(dir.path(), &why), takes);
    QCOMPARE(why.isEmpty(), takes);
}

void TestOutputFolder::refusingWritesNothing()
{
    QTemporaryDir dir;
    QString why;
    QVERIFY(canTakeCatalogue(dir.filePath("new/below"), &why));
    QVERIFY(!QFile::exists(dir.filePath("new")));
    QVERIFY(put(dir.filePath("file"), "x"));
    QVERIFY(!canTakeCatalogue(dir.filePath("file"), &why));
    QCOMPARE(why, "'" + dir.filePath("file") + "' is no folder");
    why.clear();
    QVERIFY(QFile::link(dir.filePath("gone"), dir.filePath("link")));
    QVERIFY(!canTakeCatalogue(dir.filePath("link"), &why));
}

void TestOutputFolder::writesWholeFilesWithTheirFolders()
{
    QTemporaryDir dir;
    QString why;
    const QString file = dir.filePath("a/b/c.txt");
    QVERIFY(writeOutput(file, "first", &why) && writeOutput(file, "2nd", &why));
    QFile read(file);
    QVERIFY(read.open(QIODevice::ReadOnly));
    QCOMPARE(read.readAll(), QByteArray("2nd"));
    QCOMPARE(QDir(dir.filePath("a/b")).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void TestOutputFolder::aFileThatCannotBeWrittenIsTold()
{
    QTemporaryDir dir;
    QVERIFY(put(dir.filePath("file"), "x"));
    QString why;
    const QString file = dir.filePath("file/c.txt");
    QVERIFY(!writeOutput(file, "text", &why));
    QVERIFY2(why.startsWith(file + ": "), qPrintable(why));
}

void TestOutputFolder::aFullDiskLeavesTheOlderFile_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("less than the file buffer") << 4000;
    QTest::newRow("more than the file buffer") << 400000;
}

void TestOutputFolder::aFullDiskLeavesTheOlderFile()
{
    QFETCH(int, bytes);
    QTemporaryDir dir;
    const QString file = dir.filePath("catalogue.json");
    QVERIFY(put(file, "older"));
    const auto fail = [&file, bytes] {
        ::signal(SIGXFSZ, SIG_IGN);
        QString why;
        return limitFileSize(1000) && !writeOutput(file, QByteArray(bytes, 'n'), &why)
            && why.startsWith(file + ": ");
    };
    QCOMPARE(runInChild(fail), 1);
    QFile left(file);
    QVERIFY(left.open(QIODevice::ReadOnly));
    QCOMPARE(left.readAll(), QByteArray("older"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList("catalogue.json"));
}

QUILLON_TEST(TestOutputFolder)
#include "test_output_folder.moc"
