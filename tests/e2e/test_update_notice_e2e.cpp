// posebench with a web server of the test's own, reached through --proxy: what the pane does at its
// start, and what the banner then shows.
#include "notice_server.h"

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <memory>

class TestUpdateNoticeE2e : public QObject {
    Q_OBJECT
private slots:
    void init();
    void aPictureIsAskedForOnceAndShown();
    void withoutAPictureTheBannerHasItsText_data();
    void withoutAPictureTheBannerHasItsText();
    void aSilentServerDelaysTheStartOnce();
    void switchedOffNoConnectionIsOpened();
    void withoutAProxyTheCheckFailsAtOnce();

private:
    QString home() const
    {
        return m_folder->path() + "/home";
    }
    QString picturePath() const
    {
        return home() + "/data/Brannoc/Quillon/newversion_093.png";
    }
    // False and told when the script fails.
    bool run(const QStringList& options, const QString& script, const QStringList& args);

    std::unique_ptr<QTemporaryDir> m_folder;
    qint64 m_elapsedMs = 0;
};

static QByteArray announcement()
{
    QImage image(376, 88, QImage::Format_RGB32);
    image.fill(QColor(0x1d, 0x5f, 0x8a));
    QPainter painter(&image);
    painter.setPen(Qt::white);
    painter.drawText(image.rect(), Qt::AlignCenter, "A new version is here");
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

void TestUpdateNoticeE2e::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
}

bool TestUpdateNoticeE2e::run(
    const QStringList& options, const QString& script, const QStringList& args)
{
    QElapsedTimer clock;
    clock.start();
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QEventLoop loop; // the server answers in it
    connect(&process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &loop,
        &QEventLoop::quit);
    QTimer::singleShot(60000, &process, &QProcess::kill);
    process.start(POSEBENCH,
        QStringList({"--headless", "--home", home()}) + options
            + QStringList({"--script", QString(E2E_DIR "/") + script}) + args);
    loop.exec();
    m_elapsedMs = clock.elapsed();
    const bool succeeded = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!succeeded)
        qWarning("%s", process.readAll().constData());
    return succeeded;
}

static QStringList through(const NoticeServer& server)
{
    return {"--proxy", QString("127.0.0.1:%1").arg(server.port())};
}

void TestUpdateNoticeE2e::aPictureIsAskedForOnceAndShown()
{
    const QByteArray png = announcement();
    NoticeServer server(httpReply("200 OK", png));
    QStringList args("picture");
    if (qEnvironmentVariableIsSet("QUILLON_KEEP_PICTURE"))
        args += QString::fromLocal8Bit(qgetenv("QUILLON_KEEP_PICTURE"));
    QVERIFY(run(through(server), "update_notice.js", args));
    QCOMPARE(server.requests.size(), 1);
    QVERIFY(server.requests.at(0).contains("/newversion/newversion_093.png HTTP/1.1\r\n"));
    QFile file(picturePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll() == png);
}

void TestUpdateNoticeE2e::withoutAPictureTheBannerHasItsText_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<bool>("stored");
    QTest::newRow("404") << httpReply("404 Not Found", "no") << false;
    QTest::newRow("empty") << httpReply("200 OK", "") << false;
    QTest::newRow("garbage") << httpReply("200 OK", "garbage") << true;
    QTest::newRow("redirect") << httpReply(
        "302 Found", "<html>there</html>", "Location: http://elsewhere.invalid/\r\n")
                              << true;
}

void TestUpdateNoticeE2e::withoutAPictureTheBannerHasItsText()
{
    QFETCH(QByteArray, reply);
    QFETCH(bool, stored);
    NoticeServer server(reply);
    QVERIFY(run(through(server), "update_notice.js", QStringList("none")));
    QCOMPARE(server.requests.size(), 1);
    QCOMPARE(QFile::exists(picturePath()), stored);
}

void TestUpdateNoticeE2e::aSilentServerDelaysTheStartOnce()
{
    NoticeServer silent;
    silent.keepOpen();
    QVERIFY(run({}, "update_notice.js", QStringList("none"))); // how long it takes anyway
    const qint64 usualMs = m_elapsedMs;
    QVERIFY(run(through(silent), "update_notice.js", QStringList("none")));
    QCOMPARE(silent.connections, 1);
    const qint64 delayMs = m_elapsedMs - usualMs;
    QVERIFY2(delayMs > 4500 && delayMs < 5700, // two processes on a busy machine
        qPrintable(QString("%1 ms").arg(delayMs)));
    QVERIFY(!QFile::exists(picturePath()));
}

void TestUpdateNoticeE2e::switchedOffNoConnectionIsOpened()
{
    NoticeServer server(httpReply("200 OK", announcement()));
    QVERIFY(run(through(server), "switch_notices_off.js", {}));
    QCOMPARE(server.connections, 1);
    QVERIFY(QFile::remove(picturePath()));
    QVERIFY(run(through(server), "update_notice.js", QStringList("none")));
    QCOMPARE(server.connections, 1);
    QVERIFY(!QFile::exists(picturePath()));
}

void TestUpdateNoticeE2e::withoutAProxyTheCheckFailsAtOnce()
{
    QVERIFY(run({}, "update_notice.js", QStringList("none")));
    QVERIFY2(m_elapsedMs < 5000, qPrintable(QString("%1 ms").arg(m_elapsedMs)));
}

QTEST_MAIN(TestUpdateNoticeE2e)
#include "test_update_notice_e2e.moc"
