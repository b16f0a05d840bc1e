#pragma once

#include "platform/UserDefaults.h"

#include <QJsonObject>

namespace quorvin {

/// The settings in one JSON file: an object with a member for each key. The file is only the
/// user's to read, and every change replaces it as a whole, so that it is never half written.
///
/// - Members that nobody here asks for stay in it.
/// - A file that can't be understood, an empty one included, is renamed to
///   "<name>.damaged-<yyyyMMdd-HHmmss>" and the settings start empty.
/// - A file that its owner may not write is read, and never replaced.
/// - When changes can't be written, they last until the end of the process.
///
/// The last three are said in the log.
class JsonUserDefaults final : public UserDefaults {
public:
    /// `path` may lead to the file by symbolic links; they stay.
    explicit JsonUserDefaults(const QString& path);

    [[nodiscard]] bool contains(const QString& key) const override;
    [[nodiscard]] std::optional<QString> string(const QString& key) const override;
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const override;
    [[nodiscard]] std::optional<double> number(const QString& key) const override;

    void setString(const QString& key, const QString& value) override;
    void setBoolean(const QString& key, bool value) override;
    void setInteger(const QString& key, int value) override;
    void setDouble(const QString& key, double value) override;

private:
    void load(const QString& path);
    void setAside(const QString& path, const QString& reason);
    void set(const QString& key, const QJsonValue& value);
    /// Writes all values; gives the reason when that failed.
    [[nodiscard]] std::optional<QString> save() const;

    QString m_path; ///< of the file itself, behind all links
    QJsonObject m_values;
    bool m_isKeptFromDisk = false; ///< what stands at the path must not be replaced
    bool m_hasUnsavedChanges = false;
    bool m_hasLoggedFailure = false;
};

} // namespace quorvin
