#include "services/agents/CommandProcessTable.h"

#include "support/Text.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A decimal number with or without a sign, and nothing around it.
std::optional<ProcessID> parseProcessID(const QString& text) {
    const QByteArray digits = text.toUtf8();
    const char* begin = digits.constBegin();
    if (digits.size() > 1 && digits[0] == '+' && digits[1] != '-') {
        ++begin;
    }
    ProcessID value = 0;
    const auto parsed = std::from_chars(begin, digits.constEnd(), value);
    const bool isWhole = parsed.ec == std::errc() && parsed.ptr == digits.constEnd();
    return isWhole ? std::optional(value) : std::nullopt;
}

} // namespace

ProcessTools macProcessTools() {
    return {.ps = u"/bin/ps"_s, .lsof = u"/usr/sbin/lsof"_s};
}

ProcessTools linuxProcessTools() {
    return {.ps = u"/bin/ps"_s, .lsof = u"/usr/bin/lsof"_s};
}

CommandProcessTable::CommandProcessTable(BlockingCommand run, ProcessTools tools)
    : m_run(std::move(run)), m_tools(std::move(tools)) {}

std::optional<QString> CommandProcessTable::output(const QString& program,
                                                   const QStringList& arguments) const {
    const auto bytes = m_run(program, arguments);
    return bytes ? std::optional(text::fromUtf8(*bytes).value_or(QString())) : std::nullopt;
}

std::optional<std::vector<ProcessRow>> CommandProcessTable::rows() {
    const auto listing = output(m_tools.ps, {u"-ax"_s, u"-o"_s, u"pid,comm,tty"_s});
    if (!listing) {
        return std::nullopt;
    }
    std::vector<ProcessRow> rows;
    for (const QString& line : listing->split(u'\n')) {
        const QStringList pieces = line.split(u' ', Qt::SkipEmptyParts);
        const auto processIdentifier = parseProcessID(pieces.value(0)); // not so in the header line
        if (!processIdentifier) {
            continue;
        }
        if (auto row = processRow(*processIdentifier, pieces.mid(1))) {
            rows.push_back(std::move(*row));
        }
    }
    return rows;
}

std::optional<QString> CommandProcessTable::workingDirectory(ProcessID processIdentifier) {
    const QString number = QString::number(processIdentifier);
    const auto listing =
        output(m_tools.lsof, {u"-a"_s, u"-p"_s, number, u"-d"_s, u"cwd"_s, u"-Fn"_s});
    const QStringList lines = listing.value_or(QString()).split(u'\n');
    const auto line = std::find_if(lines.begin(), lines.end(), [](const QString& candidate) {
        return candidate.startsWith(u"n/");
    });
    // Linux's lsof puts its complaint about a directory that it may not see in the directory's
    // place.
    if (line == lines.end() || line->startsWith(u"n/proc/%1/cwd (readlink: "_s.arg(number))) {
        return std::nullopt;
    }
    return line->mid(1);
}

std::optional<ProcessID>
CommandProcessTable::firstHolder(const QString& ttyPath,
                                 const std::function<bool(ProcessID)>& isWanted) {
    const auto listing = output(m_tools.lsof, {u"-t"_s, ttyPath});
    for (const QString& line : listing.value_or(QString()).split(u'\n')) {
        const auto holder = parseProcessID(text::trimmedOfBlanks(line));
        if (holder && isWanted(*holder)) {
            return holder;
        }
    }
    return std::nullopt;
}

std::optional<ProcessID> CommandProcessTable::parent(ProcessID processIdentifier) {
    const auto listing =
        output(m_tools.ps, {u"-p"_s, QString::number(processIdentifier), u"-o"_s, u"ppid="_s});
    return parseProcessID(text::trimmed(listing.value_or(QString())));
}

} // namespace quorvin
