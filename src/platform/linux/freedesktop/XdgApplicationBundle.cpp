#include "platform/linux/freedesktop/XdgApplicationBundle.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto resourceDirectory = "/share/quorvin/"_L1;

/// What the first line of a small file says; absent when it says nothing.
std::optional<QString> firstLine(const QString& path) {
    constexpr qint64 maxBytes = 64;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QString line = QString::fromUtf8(file.readLine(maxBytes)).trimmed();
    return line.isEmpty() ? std::nullopt : std::optional(line);
}

} // namespace

XdgApplicationBundle::XdgApplicationBundle(const QString& updateEndpoint)
    : XdgApplicationBundle(updateEndpoint, QCoreApplication::applicationDirPath()) {}

XdgApplicationBundle::XdgApplicationBundle(const QString& updateEndpoint,
                                           const QString& executableDirectory)
    : m_updateEndpoint(updateEndpoint)
    , m_prefix(QDir::cleanPath(executableDirectory + u"/.."_s))
    , m_version(firstLine(m_prefix + resourceDirectory + u"version"_s)) {}

std::optional<QString> XdgApplicationBundle::version() const {
    return m_version;
}

QString XdgApplicationBundle::bundlePath() const {
    return m_prefix;
}

bool XdgApplicationBundle::isWritable(const QString& directory) const {
    const QFileInfo info(directory);
    return info.isDir() && info.isWritable() && info.isExecutable();
}

QString XdgApplicationBundle::updateEndpoint() const {
    return m_updateEndpoint;
}

std::optional<QString> XdgApplicationBundle::resource(const QString& name,
                                                      const QString& extension) const {
    const QString path = m_prefix + resourceDirectory + name + u'.' + extension;
    return QFileInfo::exists(path) ? std::optional(path) : std::nullopt;
}

QString XdgApplicationBundle::homeDirectory() const {
    return QDir::homePath();
}

QString XdgApplicationBundle::temporaryDirectory() const {
    const QString path = QDir::tempPath(); // empty when TMPDIR names no directory
    return path.isEmpty() ? u"/tmp"_s : path;
}

std::optional<QString> XdgApplicationBundle::applicationSupportDirectory() const {
    const QString path = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

int XdgApplicationBundle::processorCount() const {
    return QThread::idealThreadCount();
}

int XdgApplicationBundle::processIdentifier() const {
    return static_cast<int>(QCoreApplication::applicationPid());
}

QString settingsFilePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/quorvin/settings.json"_s;
}

} // namespace quorvin
