#include "platform/linux/terminals/LinuxTerminalAutomation.h"

#include "platform/linux/terminals/GnomeTerminalTabs.h"
#include "platform/linux/terminals/HelperResult.h"
#include "platform/linux/terminals/KittyTabs.h"
#include "platform/linux/terminals/KonsoleTabs.h"

#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto watchdogLimit = 3s;

} // namespace

LinuxTerminalAutomation::System LinuxTerminalAutomation::thisSystem() {
    return {QDBusConnection::sessionBus(), QStandardPaths::findExecutable(u"tmux"_s), u"/proc"_s};
}

LinuxTerminalAutomation::LinuxTerminalAutomation(Scheduler& scheduler, Workspace& workspace,
                                                 TerminalWindows& windows, System system)
    : m_workspace(workspace)
    , m_windows(windows)
    , m_system(std::move(system))
    , m_bus(scheduler, m_system.sessionBus)
    , m_tmux(scheduler, m_system.tmux) {
    m_controls.push_back(std::make_unique<KittyTabs>(scheduler));
    m_controls.push_back(std::make_unique<KonsoleTabs>(m_bus, windows));
    m_controls.push_back(std::make_unique<GnomeTerminalTabs>(m_bus, windows));
}

LinuxTerminalAutomation::~LinuxTerminalAutomation() {
    m_isAlive.reset();
}

Task<TabFocus> LinuxTerminalAutomation::focusTab(QString /*bundleIdentifier*/, QString tty) {
    const std::weak_ptr isAlive(m_isAlive);
    const TerminalProcesses processes(m_system.processDirectory);
    try {
        const auto session = co_await visibleSession(tty, processes);
        if (isAlive.expired() || !session) {
            co_return TabFocus{TabFocus::Result::notFound, std::nullopt};
        }
        const TabControl::Answer answer = co_await showTab(*session, processes);
        co_return TabFocus{answer.result, raiseWindow(*session, answer)};
    } catch (const AutomationEnded&) {
        co_return TabFocus{TabFocus::Result::notFound, std::nullopt};
    }
}

Task<std::optional<TerminalSession>>
LinuxTerminalAutomation::visibleSession(QString tty, const TerminalProcesses& processes) {
    const std::weak_ptr isAlive(m_isAlive);
    QStringList passed;
    for (;;) {
        std::optional<TerminalSession> session = processes.sessionOn(tty);
        if (!session || passed.contains(tty)) {
            co_return std::nullopt;
        }
        const TmuxPanes::Answer pane = co_await m_tmux.show(*session);
        if (isAlive.expired() || pane.result == TabFocus::Result::notFound) {
            co_return std::nullopt;
        }
        if (pane.result == TabFocus::Result::notScriptable) {
            co_return session;
        }
        passed.append(tty);
        tty = pane.clientTTY;
    }
}

Task<TabControl::Answer> LinuxTerminalAutomation::showTab(TerminalSession session,
                                                          const TerminalProcesses& processes) {
    TabControl::Answer answer;
    for (const auto& control : m_controls) {
        answer = co_await control->show(session, processes);
        if (answer.result != TabFocus::Result::notScriptable) {
            break;
        }
    }
    co_return answer;
}

std::optional<ProcessID> LinuxTerminalAutomation::raiseWindow(const TerminalSession& session,
                                                              const TabControl::Answer& answer) {
    const std::vector<TerminalWindow> windows = m_windows.windows();
    const auto ownerOf = [&windows](WindowID window) -> std::optional<ProcessID> {
        const auto found = std::find_if(windows.begin(), windows.end(),
                                        [window](const auto& w) { return w.window == window; });
        return found == windows.end() ? std::nullopt : std::optional(found->process);
    };
    // A program that was started from a terminal, perhaps another terminal, has inherited the
    // number of its window.
    const WindowID told = answer.window.value_or(session.environment.value("WINDOWID"_ba).toUInt());
    if (const auto owner = ownerOf(told); owner && session.descendsFrom(*owner)) {
        m_windows.raise(told);
        return owner;
    }
    const auto terminal = std::find_if(
        session.ancestors.begin(), session.ancestors.end(), [&windows](ProcessID process) {
            return std::any_of(windows.begin(), windows.end(),
                               [process](const auto& w) { return w.process == process; });
        });
    if (terminal == session.ancestors.end()) {
        return std::nullopt;
    }
    if (answer.result != TabFocus::Result::found) { // else it has raised its window itself
        m_workspace.activate(*terminal);
    }
    return *terminal;
}

Task<bool> LinuxTerminalAutomation::checkPermission() {
    try {
        const SessionBus::Method identify{u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                          u"org.freedesktop.DBus"_s, u"GetId"_s};
        const QVariantList nothing;
        const auto answer = co_await m_bus.call(identify, nothing, watchdogLimit);
        co_return answer.has_value();
    } catch (const AutomationEnded&) {
        co_return false;
    }
}

} // namespace quorvin
