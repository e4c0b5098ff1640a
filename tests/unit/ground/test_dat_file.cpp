#include "frame_fixture.h"
#include "room_tests.h"

#include "ground/dat_file.h"
#include "ground/hash.h"

#include <QtTest>

using namespace quillon;

class TestDatFile : public QObject {
    Q_OBJECT

private slots:
    void hashStartsAt5381AndTakesBytesAsSigned()
    {
        QCOMPARE(djb2Hash("", 0), quint32(5381));
        QCOMPARE(djb2Hash("a", 1), quint32(5381 * 33 + 97));
        QCOMPARE(djb2Hash("\xff", 1), quint32(5381 * 33 - 1));
        QCOMPARE(djb2Hash("\0a", 2), quint32(5381 * 33 * 33 + 97));
    }

    void writesAndReadsValuesAsTheyLieInMemory()
    {
        TempFolder folder;
        const QString path = folder.path("x.dat");
        DatWriter out;
        out.writeField(qint32(-2));
        out.writeField(quint8(7));
        out.writeField(0.5f);
        QVERIFY(!QFile::exists(path)); // not before it is whole
        QVERIFY(out.save(path));
        QCOMPARE(fileBytes(path), QByteArray("\xfe\xff\xff\xff\x07\x00\x00\x00\x3f", 9));

        qint32 number = 0;
        quint8 byte = 0;
        float part = 0;
        DatReader in(path);
        QVERIFY(in.isOpen());
        QCOMPARE(in.bytesLeft(), qint64(9));
        in.readField(&number);
        QCOMPARE(in.bytesLeft(), qint64(5));
        in.readField(&byte);
        in.readField(&part);
        QCOMPARE(number, qint32(-2));
        QCOMPARE(int(byte), 7);
        QCOMPARE(part, 0.5f);
        QCOMPARE(in.bytesLeft(), qint64(0));
        QCOMPARE(filesIn(folder.path()), QStringList("x.dat"));
    }

    void shortReadLeavesTheRestOfTheField()
    {
        TempFolder folder;
        writeFile(folder.path("x.dat"), QByteArray("\x11\x22", 2));
        DatReader in(folder.path("x.dat"));
        quint32 field = 0xaabbccdd;
        in.readField(&field);
        QCOMPARE(field, quint32(0xaabb2211));
        in.readField(&field);
        QCOMPARE(field, quint32(0xaabb2211));
        QCOMPARE(in.bytesLeft(), qint64(0));
    }

    void textIsReadAsUtf8AndEndsWithTheFile()
    {
        TempFolder folder;
        writeFile(folder.path("x.dat"),
            QByteArray("b\xc3\xa4"
                       "umed",
                7));
        DatReader in(folder.path("x.dat"));
        QCOMPARE(in.readText(6),
            QString::fromUtf8("b\xc3\xa4"
                              "ume"));
        QCOMPARE(in.bytesLeft(), qint64(1));
        QCOMPARE(in.readText(3), QString("d"));
        QCOMPARE(in.bytesLeft(), qint64(0));
    }

    void aFileThatIsNotThereGivesNothing()
    {
        TempFolder folder;
        DatReader in(folder.path("missing"));
        quint32 field = 0xaabbccdd;
        in.readField(&field);
        QVERIFY(!in.isOpen());
        QCOMPARE(in.bytesLeft(), qint64(0));
        QCOMPARE(field, quint32(0xaabbccdd));
    }

    void filesAreReadAndWrittenBesideEachOther()
    {
        TempFolder folder;
        writeFile(folder.path("x.dat"), "ab");
        DatReader first(folder.path("x.dat"));
        DatReader second(folder.path("x.dat"));
        DatWriter copy;
        for (DatReader* each : {&first, &second}) {
            quint16 field = 0;
            each->readField(&field);
            copy.writeField(field);
        }
        QVERIFY(copy.save(folder.path("y.dat")));
        QCOMPARE(fileBytes(folder.path("y.dat")), QByteArray("abab"));
    }

    void whatCameWholeIsToldFromWhatDidNot()
    {
        TempFolder folder;
        QVERIFY(!DatReader(folder.path("missing.dat")).isWhole());
        writeFile(folder.path("x.dat"), "ab");
        QVERIFY(DatReader(folder.path("x.dat")).isWhole());
        writeFile(folder.path("empty.dat"), "");
        QVERIFY(DatReader(folder.path("empty.dat")).isWhole());
        QVERIFY(QDir().mkpath(folder.path("folder.dat")));
        QVERIFY(!DatReader(folder.path("folder.dat")).isWhole());
    }

    void aSaveThatFailsSaysSo()
    {
        TempFolder folder;
        DatWriter out;
        out.writeField(quint8('y'));
        QVERIFY(!out.save(folder.path("missing/x.dat")));
        QVERIFY(out.save(folder.path("x.dat")));
        QCOMPARE(fileBytes(folder.path("x.dat")), QByteArray("y"));
    }
};

QUILLON_TEST(TestDatFile)
#include "test_dat_file.moc"
