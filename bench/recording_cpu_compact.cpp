// Prints what the real program takes of one core over twenty seconds of a take in compact mode,
// with a tone in the microphone that moves the bars.

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
    desktop.press(QStringLiteral("ctrl+grave"));
    std::this_thread::sleep_for(2s);
    desktop.clickPanel();
    program.waitFor("Recording started successfully");
    std::printf("recording_cpu_compact %.3g %%\n", program.coreShare(2s, 20s));
}
