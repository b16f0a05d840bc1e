#pragma once

#include "support/Task.h"

#include <QObject>

#include <exception>
#include <memory>
#include <optional>

namespace quorvin {

/// Thrown to a task that waits for an answer when the object that asks for it goes.
class AutomationEnded : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override {
        return "terminal automation has ended";
    }
};

/// What a helper object finds out. Who awaits it goes on when the helper is destroyed: with the
/// value that was set by then, or with AutomationEnded when there is none.
template <typename T>
class HelperResult {
public:
    explicit HelperResult(const QObject& helper) {
        QObject::connect(&helper, &QObject::destroyed,
                         [value = m_value, pending = m_pending]() mutable {
                             if (*value) {
                                 pending.resolve(std::move(**value));
                             } else {
                                 pending.reject(std::make_exception_ptr(AutomationEnded()));
                             }
                         });
    }

    [[nodiscard]] bool isSet() const { return m_value->has_value(); }
    void set(T value) const { *m_value = std::move(value); }

    auto operator co_await() const { return m_pending.operator co_await(); }

private:
    std::shared_ptr<std::optional<T>> m_value = std::make_shared<std::optional<T>>();
    Pending<T> m_pending;
};

} // namespace quorvin
