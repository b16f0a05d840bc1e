#include "unit/platform/linux/terminals/AutomationFixture.h"

#include <QDir>
#include <QFile>

#include <csignal>

namespace quorvin::testing {

using namespace Qt::Literals::StringLiterals;

PrivateBus::PrivateBus() {
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(u"dbus-daemon"_s,
                   {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s});
    constexpr int patience = 10'000; // milliseconds
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(patience)) {
    }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
    thaw();
    for (const QString& name : m_connections) {
        QDBusConnection::disconnectFromBus(name);
    }
    m_daemon.kill();
    m_daemon.waitForFinished();
}

QDBusConnection PrivateBus::connect() {
    const QString name = u"private-%1-%2"_s.arg(m_daemon.processId()).arg(m_connections.size());
    m_connections.append(name);
    return QDBusConnection::connectToBus(m_address, name);
}

void PrivateBus::freeze() {
    kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP);
}

void PrivateBus::thaw() {
    kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT);
}

AutomationTest::~AutomationTest() = default;

void AutomationTest::addProgram(ProcessID pid, ProcessID parent) {
    processes.rows.push_back({pid, u"terminal"_s, std::nullopt});
    processes.parents[pid] = parent;
}

void AutomationTest::addShell(ProcessID pid, ProcessID parent, const QString& terminal,
                              const Environment& environment) {
    processes.rows.push_back({pid, u"sh"_s, terminal});
    processes.parents[pid] = parent;
    QDir(directory.path()).mkpath(QString::number(pid));
    QFile file(directory.filePath(u"%1/environ"_s.arg(pid)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    for (auto variable = environment.begin(); variable != environment.end(); ++variable) {
        file.write(variable.key() + '=' + variable.value() + '\0');
    }
}

LinuxTerminalAutomation& AutomationTest::automation() {
    if (!m_automation) {
        m_automation = std::make_unique<LinuxTerminalAutomation>(
            scheduler, workspace, windows,
            LinuxTerminalAutomation::System{
                [this] { return std::make_unique<FakeProcessTable>(processes); }, bus, tmux,
                directory.path()});
    }
    return *m_automation;
}

std::shared_ptr<std::optional<TabFocus>> AutomationTest::beginFocus(const QString& tty) {
    const auto answer = std::make_shared<std::optional<TabFocus>>();
    const auto run = [](LinuxTerminalAutomation& asked, QString device,
                        std::shared_ptr<std::optional<TabFocus>> place) -> Task<> {
        *place = co_await asked.focusTab(u"com.apple.Terminal"_s, device);
    };
    run(automation(), tty, answer);
    return answer;
}

TabFocus AutomationTest::focus(const QString& tty) {
    const auto answer = beginFocus(tty);
    EXPECT_TRUE(waitUntil([&] { return answer->has_value(); }));
    return answer->value_or(TabFocus{});
}

} // namespace quorvin::testing
