#include "platform/linux/x11/WindowIdentity.h"

#include <QList>
#include <QSysInfo>

#include <limits>

namespace quorvin::windowIdentity {

namespace {

/// Whether `machine` names this computer; one of the two names may lack the domain.
bool isThisMachine(const QString& machine) {
    const QString own = QSysInfo::machineHostName();
    const auto isShortFor = [](const QString& name, const QString& longer) {
        return longer.startsWith(name + u'.', Qt::CaseInsensitive);
    };
    return machine.compare(own, Qt::CaseInsensitive) == 0 || isShortFor(machine, own) ||
           isShortFor(own, machine);
}

} // namespace

std::optional<ProcessID> process(std::optional<std::uint32_t> number, const QString& machine) {
    if (!number || *number == 0 || *number > std::numeric_limits<ProcessID>::max() ||
        (!machine.isEmpty() && !isThisMachine(machine))) {
        return std::nullopt;
    }
    return static_cast<ProcessID>(*number);
}

Names names(const QByteArray& windowClass) {
    const QList<QByteArray> parts = windowClass.split('\0');
    return {QString::fromUtf8(parts.value(0)), QString::fromUtf8(parts.value(1))};
}

} // namespace quorvin::windowIdentity
