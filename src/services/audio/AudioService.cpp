#include "services/audio/AudioService.h"

#include "platform/Scheduler.h"
#include "services/audio/AudioServiceShared.h"
#include "services/audio/CaptureChain.h"

#include <QPointer>

#include <algorithm>
#include <charconv>
#include <exception>
#include <mutex>
#include <utility>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

Q_LOGGING_CATEGORY(audioServiceLog, "com.quorvin.AudioService", QtInfoMsg)

namespace {

/// Two minutes: an ordinary take is never copied by its own growth while the tap holds the lock.
constexpr std::size_t reservedSamples = 1'920'000;

/// The number by which the log names 32-bit float samples, the only kind that a tap delivers.
constexpr unsigned long floatSampleFormat = 1;

/// A decimal number, with or without a plus sign, and nothing around it.
std::optional<std::uint32_t> parseDeviceNumber(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const char* const begin = bytes.startsWith('+') ? bytes.begin() + 1 : bytes.begin();
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(begin, bytes.end(), number);
    if (error != std::errc() || end != bytes.end()) {
        return std::nullopt;
    }
    return number;
}

} // namespace

/// The capture chain of one recording, on the capture thread.
class AudioService::RecordingTap {
public:
    RecordingTap(AudioService& service, TapInput input)
        : m_chain(std::move(input))
        , m_shared(service.m_shared)
        , m_scheduler(service.m_scheduler)
        , m_service(&service)
        , m_generation(service.m_recordingGeneration) {}

    void processAudioBuffer(std::span<const float> buffer) {
        const auto captured =
            m_chain.process(buffer, m_shared->gainMultiplier.load(std::memory_order_relaxed),
                            m_shared->noiseGateThreshold.load(std::memory_order_relaxed));
        if (!captured) {
            return;
        }
        {
            const std::lock_guard lock(m_shared->samplesLock);
            auto& take = m_shared->recordedSamples;
            take.insert(take.end(), captured->gainedSamples.begin(), captured->gainedSamples.end());
        }
        m_scheduler.post([service = m_service, generation = m_generation,
                          target = captured->meterTarget,
                          bands = m_shared->spectrum.computeFFTBands(captured->samples)] {
            if (service) {
                service->updateMeters(generation, target, bands);
            }
        });
    }

private:
    CaptureChain m_chain;
    std::shared_ptr<Shared> m_shared;
    Scheduler& m_scheduler;
    QPointer<AudioService> m_service;
    std::int64_t m_generation;
};

AudioService::AudioService(AudioHost& host, Scheduler& scheduler, QObject* parent)
    : QObject(parent), m_host(host), m_scheduler(scheduler), m_shared(std::make_shared<Shared>()) {
    const MicrophoneAuthorization status = m_host.authorizationStatus();
    m_permissionGranted = status == MicrophoneAuthorization::authorized;
    qCInfo(audioServiceLog, "AudioService initialized, permission status: %ld",
           static_cast<long>(status));
}

AudioService::~AudioService() {
    releaseEngine(m_audioEngine);
    releaseEngine(m_warmEngine);
    releaseEngine(m_monitorEngine);
}

QList<AudioInputDevice> AudioService::listInputDevices() {
    QList<AudioInputDevice> rows{{u"default"_s, u"System Default"_s, 0}};
    try {
        for (const AudioDevice& device : m_host.devices()) {
            if (device.inputChannelCount == 0) {
                continue;
            }
            const QString number = QString::number(device.number);
            const QString name = device.name ? QString::fromStdString(*device.name)
                                             : u"Unknown Device (%1)"_s.arg(number);
            rows.append({number, name, device.number});
        }
    } catch (const AudioHostError& error) {
        qCCritical(audioServiceLog, "Failed to get audio device list: %d", error.code());
        return rows;
    }
    qCInfo(audioServiceLog, "Found %ld input devices", static_cast<long>(rows.size() - 1));
    return rows;
}

void AudioService::selectDevice(const QString& id) {
    if (id == u"default"_s) {
        m_selectedDeviceID.reset();
        qCInfo(audioServiceLog, "Selected system default audio device");
        return;
    }
    m_selectedDeviceID = parseDeviceNumber(id);
    if (m_selectedDeviceID) {
        qCInfo(audioServiceLog, "Selected audio device: %s", qUtf8Printable(id));
    } else {
        qCCritical(audioServiceLog, "Invalid device ID: %s, falling back to default",
                   qUtf8Printable(id));
    }
}

void AudioService::setInputGain(double dB) {
    const float multiplier = gainFactor(dB);
    m_shared->gainMultiplier.store(multiplier, std::memory_order_relaxed);
    qCInfo(audioServiceLog, "Input gain set to %f dB (multiplier: %f)", dB,
           static_cast<double>(multiplier));
}

void AudioService::setNoiseGate(double threshold) {
    m_shared->noiseGateThreshold.store(static_cast<float>(threshold), std::memory_order_relaxed);
    qCInfo(audioServiceLog, "Noise gate threshold set to %f", threshold);
}

void AudioService::startRecording() {
    if (m_isRecording) {
        qCCritical(audioServiceLog, "startRecording called while already recording");
        throw AudioError(AudioError::Case::alreadyRecording);
    }
    if (!m_permissionGranted) {
        qCCritical(audioServiceLog, "Cannot start recording: microphone permission not granted");
        throw AudioError(AudioError::Case::permissionDenied);
    }
    qCInfo(audioServiceLog, "Starting recording...");
    {
        const std::lock_guard lock(m_shared->samplesLock);
        m_shared->recordedSamples.clear();
        m_shared->recordedSamples.reserve(reservedSamples);
    }
    m_smoothedRMSLevel = 0;
    m_audioLevel = 0;
    ++m_recordingGeneration;

    const auto engine = makeEngine();
    const AudioFormat hardware = engine->inputFormat();
    qCInfo(audioServiceLog, "Hardware format: %fHz, %uch, %lu", hardware.sampleRate,
           hardware.channelCount, floatSampleFormat);
    if (!isUsable(hardware)) {
        qCCritical(audioServiceLog, "Invalid hardware format — no input device available");
        throw AudioError(AudioError::Case::noInputDevice);
    }

    std::unique_ptr<SampleConverter> converter;
    if (needsConversion(hardware)) {
        converter = m_host.makeSampleConverter(hardware, targetFormat);
        if (!converter) {
            qCCritical(audioServiceLog, "Failed to create AVAudioConverter");
            throw AudioError(AudioError::Case::formatConversionFailed);
        }
        qCInfo(audioServiceLog, "Audio converter created: %fHz → %fHz", hardware.sampleRate,
               targetFormat.sampleRate);
    } else {
        qCInfo(audioServiceLog, "No format conversion needed");
    }

    const auto tap =
        std::make_shared<RecordingTap>(*this, TapInput(hardware, std::move(converter)));
    // A converted buffer gets no room to spare, so a tap size that leaves a fraction of a sample
    // over would hold back a little more of the take with every buffer.
    engine->installTap(
        captureFrameCount(hardware.sampleRate),
        loggingFailures([tap](std::span<const float> buffer) { tap->processAudioBuffer(buffer); }));
    onInterruption(engine, &AudioService::clearMeters);
    engine->prepare();
    try {
        engine->start();
    } catch (const AudioHostError& error) {
        engine->removeTap();
        qCCritical(audioServiceLog, "Failed to start audio engine: %s", error.what());
        throw AudioError(AudioError::Case::engineStartFailed, error.what());
    }
    m_audioEngine = engine;
    m_isRecording = true;
    qCInfo(audioServiceLog, "Recording started successfully");
}

std::vector<float> AudioService::stopRecording() {
    if (!m_isRecording) {
        qCCritical(audioServiceLog, "stopRecording called while not recording");
        return {};
    }
    qCInfo(audioServiceLog, "Stopping recording...");
    cleanupEngine();
    std::vector<float> take;
    {
        const std::lock_guard lock(m_shared->samplesLock);
        take.swap(m_shared->recordedSamples);
    }
    m_isRecording = false;
    // The generation stays, deliberately: a meter update posted just before still lands after this.
    clearMeters();
    qCInfo(audioServiceLog, "Recording stopped: %ld samples (%.1fs)",
           static_cast<long>(take.size()),
           static_cast<double>(take.size()) / targetFormat.sampleRate);
    return take;
}

void AudioService::prependSamples(std::span<const float> samples) {
    {
        const std::lock_guard lock(m_shared->samplesLock);
        auto& take = m_shared->recordedSamples;
        take.insert(take.begin(), samples.begin(), samples.end());
    }
    qCInfo(audioServiceLog, "Prepended %ld lookback samples", static_cast<long>(samples.size()));
}

std::shared_ptr<CaptureEngine> AudioService::makeEngine() {
    std::shared_ptr<CaptureEngine> engine = m_host.makeCaptureEngine();
    if (m_selectedDeviceID) {
        setAudioDevice(*m_selectedDeviceID, *engine);
    }
    return engine;
}

void AudioService::setAudioDevice(std::uint32_t number, CaptureEngine& engine) {
    try {
        engine.setDevice(number);
        qCInfo(audioServiceLog, "Audio device set to %u", number);
    } catch (const AudioHostError& error) {
        qCCritical(audioServiceLog, "Failed to set audio device %u: OSStatus %d", number,
                   error.code());
    }
}

void AudioService::releaseEngine(std::shared_ptr<CaptureEngine>& engine) {
    if (!engine) {
        return;
    }
    engine->removeTap();
    if (engine->isRunning()) {
        engine->stop();
    }
    engine.reset();
}

void AudioService::cleanupEngine() {
    if (!m_audioEngine) {
        return;
    }
    releaseEngine(m_audioEngine);
    qCInfo(audioServiceLog, "Audio engine cleaned up");
}

void AudioService::onInterruption(const std::shared_ptr<CaptureEngine>& engine,
                                  void (AudioService::*consequence)()) {
    engine->setInterruptionHandler([&scheduler = m_scheduler, service = QPointer(this),
                                    interrupted = std::weak_ptr(engine),
                                    consequence](const std::string& reason) {
        qCCritical(audioServiceLog, "Audio capture interrupted: %s", reason.c_str());
        // Posted, because an engine can't be destroyed inside its own callback, and because the
        // meter updates of its last buffers are waiting in the same queue.
        scheduler.post([service, interrupted, consequence] {
            if (service && !interrupted.expired()) {
                (service->*consequence)();
            }
        });
    });
}

CaptureEngine::Tap AudioService::loggingFailures(CaptureEngine::Tap tap) {
    return [&scheduler = m_scheduler, tap = std::move(tap)](std::span<const float> buffer) {
        try {
            tap(buffer);
        } catch (const std::exception& error) {
            scheduler.post([message = std::string(error.what())] {
                qCCritical(audioServiceLog, "Audio conversion error: %s", message.c_str());
            });
        }
    };
}

void AudioService::updateMeters(std::int64_t generation, double meterTarget,
                                const Bands& computed) {
    if (generation != m_recordingGeneration) {
        return;
    }
    publishLevel(meterTarget, recordingSmoothing);
    m_fftBands = smoothedBands(m_fftBands, computed);
}

void AudioService::publishLevel(double target, Smoothing smoothing) {
    m_smoothedRMSLevel = smoothedLevel(m_smoothedRMSLevel, target, smoothing);
    m_audioLevel = std::clamp(m_smoothedRMSLevel, 0.0, 1.0);
}

void AudioService::clearMeters() {
    m_audioLevel = 0;
    m_smoothedRMSLevel = 0;
    m_fftBands = Bands{};
}

} // namespace quorvin
