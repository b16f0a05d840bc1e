#pragma once

#include "platform/ProcessTable.h"

#include <QByteArray>
#include <QHash>

#include <optional>
#include <vector>

namespace quorvin {

/// The processes as the kernel shows them below /proc, told as ps and lsof would. Entries that may
/// not be read are passed over.
class ProcfsProcessTable final : public ProcessTable {
public:
    /// `root` is where the kernel's process directories are.
    explicit ProcfsProcessTable(QByteArray root = QByteArrayLiteral("/proc"));

    [[nodiscard]] std::optional<std::vector<ProcessRow>> rows() override;
    [[nodiscard]] std::optional<QString> workingDirectory(ProcessID processIdentifier) override;
    [[nodiscard]] std::optional<ProcessID>
    firstHolder(const QString& ttyPath, const std::function<bool(ProcessID)>& isWanted) override;
    [[nodiscard]] std::optional<ProcessID> parent(ProcessID processIdentifier) override;

private:
    /// A descriptor of a process that leads to a device.
    struct OpenDevice {
        QByteArray path;
        QByteArray descriptor;
    };

    [[nodiscard]] QByteArray entry(ProcessID processIdentifier, const char* name) const;
    /// In ascending order; absent when they can't be read.
    [[nodiscard]] std::optional<std::vector<ProcessID>> processIdentifiers() const;
    [[nodiscard]] bool holds(ProcessID processIdentifier, const QByteArray& path);
    [[nodiscard]] const std::vector<OpenDevice>& openDevices(ProcessID processIdentifier);

    QByteArray m_root;
    QHash<ProcessID, ProcessID> m_parents; // as of the last rows
    /// Those that were asked for; most processes never are.
    QHash<ProcessID, std::vector<OpenDevice>> m_openDevices;
};

} // namespace quorvin
