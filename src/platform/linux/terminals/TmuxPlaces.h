#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// Where tmux shows its panes, by the lines in which it lists them.
namespace quorvin::tmux {

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

/// A pane and the client to show it with.
struct Place {
    Pane pane;
    Client client;
};

/// How tmux is to write the lines that `panesOn` reads.
inline const QString paneFormat =
    QStringLiteral("#{pane_tty} #{session_id} #{window_id} #{pane_id} #{pane_in_mode}");
[[nodiscard]] std::vector<Pane> panesOn(const QString& tty, const QStringList& lines);

/// How tmux is to write the lines that `clientsIn` reads.
inline const QString clientFormat =
    QStringLiteral("#{client_activity} #{session_id} #{client_tty}");
/// The most recently used one first.
[[nodiscard]] std::vector<Client> clientsIn(const QStringList& lines);

/// Where to show one of `panes`, which isn't empty: with a client that is at its session, or else
/// with any. Absent without a client.
[[nodiscard]] std::optional<Place> placeFor(const std::vector<Pane>& panes,
                                            const std::vector<Client>& clients);

/// What tmux is to do to show the pane there, for one run of its program.
[[nodiscard]] QStringList commandsFor(const Place& place);

} // namespace quorvin::tmux
