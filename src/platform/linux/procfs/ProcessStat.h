#pragma once

#include "platform/Workspace.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace quorvin {

/// What the kernel tells of a process in the file "stat" of its directory, as far as it is used
/// here.
struct ProcessStat {
    /// At most 15 bytes, any bytes.
    QByteArray name;
    ProcessID parent = 0;
    /// The device number of the controlling terminal in the kernel's packing; 0 is none.
    std::uint32_t terminalDevice = 0;
};

/// Absent when `line` isn't such a file's content.
[[nodiscard]] std::optional<ProcessStat> parseProcessStat(const QByteArray& line);

/// The name below "/dev/" of the terminal with this device number: "pts/3", "tty1", "ttyS0"; absent
/// for 0 and for a device that the system doesn't know.
[[nodiscard]] std::optional<QString> terminalName(std::uint32_t device);

} // namespace quorvin
