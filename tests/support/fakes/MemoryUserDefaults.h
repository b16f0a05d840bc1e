#pragma once

#include "platform/UserDefaults.h"

#include <map>
#include <variant>

namespace quorvin::testing {

/// Settings that live as long as the object.
class MemoryUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] bool contains(const QString& key) const override {
        return m_values.contains(key);
    }
    [[nodiscard]] std::optional<QString> string(const QString& key) const override {
        return get<QString>(key);
    }
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const override {
        return get<bool>(key);
    }
    [[nodiscard]] std::optional<double> number(const QString& key) const override {
        return get<double>(key);
    }

    void setString(const QString& key, const QString& value) override { set(key, value); }
    void setBoolean(const QString& key, bool value) override { set(key, value); }
    void setInteger(const QString& key, int value) override {
        set(key, static_cast<double>(value));
    }
    void setDouble(const QString& key, double value) override { set(key, value); }

private:
    using Value = std::variant<QString, bool, double>;

    template <typename T>
    [[nodiscard]] std::optional<T> get(const QString& key) const {
        const auto found = m_values.find(key);
        if (found == m_values.end() || !std::holds_alternative<T>(found->second)) {
            return std::nullopt;
        }
        return std::get<T>(found->second);
    }

    void set(const QString& key, Value value) { m_values[key] = std::move(value); }

    std::map<QString, Value> m_values;
};

} // namespace quorvin::testing
