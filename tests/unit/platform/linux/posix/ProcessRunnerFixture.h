#pragma once

#include "platform/linux/posix/PosixProcessRunner.h"
#include "platform/qt/QtScheduler.h"
#include "support/Eventually.h"

#include <QFile>
#include <QTemporaryDir>

#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace quorvin::testing {

/// Runs real children and the event loop that their results come through.
class ProcessRunnerTest : public ::testing::Test {
protected:
    /// One call of `run`: unfinished, or its result or launch error.
    struct Outcome {
        std::optional<ProcessResult> result;
        std::optional<std::string> launchError;
    };

    std::shared_ptr<Outcome> start(const QString& program, const QStringList& arguments) {
        auto outcome = std::make_shared<Outcome>();
        const auto wait = [](Task<ProcessResult> task, std::shared_ptr<Outcome> end) -> Task<> {
            try {
                end->result = co_await task;
            } catch (const ProcessLaunchError& error) {
                end->launchError = error.what();
            }
        };
        wait(runner->run(program, arguments), outcome);
        return outcome;
    }
    std::shared_ptr<Outcome> startShell(const QString& script) {
        return start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    }

    /// The result of a child that ends by itself.
    ProcessResult run(const QString& program, const QStringList& arguments) {
        const auto outcome = start(program, arguments);
        EXPECT_TRUE(eventually([&] { return outcome->result.has_value(); }));
        return outcome->result.value_or(ProcessResult{});
    }
    ProcessResult runShell(const QString& script) {
        return run(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    }

    [[nodiscard]] QString filePath(const QString& name) const { return directory.filePath(name); }
    [[nodiscard]] QByteArray fileContents(const QString& name) const {
        QFile file(filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir directory;
    QtScheduler scheduler;
    std::unique_ptr<PosixProcessRunner> runner = std::make_unique<PosixProcessRunner>(scheduler);
};

} // namespace quorvin::testing
