#include "platform/linux/terminals/KonsoleTabs.h"

#include "platform/linux/terminals/BusReplies.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

const QString windowsPath = u"/Windows"_s;

SessionBus::Method windowMethod(const QString& service, const QString& path, const QString& name) {
    return {service, path, u"org.kde.konsole.Window"_s, name};
}

/// The paths of Konsole's windows, in the order in which they were opened.
QStringList sortedByNumber(QStringList numbers) {
    std::sort(numbers.begin(), numbers.end(), [](const QString& left, const QString& right) {
        return left.toInt() < right.toInt();
    });
    return numbers;
}

} // namespace

Task<TabControl::Answer> KonsoleTabs::show(TerminalSession session,
                                           const TerminalProcesses& processes) {
    const std::optional<Process> konsole = co_await processOf(session);
    if (!konsole) {
        co_return Answer{};
    }
    const QStringList children = co_await m_bus.children(konsole->service, windowsPath);
    const QStringList windows = sortedByNumber(children);
    for (qsizetype index = 0; index < windows.size(); ++index) {
        const QString path = windowsPath + u'/' + windows[index];
        const std::optional<int> number =
            co_await sessionNumber(konsole->service, path, session.tty, processes);
        if (!number) {
            continue;
        }
        const auto select = windowMethod(konsole->service, path, u"setCurrentSession"_s);
        const QVariantList arguments{*number};
        const auto selected = co_await m_bus.call(select, arguments);
        if (!selected) {
            co_return Answer{};
        }
        co_return Answer{TabFocus::Result::found, windowAt(index, windows.size(), konsole->number)};
    }
    co_return Answer{TabFocus::Result::notFound, std::nullopt};
}

Task<std::optional<KonsoleTabs::Process>> KonsoleTabs::processOf(TerminalSession session) {
    // The name in the environment may be that of an outer Konsole, and after sudo there is none.
    QStringList candidates = co_await m_bus.services();
    candidates = candidates.filter(QRegularExpression(u"^org\\.kde\\.konsole"_s));
    candidates.prepend(QString::fromUtf8(session.environment.value("KONSOLE_DBUS_SERVICE"_ba)));
    for (const QString& service : candidates) {
        const std::optional<ProcessID> process = co_await m_bus.processOf(service);
        if (process && session.descendsFrom(*process)) {
            co_return Process{service, *process};
        }
    }
    co_return std::nullopt;
}

Task<std::optional<int>> KonsoleTabs::sessionNumber(QString service, QString windowPath,
                                                    QString tty,
                                                    const TerminalProcesses& processes) {
    const QVariantList nothing;
    const auto sessionList = windowMethod(service, windowPath, u"sessionList"_s);
    const auto list = co_await m_bus.call(sessionList, nothing);
    for (const QString& number : list ? busReplies::texts(*list) : QStringList()) {
        const SessionBus::Method processId{service, u"/Sessions/"_s + number,
                                           u"org.kde.konsole.Session"_s, u"processId"_s};
        const auto shell = co_await m_bus.call(processId, nothing);
        const auto process = shell ? busReplies::process(*shell) : std::nullopt;
        if (process && processes.isOn(*process, tty)) {
            co_return number.toInt();
        }
    }
    co_return std::nullopt;
}

std::optional<WindowID> KonsoleTabs::windowAt(qsizetype index, qsizetype count, ProcessID process) {
    // Konsole counts its windows by itself and tells their numbers to nobody but, once, to the
    // programs in them; a tab that was moved since knows a wrong one.
    std::vector<TerminalWindow> windows = m_windows.windows();
    std::erase_if(windows, [process](const TerminalWindow& w) { return w.process != process; });
    return std::ssize(windows) == count
               ? std::optional(windows[static_cast<std::size_t>(index)].window)
               : std::nullopt;
}

} // namespace quorvin
