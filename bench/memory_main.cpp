// Prints the resident memory of the real program after its start and what 200 takes from its main
// window add to it. The first takes are told apart: they load what every later one uses again.

#include "support/RunningProgram.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <thread>

using namespace quorvin;
using namespace std::chrono_literals;

namespace {

constexpr int firstTakes = 10;
constexpr int takes = 200;

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const bench::Desktop desktop;
    bench::RunningProgram program(desktop);
    std::this_thread::sleep_for(2s);
    const double atStart = program.residentMebibytes();
    std::printf("memory_main.start %.4g MiB\n", atStart);
    for (int take = 1; take <= takes; ++take) {
        desktop.clickRing();
        program.waitFor("Recording started successfully", take);
        std::this_thread::sleep_for(400ms);
        desktop.clickRing();
        program.waitFor("Transcription result", take);
        program.waitFor("Keep-warm started", take + 1);
        if (take == firstTakes) {
            std::printf("memory_main.first_%d_takes %.3g MiB\n", firstTakes,
                        program.residentMebibytes() - atStart);
        }
    }
    std::printf("memory_main.%d_takes %.3g MiB\n", takes, program.residentMebibytes() - atStart);
}
