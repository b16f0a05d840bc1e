#include "app/Program.h"

#include "app/QuorvinApp.h"
#include "app/SingleInstance.h"
#include "platform/linux/LinuxPlatform.h"
#include "services/records/PerformanceMetrics.h"
#include "services/signals/NotificationService.h"
#include "services/signals/SoundService.h"
#include "theme/GeistFont.h"
#include "theme/ThemeManager.h"

#include <QApplication>
#include <QIcon>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

int runProgram(int argc, char** argv, const QString& updateEndpoint) {
    // All that moves is drawn by our own items, into images. A graphics library would only show
    // them, for 100 MiB and a thread for each window; and the one that draws without a graphics
    // card crashes when a window closes while another one draws.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);

    QApplication application(argc, argv);
    SingleInstance instance(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    if (!instance.isFirst()) {
        return 0;
    }
    QApplication::setApplicationName(u"Quorvin"_s);
    QApplication::setDesktopFileName(u"quorvin"_s);
    QApplication::setWindowIcon(QIcon(u":/quorvin.svg"_s));
    QApplication::setFont(GeistFont::font(13));
    QApplication::setQuitOnLastWindowClosed(false); // it goes on in the status item
    QQuickStyle::setStyle(u"Basic"_s);

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
