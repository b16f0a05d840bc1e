#include "platform/linux/terminals/TerminalProcesses.h"

#include "platform/linux/procfs/ProcessStat.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TerminalProcesses::TerminalProcesses(QString directory) : m_directory(std::move(directory)) {
    // Not by the listing that ps would give: it takes a part of some names for the terminal, and
    // tmux has such a name.
    for (const QString& name : QDir(m_directory).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const ProcessID process = name.toInt(&isNumber);
        const auto stat = isNumber
                              ? parseProcessStat(contentOf(u"%1/%2/stat"_s.arg(m_directory, name)))
                              : std::nullopt;
        if (stat) {
            const auto terminal = terminalName(stat->terminalDevice);
            m_processes[process] = {stat->parent, terminal ? u"/dev/"_s + *terminal : QString()};
        }
    }
}

std::optional<TerminalSession> TerminalProcesses::sessionOn(const QString& tty) const {
    // The first process is the one that the terminal itself started; the others descend from it.
    const auto first = std::find_if(m_processes.begin(), m_processes.end(), [&](const auto& entry) {
        const Process& process = entry.second;
        return process.tty == tty && !isOn(process.parent, tty);
    });
    if (tty.isEmpty() || first == m_processes.end()) {
        return std::nullopt;
    }
    return TerminalSession{tty, environmentOf(first->first), ancestorsOf(first->first)};
}

bool TerminalProcesses::isOn(ProcessID process, const QString& tty) const {
    const auto found = m_processes.find(process);
    return found != m_processes.end() && found->second.tty == tty;
}

std::vector<ProcessID> TerminalProcesses::ancestorsOf(ProcessID process) const {
    std::vector<ProcessID> ancestors;
    for (auto entry = m_processes.find(process);
         entry != m_processes.end() && entry->second.parent > 1;
         entry = m_processes.find(entry->second.parent)) {
        const ProcessID parent = entry->second.parent;
        if (std::find(ancestors.begin(), ancestors.end(), parent) != ancestors.end()) {
            break; // a number that passed to another process while we looked
        }
        ancestors.push_back(parent);
    }
    return ancestors;
}

QHash<QByteArray, QByteArray> TerminalProcesses::environmentOf(ProcessID process) const {
    QHash<QByteArray, QByteArray> environment;
    for (const QByteArray& variable :
         contentOf(u"%1/%2/environ"_s.arg(m_directory).arg(process)).split('\0')) {
        if (const qsizetype equals = variable.indexOf('='); equals > 0) {
            environment.insert(variable.left(equals), variable.mid(equals + 1));
        }
    }
    return environment;
}

} // namespace quorvin
