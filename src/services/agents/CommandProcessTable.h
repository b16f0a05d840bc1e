#pragma once

#include "platform/ProcessTable.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace quorvin {

/// Runs a program and returns the whole of its standard output; absent when it can't be started.
/// Blocks. Any thread.
using BlockingCommand =
    std::function<std::optional<QByteArray>(const QString& program, const QStringList& arguments)>;

/// Where the two programs are.
struct ProcessTools {
    QString ps;
    QString lsof;
};

[[nodiscard]] ProcessTools macProcessTools();
[[nodiscard]] ProcessTools linuxProcessTools();

/// The processes as the commands ps and lsof list them. Lines that can't be read are passed over.
class CommandProcessTable final : public ProcessTable {
public:
    CommandProcessTable(BlockingCommand run, ProcessTools tools);

    [[nodiscard]] std::optional<std::vector<ProcessRow>> rows() override;
    [[nodiscard]] std::optional<QString> workingDirectory(ProcessID processIdentifier) override;
    [[nodiscard]] std::optional<ProcessID>
    firstHolder(const QString& ttyPath, const std::function<bool(ProcessID)>& isWanted) override;
    [[nodiscard]] std::optional<ProcessID> parent(ProcessID processIdentifier) override;

private:
    /// Empty when it isn't UTF-8.
    [[nodiscard]] std::optional<QString> output(const QString& program,
                                                const QStringList& arguments) const;

    BlockingCommand m_run;
    ProcessTools m_tools;
};

} // namespace quorvin
