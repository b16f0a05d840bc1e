#pragma once

#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

namespace quorvin::testing {

/// Gives every client the same bytes, and hangs up unless told to hold the line.
class HttpServer {
public:
    HttpServer() {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket* const client = m_server.nextPendingConnection();
            m_client = client;
            QObject::connect(client, &QTcpSocket::readyRead, client, [this, client] {
                request += client->readAll();
                if (!request.endsWith("\r\n\r\n")) {
                    return;
                }
                client->write(answer);
                if (!holdsTheLine) {
                    client->disconnectFromHost();
                }
            });
        });
    }

    [[nodiscard]] QUrl url() const {
        return QUrl(QStringLiteral("http://127.0.0.1:%1/builds/latest.json?ts=1")
                        .arg(m_server.serverPort()));
    }
    void close() { m_server.close(); }
    /// Sends more to the last client, whose line was held, and hangs up.
    void goOn(const QByteArray& more) {
        m_client->write(more);
        m_client->disconnectFromHost();
    }

    QByteArray answer;
    QByteArray request;
    bool holdsTheLine = false;

private:
    QTcpServer m_server;
    QPointer<QTcpSocket> m_client;
};

} // namespace quorvin::testing
