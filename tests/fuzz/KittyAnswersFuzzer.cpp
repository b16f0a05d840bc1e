#include "fuzz/Fuzzing.h"
#include "fuzz/ScratchDirectory.h"
#include "platform/linux/terminals/KittyProtocol.h"

#include <QJsonDocument>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::bytes;
using quorvin::testing::require;
using quorvin::testing::ScratchDirectory;

namespace {

/// One process, 100, on the device "/dev/pts/3".
const TerminalProcesses& oneShell() {
    static const TerminalProcesses processes = [] {
        const ScratchDirectory proc;
        proc.write(u"100/stat"_s, "100 (bash) S 90 100 100 34819 100\n");
        return TerminalProcesses(proc.path(u"."_s));
    }();
    return processes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString tty = u"/dev/pts/3"_s;
    require(oneShell().isOn(100, tty), "the process is on the device");

    const QByteArray answer = bytes(data, size);
    const auto given = kittyProtocol::data(answer);
    require(!given || kittyProtocol::isWhole(answer), "an answer is whole");
    const auto window =
        kittyProtocol::windowOn(tty, given.value_or(QString::fromUtf8(answer)), oneShell());
    require(!window || answer.contains("100"), "a window is one with the process in it");

    const QByteArray request =
        kittyProtocol::request(u"ls"_s, {{u"match"_s, QString::fromUtf8(answer)}});
    require(request.indexOf('\x1b', 1) == request.size() - 2,
            "a request ends but at its end, whatever is asked for");
    return 0;
}
