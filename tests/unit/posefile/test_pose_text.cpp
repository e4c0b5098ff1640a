// Pose files as text: reading, entries, numbers.
#include "full_pipe.h"
#include "pose_fixture.h"
#include "room_tests.h"

#include "ground/host_gzip.h"
#include "posefile/gzip_file.h"
#include "posefile/pose_text.h"

#include "dzhostcalls.h"

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

using namespace quillon;

class TestPoseText : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void numbers_data();
    void numbers();
    void channelCodes_data();
    void channelCodes();
    void nodeNames_data();
    void nodeNames();
    void values_data();
    void values();
    void entriesRunFromUrlToTheNextBracket();
    void entriesOf_data();
    void entriesOf();
    void lineFeedsInsideAnEntryDoNotCount();
    void carriageReturnsCount();
    void charactersBeyondLatin1MatchNothing();
    void textEndsAtTheFirstZeroByte();

    void plainAndCompressedGiveTheSameText();
    void aPlainFileIsOpenedOnce();
    void aPlainFileNeedsNoGzipDevice();
    void theTerminatorReplacesTheLastByte();
    void withoutTerminatorAllBytesStay();
    void aLongFileIsCutToTheBuffer_data();
    void aLongFileIsCutToTheBuffer();
    void nothingIsReadFrom_data();
    void nothingIsReadFrom();
    void aPipeIsNotRead();
    void aLinkToAPlainFileIsRead();
    void bytesAreUnpackedUpToALimit();
    void damagedBytesAreNotUnpacked_data();
    void damagedBytesAreNotUnpacked();
    void aCutGzipFileGivesWhatCouldBeUnpacked();
    void aGzipBombStaysWithinTheBuffer();
    void theBufferLivesBetweenCreateAndFree();
};

// The fixture's folder and buffer without a figure.
static TempFolder* g_folder = nullptr;

static QString fileWith(const char* name, const QByteArray& bytes)
{
    const QString path = g_folder->path(QLatin1String(name));
    writeFile(path, bytes);
    return path;
}

void TestPoseText::init()
{
    g_folder = new TempFolder;
    createReadBuffer();
}

void TestPoseText::cleanup()
{
    freeReadBuffer();
    delete g_folder;
}

// ---- numbers

void TestPoseText::numbers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<float>("value");
    QTest::newRow("whole") << QByteArray("12") << 12.f;
    QTest::newRow("negative") << QByteArray("-44.6") << -44.6f;
    QTest::newRow("blanks, tab and carriage return") << QByteArray(" \t-5.0e-07 \r") << -5e-7f;
    QTest::newRow("line feeds around") << QByteArray("\n   12.5\n  ") << 12.5f;
    QTest::newRow("exponent") << QByteArray("-5.078125e-07") << -5.078125e-07f;
    QTest::newRow("big E") << QByteArray("1E2") << 100.f;
    QTest::newRow("plus sign") << QByteArray("+5") << 5.f;
    QTest::newRow("no digit before the point") << QByteArray(".5") << 0.5f;
    QTest::newRow("no digit behind the point") << QByteArray("5.") << 5.f;
    QTest::newRow("as large as a float holds") << QByteArray("3.4e38") << 3.4e38f;
    QTest::newRow("too large for a float") << QByteArray("1e39") << 0.f;
    QTest::newRow("too large for a double") << QByteArray("1e999") << 0.f;
    QTest::newRow("too small") << QByteArray("1e-999") << 0.f;
    QTest::newRow("too small and negative") << QByteArray("-2.6e-076") << 0.f;
    QTest::newRow("minus zero") << QByteArray("-0.0") << 0.f;
    QTest::newRow("nan") << QByteArray("nan") << 0.f;
    QTest::newRow("inf") << QByteArray("inf") << 0.f;
    QTest::newRow("-infinity") << QByteArray("-infinity") << 0.f;
    QTest::newRow("empty") << QByteArray() << 0.f;
    QTest::newRow("blanks only") << QByteArray("  \t ") << 0.f;
    QTest::newRow("sign only") << QByteArray("-") << 0.f;
    QTest::newRow("plus and minus") << QByteArray("+-5") << 0.f;
    QTest::newRow("plus and plus") << QByteArray("++5") << 0.f;
    QTest::newRow("word") << QByteArray("true") << 0.f;
    QTest::newRow("string") << QByteArray("\"5\"") << 0.f;
    QTest::newRow("unit behind it") << QByteArray("5cm") << 0.f;
    QTest::newRow("two numbers") << QByteArray("1 2") << 0.f;
    QTest::newRow("broken by a line feed") << QByteArray("1\n2") << 0.f;
    QTest::newRow("hexadecimal") << QByteArray("0x10") << 0.f;
    QTest::newRow("exponent without digits") << QByteArray("1e") << 0.f;
    QTest::newRow("third element of a key") << QByteArray("12.5, [ \"LINEAR\" ") << 0.f;
}

void TestPoseText::numbers()
{
    QFETCH(QByteArray, text);
    QFETCH(float, value);
    const TextSpan span = {text.constData(), text.constData() + text.size()};
    QVERIFY(sameBits(numberOf(span), value));
}

// ---- the primitives

void TestPoseText::channelCodes_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("code");
    QTest::newRow("rotation x") << "selection/hip:?rotation/x/value" << 1;
    QTest::newRow("rotation y") << "selection/hip:?rotation/y/value" << 2;
    QTest::newRow("rotation z") << "selection/hip:?rotation/z/value" << 3;
    QTest::newRow("translation x") << "selection/hip:?translation/x/value" << 4;
    QTest::newRow("translation y") << "selection:?translation/y/value" << 5;
    QTest::newRow("translation z") << "selection/hip:?translation/z/value" << 6;
    QTest::newRow("control") << "selection#pCTRLHipBend:?value/value" << 7;
    QTest::newRow("scale") << "selection/hip:?scale/x/value" << 0;
    QTest::newRow("general scale") << "selection/hip:?scale/general/value" << 0;
    QTest::newRow("rotation without axis") << "selection/hip:?rotation/value" << 0;
    QTest::newRow("translation without axis") << "selection/hip:?translation" << 0;
    QTest::newRow("rotation without slash") << "selection/hip:?rotation x/x/value" << 0;
    QTest::newRow("another case") << "selection/hip:?Rotation/x/value" << 0;
    QTest::newRow("the axis may stand elsewhere") << "/y/value ?rotation/" << 2;
    QTest::newRow("x goes before y") << "?rotation/y/value /x/value" << 1;
    QTest::newRow("rotation goes before translation") << "?translation/x/value ?rotation/" << 1;
    QTest::newRow("a control goes before all") << "?rotation/x/value ?value/value" << 7;
    QTest::newRow("empty") << "" << 0;
}

void TestPoseText::channelCodes()
{
    QFETCH(QString, entry);
    QTEST(channelOf(entry), "code");
}

void TestPoseText::nodeNames_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("name");
    QTest::newRow("bone") << "\"url\" : \"name://@selection/lShin:?rotation/x/value\""
                          << "lShin";
    QTest::newRow("control") << "name://@selection#pCTRLHipBend:?value/value"
                             << "pCTRLHipBend";
    QTest::newRow("figure node") << "name://@selection:?translation/y/value"
                                 << "root";
    QTest::newRow("a bone of that name") << "name://@selection/root:?rotation/x/value"
                                         << "root";
    QTest::newRow("any separator") << "selectionXlShin:"
                                   << "lShin";
    QTest::newRow("question mark for a name") << "selection/?rotation"
                                              << "root";
    QTest::newRow("no selection") << "name://@chosen/lShin:?rotation/x/value"
                                  << "";
    QTest::newRow("no colon") << "name://@selection/lShin"
                              << "";
    QTest::newRow("nothing behind it") << "selection"
                                       << "";
    QTest::newRow("only the separator behind it") << "selection/"
                                                  << "";
    QTest::newRow("a colon at once") << "selection/:?rotation"
                                     << "";
    QTest::newRow("percent signs stay") << "selection#eCTRLBrowInner%20Up-Down:?value/value"
                                        << "eCTRLBrowInner%20Up-Down";
    QTest::newRow("the first selection counts") << "selection/a: selection/b:"
                                                << "a";
}

void TestPoseText::nodeNames()
{
    QFETCH(QString, entry);
    QTEST(nodeNameOf(entry), "name");
}

void TestPoseText::values_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<float>("value");
    QTest::newRow("one key") << "\"url\" : \"u\", \"keys\" : [ [ 0, 12.5 ]" << 12.5f;
    QTest::newRow("first of two keys") << "\"url\":\"u\",\"keys\":[[0,-1],[1,5]" << -1.f;
    QTest::newRow("with interpolation") << "\"u\", [ [ 0, 12.5, [ \"LINEAR\" ]" << 0.f;
    QTest::newRow("text") << "\"u\", [ [ 0, \"on\" ]" << 0.f;
    QTest::newRow("no comma") << "\"u\" ]" << 0.f;
    QTest::newRow("one comma") << "\"u\", 5 ]" << 0.f;
    QTest::newRow("no bracket") << "\"u\", 0, 5" << 0.f;
    QTest::newRow("empty") << "" << 0.f;
}

void TestPoseText::values()
{
    QFETCH(QString, entry);
    QTEST(valueOf(entry), "value");
}

// ---- entries

static void useText(const QByteArray& text)
{
    static QByteArray kept;
    kept = text;
    setPoseText(kept.constData(), kept.size());
}

void TestPoseText::entriesRunFromUrlToTheNextBracket()
{
    useText(presetText(QList<QByteArray>()
        << valueEntry("/lShin:?rotation/x", "1") << valueEntry("/rShin:?rotation/x", "2")));
    QCOMPARE(nextEntry(),
        QString("\"url\" : \"name://@selection/lShin:?rotation/x/value\","
                "\t\t\t\t\"keys\" : [ [ 0, 1 ]"));
    QCOMPARE(nodeNameOf(nextEntry()), QString("rShin"));
    QVERIFY(nextEntry().isEmpty());
    QVERIFY(nextEntry().isEmpty()); // and stays so
}

void TestPoseText::entriesOf_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("count");
    QTest::newRow("no url") << QByteArray("{ \"keys\" : [ ] }") << 0;
    QTest::newRow("no bracket behind it") << QByteArray("[ ] \"url\" : \"u\"") << 0;
    QTest::newRow("two in one line") << QByteArray("\"url\" ] \"url\" ]") << 2;
    QTest::newRow("two with one bracket") << QByteArray("\"url\" \"url\" ]") << 1;
    QTest::newRow("url without quotes") << QByteArray("url ]") << 0;
    QTest::newRow("another case") << QByteArray("\"URL\" ]") << 0;
    QTest::newRow("broken by a line feed") << QByteArray("\"u\nrl\" ]") << 0;
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("at the very end") << QByteArray("x\"url\"]") << 1;
    QTest::newRow("quotes before it") << QByteArray("\"\"\"url\"]") << 1;
}

void TestPoseText::entriesOf()
{
    QFETCH(QByteArray, text);
    useText(text);
    int count = 0;
    while (!nextEntry().isEmpty())
        ++count;
    QTEST(count, "count");
}

void TestPoseText::lineFeedsInsideAnEntryDoNotCount()
{
    useText("\"url\"\n:\nname://@sele\nction\n/\nlSh\nin\n:?rota\ntion/\nx/val\nue, [ 0, 1\n2 ]");
    TextSpan entry;
    QVERIFY(nextEntry(&entry));
    QCOMPARE(channelOf(entry), 1);
    QCOMPARE(plainName(nodeNameOf(entry)), QString("lShin"));
    QCOMPARE(valueOf(entry), 12.f);
    useText("\"url\" selection:\n?translation/y/value, 0, 3 ]");
    QCOMPARE(nodeNameOf(nextEntry()), QString("root"));
    useText("\"url\" selection/ro\not:?translation/y/value, 0, 3 ]");
    QVERIFY(nextEntry(&entry));
    QVERIFY(isRootName(nodeNameOf(entry)));
}

void TestPoseText::carriageReturnsCount()
{
    QCOMPARE(channelOf(QString("?rota\rtion/x/value")), 0);
    QCOMPARE(nodeNameOf(QString("selection/lSh\rin:")), QString("lSh\rin"));
}

void TestPoseText::charactersBeyondLatin1MatchNothing()
{
    const QString strange = QChar(0x4e2d); // would be a question mark in Latin-1
    QCOMPARE(channelOf(strange + "value/value"), 0);
    QVERIFY(nodeNameOf("selection/" + strange + "x:") != QString("root"));
}

void TestPoseText::textEndsAtTheFirstZeroByte()
{
    useText(QByteArray("\"url\" ]\0\"url\" ]", 15));
    QVERIFY(!nextEntry().isEmpty());
    QVERIFY(nextEntry().isEmpty());
}

// ---- files

void TestPoseText::plainAndCompressedGiveTheSameText()
{
    const QByteArray text = presetOf(valueEntry("/lShin:?rotation/x", "12.5"));
    const QString plain = fileWith("plain.duf", text);
    const QString packed = g_folder->path("packed.duf");
    QVERIFY(writeGzip(packed, text));
    QVERIFY(fileBytes(packed) != text);
    for (const QString& path : {plain, packed}) {
        QVERIFY(loadPoseText(path));
        const TextSpan read = poseText();
        QCOMPARE(QByteArray(read.begin, int(read.end - read.begin)), text.left(text.size() - 1));
    }
}

static bool removeFileAtGzipRead(const char* call, const void*)
{
    if (qstrcmp(call, "gzRead") == 0)
        QFile::remove(g_folder->path("four.duf"));
    return false;
}

// Gone meanwhile, it is still read to its end.
void TestPoseText::aPlainFileIsOpenedOnce()
{
    const QString path = fileWith("four.duf", "abcd");
    char buffer[8] = "#######";
    dzHostCallHook = removeFileAtGzipRead;
    const int count = readPoseFileText(path, buffer, 8, false);
    dzHostCallHook = nullptr;
    QVERIFY(!QFile::exists(path));
    QCOMPARE(count, 4);
    QCOMPARE(QByteArray(buffer, 4), QByteArray("abcd"));
}

static bool failGzipOpen(const char* call, const void*)
{
    return qstrcmp(call, "gzOpen") == 0;
}

void TestPoseText::aPlainFileNeedsNoGzipDevice()
{
    const QString path = fileWith("four.duf", "abcd");
    char buffer[8] = "#######";
    dzHostCallHook = failGzipOpen;
    const int count = readPoseFileText(path, buffer, 8, false);
    dzHostCallHook = nullptr;
    QCOMPARE(count, 4);
    QCOMPARE(QByteArray(buffer, 4), QByteArray("abcd"));
}

void TestPoseText::theTerminatorReplacesTheLastByte()
{
    const QString path = fileWith("four.duf", "abcd");
    char buffer[8] = "#######";
    QCOMPARE(readPoseFileText(path, buffer, 8, true), 4);
    QCOMPARE(QByteArray(buffer, 8), QByteArray("abc\0###\0", 8));
    const QString one = fileWith("one.duf", "a");
    QCOMPARE(readPoseFileText(one, buffer, 8, true), 1);
    QCOMPARE(buffer[0], '\0');
}

void TestPoseText::withoutTerminatorAllBytesStay()
{
    const QString path = fileWith("four.duf", "abcd");
    char buffer[8] = "#######";
    QCOMPARE(readPoseFileText(path, buffer, 8, false), 4);
    QCOMPARE(QByteArray(buffer, 8), QByteArray("abcd###\0", 8));
    QCOMPARE(readPoseFileText(path, buffer, 3, false), 3);
    QCOMPARE(readPoseFileText(path, buffer, 3, true), 3);
    QCOMPARE(QByteArray(buffer, 4), QByteArray("ab\0d", 4));
}

void TestPoseText::aLongFileIsCutToTheBuffer_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("kept");
    QTest::newRow("as long as the buffer") << kReadBufferBytes << kReadBufferBytes - 1;
    QTest::newRow("one more") << kReadBufferBytes + 1 << kReadBufferBytes - 1;
    QTest::newRow("600,000") << 600000 << 524287;
    QTest::newRow("5 MB") << 5000000 << 524287;
}

void TestPoseText::aLongFileIsCutToTheBuffer()
{
    QFETCH(int, bytes);
    const QByteArray text(bytes, 'x');
    const QString packed = g_folder->path("packed.duf");
    QVERIFY(writeGzip(packed, text));
    for (const QString& path : {fileWith("plain.duf", text), packed}) {
        QVERIFY(loadPoseText(path));
        QTEST(int(poseText().end - poseText().begin), "kept");
    }
}

void TestPoseText::nothingIsReadFrom_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing file") << "missing.duf";
    QTest::newRow("folder") << ".";
    QTest::newRow("below a file") << "empty.duf/x.duf";
    QTest::newRow("empty file") << "empty.duf";
    QTest::newRow("empty name") << "";
}

void TestPoseText::nothingIsReadFrom()
{
    QFETCH(QString, path);
    fileWith("empty.duf", QByteArray());
    useText("\"url\" ]");
    const QString full = path.isEmpty() ? path : g_folder->path(path);
    QVERIFY(!loadPoseText(full));
    QVERIFY(nextEntry().isEmpty());
}

void TestPoseText::aPipeIsNotRead()
{
    const FullPipe pipe(g_folder->path("pipe.duf"), "\"url\" ]");
    QVERIFY(!loadPoseText(g_folder->path("pipe.duf")));
    QVERIFY(pipe.isUntouched());
    char byte = 0;
    QCOMPARE(readUnpackedOrAsIs(g_folder->path("pipe.duf"), &byte, 1), 0);
    QVERIFY(pipe.isUntouched());
}

void TestPoseText::aLinkToAPlainFileIsRead()
{
    QVERIFY(QFile::link(fileWith("real.duf", "\"url\" ]  "), g_folder->path("link.duf")));
    QVERIFY(loadPoseText(g_folder->path("link.duf")));
    QCOMPARE(nextEntry(), QString("\"url\" ]"));
}

void TestPoseText::bytesAreUnpackedUpToALimit()
{
    const QByteArray bytes(200000, 'x');
    QVERIFY(writeGzip(g_folder->path("x"), bytes));
    const QByteArray packed = fileBytes(g_folder->path("x"));
    QByteArray unpacked;
    QVERIFY(unpackBytes(packed, bytes.size(), &unpacked));
    QVERIFY(unpacked == bytes);
    unpacked.clear();
    QVERIFY(!unpackBytes(packed, bytes.size() - 1, &unpacked));
    QVERIFY(unpacked.size() < bytes.size());
}

void TestPoseText::damagedBytesAreNotUnpacked_data()
{
    QTest::addColumn<int>("kept"); // bytes of a whole gzip
    QTest::newRow("none") << 0;
    QTest::newRow("half of the header") << 5;
    QTest::newRow("without the trailer") << -8;
    QTest::newRow("without the last byte") << -1;
}

void TestPoseText::damagedBytesAreNotUnpacked()
{
    QFETCH(int, kept);
    QVERIFY(writeGzip(g_folder->path("x"), QByteArray(1000, 'x')));
    const QByteArray packed = fileBytes(g_folder->path("x"));
    QByteArray unpacked;
    QVERIFY(!unpackBytes(packed.left(kept < 0 ? packed.size() + kept : kept), 5000, &unpacked));
    QVERIFY(!unpackBytes("no gzip", 5000, &unpacked));
}

void TestPoseText::aCutGzipFileGivesWhatCouldBeUnpacked()
{
    QByteArray text;
    for (int i = 0; i < 3000; ++i)
        text += valueEntry("/lShin:?rotation/x", QByteArray::number(i * 0.37));
    QVERIFY(writeGzip(g_folder->path("whole.duf"), text));
    const QByteArray packed = fileBytes(g_folder->path("whole.duf"));
    const QString path = fileWith("cut.duf", packed.left(packed.size() / 2));
    QVERIFY(loadPoseText(path));
    const int count = int(poseText().end - poseText().begin);
    QVERIFY(count > 1000 && count < text.size() - 1000);
    QCOMPARE(QByteArray(poseText().begin, count), text.left(count));
}

// 1 GB of zero bytes in 1 MB, as members of 16 MB in a row.
void TestPoseText::aGzipBombStaysWithinTheBuffer()
{
    QVERIFY(writeGzip(g_folder->path("member"), QByteArray(16 << 20, '\0')));
    const QByteArray member = fileBytes(g_folder->path("member"));
    QByteArray bomb;
    for (int i = 0; i < 64; ++i)
        bomb += member;
    QVERIFY(bomb.size() < 2 << 20);
    const QString path = fileWith("bomb.duf", bomb);
#ifdef Q_OS_UNIX
    rusage before, after;
    getrusage(RUSAGE_SELF, &before);
#endif
    QElapsedTimer clock;
    clock.start();
    QVERIFY(loadPoseText(path));
    QVERIFY2(clock.elapsed() < 2000, "only what fits the buffer is unpacked");
    QCOMPARE(poseText().begin, poseText().end);
#ifdef Q_OS_UNIX
    getrusage(RUSAGE_SELF, &after);
    QVERIFY(after.ru_maxrss - before.ru_maxrss < 8 << 10); // KB
#endif
}

void TestPoseText::theBufferLivesBetweenCreateAndFree()
{
    QVERIFY(readBuffer());
    const QString path = fileWith("a.duf", "\"url\" ]\n");
    QVERIFY(loadPoseText(path));
    freeReadBuffer();
    QVERIFY(!readBuffer());
    QVERIFY(nextEntry().isEmpty());
    QVERIFY(!loadPoseText(path));
}

QUILLON_TEST_WITHOUT_APPLICATION(TestPoseText)
#include "test_pose_text.moc"
