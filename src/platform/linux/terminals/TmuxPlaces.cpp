#include "platform/linux/terminals/TmuxPlaces.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace quorvin::tmux {

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

} // namespace quorvin::tmux
