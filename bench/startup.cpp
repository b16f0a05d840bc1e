// Prints the time from the start of the process to the end of its first frame, over ten starts of
// the real program with everything in the system's caches.

#include "support/Quantile.h"
#include "support/RunningProgram.h"

#include <QCoreApplication>

#include <cstdio>
#include <vector>

using namespace quorvin;

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const bench::Desktop desktop;
    static_cast<void>(bench::RunningProgram::timeToFirstFrame(desktop)); // fills the caches
    std::vector<double> times;
    for (int i = 0; i < 10; ++i) {
        times.push_back(bench::RunningProgram::timeToFirstFrame(desktop).count());
    }
    std::printf("startup_median %.3g ms\n", bench::quantile(times, 0.5));
    std::printf("startup_max %.3g ms\n", bench::quantile(times, 1));
}
