#include "fuzz/HistoryFuzzing.h"

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::bytes;
using quorvin::testing::HistoryPlace;
using quorvin::testing::readEntries;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    HistoryPlace place;
    place.directory.write(place.database, bytes(data, size));
    try {
        HistoryService history(place.bundle, place.scheduler);
        const auto attempt = [](auto operation) {
            try {
                operation();
            } catch (const HistoryError&) {
                // One that fails leaves the service usable, and the next one is tried.
            }
        };
        attempt([&] { readEntries(history); });
        attempt([&] { history.deleteEntry(1); });
        attempt([&] { history.add(u"a text"_s, u"en"_s, 1.5, u"Claude"_s); });
        attempt([&] { readEntries(history); });
        attempt([&] { history.clear(); });
        attempt([&] { readEntries(history); });
    } catch (const HistoryError&) {
        // It can't be opened.
    }
    return 0;
}
