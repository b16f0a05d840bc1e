#include "app/SingleInstance.h"

#include <QDir>
#include <QLocalSocket>
#include <QLoggingCategory>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

Q_LOGGING_CATEGORY(instanceLog, "com.quorvin.SingleInstance", QtInfoMsg)

constexpr int connectTimeout = 2000; // ms

} // namespace

SingleInstance::SingleInstance(const QString& directory)
    : m_socketPath(QDir(directory).filePath(u"quorvin.socket"_s))
    , m_lock(QDir(directory).filePath(u"quorvin.lock"_s)) {
    m_lock.setStaleLockTime(0); // a lock ends with its process, not with time
}

bool SingleInstance::isFirst() {
    if (m_lock.tryLock()) {
        QLocalServer::removeServer(m_socketPath); // of an instance that crashed
        m_server.setSocketOptions(QLocalServer::UserAccessOption);
        if (!m_server.listen(m_socketPath)) {
            qCWarning(instanceLog, "Later starts can't be heard: %ls",
                      qUtf16Printable(m_server.errorString()));
        }
        return true;
    }
    if (m_lock.error() != QLockFile::LockFailedError) {
        qCWarning(instanceLog,
                  "Cannot tell whether another instance runs: no lock file can be "
                  "made in %ls",
                  qUtf16Printable(QFileInfo(m_socketPath).path()));
        return true;
    }
    tellFirst();
    return false;
}

void SingleInstance::tellFirst() const {
    QLocalSocket socket;
    socket.connectToServer(m_socketPath); // to be connected is the message
    if (socket.waitForConnected(connectTimeout)) {
        socket.disconnectFromServer();
    } else {
        qCWarning(instanceLog, "Another instance runs but doesn't answer: %ls",
                  qUtf16Printable(socket.errorString()));
    }
}

void SingleInstance::onLaterStart(std::function<void()> handler) {
    QObject::connect(&m_server, &QLocalServer::newConnection, &m_server,
                     [this, handler = std::move(handler)] {
                         while (QLocalSocket* const connection = m_server.nextPendingConnection()) {
                             connection->deleteLater();
                             handler();
                         }
                     });
}

} // namespace quorvin
