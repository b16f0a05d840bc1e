#pragma once

#include "platform/UpdateInstaller.h"

namespace quorvin {

/// Updates from compressed tar archives, by a script in a session of its own.
class PosixUpdateInstaller final : public UpdateInstaller {
public:
    [[nodiscard]] UpdateScript script() const override { return archiveUpdateScript(); }
    void launch(const QString& scriptPath) override;
};

} // namespace quorvin
