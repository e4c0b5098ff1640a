#include "room_tests.h"

#include "host/driver/command_line.h"
#include "host/driver/network_guard.h"

#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

using namespace quillon;

class TestNetworkGuard : public QObject {
    Q_OBJECT
private slots:
    void cleanup();
    void headlessMeetsAClosedPortAtOnce();
    void aProxyGetsTheWholeAddress();
    void aWindowWithoutProxyIsLeftAlone();

private:
    QNetworkAccessManager m_network;
};

void TestNetworkGuard::cleanup()
{
    QNetworkProxy::setApplicationProxy(QNetworkProxy());
}

void TestNetworkGuard::headlessMeetsAClosedPortAtOnce()
{
    CommandLine c;
    c.headless = true;
    guardNetwork(c);
    QElapsedTimer clock;
    clock.start();
    QNetworkReply* reply = m_network.get(QNetworkRequest(QUrl("http://trial.invalid/picture.png")));
    QSignalSpy finished(reply, SIGNAL(finished()));
    QVERIFY(finished.wait(4000));
    QCOMPARE(reply->error(), QNetworkReply::ConnectionRefusedError);
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
    reply->deleteLater();
}

void TestNetworkGuard::aProxyGetsTheWholeAddress()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    CommandLine c;
    c.headless = true;
    c.proxyHost = "127.0.0.1";
    c.proxyPort = server.serverPort();
    guardNetwork(c);
    QNetworkReply* reply = m_network.get(QNetworkRequest(QUrl("http://trial.invalid/a/b.png")));
    QVERIFY(server.waitForNewConnection(4000));
    QTcpSocket* connection = server.nextPendingConnection();
    QTRY_VERIFY(connection->bytesAvailable() > 0);
    QCOMPARE(connection->readLine(), QByteArray("GET http://trial.invalid/a/b.png HTTP/1.1\r\n"));
    reply->abort();
    reply->deleteLater();
}

void TestNetworkGuard::aWindowWithoutProxyIsLeftAlone()
{
    guardNetwork(CommandLine());
    QCOMPARE(QNetworkProxy::applicationProxy().type(), QNetworkProxy::NoProxy);
}

QUILLON_TEST(TestNetworkGuard)
#include "test_network_guard.moc"
