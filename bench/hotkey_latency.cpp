// Prints the time from the hot key to the panel on the screen, over thirty switches of the real
// program there and back.

#include "support/Quantile.h"
#include "support/RunningProgram.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

using namespace quorvin;
using namespace std::chrono_literals;

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const bench::Desktop desktop;
    bench::RunningProgram program(desktop);
    std::vector<double> times;
    for (int i = 0; i < 30; ++i) {
        std::this_thread::sleep_for(500ms);
        times.push_back(desktop.timeToPanel().count());
        std::this_thread::sleep_for(500ms);
        desktop.press(QStringLiteral("ctrl+grave"));
    }
    std::printf("hotkey_latency_median %.3g ms\n", bench::quantile(times, 0.5));
    std::printf("hotkey_latency_p95 %.3g ms\n", bench::quantile(times, 0.95));
}
