#include "RunningProgram.h"

#include "support/BoundProcess.h"

#include <QDir>
#include <QFile>

#include <cstdlib>
#include <thread>

#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace quorvin::bench {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patience = 30000; // milliseconds

void write(const QString& path, const QByteArray& text) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        qFatal("%s can't be written", qUtf8Printable(path));
    }
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

Desktop::Desktop() {
    m_soundServer.start({testing::sinkModule(u"room"_s, 48000, 2),
                         testing::microphoneModule(u"mic"_s, u"room"_s, u"Desk Microphone"_s),
                         testing::toneModule(u"room"_s, 440)});
    const QString home = m_home.path();
    write(home + u"/bin/whisper-cpp"_s, "#!/bin/sh\necho ' a few words'\n");
    write(home + u"/models/ggml-base.bin"_s, "No model is read here.\n");
    write(home + u"/config/quorvin/settings.json"_s, R"({"onboardingComplete": true})");
    QDir(home).mkpath(u"run"_s);

    m_environment.insert(u"DISPLAY"_s, QString::fromLatin1(m_display.display()));
    m_environment.insert(u"HOME"_s, home);
    m_environment.insert(u"PATH"_s, home + u"/bin:/usr/bin:/bin"_s);
    m_environment.insert(u"TMPDIR"_s, home);
    m_environment.insert(u"XDG_CONFIG_HOME"_s, home + u"/config"_s);
    m_environment.insert(u"XDG_DATA_HOME"_s, home + u"/data"_s);
    m_environment.insert(u"XDG_CACHE_HOME"_s, home + u"/cache"_s);
    m_environment.insert(u"XDG_RUNTIME_DIR"_s, home + u"/run"_s);
    m_environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    m_environment.insert(u"QT_FORCE_STDERR_LOGGING"_s, u"1"_s);
}

void Desktop::press(const QString& keys) const {
    run(u"xdotool"_s, {u"key"_s, keys});
}

void Desktop::clickPanel() const {
    run(u"xdotool"_s, {u"mousemove"_s, u"640"_s, u"928"_s, u"click"_s, u"1"_s});
}

void Desktop::clickRing() const {
    run(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Quorvin$"_s, u"mousemove"_s,
                       u"--window"_s, u"%1"_s, u"290"_s, u"210"_s, u"click"_s, u"1"_s});
}

std::chrono::duration<double, std::milli> Desktop::timeToPanel() const {
    xcb_connection_t* const display =
        xcb_connect(m_environment.value(u"DISPLAY"_s).toLatin1().constData(), nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(display, root, XCB_CW_EVENT_MASK, &mask);
    const auto key = [&](std::uint8_t type, xcb_keycode_t code) {
        xcb_test_fake_input(display, type, code, XCB_CURRENT_TIME, root, 0, 0, 0);
    };
    constexpr xcb_keycode_t control = 37; // the positions on every keyboard
    constexpr xcb_keycode_t backtick = 49;
    const auto begin = std::chrono::steady_clock::now();
    key(XCB_KEY_PRESS, control);
    key(XCB_KEY_PRESS, backtick);
    key(XCB_KEY_RELEASE, backtick);
    key(XCB_KEY_RELEASE, control);
    xcb_flush(display);
    bool isMapped = false;
    while (!isMapped) {
        xcb_generic_event_t* const event = xcb_wait_for_event(display);
        if (!event) {
            qFatal("The display is gone");
        }
        isMapped = (event->response_type & 0x7f) == XCB_MAP_NOTIFY;
        free(event); // NOLINT: as xcb says
    }
    const auto end = std::chrono::steady_clock::now();
    xcb_disconnect(display);
    return end - begin;
}

void Desktop::run(const QString& program, const QStringList& arguments) const {
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(program, arguments);
    if (!process.waitForFinished(patience) || process.exitCode() != 0) {
        qFatal("%s failed", qUtf8Printable(program));
    }
}

RunningProgram::RunningProgram(const QProcessEnvironment& environment) {
    m_process.setProcessEnvironment(environment);
    m_process.setReadChannel(QProcess::StandardError);
    testing::startBound(m_process, {QStringLiteral(QUORVIN_PROGRAM)});
}

RunningProgram::RunningProgram(const Desktop& desktop) : RunningProgram(desktop.environment()) {
    waitFor("Keep-warm started");
    waitFor("WhisperService ready");
}

RunningProgram::~RunningProgram() {
    m_process.terminate();
    m_process.waitForFinished(patience);
}

std::chrono::duration<double, std::milli> RunningProgram::timeToFirstFrame(const Desktop& desktop) {
    const char* const framesTold = "qt.scenegraph.time.renderloop";
    QProcessEnvironment environment = desktop.environment();
    environment.insert(u"QT_LOGGING_RULES"_s, QLatin1StringView(framesTold) + u"=true"_s);
    const auto begin = std::chrono::steady_clock::now();
    RunningProgram program(environment);
    program.waitFor(framesTold);
    return std::chrono::steady_clock::now() - begin;
}

double RunningProgram::coreShare(std::chrono::seconds settling, std::chrono::seconds span) const {
    std::this_thread::sleep_for(settling);
    const auto before = processorTime();
    std::this_thread::sleep_for(span);
    return (processorTime() - before) / std::chrono::duration<double>(span) * 100;
}

std::chrono::duration<double> RunningProgram::processorTime() const {
    QFile file(u"/proc/%1/stat"_s.arg(m_process.processId()));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("The program has ended");
    }
    const QByteArray line = file.readAll();
    // Behind the name in parentheses the state is the first field; user and system time are the
    // twelfth and thirteenth (proc(5)).
    const QList<QByteArray> fields = line.sliced(line.lastIndexOf(')') + 2).split(' ');
    const double ticks = fields.at(11).toDouble() + fields.at(12).toDouble();
    return std::chrono::duration<double>(ticks / static_cast<double>(sysconf(_SC_CLK_TCK)));
}

double RunningProgram::residentMebibytes() const {
    QFile file(u"/proc/%1/statm"_s.arg(m_process.processId()));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("The program has ended");
    }
    // The second field, in pages (proc(5)).
    const double pages = file.readAll().split(' ').at(1).toDouble();
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

void RunningProgram::waitFor(const QByteArray& text, int times) {
    while (m_log.count(text) < times) {
        if (!m_process.waitForReadyRead(patience)) {
            qFatal("The program did not say \"%s\" but:\n%s", text.data(), m_log.data());
        }
        m_log += m_process.readAllStandardError();
    }
}

} // namespace quorvin::bench
