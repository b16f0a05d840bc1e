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

private:
    [[nodiscard]] bool isAllowed(const QUrl& url) const;

    const Protocols m_protocols;
    std::unique_ptr<QNetworkAccessManager> m_manager;
    QSet<QNetworkReply*> m_running;
};

} // namespace quorvin
