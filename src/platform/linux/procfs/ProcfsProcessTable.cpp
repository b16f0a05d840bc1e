#include "platform/linux/procfs/ProcfsProcessTable.h"

#include "platform/linux/procfs/ProcessStat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cstring>
#include <memory>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

/// The first kilobyte, which is more than a "stat" holds; empty when the file can't be read.
QByteArray head(const QByteArray& path) {
    const int descriptor = open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return {};
    }
    char buffer[1024];
    const ssize_t size = read(descriptor, buffer, sizeof buffer);
    close(descriptor);
    return size > 0 ? QByteArray(buffer, size) : QByteArray();
}

/// Where a link below /proc points to; empty when it can't be read.
QByteArray linkTarget(int directory, const char* name) {
    char buffer[PATH_MAX];
    const ssize_t size = readlinkat(directory, name, buffer, sizeof buffer);
    return size > 0 ? QByteArray(buffer, size) : QByteArray();
}

/// A process name as ps prints it: on one line.
QString printableName(const QByteArray& name) {
    QString printable = QString::fromUtf8(name);
    for (QChar& character : printable) {
        if (character.category() == QChar::Other_Control) {
            character = u'?';
        }
    }
    return printable;
}

/// A path as lsof prints it: on one line.
QString printablePath(const QByteArray& path) {
    constexpr std::array<std::pair<char16_t, QStringView>, 6> escapes{{{u'\\', u"\\\\"},
                                                                       {u'\b', u"\\b"},
                                                                       {u'\f', u"\\f"},
                                                                       {u'\n', u"\\n"},
                                                                       {u'\r', u"\\r"},
                                                                       {u'\t', u"\\t"}}};
    QString printable;
    for (const QChar character : QString::fromUtf8(path)) {
        const auto escape =
            std::find_if(escapes.begin(), escapes.end(), [character](const auto& candidate) {
                return candidate.first == character;
            });
        if (escape != escapes.end()) {
            printable += escape->second;
        } else if (character < u' ') {
            printable += u'^';
            printable += QChar(character.unicode() + u'@');
        } else {
            printable += character;
        }
    }
    return printable;
}

} // namespace

ProcfsProcessTable::ProcfsProcessTable(QByteArray root) : m_root(std::move(root)) {}

QByteArray ProcfsProcessTable::entry(ProcessID processIdentifier, const char* name) const {
    return m_root + '/' + QByteArray::number(processIdentifier) + '/' + name;
}

std::optional<std::vector<ProcessID>> ProcfsProcessTable::processIdentifiers() const {
    const Directory directory(opendir(m_root.constData()));
    if (!directory) {
        return std::nullopt;
    }
    std::vector<ProcessID> identifiers;
    while (const dirent* file = readdir(directory.get())) {
        const char* const end = file->d_name + std::strlen(file->d_name);
        ProcessID identifier = 0;
        const auto parsed = std::from_chars(file->d_name, end, identifier);
        if (parsed.ec == std::errc() && parsed.ptr == end) {
            identifiers.push_back(identifier);
        }
    }
    std::sort(identifiers.begin(), identifiers.end());
    return identifiers;
}

std::optional<std::vector<ProcessRow>> ProcfsProcessTable::rows() {
    const auto identifiers = processIdentifiers();
    if (!identifiers) {
        return std::nullopt;
    }
    std::vector<ProcessRow> rows;
    rows.reserve(identifiers->size());
    for (const ProcessID identifier : *identifiers) {
        const auto stat = parseProcessStat(head(entry(identifier, "stat")));
        if (!stat) {
            continue;
        }
        QStringList columns = printableName(stat->name).split(u' ', Qt::SkipEmptyParts);
        columns.append(terminalName(stat->terminalDevice).value_or(u"?"_s));
        if (auto row = processRow(identifier, columns)) {
            rows.push_back(std::move(*row));
        }
    }
    return rows;
}

std::optional<QString> ProcfsProcessTable::workingDirectory(ProcessID processIdentifier) {
    const QByteArray path = linkTarget(AT_FDCWD, entry(processIdentifier, "cwd").constData());
    // A directory outside of this program's root is shown without a leading slash.
    return path.startsWith('/') ? std::optional(printablePath(path)) : std::nullopt;
}

std::optional<ProcessID> ProcfsProcessTable::parent(ProcessID processIdentifier) {
    const auto stat = parseProcessStat(head(entry(processIdentifier, "stat")));
    return stat ? std::optional(stat->parent) : std::nullopt;
}

std::vector<ProcessID> ProcfsProcessTable::holders(const QString& ttyPath) {
    if (!m_openDevices) {
        m_openDevices = findOpenDevices();
    }
    struct stat wanted {};
    const QByteArray path = ttyPath.toUtf8();
    if (stat(path.constData(), &wanted) != 0) {
        return {};
    }
    std::vector<ProcessID> holders;
    for (const Descriptor& descriptor : m_openDevices->value(path)) {
        // Every container has a "/dev/pts/0" of its own.
        struct stat open {};
        const QByteArray link =
            entry(descriptor.processIdentifier, "fd/").append(descriptor.number);
        if (stat(link.constData(), &open) == 0 && open.st_dev == wanted.st_dev &&
            open.st_ino == wanted.st_ino) {
            holders.push_back(descriptor.processIdentifier);
        }
    }
    return holders;
}

/// In one pass over all processes, for a session's shell is seldom the only one of a scan. Any
/// process may hold a terminal that isn't its controlling one, so none can be left out.
ProcfsProcessTable::OpenDevices ProcfsProcessTable::findOpenDevices() const {
    OpenDevices devices;
    for (const ProcessID identifier : processIdentifiers().value_or(std::vector<ProcessID>())) {
        const Directory descriptors(opendir(entry(identifier, "fd").constData()));
        while (const dirent* file = descriptors ? readdir(descriptors.get()) : nullptr) {
            const QByteArray target = linkTarget(dirfd(descriptors.get()), file->d_name);
            if (!target.startsWith("/dev/")) {
                continue;
            }
            auto& holders = devices[target];
            if (holders.empty() || holders.back().processIdentifier != identifier) {
                holders.push_back({identifier, file->d_name});
            }
        }
    }
    return devices;
}

} // namespace quorvin
