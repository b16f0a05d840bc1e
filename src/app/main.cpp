#include "models/AppState.h"
#include "platform/linux/LinuxPlatform.h"
#include "services/records/PerformanceMetrics.h"
#include "services/signals/NotificationService.h"
#include "services/signals/SoundService.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>

using namespace Qt::Literals::StringLiterals;

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(u"Quorvin"_s);
    QGuiApplication::setDesktopFileName(u"quorvin"_s);
    QGuiApplication::setFont(QFont(QStringList{u"Geist"_s, u"Inter"_s}));
    QQuickStyle::setStyle(u"Basic"_s);

    // In the order of their needs; everything goes in the opposite order.
    quorvin::LinuxPlatform linuxPlatform;
    const quorvin::Platform& platform = linuxPlatform.platform();
    quorvin::PerformanceMetrics metrics(platform.scheduler);
    quorvin::NotificationService notifications(platform.userNotifications);
    quorvin::SoundService sounds(platform.soundPlayers, platform.applicationBundle,
                                 platform.userDefaults);
    quorvin::AppState appState(platform);

    QQmlApplicationEngine engine;
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.setInitialProperties({{u"appState"_s, QVariant::fromValue(&appState)}});
    engine.load(u"qrc:/qt/qml/Quorvin/MainWindow.qml"_s);
    if (engine.rootObjects().isEmpty()) {
        return 1;
    }
    return QGuiApplication::exec();
}
