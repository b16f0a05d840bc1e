// Prints what the real program takes of one core over thirty seconds in compact mode in which
// nobody touches it: the panel is shown, and the look-back listens.

#include "support/RunningProgram.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <thread>

using namespace quorvin;
using namespace std::chrono_literals;

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const bench::Desktop desktop;
    bench::RunningProgram program(desktop);
    program.waitFor("Keep-warm started");
    desktop.press(QStringLiteral("ctrl+grave"));
    std::this_thread::sleep_for(5s); // until the start is over
    constexpr std::chrono::duration<double> span = 30s;
    const auto before = program.processorTime();
    std::this_thread::sleep_for(span);
    std::printf("idle_cpu_compact %.3g %%\n", (program.processorTime() - before) / span * 100);
}
