#include "platform/linux/terminals/KittyTabs.h"

#include "platform/linux/terminals/HelperResult.h"
#include "platform/linux/terminals/KittyProtocol.h"

#include <QFile>
#include <QLocalSocket>
#include <QPointer>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto requestLimit = 1s;
constexpr qsizetype longestAnswer = 16 * 1024 * 1024; // bytes; a listing takes 2 KB for each tab

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
    const auto window = kittyProtocol::windowOn(session.tty, *listing, processes);
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
    QObject::connect(
        socket, &QLocalSocket::connected, socket,
        [socket, bytes = kittyProtocol::request(command, payload)] { socket->write(bytes); });
    QObject::connect(socket, &QLocalSocket::readyRead, socket,
                     [socket, finish, answer = QByteArray()]() mutable {
                         answer += socket->readAll();
                         if (kittyProtocol::isWhole(answer)) {
                             finish(kittyProtocol::data(answer));
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
