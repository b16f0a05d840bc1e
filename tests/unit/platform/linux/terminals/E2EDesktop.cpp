#include "unit/platform/linux/terminals/E2EDesktop.h"

#include "support/BoundProcess.h"
#include "support/Eventually.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>

#include <algorithm>
#include <csignal>

#include <xcb/xtest.h>

namespace quorvin::testing {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto markerVariable = "QUORVIN_PRIVATE_DESKTOP";
constexpr int startLimit = 10'000; // milliseconds

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Lets GNOME Terminal be asked for its tabs.
void switchShellIntegrationOn(const QDir& home) {
    home.mkpath(u".config/glib-2.0/settings"_s);
    QFile file(home.filePath(u".config/glib-2.0/settings/keyfile"_s));
    if (file.open(QIODevice::WriteOnly)) {
        file.write("[org/gnome/terminal/legacy]\nshell-integration-enabled=true\n");
    }
}

} // namespace

bool isOnPrivateDesktop() {
    return qEnvironmentVariableIsSet(markerVariable);
}

int runOnPrivateDesktop(const QStringList& arguments) {
    const XServer server;
    const QTemporaryDir home;
    const QDir directory(home.path());
    directory.mkpath(u"runtime"_s);
    QFile::setPermissions(directory.filePath(u"runtime"_s),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    switchShellIntegrationOn(directory);

    QProcessEnvironment environment;
    environment.insert(QString::fromLatin1(markerVariable), u"1"_s);
    environment.insert(u"PATH"_s, qEnvironmentVariable("PATH"));
    environment.insert(u"HOME"_s, home.path());
    environment.insert(u"DISPLAY"_s, QString::fromUtf8(server.display()));
    environment.insert(u"XDG_RUNTIME_DIR"_s, directory.filePath(u"runtime"_s));
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    environment.insert(u"LIBGL_ALWAYS_SOFTWARE"_s, u"1"_s);
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"GSETTINGS_BACKEND"_s, u"keyfile"_s);
    environment.insert(u"NO_AT_BRIDGE"_s, u"1"_s);

    QProcess bus;
    bus.setProcessEnvironment(environment);
    bus.setStandardErrorFile(QProcess::nullDevice());
    startBound(bus, {u"dbus-daemon"_s, u"--session"_s, u"--nofork"_s, u"--nopidfile"_s,
                     u"--print-address"_s});
    while (!bus.canReadLine() && bus.waitForReadyRead(startLimit)) {
    }
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, QString::fromUtf8(bus.readLine()).trimmed());

    QProcess program;
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    startBound(program, QStringList{QCoreApplication::applicationFilePath()} + arguments);
    program.waitForFinished(-1);
    bus.kill(); // and with it the terminals that it has started
    bus.waitForFinished();
    return program.exitStatus() == QProcess::NormalExit ? program.exitCode() : 1;
}

Agent::Agent(const QTemporaryDir& directory, int number, const QString& name)
    : m_program(directory.filePath(u"%1/%2"_s.arg(number).arg(name)))
    , m_file(directory.filePath(u"%1/received"_s.arg(number))) {
    QDir(directory.path()).mkpath(QString::number(number));
    QFile::link(QStringLiteral(STAND_IN_AGENT), m_program);
}

QString Agent::tty() const {
    return QString::fromUtf8(readAll(m_file + u".ready"_s)).section(u' ', 0, 0);
}

void Agent::end() const {
    if (const pid_t process = readAll(m_file + u".ready"_s).split(' ').value(1).toInt()) {
        kill(process, SIGTERM);
    }
}

QByteArray Agent::received() const {
    return readAll(m_file);
}

const std::vector<Terminal>& allTerminals() {
    static const std::vector<Terminal> terminals{
        {"xterm", u"xterm"_s, {u"-e"_s}},
        {"kitty", u"kitty"_s, {u"-o"_s, u"confirm_os_window_close=0"_s}},
        {"alacritty", u"alacritty"_s, {u"-e"_s}},
        {"konsole", u"konsole"_s, {u"-e"_s}},
        {"xfce4_terminal", u"xfce4-terminal"_s, {u"-x"_s}},
        {"gnome_terminal", u"gnome-terminal"_s, {u"--wait"_s, u"--"_s}},
    };
    return terminals;
}

const Terminal& terminalNamed(const char* name) {
    const std::vector<Terminal>& all = allTerminals();
    return *std::find_if(all.begin(), all.end(), [name](const Terminal& terminal) {
        return std::string_view(terminal.name) == name;
    });
}

void TerminalsE2ETest::SetUp() {
    ASSERT_TRUE(connection.isOpen());
    ASSERT_TRUE(desktop.startManager());
}

void TerminalsE2ETest::TearDown() {
    // Some terminals are one process for all windows, which goes on without its starter.
    for (const Agent& agent : m_agents) {
        agent.end();
    }
    for (const auto& process : m_processes) {
        process->terminate();
    }
    for (const auto& process : m_processes) {
        if (!process->waitForFinished(startLimit)) {
            process->kill();
            process->waitForFinished();
        }
    }
    // What a terminal leaves open, a question to its user for instance, must not meet the next
    // test.
    for (const xcb_window_t window : desktop.managed()) {
        xcb_kill_client(desktop.handle(), window);
    }
    xcb_flush(desktop.handle());
    EXPECT_TRUE(eventuallyShows(0)) << titles().toStdString();
}

QString TerminalsE2ETest::titles() {
    QString titles;
    X11Windows windows(connection);
    for (const X11Window& window : windows.describe(windows.clients())) {
        titles += u"\"%1\" of %2\n"_s.arg(window.title, window.className);
    }
    return titles;
}

Agent TerminalsE2ETest::makeAgent(const QString& name) {
    return m_agents.emplace_back(m_directory, static_cast<int>(m_agents.size()), name);
}

Agent TerminalsE2ETest::openAgent(const Terminal& terminal, const QString& name) {
    const std::size_t windows = desktop.managed().size();
    const Agent agent = makeAgent(name);
    start(terminal.program, terminal.argumentsBefore + agent.command());
    EXPECT_TRUE(eventuallyReads(agent));
    EXPECT_TRUE(eventuallyShows(windows + 1));
    return agent;
}

void TerminalsE2ETest::start(const QString& program, const QStringList& arguments) {
    auto& process = m_processes.emplace_back(std::make_unique<QProcess>());
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, arguments);
    ASSERT_TRUE(process->waitForStarted()) << program.toStdString();
}

QByteArray TerminalsE2ETest::run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(eventually([&] { return process.state() == QProcess::NotRunning; }));
    return process.readAllStandardOutput();
}

bool TerminalsE2ETest::eventuallyReads(const Agent& agent) {
    return eventually([&] { return !agent.tty().isEmpty(); }, patience);
}

bool TerminalsE2ETest::eventuallyShows(std::size_t windowCount) {
    return eventually([&] { return desktop.managed().size() == windowCount; }, patience);
}

void TerminalsE2ETest::write(const QString& name, const QByteArray& content) {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void TerminalsE2ETest::deliver(const Agent& agent, const QString& text, const QList<QUrl>& images) {
    const auto session = sessionOn(agent.tty());
    ASSERT_TRUE(session) << "no session on " << agent.tty().toStdString();
    bool isDone = false;
    const auto send = [&]() -> Task<> {
        if (images.isEmpty()) {
            co_await service.sendText(text, *session);
        } else {
            co_await service.sendTextAndImages(text, images, *session);
        }
        isDone = true;
    };
    const Task<> sending = send();
    EXPECT_TRUE(eventually([&] { return isDone; }));
}

std::optional<AgentSessionInfo> TerminalsE2ETest::sessionOn(const QString& tty) {
    bool isDone = false;
    const auto scan = [&]() -> Task<> {
        co_await service.refreshSessionsForce();
        isDone = true;
    };
    const Task<> scanning = scan();
    EXPECT_TRUE(eventually([&] { return isDone; }));
    const QList<AgentSessionInfo> sessions = service.claudeSessions() + service.opencodeSessions();
    const auto found =
        std::find_if(sessions.begin(), sessions.end(),
                     [&](const AgentSessionInfo& session) { return session.tty == tty; });
    return found == sessions.end() ? std::nullopt : std::optional(*found);
}

void TerminalsE2ETest::expectSubmitted(const Agent& agent, const QString& message) {
    constexpr xcb_keycode_t keyOfX = 53;
    const QByteArray pasteBegin = "\x1b[200~";
    const QByteArray pasteEnd = "\x1b[201~";
    const QByteArray end = pasteEnd + "\rx";
    // A key of the user's own shows that nothing else came after the Return.
    EXPECT_TRUE(eventually([&] { return agent.received().endsWith(pasteEnd + '\r'); }, patience))
        << agent.received().right(100).toPercentEncoding().toStdString();
    press(keyOfX);
    EXPECT_TRUE(eventually([&] { return agent.received().endsWith(end); }, patience));

    const QByteArray received = agent.received();
    EXPECT_TRUE(received.startsWith(pasteBegin));
    ASSERT_GE(received.size(), pasteBegin.size() + end.size());
    QByteArray pasted = received.sliced(pasteBegin.size()).chopped(end.size());
    pasted.replace('\r', '\n'); // terminals send line breaks as the key for them
    const QByteArray expected = message.toUtf8();
    EXPECT_EQ(pasted.size(), expected.size());
    const auto [different, counterpart] =
        std::mismatch(pasted.begin(), pasted.end(), expected.begin(), expected.end());
    EXPECT_TRUE(different == pasted.end() && counterpart == expected.end())
        << "different from byte " << different - pasted.begin()
        << " on: " << pasted.mid(different - pasted.begin(), 200).toPercentEncoding().toStdString();
}

void TerminalsE2ETest::press(xcb_keycode_t key) {
    for (const auto type : {XCB_KEY_PRESS, XCB_KEY_RELEASE}) {
        xcb_test_fake_input(desktop.handle(), type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0,
                            0);
    }
    xcb_flush(desktop.handle());
}

QString TerminalsE2ETest::selection(const char* name) {
    return QString::fromUtf8(
        run(u"xclip"_s, {u"-o"_s, u"-selection"_s, QString::fromLatin1(name)}));
}

} // namespace quorvin::testing
