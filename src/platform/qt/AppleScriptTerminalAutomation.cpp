#include "platform/qt/AppleScriptTerminalAutomation.h"

#include "platform/qt/WatchedProcess.h"
#include "support/Text.h"

#include <QProcess>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto watchdogLimit = 3s;

struct ScriptableTerminal {
    QStringView bundleIdentifier;
    QStringView name;
    /// The script that brings a tab to the front; the tty stands between the two pieces, as it is.
    QStringView beforeTTY;
    QStringView afterTTY;
};

// In the order in which permissions are asked for. The scripts differ on purpose: only Terminal's
// activates the application and raises a window, and only iTerm's tabs have sessions in them.
constexpr std::array terminals{
    ScriptableTerminal{u"com.googlecode.iterm2", u"iTerm",
                       u"tell application \"iTerm\"\n"
                       "    set targetTTY to \"",
                       u"\"\n"
                       "    repeat with w in windows\n"
                       "        repeat with t in tabs of w\n"
                       "            repeat with s in sessions of t\n"
                       "                try\n"
                       "                    if tty of s is targetTTY then\n"
                       "                        select t\n"
                       "                        select s\n"
                       "                        return \"focused\"\n"
                       "                    end if\n"
                       "                end try\n"
                       "            end repeat\n"
                       "        end repeat\n"
                       "    end repeat\n"
                       "    return \"not found\"\n"
                       "end tell"},
    ScriptableTerminal{u"com.apple.Terminal", u"Terminal",
                       u"tell application \"Terminal\"\n"
                       "    activate\n"
                       "    set targetTTY to \"",
                       u"\"\n"
                       "    repeat with w in windows\n"
                       "        repeat with t in tabs of w\n"
                       "            try\n"
                       "                if tty of t is targetTTY then\n"
                       "                    set index of w to 1\n"
                       "                    set selected tab of w to t\n"
                       "                    return \"focused\"\n"
                       "                end if\n"
                       "            end try\n"
                       "        end repeat\n"
                       "    end repeat\n"
                       "    return \"not found\"\n"
                       "end tell"},
};

QString systemEventsScript() {
    return u"tell application \"System Events\" to return name of first process"_s;
}

QStringList arguments(const QString& script) {
    return {u"-e"_s, script};
}

} // namespace

AppleScriptTerminalAutomation::AppleScriptTerminalAutomation(Scheduler& scheduler,
                                                             Workspace& workspace,
                                                             QString interpreter)
    : m_scheduler(scheduler), m_workspace(workspace), m_interpreter(std::move(interpreter)) {}

Task<TabFocus> AppleScriptTerminalAutomation::focusTab(QString bundleIdentifier, QString tty) {
    const auto* const terminal =
        std::find_if(terminals.begin(), terminals.end(), [&](const ScriptableTerminal& candidate) {
            return candidate.bundleIdentifier == bundleIdentifier;
        });
    if (terminal == terminals.end()) {
        co_return TabFocus{TabFocus::Result::notScriptable, std::nullopt};
    }
    const std::optional<QString> answer =
        run(terminal->beforeTTY.toString() + tty + terminal->afterTTY.toString());
    const bool isFocused = answer && answer->contains(u"focused"); // anywhere in it
    co_return TabFocus{isFocused ? TabFocus::Result::found : TabFocus::Result::notFound,
                       std::nullopt};
}

std::optional<QString> AppleScriptTerminalAutomation::run(const QString& script) const {
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(m_interpreter, arguments(script));
    process.waitForFinished(-1);
    if (process.error() == QProcess::FailedToStart) {
        return std::nullopt;
    }
    const std::optional<QString> output = text::fromUtf8(process.readAllStandardOutput());
    return output ? std::optional(text::trimmed(*output)) : std::nullopt;
}

Task<bool> AppleScriptTerminalAutomation::checkPermission() {
    const QStringList script = arguments(systemEventsScript());
    const std::optional<WatchedResult> result =
        co_await runWatched(m_scheduler, m_children, m_interpreter, script, watchdogLimit);
    if (!result) {
        co_return false;
    }
    const QString output = text::fromUtf8(result->output).value_or(QString());
    // 1743 is the number of the error with which the system refuses Apple events.
    for (const QStringView refusal : {u"1743", u"not authorized", u"not allowed"}) {
        if (output.contains(refusal)) {
            co_return false;
        }
    }
    co_return result->hasSucceeded;
}

void AppleScriptTerminalAutomation::requestPermissions() {
    runWithoutWaiting(systemEventsScript());
    for (const ScriptableTerminal& terminal : terminals) {
        // A script would start an application that doesn't run.
        if (m_workspace.application(terminal.bundleIdentifier.toString())) {
            runWithoutWaiting(u"tell application \"%1\" to return name"_s.arg(terminal.name));
        }
    }
}

void AppleScriptTerminalAutomation::runWithoutWaiting(const QString& script) {
    auto* const process = new QProcess(&m_children);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QObject::connect(process, &QProcess::errorOccurred, process, &QObject::deleteLater);
    process->start(m_interpreter, arguments(script));
}

} // namespace quorvin
