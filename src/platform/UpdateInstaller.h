#pragma once

#include "platform/UpdateScript.h"

namespace quorvin {

/// Replaces the installed program, which can't do that itself while it runs. Main thread only.
class UpdateInstaller {
public:
    /// File name of the script.
    static inline const QString scriptName = QStringLiteral("qvn_update.sh");

    UpdateInstaller() = default;
    UpdateInstaller(const UpdateInstaller&) = delete;
    UpdateInstaller& operator=(const UpdateInstaller&) = delete;
    virtual ~UpdateInstaller() = default;

    [[nodiscard]] virtual UpdateScript script() const = 0;

    /// Starts the script at this path detached, so that it goes on after the end of this program.
    /// It gets this program's environment. Throws ProcessLaunchError.
    virtual void launch(const QString& scriptPath) = 0;
};

} // namespace quorvin
