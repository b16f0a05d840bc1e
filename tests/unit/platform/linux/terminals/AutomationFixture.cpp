#include "unit/platform/linux/terminals/AutomationFixture.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>

#include <csignal>

namespace quorvin::testing {

using namespace Qt::Literals::StringLiterals;

FrozenBus::FrozenBus(const QDBusConnection& connection)
    : m_daemon(static_cast<ProcessID>(
          connection.interface()->servicePid(u"org.freedesktop.DBus"_s).value())) {
    kill(m_daemon, SIGSTOP);
}

FrozenBus::~FrozenBus() {
    kill(m_daemon, SIGCONT);
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
    EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
    return answer->value_or(TabFocus{});
}

} // namespace quorvin::testing
