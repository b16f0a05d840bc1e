#pragma once

#include "platform/HttpClient.h"

#include <QNetworkAccessManager>
#include <QPointer>
#include <QSet>

class QNetworkReply;

namespace quorvin {

/// HTTP through Qt Network. Makes nothing and costs nothing before its first request.
class QtHttpClient final : public HttpClient {
public:
    enum class Protocols { onlyHttps, alsoPlainHttp };

    explicit QtHttpClient(Protocols protocols);
    ~QtHttpClient() override;

    [[nodiscard]] Task<std::optional<QByteArray>> get(QUrl url, QByteArray accept,
                                                      std::chrono::milliseconds timeout) override;
    [[nodiscard]] Task<QString> download(QUrl url, QString directory,
                                         std::chrono::milliseconds timeout,
                                         Progress onProgress) override;

private:
    [[nodiscard]] bool isAllowed(const QUrl& url) const;
    [[nodiscard]] QNetworkReply* send(QNetworkRequest request, std::chrono::milliseconds timeout);
    /// Whether the reply, once it has finished, is a whole answer. It is deleted later.
    [[nodiscard]] Pending<bool> arrival(QNetworkReply* reply);

    const Protocols m_protocols;
    std::unique_ptr<QNetworkAccessManager> m_manager;
    QSet<QNetworkReply*> m_running;
};

} // namespace quorvin
