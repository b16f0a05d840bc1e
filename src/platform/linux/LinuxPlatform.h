#pragma once

#include "platform/Platform.h"

#include <QString>

#include <memory>

namespace quorvin {

/// Everything the program needs of Linux with X11, made once by the composition root. Needs the
/// QGuiApplication, which it quits when the system asks the process to end. When it goes, its child
/// processes are ended and the tasks that still wait are run to their end.
class LinuxPlatform {
public:
    /// Plain HTTP is spoken only with an `updateEndpoint` that asks for it, as a test does.
    explicit LinuxPlatform(const QString& updateEndpoint);
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    [[nodiscard]] const Platform& platform() const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace quorvin
