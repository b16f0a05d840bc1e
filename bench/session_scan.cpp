// Prints what it takes to find three agents among three hundred other processes: natively, by the
// commands ps and lsof, and how many times faster the first is than the second.

#include "platform/linux/posix/BlockingCommand.h"
#include "platform/linux/procfs/ProcfsProcessTable.h"
#include "services/agents/CommandProcessTable.h"
#include "services/agents/SessionScan.h"
#include "support/SleepingProcess.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

using namespace quorvin;
using quorvin::testing::SleepingProcess;

namespace {

constexpr int bystanderCount = 300;
constexpr int agentCount = 3;

using Processes = std::vector<std::unique_ptr<SleepingProcess>>;

/// The middle one of the times of `runs` scans, in milliseconds; ends the program when a scan
/// misses an agent.
double medianTime(const ProcessTableFactory& makeTable, const Processes& agents, int runs) {
    // This program stands for the terminal that the agents run in.
    const std::vector<RunningApplication> running{
        {getpid(), std::nullopt, QStringLiteral("com.apple.Terminal")}};
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const auto begin = std::chrono::steady_clock::now();
        const QList<AgentSessionInfo> found = scanSessions(*makeTable(), running).claude;
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - begin;
        times.push_back(time.count());
        for (const auto& agent : agents) {
            const bool isFound =
                std::any_of(found.begin(), found.end(), [&](const AgentSessionInfo& session) {
                    return session.pid == agent->pid() && session.tty == agent->ttyPath() &&
                           session.terminalBundleID == running[0].bundleIdentifier;
                });
            if (!isFound) {
                std::fputs("An agent was not found\n", stderr);
                std::exit(EXIT_FAILURE);
            }
        }
    }
    const auto middle = times.begin() + runs / 2;
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    Processes bystanders;
    for (int i = 0; i < bystanderCount; ++i) {
        bystanders.push_back(
            std::make_unique<SleepingProcess>(SleepingProcess::Options{.hasTerminal = false}));
    }
    Processes agents;
    for (int i = 0; i < agentCount; ++i) {
        agents.push_back(std::make_unique<SleepingProcess>(
            SleepingProcess::Options{.name = "claude", .workingDirectory = "/usr/bin"}));
    }

    constexpr int nativeRuns = 51;
    constexpr int commandRuns = 7;
    const double native =
        medianTime([] { return std::make_unique<ProcfsProcessTable>(); }, agents, nativeRuns);
    const double commands = medianTime(
        [] {
            return std::make_unique<CommandProcessTable>(runAndWaitForOutput, linuxProcessTools());
        },
        agents, commandRuns);
    std::printf("session_scan_native %.3g ms\n", native);
    std::printf("session_scan_commands %.3g ms\n", commands);
    std::printf("session_scan_speedup %.3g x\n", commands / native);
    return EXIT_SUCCESS;
}
