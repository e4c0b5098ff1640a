// The hash of pose files against its literal form.
#include "room_tests.h"

#include "ground/hash.h"
#include "reference/hash_reference.h"

#include <QtTest>

#include <random>

using namespace quillon;

class TestHash : public QObject {
    Q_OBJECT
private slots:
    void noBytesGiveTheStart();
    void everyShortLengthEqualsTheLiteralForm();
    void extremeBytesEqualTheLiteralForm_data();
    void extremeBytesEqualTheLiteralForm();
    void longTextsEqualTheLiteralForm();
    void theStartNeedNotBeAligned();
};

static QByteArray randomBytes(std::minstd_rand* random, int count)
{
    QByteArray bytes(count, 0);
    for (char& each : bytes)
        each = char((*random)() >> 8);
    return bytes;
}

static bool isLiteral(const QByteArray& bytes)
{
    return djb2Hash(bytes.constData(), bytes.size())
        == reference::djb2Hash(bytes.constData(), bytes.size());
}

void TestHash::noBytesGiveTheStart()
{
    QCOMPARE(djb2Hash(nullptr, 0), quint32(5381));
}

void TestHash::everyShortLengthEqualsTheLiteralForm()
{
    std::minstd_rand random(3);
    for (int length = 0; length <= 600; ++length)
        QVERIFY2(isLiteral(randomBytes(&random, length)), qPrintable(QString::number(length)));
}

// Nothing may run over where all bytes are the lowest or the highest, and each place counts.
void TestHash::extremeBytesEqualTheLiteralForm_data()
{
    QTest::addColumn<char>("byte");
    for (const int byte : {-128, -1, 0, 1, 127})
        QTest::newRow(qPrintable(QString::number(byte))) << char(byte);
}

void TestHash::extremeBytesEqualTheLiteralForm()
{
    QFETCH(char, byte);
    QVERIFY(isLiteral(QByteArray(1000, byte)));
    for (int place = 0; place < 400; ++place) {
        QByteArray bytes(400, byte);
        bytes[place] = char(byte ^ 0x80);
        QVERIFY2(isLiteral(bytes), qPrintable(QString::number(place)));
    }
}

void TestHash::longTextsEqualTheLiteralForm()
{
    std::minstd_rand random(4);
    for (const int length : {4095, 4096, 65536, 65537, 524287, 524288})
        QVERIFY2(isLiteral(randomBytes(&random, length)), qPrintable(QString::number(length)));
}

void TestHash::theStartNeedNotBeAligned()
{
    std::minstd_rand random(5);
    const QByteArray bytes = randomBytes(&random, 1000);
    for (int from = 0; from < 64; ++from) {
        const char* start = bytes.constData() + from;
        QCOMPARE(djb2Hash(start, 900), reference::djb2Hash(start, 900));
    }
}

QUILLON_TEST_WITHOUT_APPLICATION(TestHash)
#include "test_hash.moc"
