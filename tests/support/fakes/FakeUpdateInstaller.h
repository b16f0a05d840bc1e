#pragma once

#include "platform/ProcessRunner.h"
#include "platform/UpdateInstaller.h"

#include <optional>
#include <string>

namespace quorvin::testing {

/// Starts no script, and knows which it was asked to start.
class FakeUpdateInstaller final : public UpdateInstaller {
public:
    [[nodiscard]] UpdateScript script() const override { return scriptOfTheSystem; }

    void launch(const QString& scriptPath) override {
        if (launchError) {
            throw ProcessLaunchError(*launchError);
        }
        launched.append(scriptPath);
    }

    UpdateScript scriptOfTheSystem = archiveUpdateScript();
    /// What the next launches fail with.
    std::optional<std::string> launchError;
    QStringList launched;
};

} // namespace quorvin::testing
