#include "platform/qt/QtHttpClient.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTemporaryFile>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

/// Far more than any document that is asked for; a server must not fill the memory.
constexpr qint64 maxBodyBytes = 1 << 20;

/// An error page is an answer too; without a status there was none, or not a whole one.
bool isWhole(const QNetworkReply& reply) {
    constexpr int firstErrorStatus = 400;
    const QVariant status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (reply.error() == QNetworkReply::NoError) {
        return status.isValid();
    }
    return status.toInt() >= firstErrorStatus && reply.error() > QNetworkReply::UnknownNetworkError;
}

/// Writes what has arrived to an unbuffered file. False when that fails.
bool store(QNetworkReply& reply, QIODevice& file) {
    const QByteArray bytes = reply.readAll();
    // A disk that gets full takes a part of it, and only then says what is wrong.
    for (qint64 written = 0; written < bytes.size();) {
        const qint64 count = file.write(bytes.constData() + written, bytes.size() - written);
        if (count <= 0) {
            return false;
        }
        written += count;
    }
    return true;
}

/// -1 when the server doesn't tell. Has to be compared with what came: Qt takes a connection that
/// is closed at the wrong moment for the end of the body.
qint64 expectedBytes(const QNetworkReply& reply) {
    const QVariant length = reply.header(QNetworkRequest::ContentLengthHeader);
    return length.isValid() ? length.toLongLong() : -1;
}

} // namespace

QtHttpClient::QtHttpClient(Protocols protocols) : m_protocols(protocols) {}

QtHttpClient::~QtHttpClient() {
    const auto running = m_running; // each takes itself out when it ends
    for (QNetworkReply* reply : running) {
        reply->abort();
    }
}

bool QtHttpClient::isAllowed(const QUrl& url) const {
    return url.isValid() && (url.scheme() == u"https" ||
                             (m_protocols == Protocols::alsoPlainHttp && url.scheme() == u"http"));
}

QNetworkReply* QtHttpClient::send(QNetworkRequest request, std::chrono::milliseconds timeout) {
    if (!m_manager) {
        m_manager = std::make_unique<QNetworkAccessManager>();
    }
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setTransferTimeout(static_cast<int>(timeout.count()));
    QNetworkReply* const reply = m_manager->get(request);
    m_running.insert(reply);
    return reply;
}

Pending<bool> QtHttpClient::arrival(QNetworkReply* reply) {
    Pending<bool> arrived;
    QObject::connect(reply, &QNetworkReply::finished, reply, [this, reply, arrived]() mutable {
        m_running.remove(reply);
        reply->deleteLater();
        arrived.resolve(isWhole(*reply));
    });
    return arrived;
}

Task<std::optional<QByteArray>> QtHttpClient::get(QUrl url, QByteArray accept,
                                                  std::chrono::milliseconds timeout) {
    if (!isAllowed(url)) {
        co_return std::nullopt;
    }
    QNetworkRequest request(url);
    request.setRawHeader("Accept", accept);
    QNetworkReply* const reply = send(request, timeout);
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() > maxBodyBytes) {
            reply->abort();
        }
    });
    const bool isWholeAnswer = co_await arrival(reply);
    const QByteArray body = reply->readAll();
    if (!isWholeAnswer || body.size() < expectedBytes(*reply)) {
        co_return std::nullopt;
    }
    co_return body;
}

Task<QString> QtHttpClient::download(QUrl url, QString directory, std::chrono::milliseconds timeout,
                                     Progress onProgress) {
    if (!isAllowed(url)) {
        throw DownloadError(u"unsupported URL"_s);
    }
    QTemporaryFile file(directory + u"/Quorvin-download.XXXXXX"_s);
    QIODevice& device = file; // whose `open` takes the mode
    if (!device.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
        throw DownloadError(file.errorString());
    }
    QNetworkRequest request(url);
    // Some servers take a compressed file for a compressed transfer, which would be undone here.
    request.setRawHeader("Accept-Encoding", "identity");
    QNetworkReply* const reply = send(request, timeout);
    bool isStored = true;
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [&, reply] {
        isStored = store(*reply, file);
        if (isStored) {
            onProgress(file.pos(), expectedBytes(*reply));
        } else {
            reply->abort(); // this task has ended then
        }
    });
    const bool isWholeAnswer = co_await arrival(reply);
    if (!isStored) {
        throw DownloadError(file.errorString());
    }
    if (!isWholeAnswer) {
        throw DownloadError(reply->error() == QNetworkReply::OperationCanceledError
                                ? u"The request timed out."_s
                                : reply->errorString());
    }
    if (!store(*reply, file)) { // nothing is left, as a rule
        throw DownloadError(file.errorString());
    }
    if (file.pos() < expectedBytes(*reply)) {
        throw DownloadError(u"Connection closed"_s);
    }
    file.setAutoRemove(false);
    co_return file.fileName();
}

} // namespace quorvin
