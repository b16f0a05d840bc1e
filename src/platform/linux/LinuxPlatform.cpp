#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/freedesktop/FreedesktopNotifications.h"
#include "platform/linux/freedesktop/XdgApplicationBundle.h"
#include "platform/linux/posix/PosixProcessRunner.h"
#include "platform/linux/posix/PosixUpdateInstaller.h"
#include "platform/linux/posix/TerminationSignals.h"
#include "platform/linux/procfs/ProcfsProcessTable.h"
#include "platform/linux/pulse/PulseAudioHost.h"
#include "platform/linux/terminals/LinuxTerminalAutomation.h"
#include "platform/linux/terminals/X11TerminalWindows.h"
#include "platform/linux/x11/X11TextSelections.h"
#include "platform/linux/x11/X11Windows.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/XInputKeyMonitor.h"
#include "platform/linux/x11/XTestKeyEvents.h"
#include "platform/linux/x11/XcbConnection.h"
#include "platform/qt/JsonUserDefaults.h"
#include "platform/qt/QtHttpClient.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/QtSoundPlayers.h"
#include "platform/qt/QtStatusItem.h"
#include "platform/qt/QtWindowSystem.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QLoggingCategory>
#include <QThreadPool>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

Q_LOGGING_CATEGORY(platformLog, "com.quorvin.Platform", QtInfoMsg)

/// Where packages put documentation, seen from the directory of the program.
QString userGuideDirectory() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../share/doc/quorvin");
}

std::unique_ptr<ProcessTable> makeProcessTable() {
    return std::make_unique<ProcfsProcessTable>();
}

PermissionHints permissionHints() {
    return {.microphone = u"Start PipeWire or PulseAudio, then press Grant Access."_s,
            .accessibility = u"Log in to an X11 session; its display needs the XTEST extension."_s,
            .automation = u"Start Quorvin in a desktop session with a D-Bus session bus."_s};
}

void runInBackground(std::function<void()> work) {
    QThreadPool::globalInstance()->start(std::move(work));
}

} // namespace

struct LinuxPlatform::Parts {
    explicit Parts(const QString& updateEndpoint)
        : applicationBundle(updateEndpoint)
        , httpClient(updateEndpoint.startsWith(QStringLiteral("http:"))
                         ? QtHttpClient::Protocols::alsoPlainHttp
                         : QtHttpClient::Protocols::onlyHttps) {}

    TerminationSignals terminationSignals{&QCoreApplication::quit};
    // The scheduler goes last: the others may still post to it while they end.
    QtScheduler scheduler;
    XdgApplicationBundle applicationBundle;
    QtHttpClient httpClient;
    PosixUpdateInstaller updateInstaller;
    JsonUserDefaults userDefaults{settingsFilePath()};
    PulseAudioHost audioHost{scheduler};
    PosixProcessRunner processRunner{scheduler};
    XcbConnection display;
    X11Workspace workspace{display, userGuideDirectory()};
    QtWindowSystem windowSystem;
    FreedesktopNotifications userNotifications{QDBusConnection::sessionBus()};
    QtSoundPlayers soundPlayers;
    QtPasteboard pasteboard;
    X11TextSelections textSelections{scheduler, display};
    XTestKeyEvents keyEvents{scheduler, display};
    XInputKeyMonitor keyMonitor{display};
    QtStatusItem statusItem;
    X11TerminalWindows terminalWindows{display, workspace};
    LinuxTerminalAutomation terminalAutomation{scheduler, workspace, terminalWindows,
                                               LinuxTerminalAutomation::thisSystem()};

    /// So that the log of a program that can't do everything tells why.
    void reportWhatIsMissing();

    const Platform platform{
        scheduler,        applicationBundle, userDefaults,       audioHost,
        processRunner,    workspace,         windowSystem,       userNotifications,
        soundPlayers,     pasteboard,        textSelections,     keyEvents,
        keyMonitor,       statusItem,        terminalAutomation, httpClient,
        updateInstaller,  makeProcessTable,  runInBackground,    &QCoreApplication::quit,
        permissionHints()};
};

void LinuxPlatform::Parts::reportWhatIsMissing() {
    if (audioHost.authorizationStatus() != MicrophoneAuthorization::authorized) {
        qCWarning(platformLog, "No sound server answers: nothing can be recorded");
    }
    if (!QDBusConnection::sessionBus().isConnected()) {
        qCWarning(platformLog, "No session bus: no notifications, and no tab can be shown by name");
    }
    if (!display.isOpen()) {
        qCWarning(platformLog, "No X display: nothing can be sent to terminals");
    } else if (!X11Windows(display).isManaged()) {
        qCWarning(platformLog, "No window manager: windows are told apart by X11 alone");
    }
}

LinuxPlatform::LinuxPlatform(const QString& updateEndpoint)
    : m_parts(std::make_unique<Parts>(updateEndpoint)) {
    m_parts->reportWhatIsMissing();
}

LinuxPlatform::~LinuxPlatform() {
    // Work in the background hands its results to the scheduler.
    QThreadPool::globalInstance()->waitForDone();
}

const Platform& LinuxPlatform::platform() const {
    return m_parts->platform;
}

} // namespace quorvin
