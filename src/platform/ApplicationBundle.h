#pragma once

#include <QString>

#include <optional>

namespace quorvin {

/// What is installed with the program and where the system wants its files. Any thread.
class ApplicationBundle {
public:
    ApplicationBundle() = default;
    ApplicationBundle(const ApplicationBundle&) = delete;
    ApplicationBundle& operator=(const ApplicationBundle&) = delete;
    virtual ~ApplicationBundle() = default;

    /// "1.2.3"; absent when the bundle names none.
    [[nodiscard]] virtual std::optional<QString> version() const = 0;
    /// Path of the directory that holds all that is installed with the program. Only one whose name
    /// ends in ".app" holds nothing else.
    [[nodiscard]] virtual QString bundlePath() const = 0;
    /// Whether this user can make and rename files in that directory.
    [[nodiscard]] virtual bool isWritable(const QString& directory) const = 0;
    /// Where the manifest of the newest build is kept, a fixed value of the build without a slash
    /// at its end: "https://host/path".
    [[nodiscard]] virtual QString updateEndpoint() const = 0;
    /// Path of the resource file "<name>.<extension>"; absent when it isn't there.
    [[nodiscard]] virtual std::optional<QString> resource(const QString& name,
                                                          const QString& extension) const = 0;
    [[nodiscard]] virtual QString homeDirectory() const = 0;
    [[nodiscard]] virtual QString temporaryDirectory() const = 0;
    /// Where applications keep their data, each in a folder of its own; absent when not known.
    [[nodiscard]] virtual std::optional<QString> applicationSupportDirectory() const = 0;
    /// Logical processors, at least 1.
    [[nodiscard]] virtual int processorCount() const = 0;
    [[nodiscard]] virtual int processIdentifier() const = 0;
};

} // namespace quorvin
