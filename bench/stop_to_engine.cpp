// How long a user who ends a take of a minute waits for the engine to begin: the whole program
// below the views, with a real child process and a microphone that the benchmark feeds.

#include "models/AppState.h"
#include "platform/linux/posix/PosixProcessRunner.h"
#include "platform/qt/QtScheduler.h"
#include "services/records/PerformanceMetrics.h"
#include "support/StampingRunner.h"
#include "support/fakes/FakeApplicationBundle.h"
#include "support/fakes/FakeAudioHost.h"
#include "support/fakes/FakeHttpClient.h"
#include "support/fakes/FakeKeyEvents.h"
#include "support/fakes/FakeKeyMonitor.h"
#include "support/fakes/FakePasteboard.h"
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
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

using namespace quorvin;
using namespace quorvin::testing;

namespace {

/// A home directory with an engine that ends at once, in one of the places that are searched. An
/// engine that is installed elsewhere serves as well, since the empty model ends it.
std::unique_ptr<FakeApplicationBundle> bundleIn(const QDir& home) {
    home.mkpath(QStringLiteral(".local/bin"));
    home.mkpath(QStringLiteral("models"));
    QFile::copy(QStringLiteral("/bin/true"),
                home.filePath(QStringLiteral(".local/bin/whisper-cli")));
    QFile model(home.filePath(QStringLiteral("models/ggml-small.bin")));
    if (!model.open(QIODevice::WriteOnly)) {
        qFatal("No temporary files here");
    }
    auto bundle = std::make_unique<FakeApplicationBundle>();
    bundle->home = home.path();
    bundle->temporary = home.path();
    bundle->applicationSupport = home.path();
    return bundle;
}

class Program {
public:
    Program() {
        waitUntil(&AppState::modelLoadedChanged, [this] { return m_app.modelLoaded(); });
    }

    /// From the end of a take to the child; negative when none ran.
    std::chrono::duration<double> stopToEngine(const std::vector<float>& samples) {
        m_app.startRecording();
        m_audioHost.engines.back()->feed(samples);
        const auto begin = std::chrono::steady_clock::now();
        m_app.stopRecording();
        waitUntil(&AppState::isTranscribingChanged, [this] { return !m_app.isTranscribing(); });
        return m_runner.started - begin;
    }

private:
    template <typename Condition>
    void waitUntil(void (AppState::*changed)(), Condition condition) {
        QEventLoop loop;
        QObject::connect(&m_app, changed, &loop, &QEventLoop::quit);
        while (!condition()) {
            loop.exec();
        }
    }

    QTemporaryDir m_directory;
    const std::unique_ptr<FakeApplicationBundle> m_bundle = bundleIn(m_directory.path());
    QtScheduler m_scheduler;
    MemoryUserDefaults m_defaults;
    FakeAudioHost m_audioHost;
    PosixProcessRunner m_actualRunner{m_scheduler};
    bench::StampingRunner m_runner{m_actualRunner};
    FakeWorkspace m_workspace;
    FakeWindowSystem m_windowSystem;
    FakeUserNotifications m_notifications;
    FakeSoundPlayers m_soundPlayers;
    FakeKeyMonitor m_keyMonitor;
    FakeStatusItem m_statusItem;
    FakePasteboard m_pasteboard;
    FakeTextSelections m_textSelections{m_pasteboard};
    FakeKeyEvents m_keyEvents{m_scheduler};
    FakeTerminalAutomation m_terminalAutomation;
    FakeHttpClient m_network;
    FakeUpdateInstaller m_updateInstaller;
    const Platform m_platform{m_scheduler,
                              *m_bundle,
                              m_defaults,
                              m_audioHost,
                              m_runner,
                              m_workspace,
                              m_windowSystem,
                              m_notifications,
                              m_soundPlayers,
                              m_pasteboard,
                              m_textSelections,
                              m_keyEvents,
                              m_keyMonitor,
                              m_statusItem,
                              m_terminalAutomation,
                              m_network,
                              m_updateInstaller,
                              [] { return std::make_unique<FakeProcessTable>(FakeProcesses{}); },
                              [](const std::function<void()>& work) { work(); },
                              [] {}};
    PerformanceMetrics m_metrics{m_scheduler};
    NotificationService m_notificationService{m_notifications};
    SoundService m_soundService{m_soundPlayers, *m_bundle, m_defaults};
    AppState m_app{m_platform};
};

void stop_to_engine(benchmark::State& state) {
    Program program;
    const std::vector<float> samples = bench::take(60);
    while (state.KeepRunning()) {
        const auto time = program.stopToEngine(samples);
        if (time.count() < 0) {
            state.SkipWithError("the engine did not run");
            return;
        }
        state.SetIterationTime(time.count());
    }
}

} // namespace

BENCHMARK(stop_to_engine)->Apply(bench::medianOfSingleRuns);
