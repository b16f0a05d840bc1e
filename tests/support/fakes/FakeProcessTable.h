#pragma once

#include "platform/ProcessTable.h"

#include <map>
#include <utility>
#include <vector>

namespace quorvin::testing {

/// The processes of a machine, laid out by hand.
struct FakeProcesses {
    bool areReadable = true;
    std::vector<ProcessRow> rows;
    std::map<ProcessID, QString> workingDirectories;
    std::map<QString, std::vector<ProcessID>> holders; // by the path of the terminal
    std::map<ProcessID, ProcessID> parents;
};

/// A look at them as they were when it was made.
class FakeProcessTable final : public ProcessTable {
public:
    explicit FakeProcessTable(FakeProcesses processes) : m_processes(std::move(processes)) {}

    [[nodiscard]] std::optional<std::vector<ProcessRow>> rows() override {
        return m_processes.areReadable ? std::optional(m_processes.rows) : std::nullopt;
    }

    [[nodiscard]] std::optional<QString> workingDirectory(ProcessID processIdentifier) override {
        return valueOf(m_processes.workingDirectories, processIdentifier);
    }

    [[nodiscard]] std::optional<ProcessID>
    firstHolder(const QString& ttyPath, const std::function<bool(ProcessID)>& isWanted) override {
        for (const ProcessID holder :
             valueOf(m_processes.holders, ttyPath).value_or(std::vector<ProcessID>())) {
            if (isWanted(holder)) {
                return holder;
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] std::optional<ProcessID> parent(ProcessID processIdentifier) override {
        return valueOf(m_processes.parents, processIdentifier);
    }

private:
    template <typename Key, typename Value>
    static std::optional<Value> valueOf(const std::map<Key, Value>& values, const Key& key) {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }

    FakeProcesses m_processes;
};

} // namespace quorvin::testing
