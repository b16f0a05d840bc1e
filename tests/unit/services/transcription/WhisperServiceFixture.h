#pragma once

#include "services/transcription/WhisperService.h"
#include "support/LogCapture.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeApplicationBundle.h"
#include "support/fakes/FakeProcessRunner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

namespace quorvin::testing {

/// A service whose search tables are the real ones, moved below a directory of the test's own.
class WhisperServiceTest : public ::testing::Test {
protected:
    static constexpr const char* whichPath = "/usr/bin/which";

    /// One call of `transcribe`: unfinished, or its result.
    struct Transcription {
        bool isDone = false;
        std::optional<QString> text;
    };

    WhisperServiceTest() {
        bundle.home = under(QStringLiteral("/Users/me"));
        bundle.applicationSupport = under(QStringLiteral("/data"));
        bundle.temporary = under(QStringLiteral("/tmp"));
        QDir().mkpath(bundle.temporary);
        EngineLocations locations = EngineLocations::standard(bundle);
        moveBelowRoot(locations.binaries);
        moveBelowRoot(locations.modelDirectories);
        service = std::make_unique<WhisperService>(bundle, runner, scheduler, locations);
        answerWhich({});
    }

    /// Where the absolute `path` of a real machine lies here.
    [[nodiscard]] QString under(const QString& path) const { return root.path() + path; }

    QString placeFile(const QString& path) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return path;
    }
    QString placeProgram(const QString& path) {
        placeFile(path);
        EXPECT_TRUE(QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ExeOwner));
        return path;
    }

    /// What "which" prints.
    void answerWhich(const QByteArray& output) {
        runner.script(QLatin1String(whichPath),
                      {.exitStatus = 0, .standardOutput = output, .standardError = {}});
    }

    void load() {
        service->loadModel();
        scheduler.runPosted();
    }
    /// Puts a program and a model into their places and loads them.
    void loadEngine() {
        program = placeProgram(under(QStringLiteral("/opt/homebrew/bin/whisper-cli")));
        model = placeFile(bundle.home + QStringLiteral("/models/ggml-base.bin"));
        load();
        (void)log.takeText();
        runner.calls.clear();
    }

    /// What the next runs of the engine leave behind.
    void engineEnds(const QByteArray& output, int exitStatus = 0, const QByteArray& error = {}) {
        runner.script(program, {exitStatus, output, error});
    }

    std::shared_ptr<Transcription> start(std::vector<float> samples = speech()) {
        auto transcription = std::make_shared<Transcription>();
        const auto wait = [](Task<std::optional<QString>> task,
                             std::shared_ptr<Transcription> result) -> Task<> {
            result->text = co_await task;
            result->isDone = true;
        };
        wait(service->transcribe(std::move(samples)), transcription);
        return transcription;
    }
    /// A whole transcription that takes no time.
    std::optional<QString> transcribe(std::vector<float> samples = speech()) {
        const auto transcription = start(std::move(samples));
        scheduler.runPosted();
        EXPECT_TRUE(transcription->isDone);
        return transcription->text;
    }

    /// A tenth of a second that is loud enough.
    static std::vector<float> speech() { return std::vector<float>(1600, 0.5F); }

    [[nodiscard]] QStringList temporaryFiles() const {
        return QDir(bundle.temporary).entryList(QDir::Files);
    }

    LogCapture log{"com.quorvin.WhisperService"};
    QTemporaryDir root;
    VirtualScheduler scheduler;
    FakeApplicationBundle bundle;
    FakeProcessRunner runner{scheduler};
    std::unique_ptr<WhisperService> service;
    QString program;
    QString model;

private:
    void moveBelowRoot(QStringList& paths) const {
        for (QString& path : paths) {
            if (!path.startsWith(root.path())) {
                path.prepend(root.path());
            }
        }
    }
};

} // namespace quorvin::testing
