// Prints what the real program takes of one core over thirty seconds in compact mode in which
// nobody touches it: the panel is shown, and the look-back listens.

#include "support/RunningProgram.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>

using namespace quorvin;
using namespace std::chrono_literals;

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const bench::Desktop desktop;
    bench::RunningProgram program(desktop);
    desktop.press(QStringLiteral("ctrl+grave"));
    std::printf("idle_cpu_compact %.3g %%\n", program.coreShare(5s, 30s));
}
