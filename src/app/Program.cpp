#include "app/Program.h"

#include "app/SingleInstance.h"
#include "models/AppState.h"
#include "platform/linux/LinuxPlatform.h"
#include "services/records/PerformanceMetrics.h"
#include "services/signals/NotificationService.h"
#include "services/signals/SoundService.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

int runProgram(int argc, char** argv, const QString& updateEndpoint) {
    QGuiApplication application(argc, argv);
    SingleInstance instance(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    if (!instance.isFirst()) {
        return 0;
    }
    QGuiApplication::setApplicationName(u"Quorvin"_s);
    QGuiApplication::setDesktopFileName(u"quorvin"_s);
    QGuiApplication::setFont(QFont(QStringList{u"Geist"_s, u"Inter"_s}));
    QQuickStyle::setStyle(u"Basic"_s);

    // In the order of their needs; everything goes in the opposite order.
    LinuxPlatform linuxPlatform(updateEndpoint);
    const Platform& platform = linuxPlatform.platform();
    PerformanceMetrics metrics(platform.scheduler);
    NotificationService notifications(platform.userNotifications);
    SoundService sounds(platform.soundPlayers, platform.applicationBundle, platform.userDefaults);
    AppState appState(platform);

    QQmlApplicationEngine engine;
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.setInitialProperties({{u"appState"_s, QVariant::fromValue(&appState)}});
    engine.load(u"qrc:/qt/qml/Quorvin/MainWindow.qml"_s);
    if (engine.rootObjects().isEmpty()) {
        return 1;
    }
    instance.onLaterStart([&appState] {
        // A panel that is in use stays alone on the screen.
        if (!appState.isCompactMode()) {
            appState.switchToMainWindow(true);
        }
    });
    return QGuiApplication::exec();
}

} // namespace quorvin
