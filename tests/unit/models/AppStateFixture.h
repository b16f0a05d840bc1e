#pragma once

#include "models/AppState.h"
#include "services/records/PerformanceMetrics.h"
#include "services/signals/NotificationService.h"
#include "services/signals/SoundService.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeApplicationBundle.h"
#include "support/fakes/FakeAudioHost.h"
#include "support/fakes/FakeHttpClient.h"
#include "support/fakes/FakeKeyEvents.h"
#include "support/fakes/FakeKeyMonitor.h"
#include "support/fakes/FakePasteboard.h"
#include "support/fakes/FakeProcessRunner.h"
#include "support/fakes/FakeProcessTable.h"
#include "support/fakes/FakeSoundPlayers.h"
#include "support/fakes/FakeStatusItem.h"
#include "support/fakes/FakeTerminalAutomation.h"
#include "support/fakes/FakeTextSelections.h"
#include "support/fakes/FakeUpdateInstaller.h"
#include "support/fakes/FakeUserNotifications.h"
#include "support/fakes/FakeWindowSystem.h"
#include "support/fakes/FakeWorkspace.h"
#include "support/fakes/MemoryUserDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

namespace quorvin::testing {

/// The whole program below the views on fake platform parts: real services, virtual time, a private
/// home directory, a microphone that the test feeds and an engine whose answers it writes.
class AppStateTest : public ::testing::Test {
public:
    ~AppStateTest() override;

protected:
    AppStateTest();

    /// Makes the program; what a test wants to find at start is set before.
    AppState& start();
    AppState& app() { return *m_app; }
    void endProgram();
    [[nodiscard]] const Platform& platform() const { return m_platform; }

    /// Makes the next runs of the engine print `text`.
    void engineSays(const QString& text);
    /// Makes the next runs of the engine wait for `answerEngine`.
    void holdEngine();
    void answerEngine(const QString& text);
    /// How many samples the engine's last run was given.
    [[nodiscard]] std::size_t engineSamples() const { return m_engineSamples; }

    /// One terminal, with a shell in it.
    static constexpr ProcessID terminalPid = 900;
    static constexpr ProcessID shellPid = 910;
    void runTerminal();
    /// Starts an agent in that terminal, on a device of its own, "/dev/pts/1" for 1001, and in the
    /// directory "/home/dev/project<pid>".
    void runAgent(const QString& name, ProcessID pid);

    /// Gives 16 kHz samples to the engine that captures now, as one buffer.
    void feedMicrophone(const std::vector<float>& samples);
    /// Brings the level meter of the running take to this value.
    void setLevel(double level);
    /// Lets one second of loud sound into the running take.
    void speak();
    /// A whole take: start, speech, stop, and the engine's answer.
    void dictate(const QString& text);

    /// The messages of the feed, oldest first.
    [[nodiscard]] QStringList feed() const;
    [[nodiscard]] QStringList feed(ActivityType type) const;
    /// The titles of the banners so far.
    [[nodiscard]] QStringList banners() const;
    [[nodiscard]] QList<HistoryEntry> history() const;
    /// Where the history's database is.
    [[nodiscard]] QString historyPath() const;
    /// The names of the sounds so far.
    [[nodiscard]] QStringList soundsPlayed() const;
    [[nodiscard]] double popVolume() const;
    [[nodiscard]] QStringList temporaryWavFiles() const;
    [[nodiscard]] std::optional<std::uint32_t> selectedDeviceOfTheTake() const;

    VirtualScheduler scheduler;
    QTemporaryDir directory;
    FakeApplicationBundle bundle;
    MemoryUserDefaults defaults;
    FakeAudioHost audioHost;
    FakeProcessRunner processRunner{scheduler};
    FakeWorkspace workspace;
    FakeWindowSystem windowSystem;
    FakeUserNotifications notifications;
    FakeSoundPlayers soundPlayers;
    FakeKeyMonitor keyMonitor;
    FakeStatusItem statusItem;
    FakePasteboard pasteboard;
    FakeTextSelections textSelections{pasteboard};
    FakeKeyEvents keyEvents{scheduler};
    FakeTerminalAutomation terminalAutomation;
    FakeHttpClient network;
    FakeUpdateInstaller updateInstaller;
    int terminations = 0;
    FakeProcesses processes;

private:
    QString engineProgram();

    Platform m_platform{scheduler,
                        bundle,
                        defaults,
                        audioHost,
                        processRunner,
                        workspace,
                        windowSystem,
                        notifications,
                        soundPlayers,
                        pasteboard,
                        textSelections,
                        keyEvents,
                        keyMonitor,
                        statusItem,
                        terminalAutomation,
                        network,
                        updateInstaller,
                        [this] { return std::make_unique<FakeProcessTable>(processes); },
                        [](const std::function<void()>& work) { work(); },
                        [this] { ++terminations; },
                        {.microphone = QStringLiteral("Start a sound server."),
                         .accessibility = QStringLiteral("Start a display."),
                         .automation = QStringLiteral("Start a bus.")}};
    std::unique_ptr<PerformanceMetrics> m_metrics;
    std::unique_ptr<NotificationService> m_notificationService;
    std::unique_ptr<SoundService> m_soundService;
    std::unique_ptr<AppState> m_app;
    std::size_t m_engineSamples = 0;
};

} // namespace quorvin::testing
