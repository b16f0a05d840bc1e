#include "AppStateFixture.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin::testing {

namespace {

constexpr qint64 wavHeaderSize = 44;

void makeFile(const QString& path, QFileDevice::Permissions permissions) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.setPermissions(permissions));
}

ProcessResult printing(const QString& text) {
    return {.exitStatus = 0, .standardOutput = text.toUtf8() + '\n', .standardError = {}};
}

} // namespace

AppStateTest::AppStateTest() {
    bundle.home = directory.filePath(u"home"_s);
    bundle.temporary = directory.filePath(u"tmp"_s);
    bundle.applicationSupport = directory.filePath(u"home/.local/share"_s);
    for (const QString& name : {u"ui-sound"_s, u"ui-pop"_s, u"vinyl-stop"_s}) {
        bundle.resources[name + u".mp3"_s] = u"/sounds/"_s + name + u".mp3"_s;
    }
    QDir().mkpath(bundle.temporary);
    makeFile(bundle.home + u"/models/ggml-base.bin"_s, QFile::ReadOwner | QFile::WriteOwner);
    const QString engine = directory.filePath(u"bin/whisper-cpp"_s);
    makeFile(engine, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    processRunner.script(u"/usr/bin/which"_s, printing(engine));
}

AppStateTest::~AppStateTest() {
    endProgram();
}

AppState& AppStateTest::start() {
    endProgram();
    m_metrics = std::make_unique<PerformanceMetrics>(scheduler);
    m_notificationService = std::make_unique<NotificationService>(notifications);
    m_soundService = std::make_unique<SoundService>(soundPlayers, bundle, defaults);
    m_app = std::make_unique<AppState>(m_platform);
    return *m_app;
}

void AppStateTest::endProgram() {
    m_app.reset();
    m_soundService.reset();
    m_notificationService.reset();
    m_metrics.reset();
}

QString AppStateTest::engineProgram() {
    scheduler.runPosted(); // the load at start
    return m_app->whisperService().binaryPath().value();
}

void AppStateTest::engineSays(const QString& text) {
    processRunner.script(engineProgram(), [this, text](const FakeProcessRunner::Call& call) {
        const qsizetype file = call.arguments.indexOf(u"-f"_s) + 1;
        const qint64 bytes = QFileInfo(call.arguments.at(file)).size() - wavHeaderSize;
        m_engineSamples = static_cast<std::size_t>(bytes) / sizeof(std::int16_t);
        return printing(text);
    });
}

void AppStateTest::holdEngine() {
    processRunner.hold(engineProgram());
}

void AppStateTest::answerEngine(const QString& text) {
    processRunner.finish(printing(text));
    scheduler.runPosted();
}

void AppStateTest::runTerminal() {
    workspace.running = {{terminalPid, u"Terminal"_s, u"com.apple.Terminal"_s}};
    processes.parents[shellPid] = terminalPid;
    processes.parents[terminalPid] = 1;
}

void AppStateTest::runAgent(const QString& name, ProcessID pid) {
    if (!processes.parents.contains(shellPid)) {
        runTerminal();
    }
    const QString tty = u"pts/%1"_s.arg(pid % 100);
    processes.rows.push_back({pid, name, tty});
    processes.parents[pid] = shellPid;
    processes.holders[u"/dev/"_s + tty] = {shellPid, pid};
    processes.workingDirectories[pid] = u"/home/dev/project%1"_s.arg(pid);
}

void AppStateTest::feedMicrophone(const std::vector<float>& samples) {
    ASSERT_FALSE(audioHost.engines.empty());
    audioHost.engines.back()->feed(samples);
    scheduler.runPosted();
}

void AppStateTest::setLevel(double level) {
    // The meter shows one and a half times the RMS and closes half of the distance with each
    // buffer.
    const std::vector<float> buffer(100, static_cast<float>(level / 1.5));
    for (int i = 0; i < 60; ++i) {
        feedMicrophone(buffer);
    }
}

void AppStateTest::speak() {
    for (int i = 0; i < 16; ++i) {
        feedMicrophone(std::vector<float>(1000, 0.25F));
    }
    scheduler.advance(1s);
}

void AppStateTest::dictate(const QString& text) {
    engineSays(text);
    m_app->startRecording();
    speak();
    m_app->stopRecording();
    scheduler.runPosted();
}

QStringList AppStateTest::feed() const {
    QStringList messages;
    for (const ActivityEntry& entry : m_app->activityLog()) {
        messages.append(entry.message);
    }
    return messages;
}

QStringList AppStateTest::feed(ActivityType type) const {
    QStringList messages;
    for (const ActivityEntry& entry : m_app->activityLog()) {
        if (entry.type == type) {
            messages.append(entry.message);
        }
    }
    return messages;
}

QStringList AppStateTest::banners() const {
    QStringList titles;
    for (const NotificationRequest& request : notifications.requests) {
        titles.append(request.title);
    }
    return titles;
}

QList<HistoryEntry> AppStateTest::history() const {
    return m_app->historyService()->recentEntries(50);
}

QString AppStateTest::historyPath() const {
    return *bundle.applicationSupport + u"/quorvin/history.db"_s;
}

QStringList AppStateTest::soundsPlayed() const {
    QStringList names;
    for (const QString& path : soundPlayers.played) {
        names.append(QFileInfo(path).baseName());
    }
    return names;
}

double AppStateTest::popVolume() const {
    return soundPlayers.settings.at(bundle.resources.at(u"ui-pop.mp3"_s)).volume;
}

QStringList AppStateTest::temporaryWavFiles() const {
    return QDir(bundle.temporary).entryList({u"*.wav"_s});
}

std::optional<std::uint32_t> AppStateTest::selectedDeviceOfTheTake() const {
    return audioHost.engines.back()->deviceNumber;
}

} // namespace quorvin::testing
