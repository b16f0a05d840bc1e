#pragma once

#include <QString>

#include <optional>

namespace quorvin {

/// The persistent store of settings: typed values by key. Main thread only. A failed write is not
/// reported to the caller; a store that can't be read is empty.
class UserDefaults {
public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// Whether the key holds a value of any type.
    [[nodiscard]] virtual bool contains(const QString& key) const = 0;
    /// The value if the key holds one of this very type; absent otherwise.
    [[nodiscard]] virtual std::optional<QString> string(const QString& key) const = 0;
    [[nodiscard]] virtual std::optional<bool> boolean(const QString& key) const = 0;
    /// Any number; absent for every other type.
    [[nodiscard]] virtual std::optional<double> number(const QString& key) const = 0;

    /// Written to the disk before they return.
    virtual void setString(const QString& key, const QString& value) = 0;
    virtual void setBoolean(const QString& key, bool value) = 0;
    virtual void setInteger(const QString& key, int value) = 0;
    virtual void setDouble(const QString& key, double value) = 0;
};

} // namespace quorvin
