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
    [[nodiscard]] std::vector<ProcessID> holders(const QString& ttyPath) override;
    [[nodiscard]] std::optional<ProcessID> parent(ProcessID processIdentifier) override;

private:
    /// One descriptor of a process.
    struct Descriptor {
        ProcessID processIdentifier = 0;
        QByteArray number;
    };
    using OpenDevices = QHash<QByteArray, std::vector<Descriptor>>; // by path

    [[nodiscard]] QByteArray entry(ProcessID processIdentifier, const char* name) const;
    [[nodiscard]] std::optional<std::vector<ProcessID>> processIdentifiers() const;
    [[nodiscard]] OpenDevices findOpenDevices() const;

    QByteArray m_root;
    std::optional<OpenDevices> m_openDevices; // found at the first question for holders
};

} // namespace quorvin
