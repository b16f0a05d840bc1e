#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace quorvin {

class ApplicationBundle;

/// What is known of the speech engine: where its program and its models may be, and what it can do.
namespace WhisperConstants {

/// What to type to get the engine; also right for Homebrew on Linux.
[[nodiscard]] QString installCommand();

/// Paths of the program, the best first.
[[nodiscard]] QStringList binarySearchPaths(const QString& homeDirectory);

/// Names of model files, the best first.
[[nodiscard]] QStringList modelFilenames();

/// Directories of models, the best first, each once.
[[nodiscard]] QStringList modelSearchPaths(const QString& homeDirectory,
                                           const std::optional<QString>& applicationSupport);

/// Codes that the engine is given; "auto" lets it find the language out.
[[nodiscard]] QStringList supportedLanguages();

} // namespace WhisperConstants

/// Where a service looks for its engine, each list in the order of the search.
struct EngineLocations {
    QStringList binaries;
    QStringList modelDirectories;

    /// Those of this user on this machine.
    [[nodiscard]] static EngineLocations standard(const ApplicationBundle& bundle);
};

} // namespace quorvin
