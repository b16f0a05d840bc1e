#pragma once

#include "platform/AudioHost.h"

namespace quorvin {

class PulseConnection;
class PulseStreams;
class Scheduler;

/// The microphones of a sound server that speaks PulseAudio's protocol. There is no permission to
/// ask for on Linux: who reaches the server may record. So the answer is "authorized" when the
/// server was there at the start, "denied" while it is not, and "not determined" when it has come
/// since, which makes the program ask, and get a yes.
class PulseAudioHost final : public AudioHost {
public:
    /// Connects; takes a second at most, with a server that doesn't answer. Throws
    /// std::runtime_error when the system gives no thread. The scheduler outlives the host, the
    /// host its engines.
    explicit PulseAudioHost(Scheduler& scheduler);
    ~PulseAudioHost() override;

    /// Waits for a server that doesn't answer, for a second at most.
    [[nodiscard]] MicrophoneAuthorization authorizationStatus() override;
    /// Answers within two seconds.
    [[nodiscard]] Task<bool> requestAccess() override;
    /// The monitors of sinks are no microphones: they are listed only when there is nothing else.
    [[nodiscard]] std::vector<AudioDevice> devices() override;
    [[nodiscard]] std::unique_ptr<CaptureEngine> makeCaptureEngine() override;
    [[nodiscard]] std::unique_ptr<SampleConverter>
    makeSampleConverter(const AudioFormat& from, const AudioFormat& to) override;

private:
    Scheduler& m_scheduler;
    std::unique_ptr<PulseConnection> m_connection;
    std::unique_ptr<PulseStreams> m_streams;
    std::shared_ptr<bool> m_granted; // shared with requests that may outlive the host
};

} // namespace quorvin
