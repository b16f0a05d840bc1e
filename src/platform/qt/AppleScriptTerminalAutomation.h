#pragma once

#include "platform/Scheduler.h"
#include "platform/TerminalAutomation.h"

#include <QObject>

namespace quorvin {

/// Terminal automation through AppleScript, run by the command-line tool for it. Serves Terminal
/// and iTerm, the only two terminals that can be asked for a tab.
class AppleScriptTerminalAutomation final : public TerminalAutomation {
public:
    /// `interpreter` is the path of the tool.
    AppleScriptTerminalAutomation(Scheduler& scheduler, Workspace& workspace,
                                  QString interpreter = QStringLiteral("/usr/bin/osascript"));

    /// Holds the main thread while the script runs. There is no time limit: a script that waits for
    /// the user's consent holds its caller until the user has answered.
    [[nodiscard]] Task<TabFocus> focusTab(QString bundleIdentifier, QString tty) override;
    /// Asks about System Events only, which says nothing of the terminals.
    [[nodiscard]] Task<bool> checkPermission() override;
    void requestPermissions() override;

private:
    /// What the script printed, without white space at both ends; absent when the tool can't be
    /// started or printed something else than text. Blocks.
    [[nodiscard]] std::optional<QString> run(const QString& script) const;
    void runWithoutWaiting(const QString& script);

    Scheduler& m_scheduler;
    Workspace& m_workspace;
    const QString m_interpreter;
    QObject m_children; // owns the processes that nothing waits for
};

} // namespace quorvin
