#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <pulse/channelmap.h>
#include <pulse/sample.h>

namespace quorvin {

/// One source of the sound server.
struct PulseSource {
    /// The server's own identifier; the same at every start of the server.
    std::string name;
    /// What users know it by; may be empty.
    std::string description;
    /// Never 0.
    std::uint32_t number = 0;
    /// The native rate and channel count.
    pa_sample_spec format{};
    pa_channel_map channels{};
    /// It gives back what a sink plays.
    bool isMonitor = false;
};

/// Gives every source its number: a digest of its name, since the server counts its sources anew at
/// each start and the number is kept in the settings.
void assignNumbers(std::vector<PulseSource>& sources);

/// What a user would speak into, in the server's order: all but the monitors, or the monitors where
/// there is nothing else.
[[nodiscard]] std::vector<PulseSource> microphones(const std::vector<PulseSource>& sources);

/// The microphone called `defaultName`; the first one when that is none. Null when there is none.
/// Points into `microphones`.
[[nodiscard]] const PulseSource* defaultMicrophone(const std::vector<PulseSource>& microphones,
                                                   const std::string& defaultName);

} // namespace quorvin
