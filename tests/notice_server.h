// notice_server.h - a small HTTP server on the loopback interface, used as the proxy through which
// every request goes. It answers all requests alike and counts what it is asked.
#pragma once

#include "qt_test_compat.h"

#include <QByteArray>
#include <QList>
#include <QTcpServer>
#include <QTcpSocket>

class NoticeServer {
public:
    // What is sent after a request's header has come in; then the connection is closed.
    explicit NoticeServer(const QByteArray& reply = QByteArray())
        : m_reply(reply)
    {
        onSignal(&m_server, SIGNAL(newConnection()), [this](void**) { accept(); });
        m_server.listen(QHostAddress::LocalHost);
    }
    quint16 port() const
    {
        return m_server.serverPort();
    }
    void setReply(const QByteArray& reply)
    {
        m_reply = reply;
    }
    void keepOpen(bool onOff = true) // the reply has no end; an empty one is never begun
    {
        m_keepOpen = onOff;
    }
    void goOn(qint64 most) // after the reply, as long as somebody reads: up to that many bytes
    {
        m_left = most;
    }
    int connections = 0;
    qint64 sent = 0; // bytes that have left this process
    QList<QByteArray> requests; // the header of each

private:
    Q_DISABLE_COPY(NoticeServer)
    void accept()
    {
        ++connections;
        QTcpSocket* socket = m_server.nextPendingConnection();
        QObject::connect(socket, SIGNAL(disconnected()), socket, SLOT(deleteLater()));
        onSignal(socket, SIGNAL(readyRead()), [this, socket](void**) { read(socket); });
    }
    void read(QTcpSocket* socket)
    {
        QByteArray header = socket->property("header").toByteArray() + socket->readAll();
        socket->setProperty("header", header);
        if (!header.endsWith("\r\n\r\n"))
            return;
        requests += header;
        onSignal(socket, SIGNAL(bytesWritten(qint64)), [this, socket](void** arguments) {
            sent += *static_cast<qint64*>(arguments[1]);
            sendMore(socket);
        });
        socket->write(m_reply);
        if (!m_keepOpen)
            socket->disconnectFromHost(); // when all is written
    }
    void sendMore(QTcpSocket* socket)
    {
        const qint64 bytes = qMin(m_left, qint64(1 << 20));
        if (bytes == 0 || socket->bytesToWrite() > 0)
            return;
        m_left -= bytes;
        socket->write(QByteArray(int(bytes), 'x'));
    }

    QTcpServer m_server;
    QByteArray m_reply;
    bool m_keepOpen = false;
    qint64 m_left = 0;
};

// A reply of that status, with its length told.
inline QByteArray httpReply(
    const QByteArray& status, const QByteArray& body, const QByteArray& moreHeaders = QByteArray())
{
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size())
        + "\r\nConnection: close\r\n" + moreHeaders + "\r\n" + body;
}
