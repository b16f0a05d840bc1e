#pragma once

#include "support/Task.h"

#include <QByteArray>
#include <QUrl>

#include <chrono>
#include <optional>

namespace quorvin {

/// Fetches small documents. Main thread only.
class HttpClient {
public:
    HttpClient() = default;
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;
    /// Requests that still wait end without a result.
    virtual ~HttpClient() = default;

    /// The body of the server's answer, whatever its status, and never from a cache. Absent when no
    /// whole answer came: no network, a bad address or certificate, a body that is too large, or
    /// nothing heard from the server for `timeout`.
    [[nodiscard]] virtual Task<std::optional<QByteArray>>
    get(QUrl url, QByteArray accept, std::chrono::milliseconds timeout) = 0;
};

} // namespace quorvin
