#include "platform/qt/JsonUserDefaults.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QSaveFile>

#include <utility>
#include <variant>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(lcUserDefaults, "com.quorvin.UserDefaults", QtInfoMsg)

constexpr qint64 maxFileSize = 16'000'000; // far more than any settings
constexpr int maxLinks = 40;               // as many as the system follows itself
constexpr QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

/// The file that `path` leads to, whether or not it exists; a link when they go round in circles.
QString resolveLinks(QString path) {
    for (int i = 0; i < maxLinks && QFileInfo(path).isSymLink(); ++i) {
        path = QFileInfo(path).symLinkTarget();
    }
    return path;
}

bool standsSomething(const QString& path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

/// The bit alone counts: the superuser may write everything, and should still leave it alone.
bool isReadOnly(const QString& path) {
    const QFileInfo info(path);
    return info.isFile() && !info.permissions().testFlag(QFile::WriteOwner);
}

/// The members of the file, or the reason why there are none to be had.
std::variant<QJsonObject, QString> readObject(const QString& path) {
    // Reading a pipe or a device could take forever.
    if (!QFileInfo(path).isFile()) {
        return u"not a regular file"_s;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return file.errorString();
    }
    if (file.size() > maxFileSize) {
        return u"too large"_s;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError) {
        return file.errorString();
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        return error.errorString();
    }
    if (!document.isObject()) {
        return u"not an object"_s;
    }
    return document.object();
}

} // namespace

JsonUserDefaults::JsonUserDefaults(const QString& path) : m_path(resolveLinks(path)) {
    if (standsSomething(m_path)) {
        load(path);
    }
}

bool JsonUserDefaults::contains(const QString& key) const {
    const QJsonValue value = m_values.value(key);
    return !value.isUndefined() && !value.isNull();
}

std::optional<QString> JsonUserDefaults::string(const QString& key) const {
    const QJsonValue value = m_values.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<bool> JsonUserDefaults::boolean(const QString& key) const {
    const QJsonValue value = m_values.value(key);
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<double> JsonUserDefaults::number(const QString& key) const {
    const QJsonValue value = m_values.value(key);
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

void JsonUserDefaults::setString(const QString& key, const QString& value) {
    set(key, value);
}
void JsonUserDefaults::setBoolean(const QString& key, bool value) {
    set(key, value);
}
void JsonUserDefaults::setInteger(const QString& key, int value) {
    set(key, value);
}
void JsonUserDefaults::setDouble(const QString& key, double value) {
    set(key, value);
}

void JsonUserDefaults::load(const QString& path) {
    auto content = readObject(m_path);
    if (auto* values = std::get_if<QJsonObject>(&content)) {
        m_values = std::move(*values);
        return;
    }
    // Only a file is moved from behind its link. Whatever else a link leads to, a directory or a
    // device, is none of ours, and the link itself is what is wrong.
    if (!QFileInfo(m_path).isFile()) {
        m_path = path;
    }
    setAside(m_path, std::get<QString>(content));
}

void JsonUserDefaults::setAside(const QString& path, const QString& reason) {
    const QString stem =
        path + u".damaged-"_s + QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
    QString aside = stem;
    for (int i = 2; standsSomething(aside); ++i) {
        aside = stem + u'-' + QString::number(i);
    }
    if (!isReadOnly(path) && QFile::rename(path, aside)) {
        qCCritical(lcUserDefaults, "Settings can't be read (%s); kept as %s",
                   qUtf8Printable(reason), qUtf8Printable(aside));
        return;
    }
    m_isKeptFromDisk = true;
    m_hasLoggedFailure = true;
    qCCritical(lcUserDefaults, "Settings can't be read (%s) and stay in %s; changes are not kept",
               qUtf8Printable(reason), qUtf8Printable(path));
}

void JsonUserDefaults::set(const QString& key, const QJsonValue& value) {
    if (m_values.value(key) == value && !m_hasUnsavedChanges) {
        return;
    }
    m_values.insert(key, value);
    const auto failure = save();
    m_hasUnsavedChanges = failure.has_value();
    if (failure && !std::exchange(m_hasLoggedFailure, true)) {
        qCCritical(lcUserDefaults, "Settings can't be written to %s (%s); changes are not kept",
                   qUtf8Printable(m_path), qUtf8Printable(*failure));
    }
}

std::optional<QString> JsonUserDefaults::save() const {
    if (m_isKeptFromDisk || isReadOnly(m_path)) {
        return u"read-only"_s;
    }
    const QString directory = QFileInfo(m_path).absolutePath();
    if (!QFileInfo::exists(directory)) {
        QDir().mkpath(QFileInfo(directory).absolutePath());
        QDir().mkdir(directory, ownerOnly | QFile::ExeOwner);
    }
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(ownerOnly)) {
        return file.errorString();
    }
    // `commit` does not notice what `close` could not write, and would put half a file in place.
    const QByteArray json = QJsonDocument(m_values).toJson();
    if (file.write(json) != json.size() || !file.flush() || !file.commit()) {
        return file.errorString();
    }
    return std::nullopt;
}

} // namespace quorvin
