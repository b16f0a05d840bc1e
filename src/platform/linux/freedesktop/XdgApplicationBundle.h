#pragma once

#include "platform/ApplicationBundle.h"

namespace quorvin {

/// The program as installed below some prefix, with its resources in "share/quorvin" beside the
/// directory of the executable, and the user's directories of the XDG Base Directory Specification.
/// The file "version" among the resources holds the version, which is read once: what is installed
/// later in the same place is not what runs.
class XdgApplicationBundle final : public ApplicationBundle {
public:
    /// The bundle of the running executable.
    explicit XdgApplicationBundle(const QString& updateEndpoint);
    XdgApplicationBundle(const QString& updateEndpoint, const QString& executableDirectory);

    [[nodiscard]] std::optional<QString> version() const override;
    [[nodiscard]] QString bundlePath() const override;
    [[nodiscard]] bool isWritable(const QString& directory) const override;
    [[nodiscard]] QString updateEndpoint() const override;
    [[nodiscard]] std::optional<QString> resource(const QString& name,
                                                  const QString& extension) const override;
    [[nodiscard]] QString homeDirectory() const override;
    [[nodiscard]] QString temporaryDirectory() const override;
    [[nodiscard]] std::optional<QString> applicationSupportDirectory() const override;
    [[nodiscard]] int processorCount() const override;
    [[nodiscard]] int processIdentifier() const override;

private:
    const QString m_updateEndpoint;
    const QString m_prefix;
    const std::optional<QString> m_version;
};

/// Where the settings are kept, whether or not the file exists.
[[nodiscard]] QString settingsFilePath();

} // namespace quorvin
