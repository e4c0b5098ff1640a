// gzip, whichever way it is done: what comes back, what the gzip program makes of it, and damage.
#include "room_tests.h"

#include "ground/host_gzip.h"

#include <QBuffer>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QtTest>

#include <algorithm>
#include <cstring>

using namespace quillon;

class TestHostGzip : public QObject {
    Q_OBJECT
private slots:
    void whatIsPackedComesBack_data();
    void whatIsPackedComesBack();
    void theGzipProgramReadsIt();
    void whatTheGzipProgramPacksIsRead();
    void asMuchAsFitsIsRead();
    void membersInARowAreOne();
    void whatFollowsTheLastMemberIsLeftAlone();
    void aDeviceMayGiveLessThanItIsAskedFor();
    void aCutGzipGivesWhatItHas();
    void aDamagedGzipIsNotAllThere();
    void whatIsNoGzipGivesNothing_data();
    void whatIsNoGzipGivesNothing();
    void aDeviceThatDoesNotOpenGivesNothing();
    void moreThanWantedIsNotUnpacked();
    void aDeviceThatTakesNothingIsToldOf();
};

static QByteArray someText(int bytes) // compressible, not periodic
{
    QByteArray text;
    for (uint i = 1; text.size() < bytes; i = i * 1664525u + 1013904223u)
        text += QByteArray::number(i % 1000) + ", ";
    text.truncate(bytes);
    return text;
}

static QByteArray packed(const QByteArray& bytes)
{
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    return writePacked(&out, bytes) ? out.data() : QByteArray();
}

static QByteArray read(QIODevice* device, int maxBytes)
{
    QByteArray room(maxBytes + 1, '#');
    const int count = readPacked(device, room.data(), maxBytes);
    return room.at(maxBytes) == '#' ? room.left(count) : QByteArray("written too far");
}

static QByteArray read(QByteArray in, int maxBytes)
{
    QBuffer buffer(&in);
    buffer.open(QIODevice::ReadOnly);
    return read(&buffer, maxBytes);
}

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

static void addSizeRows()
{
    QTest::addColumn<int>("bytes");
    for (int bytes : {0, 1, 1000, 65535, 65536, 65537, 300000})
        QTest::newRow(QByteArray::number(bytes).constData()) << bytes;
}

void TestHostGzip::whatIsPackedComesBack_data()
{
    addSizeRows();
}

void TestHostGzip::whatIsPackedComesBack()
{
    QFETCH(int, bytes);
    const QByteArray text = someText(bytes), gzip = packed(text);
    QCOMPARE(gzip.left(4), QByteArray("\x1f\x8b\x08\0", 4));
    QCOMPARE(read(gzip, bytes + 10), text);
    QByteArray all = "before ";
    QVERIFY(unpackBytes(gzip, bytes + 7, &all));
    QCOMPARE(all, "before " + text);
}

void TestHostGzip::theGzipProgramReadsIt()
{
    const QByteArray text = someText(200000);
    QCOMPARE(throughGzip(QStringList() << "-dc", packed(text)), text);
}

void TestHostGzip::whatTheGzipProgramPacksIsRead()
{
    const QByteArray text = someText(200000);
    const QByteArray gzip = throughGzip(QStringList() << "-1c", text);
    QCOMPARE(read(gzip, text.size()), text);
    QByteArray all;
    QVERIFY(unpackBytes(gzip, text.size(), &all));
    QCOMPARE(all, text);
}

void TestHostGzip::asMuchAsFitsIsRead()
{
    const QByteArray text = someText(200000), gzip = packed(text);
    for (int room : {0, 1, 65536, 65537, 199999})
        QCOMPARE(read(gzip, room), text.left(room));
}

void TestHostGzip::membersInARowAreOne()
{
    const QByteArray text = someText(70000);
    const QByteArray gzip = packed(text) + packed(QByteArray()) + packed("more");
    QCOMPARE(read(gzip, 80000), text + "more");
    QByteArray all;
    QVERIFY(unpackBytes(gzip, 80000, &all));
    QCOMPARE(all, text + "more");
}

void TestHostGzip::whatFollowsTheLastMemberIsLeftAlone()
{
    QCOMPARE(read(packed("text") + "padding", 100), QByteArray("text"));
    QByteArray all;
    QVERIFY(unpackBytes(packed("text") + QByteArray(512, '\0'), 100, &all));
    QCOMPARE(all, QByteArray("text"));
}

namespace {

class Trickle : public QBuffer {
protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        return QBuffer::readData(data, std::min<qint64>(maxSize, 7));
    }
};

class Full : public QBuffer {
protected:
    qint64 writeData(const char*, qint64) override
    {
        return -1;
    }
};

} // namespace

void TestHostGzip::aDeviceMayGiveLessThanItIsAskedFor()
{
    const QByteArray text = someText(20000);
    Trickle device;
    device.setData(packed(text));
    QVERIFY(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    QCOMPARE(read(&device, 30000), text);
}

void TestHostGzip::aCutGzipGivesWhatItHas()
{
    const QByteArray text = someText(20000), gzip = packed(text);
    for (int kept = 0; kept < gzip.size(); kept += 97) {
        const QByteArray got = read(gzip.left(kept), 30000);
        QVERIFY(text.startsWith(got));
        QVERIFY(kept < 4000 || got.size() > kept);
        QByteArray all;
        QVERIFY(!unpackBytes(gzip.left(kept), 30000, &all));
    }
}

void TestHostGzip::aDamagedGzipIsNotAllThere()
{
    const QByteArray text = someText(20000);
    QByteArray gzip = packed(text);
    gzip[gzip.size() - 6] = char(gzip.at(gzip.size() - 6) ^ 1); // of the check sum
    QCOMPARE(read(gzip, 30000), text);
    QByteArray all;
    QVERIFY(!unpackBytes(gzip, 30000, &all));
}

void TestHostGzip::whatIsNoGzipGivesNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a preset") << QByteArray("{ \"file_version\" : \"0.6.0.0\" }");
    QTest::newRow("the first byte") << QByteArray("\x1f");
    QTest::newRow("the first byte of something else") << QByteArray("\x1f preset");
}

void TestHostGzip::whatIsNoGzipGivesNothing()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(read(bytes, 100), QByteArray());
    QByteArray all;
    QVERIFY(!unpackBytes(bytes, 100, &all));
    QCOMPARE(all, QByteArray());
}

void TestHostGzip::aDeviceThatDoesNotOpenGivesNothing()
{
    QFile missing(QLatin1String("/no such folder/x"));
    QCOMPARE(read(&missing, 10), QByteArray());
}

void TestHostGzip::moreThanWantedIsNotUnpacked()
{
    const QByteArray text = someText(200000);
    QByteArray all;
    QVERIFY(!unpackBytes(packed(text), text.size() - 1, &all));
    QVERIFY(all.size() < text.size());
}

void TestHostGzip::aDeviceThatTakesNothingIsToldOf()
{
    Full device;
    QVERIFY(device.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QVERIFY(!writePacked(&device, someText(100000)));
    QByteArray noise; // more than one piece of it once packed
    for (quint32 i = 1; noise.size() < 300000; i = i * 1664525u + 1013904223u)
        noise += char(i >> 24);
    QVERIFY(!writePacked(&device, noise));
    QBuffer readOnly;
    QVERIFY(readOnly.open(QIODevice::ReadOnly));
    QTest::ignoreMessage(QtWarningMsg, "QIODevice::write (QBuffer): ReadOnly device");
    QVERIFY(!writePacked(&readOnly, "text"));
}

QUILLON_TEST_WITHOUT_APPLICATION(TestHostGzip)
#include "test_host_gzip.moc"
