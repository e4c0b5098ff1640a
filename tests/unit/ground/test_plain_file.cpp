// Which files are opened, and that the files of the data folder are opened in this way only.
#include "frame_fixture.h"
#include "full_pipe.h"
#include "room_tests.h"

#include "ground/dat_file.h"
#include "ground/plain_file.h"
#include "ground/whole_file.h"

#include <QtTest>

using namespace quillon;

class TestPlainFile : public QObject {
    Q_OBJECT

private slots:
    void aPlainFileIsOpened()
    {
        TempFolder folder;
        QFile file(folder.path("x"));
        QVERIFY(openPlainFile(&file, QIODevice::WriteOnly)); // one that is not there is created
        QCOMPARE(file.write("ab"), qint64(2));
        file.close();
        QVERIFY(openPlainFile(&file, QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("ab"));
    }

    void aMissingFileCannotBeRead()
    {
        TempFolder folder;
        QFile file(folder.path("x"));
        QVERIFY(mayBeOpened(folder.path("x")));
        QVERIFY(!openPlainFile(&file, QIODevice::ReadOnly));
        QVERIFY(filesIn(folder.path()).isEmpty());
    }

    void aFolderIsNotOpened()
    {
        TempFolder folder;
        QFile file(folder.path());
        QVERIFY(!mayBeOpened(folder.path()));
        QVERIFY(!openPlainFile(&file, QIODevice::ReadOnly));
    }

    void aLinkToAPlainFileIsOpened()
    {
#ifdef Q_OS_UNIX
        TempFolder folder;
        writeFile(folder.path("x"), "ab");
        QVERIFY(QFile::link(folder.path("x"), folder.path("link")));
        QFile file(folder.path("link"));
        QVERIFY(openPlainFile(&file, QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("ab"));
#endif
    }

    void aLinkToADeviceIsNotOpened()
    {
#ifdef Q_OS_UNIX
        TempFolder folder;
        QVERIFY(QFile::link(QLatin1String("/dev/zero"), folder.path("link")));
        QFile file(folder.path("link"));
        QVERIFY(!openPlainFile(&file, QIODevice::ReadOnly));
        QVERIFY(!openPlainFile(&file, QIODevice::WriteOnly));
#endif
    }

    void aPipeIsNotOpened_data()
    {
        QTest::addColumn<bool>("behindLink");
        QTest::newRow("itself") << false;
        QTest::newRow("behind a link") << true;
    }
    void aPipeIsNotOpened()
    {
        QFETCH(bool, behindLink);
#ifdef Q_OS_UNIX
        TempFolder folder;
        const FullPipe pipe(folder.path("pipe"));
        QVERIFY(QFile::link(folder.path("pipe"), folder.path("link")));
        QFile file(folder.path(behindLink ? "link" : "pipe"));
        QVERIFY(!mayBeOpened(file.fileName()));
        QVERIFY(!openPlainFile(&file, QIODevice::ReadOnly));
        QVERIFY(!openPlainFile(&file, QIODevice::WriteOnly));
        QVERIFY(!file.isOpen());
        QVERIFY(pipe.isUntouched());
#else
        Q_UNUSED(behindLink);
#endif
    }

    void aPipeInPlaceOfADataFileIsNotRead()
    {
#ifdef Q_OS_UNIX
        TempFolder folder;
        const FullPipe pipe(folder.path("x.dat"));
        DatReader in(folder.path("x.dat"));
        quint32 field = 7;
        in.readField(&field);
        QVERIFY(!in.isOpen());
        QCOMPARE(field, 7u);
        QVERIFY(pipe.isUntouched());
#endif
    }

    void aPipeIsNotWritten()
    {
#ifdef Q_OS_UNIX
        TempFolder folder;
        const FullPipe pipe(folder.path("x"));
        QVERIFY(!writePlainFile(folder.path("x"), "y"));
        QVERIFY(!writeWholeFile(folder.path("x"), "y"));
        QVERIFY(!overwriteFile(folder.path("x"), "y", folder.path()));
        QVERIFY(pipe.isUntouched());
        QCOMPARE(filesIn(folder.path()).size(), 1);
#endif
    }

    // Some systems give files without one; so does a moment in which it cannot be asked for.
    void aFileWithoutALengthIsNoEmptyOne()
    {
#ifdef Q_OS_LINUX
        QFile file("/proc/version");
        QByteArray bytes;
        QVERIFY(openPlainFile(&file, QIODevice::ReadOnly));
        QCOMPARE(file.size(), qint64(0));
        QVERIFY(readAllOf(&file, kLargestDatFile, &bytes));
        QVERIFY(bytes.startsWith("Linux"));
        QVERIFY(DatReader("/proc/version").bytesLeft() == bytes.size());
        QVERIFY(file.seek(0) && readAllOf(&file, 5, &bytes));
        QCOMPARE(bytes, QByteArray("Linux"));
#endif
    }

    // A file without an end, as far as a start is concerned: it has no blocks, only a length.
    void noMoreOfADataFileIsReadThanItsLimit()
    {
        TempFolder folder;
        writeFile(folder.path("x.dat"), "");
        QVERIFY(QFile::resize(folder.path("x.dat"), kLargestDatFile + 1000));
        DatReader in(folder.path("x.dat"));
        QCOMPARE(in.bytesLeft(), kLargestDatFile);
        QByteArray all(int(kLargestDatFile) + 4, 'x');
        in.read(all.data(), all.size());
        QCOMPARE(in.bytesLeft(), qint64(0));
        QCOMPARE(all.indexOf('x'), int(kLargestDatFile));
        quint32 field = 7;
        in.readField(&field);
        QCOMPARE(field, 7u);
    }
};

QUILLON_TEST(TestPlainFile)
#include "test_plain_file.moc"
