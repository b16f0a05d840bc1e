#include "platform/qt/QtSoundPlayers.h"

#include "platform/qt/SoundFile.h"
#include "platform/qt/SoundThread.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QBuffer>
#include <QMediaDevices>
#include <QScopedPointer>
#include <QTimer>

#include <chrono>
#include <cmath>
#include <mutex>
#include <optional>
#include <utility>

namespace quorvin {

using namespace std::chrono_literals;

namespace {

/// What a server and a wireless headset may hold back of a sound.
constexpr std::chrono::milliseconds longestLatency = 2s;

struct PlayRequest {
    double volume;
    double rate;
};

/// The way of one sound to the loudspeaker. Everything but `request` happens on the sound thread.
class Voice {
public:
    explicit Voice(SoundClip clip) : m_clip(std::move(clip)) {}

    /// Replaces a request that still waits; true when there was none. Any thread.
    bool request(PlayRequest request) {
        const std::lock_guard lock(m_mutex);
        return !std::exchange(m_request, request).has_value();
    }

    void playRequested() {
        const PlayRequest request = takeRequest();
        end();
        const QAudioDevice device = QMediaDevices::defaultAudioOutput();
        const QAudioFormat format = formatAt(request.rate);
        if (device.isNull() || !format.isValid()) {
            return;
        }
        m_sink.reset(new QAudioSink(device, format));
        auto* source = new QBuffer(m_sink.get());
        source->setData(m_clip.samples);
        source->open(QIODevice::ReadOnly);
        m_sink->setVolume(request.volume);
        m_sink->start(source);
        // A sink that has come to its end keeps the device awake. The notice that it gives itself
        // comes when the last samples are handed over, which is too early.
        auto* timer = new QTimer(m_sink.get());
        QObject::connect(timer, &QTimer::timeout, m_sink.get(), [this] { end(); });
        const auto byteCount = static_cast<qint32>(m_clip.samples.size());
        const std::chrono::microseconds length(format.durationForBytes(byteCount));
        timer->start(std::chrono::ceil<std::chrono::milliseconds>(length) + longestLatency);
    }

private:
    void end() {
        if (m_sink) {
            m_sink->stop();
            m_sink.reset();
        }
    }

    PlayRequest takeRequest() {
        const std::lock_guard lock(m_mutex);
        return *std::exchange(m_request, std::nullopt);
    }

    [[nodiscard]] QAudioFormat formatAt(double rate) const {
        QAudioFormat format;
        format.setSampleFormat(QAudioFormat::Int16);
        format.setChannelCount(m_clip.channelCount);
        // Announced with another sample rate than their own, the samples are played faster.
        format.setSampleRate(static_cast<int>(std::lround(m_clip.sampleRate * rate)));
        return format;
    }

    const SoundClip m_clip;
    std::mutex m_mutex; // guards m_request
    std::optional<PlayRequest> m_request;
    // The destructor of a sink runs other work of its thread: it must not run inside of ours.
    QScopedPointer<QAudioSink, QScopedPointerDeleteLater> m_sink;
};

class QtSoundPlayer final : public SoundPlayer {
public:
    QtSoundPlayer(std::shared_ptr<SoundThread> thread, SoundClip clip)
        : m_thread(std::move(thread)), m_voice(std::make_unique<Voice>(std::move(clip))) {}

    ~QtSoundPlayer() override {
        if (m_thread->isRunning()) {
            m_thread->run([voice = m_voice.release()] { delete voice; });
        }
    }

    void setVolume(double volume) override { m_settings.volume = volume; }
    void setRate(double rate) override { m_settings.rate = rate; }

    void playFromStart() override {
        if (m_voice->request(m_settings)) {
            m_thread->run([voice = m_voice.get()] { voice->playRequested(); });
        }
    }

private:
    PlayRequest m_settings{.volume = 1, .rate = 1};
    std::shared_ptr<SoundThread> m_thread;
    std::unique_ptr<Voice> m_voice;
};

} // namespace

QtSoundPlayers::QtSoundPlayers() : m_thread(std::make_shared<SoundThread>()) {}

QtSoundPlayers::~QtSoundPlayers() = default;

std::unique_ptr<SoundPlayer> QtSoundPlayers::make(const QString& path) {
    auto clip = readSoundFile(path);
    if (!clip) {
        return nullptr;
    }
    return std::make_unique<QtSoundPlayer>(m_thread, std::move(*clip));
}

} // namespace quorvin
