#include "platform/linux/terminals/TmuxPanes.h"

#include "platform/linux/terminals/TmuxPlaces.h"
#include "platform/qt/WatchedProcess.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto commandLimit = 1s;

} // namespace

Task<TmuxPanes::Answer> TmuxPanes::show(TerminalSession session) {
    // "<socket>,<process of the server>,<session>"
    const QString server = QString::fromUtf8(session.environment.value("TMUX"_ba));
    const QString socket = server.section(u',', 0, -3);
    if (socket.isEmpty() || m_program.isEmpty()) {
        co_return Answer{};
    }
    const QStringList listPanes{u"list-panes"_s, u"-a"_s, u"-F"_s, tmux::paneFormat};
    const auto paneLines = co_await run(socket, listPanes);
    if (!paneLines) {
        co_return Answer{};
    }
    const std::vector<tmux::Pane> panes = tmux::panesOn(session.tty, *paneLines);
    if (panes.empty()) {
        co_return Answer{}; // a terminal that was started in a pane has its environment
    }
    const QStringList listClients{u"list-clients"_s, u"-F"_s, tmux::clientFormat};
    const auto clientLines = co_await run(socket, listClients);
    const auto place =
        clientLines ? tmux::placeFor(panes, tmux::clientsIn(*clientLines)) : std::nullopt;
    if (!place) {
        co_return Answer{TabFocus::Result::notFound, {}};
    }
    const QStringList commands = tmux::commandsFor(*place);
    const auto selected = co_await run(socket, commands);
    co_return selected ? Answer{TabFocus::Result::found, place->client.tty}
                       : Answer{TabFocus::Result::notFound, {}};
}

Task<std::optional<QStringList>> TmuxPanes::run(QString socket, QStringList arguments) {
    const QStringList all = QStringList{u"-S"_s, socket} + arguments;
    const std::optional<WatchedResult> result =
        co_await runWatched(m_scheduler, m_children, m_program, all, commandLimit);
    if (!result || !result->hasSucceeded) {
        co_return std::nullopt;
    }
    co_return QString::fromUtf8(result->output).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace quorvin
