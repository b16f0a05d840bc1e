#pragma once

#include "platform/HttpClient.h"
#include "support/Task.h"

#include <QString>
#include <QUrl>

#include <functional>

namespace quorvin {

/// Brings one file from a server to a fixed place. Main thread only. Must outlive its `download`.
class UpdateDownloader {
public:
    /// `destination` is a path; what stands there is replaced when the download has arrived.
    /// `onProgress` is told the fraction from 0 to 1, and nothing when the size isn't known.
    UpdateDownloader(HttpClient& httpClient, QString destination,
                     std::function<void(double fraction)> onProgress);

    /// Returns `destination`. Throws DownloadError. The server's status is not examined: an error
    /// page is stored like everything else.
    [[nodiscard]] Task<QString> download(QUrl url);

private:
    void didWriteData(qint64 totalBytesWritten, qint64 totalBytesExpectedToWrite) const;
    void didFinishDownloadingTo(const QString& location) const;

    HttpClient& m_httpClient;
    const QString m_destination;
    const std::function<void(double)> m_onProgress;
};

} // namespace quorvin
