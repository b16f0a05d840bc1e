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

/// The name of the next entry; null at the end and for a directory that can't be read.
const char* nextName(const Directory& directory) {
    // Safe on many threads as long as each has a stream of its own.
    // NOLINTNEXTLINE(concurrency-mt-unsafe)
    const dirent* const file = directory ? readdir(directory.get()) : nullptr;
    return file == nullptr ? nullptr : file->d_name;
}

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
    while (const char* name = nextName(directory)) {
        const char* const end = name + std::strlen(name);
        ProcessID identifier = 0;
        const auto parsed = std::from_chars(name, end, identifier);
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
    m_parents.clear();
    std::vector<ProcessRow> rows;
    rows.reserve(identifiers->size());
    for (const ProcessID identifier : *identifiers) {
        const auto stat = parseProcessStat(head(entry(identifier, "stat")));
        if (!stat) {
            continue;
        }
        m_parents.insert(identifier, stat->parent);
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
    if (const auto known = m_parents.constFind(processIdentifier); known != m_parents.constEnd()) {
        return *known;
    }
    const auto stat = parseProcessStat(head(entry(processIdentifier, "stat")));
    return stat ? std::optional(stat->parent) : std::nullopt;
}

std::optional<ProcessID>
ProcfsProcessTable::firstHolder(const QString& ttyPath,
                                const std::function<bool(ProcessID)>& isWanted) {
    const QByteArray path = ttyPath.toUtf8();
    // Any process may hold a terminal, also one that isn't its own. So all are asked, and what
    // costs least is asked first.
    for (const ProcessID identifier : processIdentifiers().value_or(std::vector<ProcessID>())) {
        if (isWanted(identifier) && holds(identifier, path)) {
            return identifier;
        }
    }
    return std::nullopt;
}

bool ProcfsProcessTable::holds(ProcessID processIdentifier, const QByteArray& path) {
    for (const OpenDevice& device : openDevices(processIdentifier)) {
        // The name isn't enough: every container has a "/dev/pts/0" of its own.
        struct stat wanted {};
        struct stat open {};
        if (device.path == path && stat(path.constData(), &wanted) == 0 &&
            stat(entry(processIdentifier, "fd/").append(device.descriptor).constData(), &open) ==
                0 &&
            open.st_dev == wanted.st_dev && open.st_ino == wanted.st_ino) {
            return true;
        }
    }
    return false;
}

const std::vector<ProcfsProcessTable::OpenDevice>&
ProcfsProcessTable::openDevices(ProcessID processIdentifier) {
    if (const auto known = m_openDevices.constFind(processIdentifier);
        known != m_openDevices.constEnd()) {
        return *known;
    }
    std::vector<OpenDevice>& devices = m_openDevices[processIdentifier];
    const Directory descriptors(opendir(entry(processIdentifier, "fd").constData()));
    while (const char* name = nextName(descriptors)) {
        const QByteArray target = linkTarget(dirfd(descriptors.get()), name);
        if (target.startsWith("/dev/")) {
            devices.push_back({target, name});
        }
    }
    return devices;
}

} // namespace quorvin
