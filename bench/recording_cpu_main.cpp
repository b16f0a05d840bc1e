// Prints what the real program takes of one core over twenty seconds of a take in the main window,
// with a tone in the microphone that moves the ring.

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
    desktop.clickRing();
    program.waitFor("Recording started successfully");
    std::printf("recording_cpu_main %.3g %%\n", program.coreShare(2s, 20s));
}
