#pragma once

#include "platform/ApplicationBundle.h"

#include <QStringList>

#include <map>

namespace quorvin::testing {

/// An installed program that a test describes by plain fields.
class FakeApplicationBundle final : public ApplicationBundle {
public:
    [[nodiscard]] std::optional<QString> version() const override { return installedVersion; }
    [[nodiscard]] QString bundlePath() const override { return path; }
    [[nodiscard]] bool isWritable(const QString& directory) const override {
        return writableDirectories.contains(directory);
    }
    [[nodiscard]] QString updateEndpoint() const override { return endpoint; }

    [[nodiscard]] std::optional<QString> resource(const QString& name,
                                                  const QString& extension) const override {
        const auto found = resources.find(name + QLatin1Char('.') + extension);
        return found == resources.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] QString homeDirectory() const override { return home; }
    [[nodiscard]] QString temporaryDirectory() const override { return temporary; }
    [[nodiscard]] std::optional<QString> applicationSupportDirectory() const override {
        return applicationSupport;
    }
    [[nodiscard]] int processorCount() const override { return processors; }
    [[nodiscard]] int processIdentifier() const override { return pid; }

    std::optional<QString> installedVersion = QStringLiteral("1.2.3");
    QString path = QStringLiteral("/nowhere/Applications/Quorvin.app");
    QStringList writableDirectories = {QStringLiteral("/nowhere/Applications")};
    QString endpoint = QStringLiteral("https://updates.test");
    /// Paths by file name.
    std::map<QString, QString> resources;
    QString home = QStringLiteral("/nowhere/home");
    QString temporary = QStringLiteral("/nowhere/tmp");
    std::optional<QString> applicationSupport = QStringLiteral("/nowhere/home/.local/share");
    int processors = 8;
    int pid = 4242;
};

} // namespace quorvin::testing
