#include "platform/linux/terminals/KittyTabs.h"

#include "platform/linux/terminals/HelperResult.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QPointer>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto requestLimit = 1s;
constexpr qsizetype longestAnswer = 16 * 1024 * 1024; // bytes; a listing takes 2 KB for each tab

constexpr QByteArrayView messageBegin = "\x1bP@kitty-cmd";
constexpr QByteArrayView messageEnd = "\x1b\\";

QByteArray message(const QString& command, const QJsonObject& payload) {
    // The version is that of the oldest kitty that knows what is asked for.
    const QJsonObject request{{u"cmd"_s, command},
                              {u"version"_s, QJsonArray{0, 14, 2}},
                              {u"no_response"_s, false},
                              {u"payload"_s, payload}};
    return messageBegin.toByteArray() + QJsonDocument(request).toJson(QJsonDocument::Compact) +
           messageEnd.toByteArray();
}

std::optional<QJsonValue> dataIn(const QByteArray& answer) {
    if (!answer.startsWith(messageBegin)) {
        return std::nullopt;
    }
    const QByteArray json = answer.sliced(messageBegin.size()).chopped(messageEnd.size());
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    return object[u"ok"_s].toBool() ? std::optional(object[u"data"_s]) : std::nullopt;
}

bool isOn(const QJsonObject& window, const QString& tty, const TerminalProcesses& processes) {
    const auto isThere = [&](const QJsonValue& process) {
        return processes.isOn(process[u"pid"_s].toInt(), tty);
    };
    const QJsonArray foreground = window[u"foreground_processes"_s].toArray();
    return isThere(window) || std::any_of(foreground.begin(), foreground.end(), isThere);
}

struct KittyWindow {
    int id = 0;
    WindowID systemWindow = 0;
};

/// The window of kitty, which is a part of a tab in a window of the desktop, that shows the tty.
std::optional<KittyWindow> windowOn(const QString& tty, const QJsonArray& systemWindows,
                                    const TerminalProcesses& processes) {
    for (const QJsonValue& systemWindow : systemWindows) {
        for (const QJsonValue& tab : systemWindow[u"tabs"_s].toArray()) {
            for (const QJsonValue& window : tab[u"windows"_s].toArray()) {
                if (isOn(window.toObject(), tty, processes)) {
                    return KittyWindow{
                        window[u"id"_s].toInt(),
                        static_cast<WindowID>(systemWindow[u"platform_window_id"_s].toInteger())};
                }
            }
        }
    }
    return std::nullopt;
}

} // namespace

Task<TabControl::Answer> KittyTabs::show(TerminalSession session,
                                         const TerminalProcesses& processes) {
    constexpr QByteArrayView socketScheme = "unix:";
    const QByteArray address = session.environment.value("KITTY_LISTEN_ON"_ba);
    if (!address.startsWith(socketScheme)) {
        co_return Answer{};
    }
    const QByteArray socket = address.sliced(socketScheme.size());
    const QString list = u"ls"_s;
    const QJsonObject everything;
    const std::optional<QJsonValue> listing = co_await request(socket, list, everything);
    if (!listing) {
        co_return Answer{};
    }
    const QJsonArray systemWindows = QJsonDocument::fromJson(listing->toString().toUtf8()).array();
    const auto window = windowOn(session.tty, systemWindows, processes);
    if (!window) {
        co_return Answer{}; // another terminal that was started in kitty has its environment
    }
    const QString focus = u"focus-window"_s;
    const QJsonObject match{{u"match"_s, u"id:%1"_s.arg(window->id)}};
    const auto focused = co_await request(socket, focus, match);
    co_return focused ? Answer{TabFocus::Result::found, window->systemWindow} : Answer{};
}

Task<std::optional<QJsonValue>> KittyTabs::request(QByteArray socketName, QString command,
                                                   QJsonObject payload) {
    auto* const socket = new QLocalSocket(&m_sockets);
    const HelperResult<std::optional<QJsonValue>> result(*socket);
    const auto finish = [socket, result](std::optional<QJsonValue> value) {
        if (!result.isSet()) {
            result.set(std::move(value));
            socket->deleteLater();
        }
    };
    QObject::connect(socket, &QLocalSocket::connected, socket,
                     [socket, bytes = message(command, payload)] { socket->write(bytes); });
    QObject::connect(socket, &QLocalSocket::readyRead, socket,
                     [socket, finish, answer = QByteArray()]() mutable {
                         answer += socket->readAll();
                         if (answer.endsWith(messageEnd)) {
                             finish(dataIn(answer));
                         } else if (answer.size() > longestAnswer) {
                             finish(std::nullopt);
                         }
                     });
    QObject::connect(socket, &QLocalSocket::errorOccurred, socket,
                     [finish] { finish(std::nullopt); });
    m_scheduler.postDelayed(requestLimit, [watched = QPointer(socket), finish] {
        if (watched) {
            finish(std::nullopt);
        }
    });
    if (socketName.startsWith('@')) {
        socket->setSocketOptions(QLocalSocket::AbstractNamespaceOption);
        socketName.remove(0, 1);
    }
    socket->connectToServer(QFile::decodeName(socketName));
    co_return co_await result;
}

} // namespace quorvin
