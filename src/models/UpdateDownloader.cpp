#include "models/UpdateDownloader.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace quorvin {

using namespace std::chrono_literals;

namespace {

/// How long the server may be silent.
constexpr auto downloadTimeout = 60s;

} // namespace

UpdateDownloader::UpdateDownloader(HttpClient& httpClient, QString destination,
                                   std::function<void(double)> onProgress)
    : m_httpClient(httpClient)
    , m_destination(std::move(destination))
    , m_onProgress(std::move(onProgress)) {}

Task<QString> UpdateDownloader::download(QUrl url) {
    const QString location = co_await m_httpClient.download(
        url, QFileInfo(m_destination).path(), downloadTimeout,
        [this](qint64 written, qint64 expected) { didWriteData(written, expected); });
    didFinishDownloadingTo(location);
    co_return m_destination;
}

void UpdateDownloader::didWriteData(qint64 totalBytesWritten,
                                    qint64 totalBytesExpectedToWrite) const {
    if (totalBytesExpectedToWrite < 1) {
        return;
    }
    m_onProgress(static_cast<double>(totalBytesWritten) /
                 static_cast<double>(totalBytesExpectedToWrite));
}

void UpdateDownloader::didFinishDownloadingTo(const QString& location) const {
    QFile::remove(m_destination); // usually there is none
    QFile file(location);
    if (!file.rename(m_destination)) {
        const DownloadError error(file.errorString());
        file.remove();
        throw error;
    }
}

} // namespace quorvin
