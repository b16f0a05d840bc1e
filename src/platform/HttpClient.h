#pragma once

#include "support/Task.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>

namespace quorvin {

/// A download that came to nothing; `what` is the reason, for the user.
class DownloadError : public std::runtime_error {
public:
    explicit DownloadError(const QString& reason) : std::runtime_error(reason.toStdString()) {}
};

/// Fetches documents and files. Main thread only.
class HttpClient {
public:
    /// Bytes on the disk so far and bytes expected in all, the latter -1 when the server doesn't
    /// tell.
    using Progress = std::function<void(qint64 written, qint64 expected)>;

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

    /// Writes the body of the server's answer, whatever its status, byte by byte as it was sent to
    /// a fresh file in `directory` that only this user can read. Returns the file's path; the file
    /// is the caller's. Throws DownloadError, and leaves no file, when no whole answer came (see
    /// `get`, the size excepted) or when it can't be written. `onProgress` is called meanwhile.
    [[nodiscard]] virtual Task<QString> download(QUrl url, QString directory,
                                                 std::chrono::milliseconds timeout,
                                                 Progress onProgress) = 0;
};

} // namespace quorvin
