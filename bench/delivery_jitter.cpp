// Prints how far the moments of a delivery are off their fixed times, over fifty deliveries through
// a real event loop and a real X server: the activation and the four key events, each at the moment
// when it is done.

#include "platform/linux/x11/XTestKeyEvents.h"
#include "platform/qt/QtScheduler.h"
#include "services/agents/KeystrokeInjector.h"
#include "support/Quantile.h"
#include "support/XServer.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr ProcessID terminal = 60;
constexpr std::array<double, 5> fixedTimes{120, 220, 240, 400, 420}; // milliseconds
constexpr int deliveries = 50;

using Moment = std::chrono::steady_clock::time_point;

/// Passes everything on and writes down when it was done.
class StampingKeyEvents final : public KeyEvents {
public:
    StampingKeyEvents(KeyEvents& real, std::vector<Moment>& stamps)
        : m_real(real), m_stamps(stamps) {}

    [[nodiscard]] bool isTrusted() override { return m_real.isTrusted(); }
    [[nodiscard]] Task<Result> post(KeyEvent event) override {
        const Result result = co_await m_real.post(event);
        if (result != Result::posted) {
            qFatal("A key can't be posted");
        }
        m_stamps.push_back(std::chrono::steady_clock::now());
        co_return result;
    }
    [[nodiscard]] Task<Result> post(KeyEvent event, ProcessID process) override {
        co_return co_await m_real.post(event, process);
    }

private:
    KeyEvents& m_real;
    std::vector<Moment>& m_stamps;
};

class StampingWorkspace final : public Workspace {
public:
    explicit StampingWorkspace(std::vector<Moment>& stamps) : m_stamps(stamps) {}

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
        return std::nullopt;
    }
    [[nodiscard]] std::vector<RunningApplication> runningApplications() override {
        return {{terminal, std::nullopt, std::nullopt}};
    }
    Request activate(ProcessID) override {
        m_stamps.push_back(std::chrono::steady_clock::now());
        return Request::made;
    }
    Request openURL(const QString&) override { return Request::notPossibleHere; }

private:
    std::vector<Moment>& m_stamps;
};

/// How far each moment of one delivery is off, in milliseconds.
std::vector<double> deviationsOfOne(Scheduler& scheduler, KeyEvents& keys) {
    std::vector<Moment> stamps;
    StampingKeyEvents keyEvents(keys, stamps);
    StampingWorkspace workspace(stamps);
    QEventLoop loop;
    const auto begin = std::chrono::steady_clock::now();
    const auto deliver = [&]() -> Task<> {
        co_await KeystrokeInjector::pasteAndSubmit(scheduler, workspace, keyEvents, &loop, terminal,
                                                   true);
        loop.quit();
    };
    const Task<> delivery = deliver();
    loop.exec();
    std::vector<double> deviations;
    for (std::size_t i = 0; i < fixedTimes.size(); ++i) {
        const std::chrono::duration<double, std::milli> time = stamps.at(i) - begin;
        deviations.push_back(std::abs(time.count() - fixedTimes[i]));
    }
    return deviations;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const testing::XServer server;
    XcbConnection connection(server.display());
    QtScheduler scheduler;
    XTestKeyEvents keys(scheduler, connection);
    std::vector<double> deviations;
    for (int i = 0; i < deliveries; ++i) {
        const std::vector<double> one = deviationsOfOne(scheduler, keys);
        deviations.insert(deviations.end(), one.begin(), one.end());
    }
    std::printf("delivery_jitter_median %.3g ms\n", bench::quantile(deviations, 0.5));
    std::printf("delivery_jitter_p99 %.3g ms\n", bench::quantile(deviations, 0.99));
    std::printf("delivery_jitter_max %.3g ms\n", bench::quantile(deviations, 1));
    return EXIT_SUCCESS;
}
