// The update check against a server on this machine, and which pictures count.
#include "frame_fixture.h"
#include "full_pipe.h"
#include "room_tests.h"
#include "notice_server.h"
#include "qt_test_compat.h"

#include "ground/data_folder.h"
#include "ground/host_gzip.h"
#include "ground/plugin_settings.h"
#include "ground/whole_file.h"
#include "pane/dzquillonpane.h"
#include "services/update_notice.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>
#include <QNetworkProxy>
#include <QtTest>

#include <ctime>

using namespace quillon;

static QByteArray cut(const QByteArray& bytes) // without the last one
{
    return bytes.left(bytes.size() - 1);
}

class TestUpdateNotice : public QObject {
    Q_OBJECT
private slots:
    void cleanup();

    // addresses
    void addressesNameThisVersion();
    void addressesStandUnderInvalidUnlessTold();

    // replies
    void theRequestIsTheOneDescribed();
    void aPictureIsKeptAsReceivedAndShown();
    void failuresKeepTheOldPicture_data();
    void failuresKeepTheOldPicture();
    void failuresLeaveNoTrace_data();
    void failuresLeaveNoTrace();
    void aRefusedConnectionLeavesNoTrace();
    void aServerThatFallsSilentIsGivenUpInTime_data();
    void aServerThatFallsSilentIsGivenUpInTime();
    void theHostHandlesEventsMeanwhile();
    void fiftyMegabytesAreKept();
    void anEndlessReplyIsNotReadForEver();
    void garbageAfterAGoodPictureIsStoredButNoNews_data();
    void garbageAfterAGoodPictureIsStoredButNoNews();
    void aPackedPictureIsKeptUnpacked();
    void theReplysPartsTellItsPicture_data();
    void theReplysPartsTellItsPicture();
    void aReplyThatUnpacksToTheLimitIsTaken_data();
    void aReplyThatUnpacksToTheLimitIsTaken();
    void aPipeAtThePicturesNameIsLeftAlone();
    void aRedirectIsNotFollowed();
    void aDataFolderThatCannotBeMadeIsSurvived();
    void theOldPictureStaysWhenTheNewOneCannotBeWritten();
    void aFolderAtThePicturesNameLeavesNothingBehind();
    void aLinkInPlaceOfTheNewFileIsNotWrittenThrough();

    // the picture
    void onlyPicturesThatDecodeCount_data();
    void onlyPicturesThatDecodeCount();
    void pixelsAreCountedBeforeDecoding_data();
    void pixelsAreCountedBeforeDecoding();
    void theProductOfASizeMayBeBeyond32Bits();
    void anotherDataFolderHasItsOwnPicture();
    void withoutADataFolderThereIsNoPicture();

    // the pane's start
    void aSilentServerDelaysTheFirstPaneOnly();
    void mutedNoticesOpenNoConnection();
};

static const char kPictureName[] = "newversion_093.png";

static QByteArray pngOf(const QImage& image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

static QByteArray smallPng(const QColor& colour)
{
    QImage image(40, 12, QImage::Format_RGB32);
    image.fill(colour);
    return pngOf(image);
}

static QByteArray bigEndian(quint32 number)
{
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += char(number >> shift & 0xff);
    return bytes;
}

static QByteArray packed(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return writePacked(&buffer, bytes) ? buffer.data() : QByteArray();
}

static const QByteArray kIsPacked = "Content-Encoding: gzip\r\n";

// A PNG whose header tells that size; what follows the header fits no size of that kind.
static QByteArray pngClaiming(quint32 width, quint32 height)
{
    QByteArray png = smallPng(Qt::red);
    png.replace(16, 8, bigEndian(width) + bigEndian(height));
    quint32 crc = 0xffffffff; // of the chunk's type and data
    for (int i = 12; i < 29; ++i) {
        crc ^= uchar(png.at(i));
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xedb88320 & (0 - (crc & 1)));
    }
    return png.replace(29, 4, bigEndian(~crc));
}

// A host whose HTTP goes to a server of the test's own.
namespace {
struct NoticeFixture : HostFixture {
    explicit NoticeFixture(const QByteArray& reply = QByteArray())
        : server(reply)
    {
        goThrough(server.port());
        locateDataFiles();
    }
    static void goThrough(quint16 port)
    {
        QNetworkProxy::setApplicationProxy(
            QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", port));
    }
    QString picturePath() const
    {
        return dataFolder() + kPictureName;
    }
    void putPicture(const QByteArray& bytes)
    {
        writeFile(picturePath(), bytes);
    }
    NoticeServer server;
};
}

void TestUpdateNotice::cleanup()
{
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    pluginSettings() = PluginSettings();
}

void TestUpdateNotice::addressesNameThisVersion()
{
    QVERIFY(updatePictureUrl().endsWith("/newversion/newversion_093.png"));
    QVERIFY(newVersionPageUrl().endsWith("/newversion/newversion_093.htm"));
    QVERIFY(pluginPageUrl().endsWith("/index.htm"));
    for (const QString& url : {updatePictureUrl(), newVersionPageUrl(), pluginPageUrl()}) {
        const QUrl address(url);
        QVERIFY2(address.isValid() && address.scheme().startsWith("http"), qPrintable(url));
        QVERIFY2(!address.host().isEmpty() && !address.path().contains("//"), qPrintable(url));
    }
}

// What this build was told may be another one.
void TestUpdateNotice::addressesStandUnderInvalidUnlessTold()
{
    const QString lists = fileBytes(QUILLON_SOURCE_DIR "/services/CMakeLists.txt");
    for (const char* name : {"QUILLON_UPDATE_URL", "QUILLON_WEB_URL"}) {
        QRegExp setting(QString("set\\(%1 \"http://[a-z.]+\\.invalid/\" CACHE STRING").arg(name));
        QVERIFY2(lists.contains(setting), name);
    }
}

void TestUpdateNotice::theRequestIsTheOneDescribed()
{
    NoticeFixture f(httpReply("404 Not Found", "no"));
    checkForUpdate();
    QCOMPARE(f.server.requests.size(), 1);
    const QByteArray request = f.server.requests.at(0);
    QVERIFY2(request.startsWith("GET " + updatePictureUrl().toLatin1() + " HTTP/1.1\r\n"), request);
    QVERIFY2(request.contains("\r\nUser-Agent: Mozilla Firefox\r\n"), request);
}

void TestUpdateNotice::aPictureIsKeptAsReceivedAndShown()
{
    const QByteArray png = smallPng(Qt::green);
    NoticeFixture f(httpReply("200 OK", png));
    QVERIFY(updatePicture().isNull());
    checkForUpdate();
    QCOMPARE(fileBytes(f.picturePath()), png);
    QCOMPARE(filesIn(f.dataFolder()), QStringList(kPictureName));
    QCOMPARE(updatePicture().size(), QSize(40, 12));
    QCOMPARE(QColor(updatePicture().pixel(1, 1)), QColor(Qt::green));

    const QByteArray other = smallPng(Qt::blue);
    f.server.setReply(httpReply("200 OK", other));
    checkForUpdate();
    QCOMPARE(fileBytes(f.picturePath()), other);
    QCOMPARE(QColor(updatePicture().pixel(1, 1)), QColor(Qt::blue));
}

static void addFailureRows()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("empty body") << httpReply("200 OK", "");
    QTest::newRow("404 with a body") << httpReply("404 Not Found", smallPng(Qt::red));
    QTest::newRow("500") << httpReply("500 Internal Server Error", "sorry");
    QTest::newRow("403") << httpReply("403 Forbidden", "no");
    QTest::newRow("asks for a password")
        << httpReply("401 Unauthorized", "who", "WWW-Authenticate: Basic realm=\"x\"\r\n");
    QTest::newRow("not HTTP") << QByteArray("hello\r\n\r\n");
    QTest::newRow("closed without a reply") << QByteArray();
    QTest::newRow("body cut short")
        << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n") + smallPng(Qt::red);
    const QByteArray png = packed(smallPng(Qt::red));
    QTest::newRow("packed body cut short") << cut(httpReply("200 OK", png, kIsPacked));
    QTest::newRow("packed body without its end") << httpReply("200 OK", cut(png), kIsPacked);
    QTest::newRow("no gzip, though told so") << httpReply("200 OK", "not packed", kIsPacked);
    QTest::newRow("another form of packing")
        << httpReply("200 OK", png, "Content-Encoding: deflate\r\n");
    QTest::newRow("more than the limit once unpacked")
        << httpReply("200 OK", packed(QByteArray(kLargestReply + 1, '\0')), kIsPacked);
    QTest::newRow("header cut short") << QByteArray("HTTP/1.1 200 OK\r\nContent-Le");
}

void TestUpdateNotice::failuresKeepTheOldPicture_data()
{
    addFailureRows();
}

void TestUpdateNotice::failuresKeepTheOldPicture()
{
    QFETCH(QByteArray, reply);
    NoticeFixture f(reply);
    const QByteArray old = smallPng(Qt::yellow);
    f.putPicture(old);
    checkForUpdate();
    QVERIFY(f.server.connections >= 1);
    QCOMPARE(fileBytes(f.picturePath()), old);
    QCOMPARE(QColor(updatePicture().pixel(1, 1)), QColor(Qt::yellow));
    QCOMPARE(filesIn(f.dataFolder()), QStringList(kPictureName));
}

void TestUpdateNotice::failuresLeaveNoTrace_data()
{
    addFailureRows();
}

void TestUpdateNotice::failuresLeaveNoTrace()
{
    QFETCH(QByteArray, reply);
    NoticeFixture f(reply);
    BoxAnswers boxes;
    checkForUpdate();
    QCOMPARE(filesIn(f.dataFolder()), QStringList());
    QVERIFY(updatePicture().isNull());
    QCOMPARE(boxes.boxes.size(), 0);
}

void TestUpdateNotice::aRefusedConnectionLeavesNoTrace()
{
    NoticeFixture f;
    QTcpServer closed; // a port that nobody listens on
    QVERIFY(closed.listen(QHostAddress::LocalHost));
    const quint16 port = closed.serverPort();
    closed.close();
    NoticeFixture::goThrough(port);
    QElapsedTimer clock;
    clock.start();
    checkForUpdate();
    QVERIFY(clock.elapsed() < 2000);
    QCOMPARE(filesIn(f.dataFolder()), QStringList());
}

void TestUpdateNotice::aServerThatFallsSilentIsGivenUpInTime_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("no reply at all") << QByteArray();
    QTest::newRow("headers, then silence")
        << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
    QTest::newRow("half a picture, then silence")
        << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n") + smallPng(Qt::red);
}

void TestUpdateNotice::aServerThatFallsSilentIsGivenUpInTime()
{
    QFETCH(QByteArray, reply);
    NoticeFixture f(reply);
    f.server.keepOpen();
    const QByteArray old = smallPng(Qt::yellow);
    f.putPicture(old);
    QElapsedTimer clock;
    clock.start();
    static const int kLimitMs = 300; // the same way as to the five seconds of the pane's start
    checkForUpdate(kLimitMs);
    const qint64 elapsedMs = clock.elapsed();
    QVERIFY2(elapsedMs >= kLimitMs && elapsedMs <= 500, qPrintable(QString::number(elapsedMs)));
    QCOMPARE(fileBytes(f.picturePath()), old);
    QCOMPARE(filesIn(f.dataFolder()), QStringList(kPictureName));
}

void TestUpdateNotice::theHostHandlesEventsMeanwhile()
{
    NoticeFixture f(httpReply("200 OK", smallPng(Qt::red)));
    int ticks = 0;
    const EveryTurn ticker([&ticks] { ++ticks; });
    checkForUpdate();
    QVERIFY(ticks > 0);
}

void TestUpdateNotice::fiftyMegabytesAreKept()
{
    const QByteArray body = smallPng(Qt::red) + QByteArray(50 * 1024 * 1024, 'x');
    NoticeFixture f(httpReply("200 OK", body));
    checkForUpdate();
    QVERIFY(fileBytes(f.picturePath()) == body);
    QCOMPARE(updatePicture().size(), QSize(40, 12)); // what follows the picture's end is ignored
}

// Beyond what is read there is only what the system holds for the two ends of the connection.
void TestUpdateNotice::anEndlessReplyIsNotReadForEver()
{
    NoticeFixture f("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n");
    f.server.keepOpen();
    f.server.goOn(4 * kLargestReply);
    QElapsedTimer clock;
    clock.start();
    checkForUpdate();
    QVERIFY(clock.elapsed() <= 7000);
    const QByteArray sent = QByteArray::number(f.server.sent);
    QVERIFY2(f.server.sent >= kLargestReply && f.server.sent < kLargestReply * 2, sent);
    QCOMPARE(filesIn(f.dataFolder()), QStringList());
}

void TestUpdateNotice::garbageAfterAGoodPictureIsStoredButNoNews_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("words") << QByteArray("<html>We have moved</html>");
    QTest::newRow("half a picture") << smallPng(Qt::red).left(50);
    QTest::newRow("zeros") << QByteArray(100, '\0');
}

void TestUpdateNotice::garbageAfterAGoodPictureIsStoredButNoNews()
{
    QFETCH(QByteArray, body);
    NoticeFixture f(httpReply("200 OK", smallPng(Qt::green)));
    checkForUpdate();
    QVERIFY(!updatePicture().isNull());
    f.server.setReply(httpReply("200 OK", body));
    checkForUpdate();
    QCOMPARE(fileBytes(f.picturePath()), body);
    QVERIFY(updatePicture().isNull());
}

void TestUpdateNotice::aPackedPictureIsKeptUnpacked()
{
    const QByteArray png = smallPng(Qt::red);
    NoticeFixture f(httpReply("200 OK", packed(png), kIsPacked));
    checkForUpdate();
    QVERIFY2(
        f.server.requests.at(0).contains("\r\nAccept-Encoding: gzip\r\n"), f.server.requests.at(0));
    QCOMPARE(fileBytes(f.picturePath()), png);
    QVERIFY(!updatePicture().isNull());
}

void TestUpdateNotice::theReplysPartsTellItsPicture_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("length");
    QTest::addColumn<QByteArray>("form");
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray gzip = packed("bytes");
    const QByteArray gzipLength = QByteArray::number(gzip.size());
    const QByteArray none, all = "bytes";
    QTest::newRow("as it came") << all << none << none << all;
    QTest::newRow("as long as announced") << all << QByteArray("5") << none << all;
    QTest::newRow("longer than announced") << all << QByteArray("4") << none << all;
    QTest::newRow("shorter than announced") << all << QByteArray("6") << none << none;
    QTest::newRow("much shorter") << all << QByteArray("99999999999") << none << none;
    QTest::newRow("blanks around the length") << all << QByteArray(" 6 ") << none << none;
    QTest::newRow("a length that is no number") << all << QByteArray("six") << none << all;
    QTest::newRow("told to be as it is") << all << none << QByteArray("Identity") << all;
    QTest::newRow("packed") << gzip << gzipLength << QByteArray("gzip") << all;
    QTest::newRow("packed, in capitals") << gzip << none << QByteArray(" GZIP ") << all;
    QTest::newRow("packed, shorter than announced")
        << gzip << QByteArray::number(gzip.size() + 1) << QByteArray("gzip") << none;
    QTest::newRow("packed and cut") << cut(gzip) << none << QByteArray("gzip") << none;
    QTest::newRow("packed in another form") << gzip << none << QByteArray("br") << none;
}

void TestUpdateNotice::theReplysPartsTellItsPicture()
{
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, length);
    QFETCH(QByteArray, form);
    QTEST(pictureBytesOf(UpdateReply {body, length, form}), "bytes");
}

void TestUpdateNotice::aReplyThatUnpacksToTheLimitIsTaken_data()
{
    QTest::addColumn<int>("more"); // bytes than the limit
    QTest::newRow("at the limit") << 0;
    QTest::newRow("one more") << 1;
}

void TestUpdateNotice::aReplyThatUnpacksToTheLimitIsTaken()
{
    QFETCH(int, more);
    const int size = kLargestReply + more;
    const int taken = more > 0 ? 0 : size;
    const QByteArray zeros(size, '\0');
    QCOMPARE(pictureBytesOf(UpdateReply {packed(zeros), "", "gzip"}).size(), taken);
    QCOMPARE(pictureBytesOf(UpdateReply {zeros, "", ""}).size(), taken);
}

void TestUpdateNotice::aPipeAtThePicturesNameIsLeftAlone()
{
    const QByteArray png = smallPng(Qt::red);
    NoticeFixture f(httpReply("200 OK", png));
    const FullPipe pipe(f.picturePath(), png);
    QVERIFY(updatePicture().isNull());
    checkForUpdate();
    QVERIFY(updatePicture().isNull());
    QVERIFY(pipe.isUntouched());
}

void TestUpdateNotice::aRedirectIsNotFollowed()
{
    NoticeFixture f(httpReply("302 Found", "<html>there</html>",
        "Location: http://elsewhere.brannoc.invalid/picture.png\r\n"));
    checkForUpdate();
    QCOMPARE(f.server.requests.size(), 1);
    QCOMPARE(fileBytes(f.picturePath()), QByteArray("<html>there</html>"));
    QVERIFY(updatePicture().isNull());
}

void TestUpdateNotice::aDataFolderThatCannotBeMadeIsSurvived()
{
    NoticeFixture f(httpReply("200 OK", smallPng(Qt::red)));
    writeFile(f.home.path("data"), "a file where the folder should be");
    checkForUpdate();
    QVERIFY(updatePicture().isNull());
    QVERIFY(!QFile::exists(f.picturePath()));
}

void TestUpdateNotice::theOldPictureStaysWhenTheNewOneCannotBeWritten()
{
    NoticeFixture f(httpReply("200 OK", smallPng(Qt::red)));
    const QByteArray old = smallPng(Qt::yellow);
    f.putPicture(old);
    QDir().mkpath(besideName(f.picturePath())); // in the way of the file written first
    checkForUpdate();
    QCOMPARE(fileBytes(f.picturePath()), old);
}

void TestUpdateNotice::aFolderAtThePicturesNameLeavesNothingBehind()
{
    const QByteArray png = smallPng(Qt::red);
    NoticeFixture f(httpReply("200 OK", png));
    QDir().mkpath(f.picturePath() + "/full");
    checkForUpdate();
    QCOMPARE(filesIn(f.dataFolder()), QStringList());
    QVERIFY(updatePicture().isNull());
}

void TestUpdateNotice::aLinkInPlaceOfTheNewFileIsNotWrittenThrough()
{
    const QByteArray png = smallPng(Qt::red);
    NoticeFixture f(httpReply("200 OK", png));
    const QString victim = f.home.path("victim");
    writeFile(victim, "precious");
    QDir().mkpath(f.dataFolder());
    QVERIFY(QFile::link(victim, besideName(f.picturePath())));
    checkForUpdate();
    QCOMPARE(fileBytes(victim), QByteArray("precious"));
    QCOMPARE(fileBytes(f.picturePath()), png);
    QVERIFY(!QFileInfo(f.picturePath()).isSymLink());
    QCOMPARE(filesIn(f.dataFolder()), QStringList(kPictureName));
}

void TestUpdateNotice::onlyPicturesThatDecodeCount_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("counts");
    QBuffer bmp;
    bmp.open(QIODevice::WriteOnly);
    QImage(8, 8, QImage::Format_RGB32).save(&bmp, "BMP");
    QTest::newRow("a picture") << smallPng(Qt::red) << true;
    QTest::newRow("empty file") << QByteArray() << false;
    QTest::newRow("words") << QByteArray("not a picture") << false;
    QTest::newRow("only a header") << smallPng(Qt::red).left(33) << false;
    QTest::newRow("cut within its pixels") << smallPng(Qt::red).left(50) << false;
    QTest::newRow("another format") << bmp.data() << false;
}

void TestUpdateNotice::onlyPicturesThatDecodeCount()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, counts);
    NoticeFixture f;
    f.putPicture(bytes);
    QCOMPARE(!updatePicture().isNull(), counts);
}

void TestUpdateNotice::pixelsAreCountedBeforeDecoding_data()
{
    QTest::addColumn<QByteArray>("png");
    QTest::addColumn<bool>("counts");
    const auto blank = [](int width, int height) {
        QImage image(width, height, QImage::Format_Mono);
        image.fill(0);
        return pngOf(image);
    };
    QTest::newRow("16 million") << blank(4000, 4000) << true;
    QTest::newRow("16 million and a row") << blank(4000, 4001) << false;
    QTest::newRow("one long row") << blank(16000, 1) << true;
    QTest::newRow("a product beyond 32 bits") << pngClaiming(65536, 65536) << false;
    QTest::newRow("a size of 0") << pngClaiming(0, 10) << false;
    QTest::newRow("a negative size") << pngClaiming(0xffffffff, 0xffffffff) << false;
}

void TestUpdateNotice::pixelsAreCountedBeforeDecoding()
{
    QFETCH(QByteArray, png);
    QFETCH(bool, counts);
    NoticeFixture f;
    f.putPicture(png);
    const std::clock_t before = std::clock();
    QCOMPARE(!updatePicture().isNull(), counts);
    const std::clock_t most = CLOCKS_PER_SEC / 20; // far below what 16 million pixels take
    QVERIFY(counts || std::clock() - before < most);
}

void TestUpdateNotice::theProductOfASizeMayBeBeyond32Bits()
{
    QVERIFY(isPictureSize(QSize(1, 1)));
    QVERIFY(isPictureSize(QSize(4000, 4000)));
    QVERIFY(!isPictureSize(QSize(4000, 4001)));
    QVERIFY(!isPictureSize(QSize(46341, 46341))); // negative in 32 bits
    QVERIFY(!isPictureSize(QSize(65536, 65536))); // 0 in 32 bits
    QVERIFY(!isPictureSize(QSize(1000000, 4295))); // 32704 in 32 bits
    QVERIFY(!isPictureSize(QSize(0, 10)));
    QVERIFY(!isPictureSize(QSize(10, 0)));
    QVERIFY(!isPictureSize(QSize(-4, -4)));
    QVERIFY(!isPictureSize(QSize()));
}

void TestUpdateNotice::anotherDataFolderHasItsOwnPicture()
{
    {
        NoticeFixture first;
        first.putPicture(smallPng(Qt::red));
        QVERIFY(!updatePicture().isNull());
    }
    NoticeFixture second;
    QVERIFY(updatePicture().isNull());
}

void TestUpdateNotice::withoutADataFolderThereIsNoPicture()
{
    {
        NoticeFixture f;
        f.putPicture(smallPng(Qt::red));
        QVERIFY(!updatePicture().isNull());
    }
    QVERIFY(!dzApp);
    locateDataFiles();
    QCOMPARE(updatePicturePath(), QString());
    QVERIFY(updatePicture().isNull());
}

void TestUpdateNotice::aSilentServerDelaysTheFirstPaneOnly()
{
    NoticeFixture f;
    f.server.keepOpen();
    QElapsedTimer clock;
    clock.start();
    DzQuillonPane first; // gives up after five seconds, when the machine lets it
    const qint64 firstMs = clock.restart();
    QVERIFY2(firstMs >= 4900 && firstMs <= 7000, qPrintable(QString::number(firstMs)));
    DzQuillonPane second;
    QVERIFY(clock.elapsed() < 2000);
    QCOMPARE(f.server.connections, 1);
}

void TestUpdateNotice::mutedNoticesOpenNoConnection()
{
    NoticeFixture f(httpReply("200 OK", smallPng(Qt::red)));
    {
        DzQuillonPane pane;
        QCOMPARE(f.server.connections, 1);
        pluginSettings().muteUpdateNotice = true;
    } // the settings are saved with it
    DzQuillonPane pane;
    QVERIFY(pluginSettings().muteUpdateNotice);
    QCoreApplication::processEvents();
    QCOMPARE(f.server.connections, 1);
}

QUILLON_TEST(TestUpdateNotice)
#include "test_update_notice.moc"
