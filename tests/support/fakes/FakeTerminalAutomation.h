#pragma once

#include "platform/TerminalAutomation.h"

#include <QStringList>

#include <functional>

namespace quorvin::testing {

/// Terminals that a test answers for.
class FakeTerminalAutomation final : public TerminalAutomation {
public:
    [[nodiscard]] Task<TabFocus> focusTab(QString bundleIdentifier, QString tty) override {
        focused.append(bundleIdentifier + u' ' + tty);
        if (onFocus) {
            onFocus();
        }
        co_return answer;
    }

    [[nodiscard]] Task<bool> checkPermission() override { co_return permission; }

    void requestPermissions() override { ++permissionRequests; }

    TabFocus answer{TabFocus::Result::found, std::nullopt};
    bool permission = true;
    /// Called at each wish to see a tab, while it is carried out.
    std::function<void()> onFocus;

    /// The wishes, each as "<bundle identifier> <tty>".
    QStringList focused;
    int permissionRequests = 0;
};

} // namespace quorvin::testing
