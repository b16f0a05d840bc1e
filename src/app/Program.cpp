#include "app/Program.h"

#include "app/QuorvinApp.h"
#include "app/SingleInstance.h"
#include "platform/linux/LinuxPlatform.h"
#include "services/records/PerformanceMetrics.h"
#include "services/signals/NotificationService.h"
#include "services/signals/SoundService.h"
#include "theme/ThemeManager.h"
#include "views/ViewSetup.h"

#include <QApplication>
#include <QIcon>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

int runProgram(int argc, char** argv, const QString& updateEndpoint) {
    QApplication application(argc, argv);
    SingleInstance instance(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    if (!instance.isFirst()) {
        return 0;
    }
    QApplication::setApplicationName(u"Quorvin"_s);
    QApplication::setDesktopFileName(u"quorvin"_s);
    QApplication::setWindowIcon(QIcon(u":/quorvin.svg"_s));
    QApplication::setQuitOnLastWindowClosed(false); // it goes on in the status item
    setUpViews();

    // In the order of their needs; everything goes in the opposite order.
    LinuxPlatform linuxPlatform(updateEndpoint);
    const Platform& platform = linuxPlatform.platform();
    PerformanceMetrics metrics(platform.scheduler);
    NotificationService notifications(platform.userNotifications);
    SoundService sounds(platform.soundPlayers, platform.applicationBundle, platform.userDefaults);
    ThemeManager themes(platform.userDefaults);
    QuorvinApp app(platform);
    if (!app.run()) {
        return 1;
    }
    instance.onLaterStart([&app] { app.handleReopen(); });
    return QApplication::exec();
}

} // namespace quorvin
