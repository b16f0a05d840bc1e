// What the program adds to a run of the speech engine. The engine here is a program that ends at
// once, so that nothing but the overhead is left.

#include "platform/linux/posix/PosixProcessRunner.h"
#include "platform/qt/QtScheduler.h"
#include "services/transcription/WhisperService.h"
#include "support/StampingRunner.h"
#include "support/fakes/FakeApplicationBundle.h"

#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <vector>

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quorvin;

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr const char* enginePath = "/bin/true";

/// The service with all that it stands on.
class Engine {
public:
    Engine() {
        QFile model(m_directory.filePath(QStringLiteral("ggml-base.bin")));
        if (!model.open(QIODevice::WriteOnly)) {
            qFatal("No temporary files here");
        }
        m_bundle.temporary = m_directory.path();
        m_service.loadModel();
    }

    /// Has `samples` transcribed. Returns when it began.
    Clock::time_point transcribe(std::vector<float> samples) {
        QEventLoop loop;
        const auto wait = [](WhisperService& service, std::vector<float> speech,
                             QEventLoop& waiting) -> Task<> {
            co_await service.transcribe(std::move(speech));
            waiting.quit();
        };
        m_runner.exitStatus = -1;
        const auto begin = Clock::now();
        wait(m_service, std::move(samples), loop);
        loop.exec();
        return begin;
    }

    /// Whether a child has run in the last transcription, and well.
    [[nodiscard]] bool hasRun() const { return m_runner.exitStatus == 0; }

private:
    QTemporaryDir m_directory;
    testing::FakeApplicationBundle m_bundle;
    QtScheduler m_scheduler;
    PosixProcessRunner m_actualRunner{m_scheduler};
    bench::StampingRunner m_runner{m_actualRunner};
    WhisperService m_service{
        m_bundle, m_runner, m_scheduler, {{QString::fromUtf8(enginePath)}, {m_directory.path()}}};
};

/// Time of the engine alone: started and waited for in the plainest way.
Milliseconds childTime() {
    const auto begin = Clock::now();
    char* const arguments[] = {const_cast<char*>(enginePath), nullptr};
    pid_t id = -1;
    if (::posix_spawn(&id, enginePath, nullptr, nullptr, arguments, environ) == 0) {
        ::waitpid(id, nullptr, 0);
    }
    return Clock::now() - begin;
}

/// From a take of three seconds to its text, beyond the child's own time.
void engine_overhead(benchmark::State& state) {
    Engine engine;
    const std::vector<float> samples = bench::take(3);
    while (state.KeepRunning()) {
        const Milliseconds child = childTime();
        const auto begin = engine.transcribe(samples);
        const Milliseconds whole = Clock::now() - begin;
        if (!engine.hasRun()) {
            state.SkipWithError("the engine did not run");
            return;
        }
        state.SetIterationTime(std::chrono::duration<double>(whole - child).count());
        state.counters["child_ms"] = child.count();
    }
}

} // namespace

BENCHMARK(engine_overhead)->Apply(bench::medianOfSingleRuns);
