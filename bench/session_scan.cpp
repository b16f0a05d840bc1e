// Prints what it takes to find three agents, which run in one terminal, among three hundred other
// processes: natively, by the commands ps and lsof, and how many times faster the first is than the
// second.

#include "platform/linux/posix/BlockingCommand.h"
#include "platform/linux/procfs/ProcfsProcessTable.h"
#include "services/agents/CommandProcessTable.h"
#include "services/agents/SessionScan.h"
#include "support/SleepingProcess.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quorvin;
using quorvin::testing::SleepingProcess;

namespace {

constexpr int bystanderCount = 300;
constexpr int agentCount = 3;

using Processes = std::vector<std::unique_ptr<SleepingProcess>>;

Processes start(int count, const SleepingProcess::Options& options) {
    Processes processes;
    for (int i = 0; i < count; ++i) {
        processes.push_back(std::make_unique<SleepingProcess>(options));
    }
    return processes;
}

/// A process with the agents for its children.
class Terminal {
public:
    Terminal() {
        std::array<int, 2> ready{};
        std::array<int, 2> end{};
        if (pipe2(ready.data(), O_CLOEXEC) != 0 || pipe2(end.data(), O_CLOEXEC) != 0) {
            std::abort();
        }
        m_pid = fork();
        if (m_pid == 0) {
            close(end[1]);
            run(ready[1], end[0]);
            _exit(EXIT_SUCCESS);
        }
        close(end[0]);
        close(ready[1]);
        m_end = end[1];
        char answer = 0;
        [[maybe_unused]] const auto count = read(ready[0], &answer, 1);
        close(ready[0]);
    }
    ~Terminal() {
        close(m_end);
        waitpid(m_pid, nullptr, 0);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    [[nodiscard]] ProcessID pid() const { return m_pid; }

private:
    static void run(int ready, int end) {
        const Processes agents =
            start(agentCount, {.name = "claude", .workingDirectory = "/usr/bin"});
        char signal = 0;
        [[maybe_unused]] auto count = write(ready, &signal, 1);
        count = read(end, &signal, 1); // until the other side is closed
    }

    pid_t m_pid = -1;
    int m_end = -1;
};

/// The middle one of the times of `runs` scans, in milliseconds; none when a scan misses an agent.
std::optional<double> medianTime(const ProcessTableFactory& makeTable, const Terminal& terminal,
                                 int runs) {
    const std::vector<RunningApplication> running{
        {terminal.pid(), std::nullopt, QStringLiteral("com.apple.Terminal")}};
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const auto begin = std::chrono::steady_clock::now();
        const QList<AgentSessionInfo> found = scanSessions(*makeTable(), running).claude;
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - begin;
        times.push_back(time.count());
        const auto ours =
            std::count_if(found.begin(), found.end(), [&](const AgentSessionInfo& session) {
                return makeTable()->parent(session.pid) == terminal.pid() &&
                       session.title == u"bin" &&
                       session.terminalBundleID == running[0].bundleIdentifier;
            });
        if (ours != agentCount) {
            return std::nullopt;
        }
    }
    const auto middle = times.begin() + runs / 2;
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

} // namespace

int main(int argc, char** argv) {
    const Terminal terminal; // while this process is a small one
    const QCoreApplication application(argc, argv);
    const Processes bystanders = start(bystanderCount, {.hasTerminal = false});

    constexpr int nativeRuns = 51;
    constexpr int commandRuns = 7;
    const auto native =
        medianTime([] { return std::make_unique<ProcfsProcessTable>(); }, terminal, nativeRuns);
    const auto commands = medianTime(
        [] {
            return std::make_unique<CommandProcessTable>(runAndWaitForOutput, linuxProcessTools());
        },
        terminal, commandRuns);
    if (!native || !commands) {
        std::fputs("An agent was not found\n", stderr);
        return EXIT_FAILURE;
    }
    std::printf("session_scan_native %.3g ms\n", *native);
    std::printf("session_scan_commands %.3g ms\n", *commands);
    std::printf("session_scan_speedup %.3g x\n", *commands / *native);
    return EXIT_SUCCESS;
}
