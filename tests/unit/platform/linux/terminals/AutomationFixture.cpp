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
    addProcess(pid, "terminal", parent, 0);
}

void AutomationTest::addShell(ProcessID pid, ProcessID parent, int pseudoTerminal,
                              const Environment& environment, const QByteArray& name) {
    constexpr int pseudoTerminals = 136 << 8; // as the kernel packs the numbers of devices
    addProcess(pid, name, parent, pseudoTerminals + pseudoTerminal);
    QByteArray content;
    for (auto variable = environment.begin(); variable != environment.end(); ++variable) {
        content += variable.key() + '=' + variable.value() + '\0';
    }
    writeFile(pid, u"environ"_s, content);
}

void AutomationTest::addProcess(ProcessID pid, const QByteArray& name, ProcessID parent,
                                int device) {
    writeFile(pid, u"stat"_s,
              QByteArray::number(pid) + " (" + name + ") S " + QByteArray::number(parent) + ' ' +
                  QByteArray::number(pid) + ' ' + QByteArray::number(pid) + ' ' +
                  QByteArray::number(device) + " -1 4194304 0 0\n");
}

void AutomationTest::writeFile(ProcessID pid, const QString& name, const QByteArray& content) {
    QDir(directory.path()).mkpath(QString::number(pid));
    QFile file(directory.filePath(u"%1/%2"_s.arg(pid).arg(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

LinuxTerminalAutomation& AutomationTest::automation() {
    if (!m_automation) {
        m_automation = std::make_unique<LinuxTerminalAutomation>(
            scheduler, workspace, windows,
            LinuxTerminalAutomation::System{bus, tmux, directory.path()});
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
