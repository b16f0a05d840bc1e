#pragma once

#include <stdexcept>
#include <string>

namespace quorvin {

/// Why a recording did not start. `what` is the message for the user, in UTF-8.
class AudioError : public std::runtime_error {
public:
    enum class Case {
        engineStartFailed,
        deviceNotFound,
        permissionDenied,
        noInputDevice,
        formatConversionFailed,
        alreadyRecording,
    };

    /// `detail` is the underlying error's description for `engineStartFailed`, the device for
    /// `deviceNotFound`, and unused by the others.
    explicit AudioError(Case errorCase, const std::string& detail = {})
        : std::runtime_error(message(errorCase, detail)), m_case(errorCase) {}

    [[nodiscard]] Case errorCase() const { return m_case; }

private:
    static std::string message(Case errorCase, const std::string& detail) {
        switch (errorCase) {
        case Case::engineStartFailed:
            return "Failed to start audio engine: " + detail;
        case Case::deviceNotFound:
            return "Audio device not found: " + detail;
        case Case::permissionDenied:
            return "Microphone permission denied. Please grant access in System Settings > "
                   "Privacy & Security > Microphone.";
        case Case::noInputDevice:
            return "No microphone found. Please connect a microphone and try again.";
        case Case::formatConversionFailed:
            return "Failed to configure audio format conversion.";
        case Case::alreadyRecording:
            return "Recording is already in progress.";
        }
        return detail;
    }

    Case m_case;
};

} // namespace quorvin
