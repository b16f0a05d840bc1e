#pragma once

#include "platform/AudioHost.h"
#include "services/audio/AudioError.h"
#include "services/audio/AudioInputDevice.h"
#include "services/audio/Metering.h"

#include <QList>
#include <QObject>
#include <QProperty>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quorvin {

class Scheduler;

/// Owns the microphone: devices, takes, the look-back before a take, level and spectrum. Samples
/// are 32-bit floats at 16 kHz, one channel. All operations on the main thread.
class AudioService final : public QObject {
    Q_OBJECT
    /// From the moment a take's engine runs until `stopRecording` is done, also when the device
    /// was lost in between.
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged)
    /// 0 to 1, a linear RMS.
    Q_PROPERTY(double audioLevel READ audioLevel NOTIFY audioLevelChanged)
    /// 96 values from 0 to 1 (`Spectrum` tells their frequencies).
    Q_PROPERTY(Bands fftBands READ fftBands NOTIFY fftBandsChanged)
    /// Whether capture may start. The host's answer at construction; then whatever is set.
    Q_PROPERTY(bool permissionGranted READ permissionGranted WRITE setPermissionGranted NOTIFY
                   permissionGrantedChanged)
    Q_PROPERTY(bool isKeepWarmRunning READ isKeepWarmRunning NOTIFY isKeepWarmRunningChanged)

public:
    using Bands = FFTBands;

    /// `host` and `scheduler` outlive the service.
    AudioService(AudioHost& host, Scheduler& scheduler, QObject* parent = nullptr);
    ~AudioService() override;

    [[nodiscard]] bool isRecording() const { return m_isRecording; }
    [[nodiscard]] double audioLevel() const { return m_audioLevel; }
    [[nodiscard]] Bands fftBands() const { return m_fftBands; }
    [[nodiscard]] bool permissionGranted() const { return m_permissionGranted; }
    void setPermissionGranted(bool granted) { m_permissionGranted = granted; }
    [[nodiscard]] bool isKeepWarmRunning() const { return m_isKeepWarmRunning; }

    /// The row "default" first, then every device with input channels, in the system's order.
    [[nodiscard]] QList<AudioInputDevice> listInputDevices();
    /// Takes the `id` of an `AudioInputDevice`, for the next start of an engine; a running one
    /// stays with its device. What is no device number means the system's default.
    void selectDevice(const QString& id);

    /// For take and level meter, not for spectrum and look-back. From the next buffer on.
    void setInputGain(double dB);
    /// An RMS value; the level reads 0 below it. The samples stay as they are.
    void setNoiseGate(double threshold);

    /// Throws AudioError; the service is then idle (or, at `alreadyRecording`, as it was).
    void startRecording();
    /// Ends the take and returns it; empty when there is none.
    [[nodiscard]] std::vector<float> stopRecording();
    /// Puts samples from before the take in front of it.
    void prependSamples(std::span<const float> samples);

    /// Begins to remember the last three seconds, anew at each start. Without effect while it runs;
    /// a failure is logged.
    void startKeepWarm();
    /// What is remembered stays for three seconds, until it is drained or keep-warm starts again.
    void stopKeepWarm();
    /// The look-back, oldest sample first, from the first that isn't exactly zero. Empties it.
    [[nodiscard]] std::vector<float> drainWarmBuffer();

    /// Shows the level without recording, with the gain of this moment. Without effect during a
    /// recording, while it runs, and without permission.
    void startMonitoring();
    void stopMonitoring();

Q_SIGNALS:
    void isRecordingChanged();
    void audioLevelChanged();
    void fftBandsChanged();
    void permissionGrantedChanged();
    void isKeepWarmRunningChanged();

private:
    struct Shared;
    class RecordingTap;

    /// A fresh engine on the selected device.
    [[nodiscard]] std::shared_ptr<CaptureEngine> makeEngine();
    static void setAudioDevice(std::uint32_t number, CaptureEngine& engine);
    static void releaseEngine(std::shared_ptr<CaptureEngine>& engine);
    void cleanupEngine();

    /// Runs `consequence` after `engine` was interrupted, unless it has been released by then.
    void onInterruption(const std::shared_ptr<CaptureEngine>& engine,
                        void (AudioService::*consequence)());

    /// A tap may not throw: a buffer that can't be converted is lost, and the log tells of it.
    [[nodiscard]] CaptureEngine::Tap loggingFailures(CaptureEngine::Tap tap);

    void updateMeters(std::int64_t generation, double meterTarget, const Bands& computed);
    void publishLevel(double target, Smoothing smoothing);
    void clearMeters();

    AudioHost& m_host;
    Scheduler& m_scheduler;
    /// What the taps reach from their own threads. They keep it alive.
    std::shared_ptr<Shared> m_shared;

    std::shared_ptr<CaptureEngine> m_audioEngine;
    std::shared_ptr<CaptureEngine> m_warmEngine;
    std::chrono::nanoseconds m_keepWarmEnd{}; ///< when it was last running, on the monotonic clock
    std::shared_ptr<CaptureEngine> m_monitorEngine;
    std::optional<std::uint32_t> m_selectedDeviceID;
    /// Number of the current recording: keeps the late meter updates of an old one out of it.
    std::int64_t m_recordingGeneration = 0;
    /// The meter's smoother, not limited as `audioLevel` is.
    double m_smoothedRMSLevel = 0;

    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AudioService, bool, m_isRecording, false,
                                         &AudioService::isRecordingChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AudioService, double, m_audioLevel, 0.0,
                                         &AudioService::audioLevelChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AudioService, Bands, m_fftBands, Bands{},
                                         &AudioService::fftBandsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AudioService, bool, m_permissionGranted, false,
                                         &AudioService::permissionGrantedChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AudioService, bool, m_isKeepWarmRunning, false,
                                         &AudioService::isKeepWarmRunningChanged)
};

} // namespace quorvin
