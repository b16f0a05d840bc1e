#include "models/AppState.h"
#include "models/UpdateDownloader.h"
#include "models/UpdateManifest.h"
#include "platform/ApplicationBundle.h"
#include "platform/HttpClient.h"
#include "platform/Scheduler.h"
#include "platform/UpdateInstaller.h"
#include "platform/Workspace.h"

#include <QFileInfo>
#include <QTemporaryFile>

#include <filesystem>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto updateCheckTimeout = 10s;
/// For the script to start.
constexpr auto terminationDelay = 500ms;

QString temporaryPath(const Platform& platform, const QString& name) {
    return platform.applicationBundle.temporaryDirectory() + u'/' + name;
}

/// Puts a program of this user's in the place of whatever stands at `path`, at once and whole. A
/// link that somebody has laid there is replaced, not followed. Throws.
void writeExecutable(const QString& path, const QString& text) {
    QTemporaryFile file(path + u".XXXXXX"_s);
    const QByteArray bytes = text.toUtf8();
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush() ||
        !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
        throw std::runtime_error(file.errorString().toStdString());
    }
    std::error_code error;
    std::filesystem::rename(file.fileName().toStdString(), path.toStdString(), error);
    if (error) {
        throw std::runtime_error(error.message());
    }
    file.setAutoRemove(false);
}

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

void AppState::installUpdate() {
    if (m_updatePhase.value().isBusy()) {
        return;
    }
    const QUrl url(m_latestDownloadURL, QUrl::StrictMode);
    if (url.isEmpty() || !url.isValid()) {
        m_updatePhase = UpdatePhase{UpdatePhase::Failed{u"No download URL"_s}};
        return;
    }
    auto& bundle = m_platform.applicationBundle;
    const QString appPath = bundle.bundlePath();
    const QString parent = QFileInfo(appPath).path();
    if (!bundle.isWritable(parent) || !appPath.endsWith(u".app")) {
        m_updatePhase =
            UpdatePhase{UpdatePhase::Failed{u"Can't write to %1 — opening DMG"_s.arg(parent)}};
        m_platform.workspace.openURL(m_latestDownloadURL);
        return;
    }
    m_updatePhase = UpdatePhase{UpdatePhase::Downloading{0}};
    m_platform.scheduler.startDetached([self = QPointer(this), url, appPath]() -> Task<> {
        if (self) {
            co_await self->performUpdate(url, appPath);
        }
    });
}

void AppState::retryUpdate() {
    if (m_updatePhase.value().isBusy()) {
        return;
    }
    m_updatePhase = UpdatePhase();
    installUpdate();
}

Task<> AppState::performUpdate(QUrl url, QString appPath) {
    const QPointer<AppState> self(this);
    Scheduler& scheduler = m_platform.scheduler;
    const QString imagePath =
        temporaryPath(m_platform, m_platform.updateInstaller.script().imageName);
    UpdateDownloader downloader(
        m_platform.httpClient, imagePath, [self, &scheduler](double fraction) {
            // One that runs late overwrites `installing`; nothing guards against that, on purpose.
            // A failure stays, so that it can be seen and tried again.
            scheduler.post([self, fraction] {
                if (self && self->m_updatePhase.value().isBusy()) {
                    self->m_updatePhase = UpdatePhase{UpdatePhase::Downloading{fraction}};
                }
            });
        });
    try {
        co_await downloader.download(url);
        if (!self) {
            co_return;
        }
        m_updatePhase = UpdatePhase{UpdatePhase::Installing{}};
        launchUpdateScript(imagePath, appPath);
    } catch (const std::exception& error) {
        if (self) {
            m_updatePhase = UpdatePhase{UpdatePhase::Failed{QString::fromUtf8(error.what())}};
        }
        co_return;
    }
    co_await scheduler.sleep(terminationDelay);
    if (self) {
        m_platform.terminate();
    }
}

void AppState::launchUpdateScript(const QString& imagePath, const QString& appPath) {
    UpdateInstaller& installer = m_platform.updateInstaller;
    // It stays behind after the update, as agreed.
    const QString path = temporaryPath(m_platform, UpdateInstaller::scriptName);
    writeExecutable(path,
                    installer.script().text(imagePath, appPath,
                                            m_platform.applicationBundle.processIdentifier()));
    installer.launch(path);
}

} // namespace quorvin
