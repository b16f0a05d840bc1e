#include "platform/linux/terminals/TerminalProcesses.h"

#include <QFile>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

TerminalProcesses::TerminalProcesses(std::unique_ptr<ProcessTable> table, QString processDirectory)
    : m_table(std::move(table)), m_processDirectory(std::move(processDirectory)) {
    for (const ProcessRow& row : m_table->rows().value_or(std::vector<ProcessRow>())) {
        if (row.terminal) {
            m_terminals.insert(row.processIdentifier, u"/dev/"_s + *row.terminal);
            m_processes.push_back(row.processIdentifier);
        }
    }
}

std::optional<TerminalSession> TerminalProcesses::sessionOn(const QString& tty) const {
    // The first process is the one that the terminal itself started; the others descend from it.
    const auto first = std::find_if(m_processes.begin(), m_processes.end(), [&](ProcessID process) {
        const std::optional<ProcessID> parent = m_table->parent(process);
        return isOn(process, tty) && !(parent && isOn(*parent, tty));
    });
    if (first == m_processes.end()) {
        return std::nullopt;
    }
    return TerminalSession{tty, environmentOf(*first), ancestorsOf(*first)};
}

bool TerminalProcesses::isOn(ProcessID process, const QString& tty) const {
    return m_terminals.value(process) == tty;
}

std::vector<ProcessID> TerminalProcesses::ancestorsOf(ProcessID process) const {
    std::vector<ProcessID> ancestors;
    for (auto parent = m_table->parent(process); parent && *parent > 1;
         parent = m_table->parent(*parent)) {
        if (std::find(ancestors.begin(), ancestors.end(), *parent) != ancestors.end()) {
            break; // numbers that passed to other processes while we looked
        }
        ancestors.push_back(*parent);
    }
    return ancestors;
}

QHash<QByteArray, QByteArray> TerminalProcesses::environmentOf(ProcessID process) const {
    QFile file(u"%1/%2/environ"_s.arg(m_processDirectory).arg(process));
    QHash<QByteArray, QByteArray> environment;
    if (!file.open(QIODevice::ReadOnly)) {
        return environment;
    }
    for (const QByteArray& entry : file.readAll().split('\0')) {
        if (const qsizetype equals = entry.indexOf('='); equals > 0) {
            environment.insert(entry.left(equals), entry.mid(equals + 1));
        }
    }
    return environment;
}

} // namespace quorvin
