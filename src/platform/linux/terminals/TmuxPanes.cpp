#include "platform/linux/terminals/TmuxPanes.h"

#include "platform/qt/WatchedProcess.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto commandLimit = 1s;

/// A pane at one of the places where it is: a window can be in several of tmux's sessions.
struct Pane {
    QString tty;
    QString session;
    QString window;
    QString pane;
    bool isInMode = false; // of copying or choosing, where keys aren't for its program
};

struct Client {
    qint64 lastUse = 0; // seconds since 1970
    QString session;
    QString tty;
};

std::vector<Pane> panesOn(const QString& tty, const QStringList& lines) {
    std::vector<Pane> panes;
    for (const QString& line : lines) {
        const QStringList fields = line.split(u' ');
        if (fields.value(0) == tty) {
            panes.push_back(
                {tty, fields.value(1), fields.value(2), fields.value(3), fields.value(4) != u"0"});
        }
    }
    return panes;
}

/// The most recently used one first.
std::vector<Client> clientsIn(const QStringList& lines) {
    std::vector<Client> clients;
    for (const QString& line : lines) {
        const QStringList fields = line.split(u' ');
        if (fields.size() == 3) {
            clients.push_back({fields[0].toLongLong(), fields[1], fields[2]});
        }
    }
    std::stable_sort(clients.begin(), clients.end(), [](const Client& left, const Client& right) {
        return left.lastUse > right.lastUse;
    });
    return clients;
}

struct Place {
    Pane pane;
    Client client;
};

/// Where to show one of `panes`, which isn't empty: with a client that is at its session, or else
/// with any.
std::optional<Place> placeFor(const std::vector<Pane>& panes, const std::vector<Client>& clients) {
    for (const Client& client : clients) {
        for (const Pane& pane : panes) {
            if (pane.session == client.session) {
                return Place{pane, client};
            }
        }
    }
    return clients.empty() ? std::nullopt : std::optional(Place{panes.front(), clients.front()});
}

QStringList commandsFor(const Place& place) {
    QStringList commands;
    if (place.client.session != place.pane.session) {
        commands << u"switch-client"_s << u"-c"_s << place.client.tty << u"-t"_s
                 << place.pane.session << u";"_s;
    }
    commands << u"select-window"_s << u"-t"_s << place.pane.session + u':' + place.pane.window
             << u";"_s << u"select-pane"_s << u"-t"_s << place.pane.pane;
    if (place.pane.isInMode) {
        commands << u";"_s << u"copy-mode"_s << u"-q"_s << u"-t"_s << place.pane.pane;
    }
    return commands;
}

} // namespace

Task<TmuxPanes::Answer> TmuxPanes::show(TerminalSession session) {
    // "<socket>,<process of the server>,<session>"
    const QString server = QString::fromUtf8(session.environment.value("TMUX"_ba));
    const QString socket = server.section(u',', 0, -3);
    if (socket.isEmpty() || m_program.isEmpty()) {
        co_return Answer{};
    }
    const QStringList listPanes{
        u"list-panes"_s, u"-a"_s, u"-F"_s,
        u"#{pane_tty} #{session_id} #{window_id} #{pane_id} #{pane_in_mode}"_s};
    const auto paneLines = co_await run(socket, listPanes);
    if (!paneLines) {
        co_return Answer{};
    }
    const std::vector<Pane> panes = panesOn(session.tty, *paneLines);
    if (panes.empty()) {
        co_return Answer{}; // a terminal that was started in a pane has its environment
    }
    const QStringList listClients{u"list-clients"_s, u"-F"_s,
                                  u"#{client_activity} #{session_id} #{client_tty}"_s};
    const auto clientLines = co_await run(socket, listClients);
    const auto place = clientLines ? placeFor(panes, clientsIn(*clientLines)) : std::nullopt;
    if (!place) {
        co_return Answer{TabFocus::Result::notFound, {}};
    }
    const QStringList commands = commandsFor(*place);
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
