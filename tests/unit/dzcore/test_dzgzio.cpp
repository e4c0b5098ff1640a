// The gzip device, against the gzip program and against damaged input of every kind.
#include "frame_fixture.h"
#include "room_tests.h"

#include "dzgzio.h"

#include <QBuffer>
#include <QProcess>
#include <QTextStream>
#include <QtTest>

// What the gzip program makes of the bytes; empty with a warning when it does not run.
static QByteArray throughGzip(const QStringList& options, const QByteArray& in)
{
    QProcess gzip;
    gzip.start(QLatin1String("gzip"), options);
    if (!gzip.waitForStarted())
        return QByteArray();
    gzip.write(in);
    gzip.closeWriteChannel();
    gzip.waitForFinished(-1);
    return gzip.readAllStandardOutput();
}

static QByteArray packed(const QByteArray& plain)
{
    return throughGzip(QStringList() << "-c", plain);
}

static QByteArray unpackedAll(QByteArray in, int bufferSize = 65500)
{
    QBuffer buffer(&in);
    DzGzIO gz(&buffer, 6, bufferSize);
    return gz.open(QIODevice::ReadOnly) ? gz.readAll() : QByteArray("did not open");
}

static QByteArray written(const QByteArray& plain, int level, int bufferSize, int piece)
{
    QBuffer buffer;
    DzGzIO gz(&buffer, level, bufferSize);
    if (!gz.open(QIODevice::WriteOnly))
        return "did not open";
    for (int at = 0; at < plain.size(); at += piece)
        gz.write(plain.mid(at, piece));
    gz.close();
    return gz.hasFailed() ? QByteArray("failed") : buffer.data();
}

static QByteArray someText(int bytes) // compressible, not periodic
{
    QByteArray text;
    for (uint i = 1; text.size() < bytes; i = i * 1664525u + 1013904223u)
        text += QByteArray::number(i % 1000) + ", ";
    text.truncate(bytes);
    return text;
}

class TestDzGzIO : public QObject {
    Q_OBJECT
private slots:
    void gzipReadsWhatIsWritten_data();
    void gzipReadsWhatIsWritten();
    void readsWhatGzipWrites_data();
    void readsWhatGzipWrites();
    void readsMembersInARowAsOneStream();
    void leavesWhatFollowsTheLastMember();
    void bytesThatAreNoGzipOpenAndReadAsNothing_data();
    void bytesThatAreNoGzipOpenAndReadAsNothing();
    void cutInputGivesWhatCouldBeUnpacked();
    void everyCutOfASmallFileEndsWithoutMoreThanItHad();
    void aWrongChecksumIsAnErrorAfterTheData();
    void readsOnlyAsMuchAsAsked();
    void knowsWhereItEnds();
    void textStreamsReadLines();
    void isSequentialAndOneWayOnly();
    void doesNotOpenOverAMissingFile();
    void opensAndClosesTheDeviceItself();
    void leavesAnOpenDeviceOpen();
    void aFullDiskIsTold();
    void failsWhenTheHostCallIsToldTo();
};

void TestDzGzIO::gzipReadsWhatIsWritten_data()
{
    QTest::addColumn<QByteArray>("plain");
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("bufferSize");
    QTest::addColumn<int>("piece");
    QTest::newRow("empty") << QByteArray() << 6 << 65500 << 1;
    QTest::newRow("one byte") << QByteArray("x") << 6 << 65536 << 1;
    QTest::newRow("text") << someText(300000) << 6 << 65536 << 300000;
    QTest::newRow("many small writes") << someText(5000) << 9 << 100 << 7;
    QTest::newRow("buffer of one byte") << someText(500) << 6 << 1 << 500;
    QTest::newRow("stored") << someText(70000) << 0 << 65500 << 70000;
    QTest::newRow("level out of range") << someText(1000) << 77 << 65500 << 1000;
}

void TestDzGzIO::gzipReadsWhatIsWritten()
{
    QFETCH(QByteArray, plain);
    QFETCH(int, level);
    QFETCH(int, bufferSize);
    QFETCH(int, piece);
    const QByteArray file = written(plain, level, bufferSize, piece);
    QCOMPARE(file.left(2).toHex(), QByteArray("1f8b"));
    QCOMPARE(throughGzip(QStringList() << "-dc", file), plain);
    QCOMPARE(unpackedAll(file, bufferSize), plain);
}

void TestDzGzIO::readsWhatGzipWrites_data()
{
    QTest::addColumn<QByteArray>("plain");
    QTest::addColumn<int>("bufferSize");
    QTest::newRow("one byte") << QByteArray("x") << 65500;
    QTest::newRow("text") << someText(200000) << 65536;
    QTest::newRow("zeros that unpack a thousandfold") << QByteArray(10000000, '\0') << 65500;
    QTest::newRow("buffer of one byte") << someText(2000) << 1;
}

void TestDzGzIO::readsWhatGzipWrites()
{
    QFETCH(QByteArray, plain);
    QFETCH(int, bufferSize);
    const QByteArray file = packed(plain);
    QVERIFY2(!file.isEmpty(), "the gzip program does not run");
    QVERIFY(unpackedAll(file, bufferSize) == plain);
}

void TestDzGzIO::readsMembersInARowAsOneStream()
{
    QCOMPARE(
        unpackedAll(packed("first ") + packed("") + packed("third")), QByteArray("first third"));
}

void TestDzGzIO::leavesWhatFollowsTheLastMember()
{
    QByteArray in = packed("text") + QByteArray(512, '\0');
    QBuffer buffer(&in);
    DzGzIO gz(&buffer);
    QVERIFY(gz.open(QIODevice::ReadOnly));
    QCOMPARE(gz.readAll(), QByteArray("text"));
    QVERIFY(!gz.hasFailed());
}

void TestDzGzIO::bytesThatAreNoGzipOpenAndReadAsNothing_data()
{
    QTest::addColumn<QByteArray>("in");
    QTest::newRow("JSON text") << QByteArray("{\n\t\"file_version\" : \"0.6.0.0\"");
    QTest::newRow("only the magic number") << QByteArray("\x1f\x8b");
    QTest::newRow("first magic byte, then text") << QByteArray("\x1ftext that goes on");
    QTest::newRow("unknown method") << QByteArray("\x1f\x8b\x07\x00\x00\x00\x00\x00\x00\x03", 10);
    QTest::newRow("empty") << QByteArray();
}

void TestDzGzIO::bytesThatAreNoGzipOpenAndReadAsNothing()
{
    QFETCH(QByteArray, in);
    QBuffer buffer(&in);
    DzGzIO gz(&buffer);
    QVERIFY(gz.open(QIODevice::ReadOnly));
    char data[16];
    QCOMPARE(gz.read(data, sizeof data), qint64(-1));
    QVERIFY(gz.hasFailed());
    QVERIFY(!gz.errorString().isEmpty());
}

void TestDzGzIO::cutInputGivesWhatCouldBeUnpacked()
{
    const QByteArray plain = someText(200000);
    const QByteArray file = packed(plain);
    const QByteArray got = unpackedAll(file.left(file.size() / 2));
    QVERIFY(got.size() > plain.size() / 4);
    QVERIFY(got.size() < plain.size());
    QVERIFY(plain.startsWith(got));
}

void TestDzGzIO::everyCutOfASmallFileEndsWithoutMoreThanItHad()
{
    const QByteArray plain = someText(300);
    const QByteArray file = packed(plain);
    for (int size = 0; size < file.size(); ++size) {
        QByteArray in = file.left(size);
        QBuffer buffer(&in);
        DzGzIO gz(&buffer);
        QVERIFY(gz.open(QIODevice::ReadOnly));
        QVERIFY2(plain.startsWith(gz.readAll()), qPrintable(QString::number(size)));
        QVERIFY2(gz.hasFailed(), qPrintable(QString::number(size)));
        char more;
        QCOMPARE(gz.read(&more, 1), qint64(-1));
    }
}

void TestDzGzIO::aWrongChecksumIsAnErrorAfterTheData()
{
    QByteArray in = packed("some text");
    in[in.size() - 8] = char(in.at(in.size() - 8) ^ 1);
    QBuffer buffer(&in);
    DzGzIO gz(&buffer);
    QVERIFY(gz.open(QIODevice::ReadOnly));
    QCOMPARE(gz.readAll(), QByteArray("some text"));
    QVERIFY(gz.hasFailed());
}

void TestDzGzIO::readsOnlyAsMuchAsAsked()
{
    const QByteArray plain = someText(100000);
    QByteArray in = packed(plain);
    QBuffer buffer(&in);
    DzGzIO gz(&buffer, 6, 512);
    QVERIFY(gz.open(QIODevice::ReadOnly));
    QCOMPARE(gz.read(1024), plain.left(1024));
    QVERIFY2(buffer.pos() < in.size() / 2, "it has unpacked much more than asked for");
    QCOMPARE(gz.read(10), plain.mid(1024, 10));
}

void TestDzGzIO::knowsWhereItEnds()
{
    QByteArray in = packed("abc");
    QBuffer buffer(&in);
    DzGzIO gz(&buffer);
    QVERIFY(gz.atEnd()); // not open
    QVERIFY(gz.open(QIODevice::ReadOnly));
    QVERIFY(!gz.atEnd());
    QVERIFY(gz.bytesAvailable() > 0);
    QCOMPARE(gz.read(3), QByteArray("abc"));
    QVERIFY(gz.atEnd());
    QCOMPARE(gz.bytesAvailable(), qint64(0));
    char more;
    QCOMPARE(gz.read(&more, 1), qint64(0)); // the end, not an error
    QVERIFY(!gz.hasFailed());
}

void TestDzGzIO::textStreamsReadLines()
{
    QByteArray in = packed("one\ntwo\nthree");
    QBuffer buffer(&in);
    DzGzIO gz(&buffer);
    QVERIFY(gz.open(QIODevice::ReadOnly));
    QTextStream stream(&gz);
    QStringList lines;
    while (!stream.atEnd())
        lines.append(stream.readLine());
    QCOMPARE(lines,
        QStringList() << "one"
                      << "two"
                      << "three");
}

void TestDzGzIO::isSequentialAndOneWayOnly()
{
    QBuffer buffer;
    DzGzIO gz(&buffer);
    QVERIFY(gz.isSequential());
    QVERIFY(!gz.open(QIODevice::ReadWrite));
    QVERIFY(!gz.open(QIODevice::WriteOnly | QIODevice::Append));
    QVERIFY(!gz.open(QIODevice::NotOpen));
    QVERIFY(!buffer.isOpen());
    QVERIFY(gz.open(QIODevice::WriteOnly));
    QVERIFY(!gz.open(QIODevice::WriteOnly)); // open already
}

void TestDzGzIO::doesNotOpenOverAMissingFile()
{
    TempFolder folder;
    QFile file(folder.path("absent/file.duf"));
    DzGzIO reader(&file);
    QVERIFY(!reader.open(QIODevice::ReadOnly));
    QVERIFY(!reader.isOpen());
    QVERIFY(!reader.errorString().isEmpty());
    DzGzIO writer(&file);
    QVERIFY(!writer.open(QIODevice::WriteOnly));
    DzGzIO nothing(nullptr);
    QVERIFY(!nothing.open(QIODevice::ReadOnly));
}

void TestDzGzIO::opensAndClosesTheDeviceItself()
{
    TempFolder folder;
    QFile file(folder.path("pose.duf"));
    DzGzIO gz(&file);
    QVERIFY(gz.open(QIODevice::WriteOnly));
    QCOMPARE(gz.write("text"), qint64(4));
    gz.close();
    QVERIFY(!file.isOpen());
    QVERIFY(gz.open(QIODevice::ReadOnly)); // the same object again
    QCOMPARE(gz.readAll(), QByteArray("text"));
}

void TestDzGzIO::leavesAnOpenDeviceOpen()
{
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    DzGzIO gz(&buffer);
    QVERIFY(!gz.open(QIODevice::ReadOnly)); // it is open the other way
    QVERIFY(gz.open(QIODevice::WriteOnly));
    gz.write("text");
    gz.close();
    QVERIFY(buffer.isOpen());
    QCOMPARE(unpackedAll(buffer.data()), QByteArray("text"));
}

void TestDzGzIO::aFullDiskIsTold()
{
    QFile full("/dev/full");
    QVERIFY2(full.exists(), "a Unix has it");
    DzGzIO gz(&full);
    QVERIFY(gz.open(QIODevice::WriteOnly));
    gz.write("little enough to stay in buffers until the end");
    gz.close();
    QVERIFY(gz.hasFailed());
    QVERIFY(!gz.errorString().isEmpty());
}

static bool failEveryRead(const char* name, const void*)
{
    return qstrcmp(name, "gzRead") == 0;
}

void TestDzGzIO::failsWhenTheHostCallIsToldTo()
{
    QByteArray in = packed("text");
    QBuffer buffer(&in);
    DzGzIO gz(&buffer);
    QVERIFY(gz.open(QIODevice::ReadOnly));
    dzHostCallHook = failEveryRead;
    char data[4];
    const qint64 got = gz.read(data, 4);
    dzHostCallHook = nullptr;
    QCOMPARE(got, qint64(-1));
    QCOMPARE(gz.read(4), QByteArray("text"));
}

QUILLON_TEST(TestDzGzIO)
#include "test_dzgzio.moc"
