#include "platform/qt/QtHttpClient.h"

#include <QNetworkReply>
#include <QNetworkRequest>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

/// Far more than any document that is asked for; a server must not fill the memory.
constexpr qint64 maxBodyBytes = 1 << 20;

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

Task<std::optional<QByteArray>> QtHttpClient::get(QUrl url, QByteArray accept,
                                                  std::chrono::milliseconds timeout) {
    if (!isAllowed(url)) {
        co_return std::nullopt;
    }
    if (!m_manager) {
        m_manager = std::make_unique<QNetworkAccessManager>();
    }
    QNetworkRequest request(url);
    request.setRawHeader("Accept", accept);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setTransferTimeout(static_cast<int>(timeout.count()));

    QNetworkReply* const reply = m_manager->get(request);
    m_running.insert(reply);
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() > maxBodyBytes) {
            reply->abort();
        }
    });
    Pending<std::optional<QByteArray>> answer;
    QObject::connect(reply, &QNetworkReply::finished, reply, [this, reply, answer]() mutable {
        m_running.remove(reply);
        reply->deleteLater();
        // An error page is an answer too; without a status there was none, or not a whole one.
        const bool isWhole = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid() &&
                             reply->error() != QNetworkReply::OperationCanceledError &&
                             reply->error() != QNetworkReply::RemoteHostClosedError;
        answer.resolve(isWhole ? std::optional(reply->readAll()) : std::nullopt);
    });
    const std::optional<QByteArray> body = co_await answer;
    co_return body;
}

} // namespace quorvin
