#include "fuzz/Fuzzing.h"
#include "platform/linux/terminals/TmuxPlaces.h"

#include <algorithm>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::Parts;
using quorvin::testing::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Parts parts(data, size); // the panes, the clients
    const auto linesOf = [](const QByteArray& output) {
        return QString::fromUtf8(output).split(u'\n', Qt::SkipEmptyParts);
    };
    const QString tty = u"/dev/pts/3"_s;
    const std::vector<tmux::Pane> panes = tmux::panesOn(tty, linesOf(parts[0]));
    const std::vector<tmux::Client> clients = tmux::clientsIn(linesOf(parts[1]));
    require(std::is_sorted(clients.begin(), clients.end(),
                           [](const tmux::Client& left, const tmux::Client& right) {
                               return left.lastUse > right.lastUse;
                           }),
            "the client that was used last comes first");
    if (panes.empty()) {
        return 0;
    }
    const auto place = tmux::placeFor(panes, clients);
    require(place.has_value() == !clients.empty(), "with a client there is a place");
    if (place) {
        require(place->pane.tty == tty, "it is the device's");
        const QStringList commands = tmux::commandsFor(*place);
        require(commands.contains(u"select-pane"_s), "the pane is selected");
        require(commands.contains(u"switch-client"_s) ==
                    (place->client.session != place->pane.session),
                "a client at its session stays there");
    }
    return 0;
}
