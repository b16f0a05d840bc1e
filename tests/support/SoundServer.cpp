#include "support/SoundServer.h"

#include "support/BoundProcess.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvin::testing {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patienceMs = 20000;

/// Not by QProcess: the thread sanitizer loses track of a process that forks.
pid_t spawn(const QStringList& command, int console) {
    std::vector<std::string> words(static_cast<std::size_t>(command.size()));
    std::ranges::transform(command, words.begin(), &QString::toStdString);
    std::vector<char*> arguments(words.size() + 1); // the last one stays null
    std::ranges::transform(words, arguments.begin(), [](std::string& word) { return word.data(); });
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, console, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, console, STDOUT_FILENO);
    pid_t process = -1;
    const int error =
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throw std::runtime_error("The sound server can't be started");
    }
    return process;
}

} // namespace

SoundServer::SoundServer() : m_address(m_directory.filePath(u"native"_s)) {
    qputenv("PULSE_SERVER", "unix:" + m_address.toLocal8Bit());
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"}) {
        qputenv(name, m_directory.path().toLocal8Bit());
    }
    // The library would look for another server there.
    qunsetenv("DISPLAY");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

SoundServer::~SoundServer() {
    kill();
}

void SoundServer::start(const QStringList& modules) {
    QStringList command{
        u"pulseaudio"_s,
        u"-n"_s,
        u"--daemonize=no"_s,
        u"--exit-idle-time=-1"_s,
        u"--use-pid-file=no"_s,
        u"--disable-shm=yes"_s,
        u"--realtime=no"_s,
        u"--high-priority=no"_s,
        u"--log-level=error"_s,
        u"-L"_s,
        u"module-native-protocol-unix auth-anonymous=1 socket="_s + m_address,
    };
    for (const QString& module : modules) {
        command << u"-L"_s << module;
    }
    command << u"-C"_s; // commands on its standard input
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        throw std::runtime_error("No sockets");
    }
    m_console = ends[0];
    m_process = spawn(boundCommand(command), ends[1]);
    ::close(ends[1]);
    this->command(u"stat"_s);
}

void SoundServer::kill() {
    if (m_process > 0) {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        ::close(m_console);
        m_process = -1;
    }
}

void SoundServer::freeze() {
    ::kill(m_process, SIGSTOP);
}

void SoundServer::thaw() {
    ::kill(m_process, SIGCONT);
}

QString SoundServer::command(const QString& line) {
    // Commands are answered in order, and a wrong one by its name: the end of the answer.
    const QString end = u"end%1"_s.arg(++m_commands);
    const QByteArray lines = (line + u'\n' + end + u'\n').toUtf8();
    const QByteArray mark = "Unknown command: " + end.toUtf8();
    QByteArray answer;
    bool alive = ::send(m_console, lines.data(), lines.size(), MSG_NOSIGNAL) == lines.size();
    while (alive && !answer.contains(mark)) {
        pollfd readable{.fd = m_console, .events = POLLIN, .revents = 0};
        std::array<char, 4096> buffer{};
        ssize_t size = 0;
        if (::poll(&readable, 1, patienceMs) == 1) {
            size = ::read(m_console, buffer.data(), buffer.size());
        }
        alive = size > 0;
        answer.append(buffer.data(), std::max<ssize_t>(size, 0));
    }
    if (!alive) {
        throw std::runtime_error("The sound server does not answer");
    }
    return QString::fromUtf8(answer.first(answer.indexOf(mark)));
}

QString sinkModule(const QString& sink, int rate, int channels) {
    // Without rewinds the sink plays ahead by 50 ms instead of two seconds.
    return u"module-null-sink norewinds=1 sink_name=%1 rate=%2 channels=%3"_s.arg(sink)
        .arg(rate)
        .arg(channels);
}

QString microphoneModule(const QString& source, const QString& sink, const QString& description) {
    return u"module-remap-source source_name=%1 master=%2.monitor "
           "source_properties=\"device.description='%3'\""_s.arg(source, sink, description);
}

QString toneModule(const QString& sink, int frequency) {
    return u"module-sine sink=%1 frequency=%2"_s.arg(sink).arg(frequency);
}

} // namespace quorvin::testing
