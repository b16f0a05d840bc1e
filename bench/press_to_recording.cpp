// Prints the time from startRecording until the take runs, and until the first buffer of sound has
// moved the meter, over fifty takes of the program below its views, with the look-back running as
// it does between takes. The sound server is a private one.

#include "models/AppState.h"
#include "platform/linux/LinuxPlatform.h"
#include "services/records/PerformanceMetrics.h"
#include "support/Quantile.h"
#include "support/SoundServer.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QLoggingCategory>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

} // namespace

int main(int argc, char** argv) {
    testing::SoundServer server; // first: it sets the home of all that follows
    server.start({testing::sinkModule(u"room"_s, 48000, 2),
                  testing::microphoneModule(u"mic"_s, u"room"_s, u"Desk Microphone"_s),
                  testing::toneModule(u"room"_s, 440)});
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QLoggingCategory::setFilterRules(u"com.quorvin.*=false"_s);
    // Nobody listens at that port: nothing is asked of a network here.
    LinuxPlatform linuxPlatform(u"http://127.0.0.1:9"_s);
    const Platform& platform = linuxPlatform.platform();
    PerformanceMetrics metrics(platform.scheduler);
    NotificationService notifications(platform.userNotifications);
    SoundService sounds(platform.soundPlayers, platform.applicationBundle, platform.userDefaults);
    AppState app(platform);

    std::vector<double> running;
    std::vector<double> hearing;
    for (int take = 0; take < 50; ++take) {
        QEventLoop pause;
        platform.scheduler.postDelayed(200ms + take * 3ms, [&pause] { pause.quit(); });
        pause.exec();

        QEventLoop firstSound;
        const auto heard =
            QObject::connect(&app, &AppState::audioLevelChanged, &firstSound, &QEventLoop::quit);
        const auto begin = Clock::now();
        app.startRecording();
        if (!app.isRecording() || !app.audioService().isRecording()) {
            std::fputs("The take did not start\n", stderr);
            return EXIT_FAILURE;
        }
        running.push_back(millisecondsSince(begin));
        firstSound.exec();
        hearing.push_back(millisecondsSince(begin));
        QObject::disconnect(heard);
        app.cancelRecording();
    }
    std::printf("press_to_recording_median %.3g ms\n", bench::quantile(running, 0.5));
    std::printf("press_to_recording_p95 %.3g ms\n", bench::quantile(running, 0.95));
    std::printf("press_to_first_sound_p95 %.3g ms\n", bench::quantile(hearing, 0.95));
    return EXIT_SUCCESS;
}
