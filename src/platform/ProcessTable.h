#pragma once

#include "platform/Workspace.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quorvin {

/// One line of a listing of the processes in the columns "pid command tty".
struct ProcessRow {
    ProcessID processIdentifier = 0;
    /// A name or a path, never empty.
    QString command;
    /// The name of the controlling terminal below "/dev/", such as "pts/3"; absent when the process
    /// has none.
    std::optional<QString> terminal;

    bool operator==(const ProcessRow&) const = default;
};

/// A look at the processes of this machine, made for one use on one thread, any thread. The
/// operations block, for as long as the system takes. What a process does in between shows: one
/// that a row names may have ended.
class ProcessTable {
public:
    ProcessTable() = default;
    ProcessTable(const ProcessTable&) = delete;
    ProcessTable& operator=(const ProcessTable&) = delete;
    virtual ~ProcessTable() = default;

    /// Every process, in the order in which ps lists them; absent when the table can't be read.
    [[nodiscard]] virtual std::optional<std::vector<ProcessRow>> rows() = 0;

    /// An absolute path in printable characters, the others written as lsof writes them ("\n");
    /// absent when the process has ended or isn't ours to look at.
    [[nodiscard]] virtual std::optional<QString> workingDirectory(ProcessID processIdentifier) = 0;

    /// The first process, in the order of lsof, that has the file `ttyPath` open and that
    /// `isWanted` accepts; absent when there is none and when there is no such file. `isWanted` may
    /// be asked about processes that don't have the file open.
    [[nodiscard]] virtual std::optional<ProcessID>
    firstHolder(const QString& ttyPath, const std::function<bool(ProcessID)>& isWanted) = 0;

    /// Absent when the process has ended, before the last `rows` at least; 0 for the root of the
    /// tree.
    [[nodiscard]] virtual std::optional<ProcessID> parent(ProcessID processIdentifier) = 0;
};

/// Makes the table for one look. Any thread.
using ProcessTableFactory = std::function<std::unique_ptr<ProcessTable>()>;

/// The row that stands in `columns`, which are what a line has behind the process id, divided at
/// every blank; absent when there is nothing. The columns are taken by position. That is
/// deliberate: a command with a blank in it is cut off there, and its next word is taken for the
/// terminal.
[[nodiscard]] inline std::optional<ProcessRow> processRow(ProcessID processIdentifier,
                                                          const QStringList& columns) {
    if (columns.isEmpty()) {
        return std::nullopt;
    }
    ProcessRow row{processIdentifier, columns[0], std::nullopt};
    // How a listing marks a process without a terminal: the one is BSD's way, the other Linux's.
    if (columns.size() > 1 && columns[1] != u"??" && columns[1] != u"?") {
        row.terminal = columns[1];
    }
    return row;
}

} // namespace quorvin
