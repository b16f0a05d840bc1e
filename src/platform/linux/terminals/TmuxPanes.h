#pragma once

#include "platform/Scheduler.h"
#include "platform/TerminalAutomation.h"
#include "platform/linux/terminals/TerminalProcesses.h"

#include <QObject>

namespace quorvin {

/// The panes of the terminal multiplexer tmux.
class TmuxPanes {
public:
    struct Answer {
        TabFocus::Result result = TabFocus::Result::notScriptable;
        /// The terminal device on which the pane is shown now.
        QString clientTTY;
    };

    /// `program` is the path of tmux.
    TmuxPanes(Scheduler& scheduler, QString program)
        : m_scheduler(scheduler), m_program(std::move(program)) {}

    /// Selects the pane of `session` in the client that was used last, if possible one that is at
    /// its session already. Not scriptable when the session isn't in a pane; not found when nobody
    /// has tmux on a screen.
    [[nodiscard]] Task<Answer> show(TerminalSession session);

private:
    /// The lines that a command of the server at `socket` prints; absent when it fails or takes
    /// longer than a second.
    [[nodiscard]] Task<std::optional<QStringList>> run(QString socket, QStringList arguments);

    Scheduler& m_scheduler;
    const QString m_program;
    QObject m_children; // owns the processes
};

} // namespace quorvin
