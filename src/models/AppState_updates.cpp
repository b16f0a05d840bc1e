#include "models/AppState.h"
#include "models/UpdateManifest.h"
#include "platform/ApplicationBundle.h"
#include "platform/HttpClient.h"
#include "platform/Scheduler.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto updateCheckTimeout = 10s;

} // namespace

Task<> AppState::checkForUpdates() {
    const QPointer<AppState> self(this);
    // The time keeps caches on the way from answering.
    const QUrl url(
        u"%1/builds/latest.json?ts=%2"_s.arg(m_platform.applicationBundle.updateEndpoint())
            .arg(m_platform.scheduler.wallTime().toSecsSinceEpoch()),
        QUrl::StrictMode);
    if (!url.isValid()) {
        co_return;
    }
    const std::optional<QByteArray> body =
        co_await m_platform.httpClient.get(url, "application/json", updateCheckTimeout);
    if (!self || !body) {
        co_return;
    }
    const std::optional<UpdateManifest> manifest = UpdateManifest::decode(*body);
    if (!manifest) {
        co_return;
    }
    const QString latest = manifest->versionNumber();
    const QString current = m_platform.applicationBundle.version().value_or(u"0"_s);
    if (compareNumerically(latest, current) <= 0) {
        m_updateAvailable = false;
        co_return;
    }
    m_latestVersion = latest;
    m_latestDownloadURL = manifest->dmg.value_or(QString());
    m_updateAvailable = true;
    log(ActivityType::info, u"Update available: v%1"_s.arg(latest));
}

} // namespace quorvin
