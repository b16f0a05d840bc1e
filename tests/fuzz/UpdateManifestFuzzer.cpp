#include "fuzz/Fuzzing.h"
#include "models/UpdateManifest.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <array>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::Parts;
using quorvin::testing::require;

namespace {

void readsBack(const UpdateManifest& manifest) {
    QJsonObject object{{u"version"_s, manifest.version}};
    if (manifest.dmg) {
        object[u"dmg"_s] = *manifest.dmg;
    }
    const auto again = UpdateManifest::decode(QJsonDocument(object).toJson());
    require(again && again->version == manifest.version && again->dmg == manifest.dmg,
            "a manifest reads back as it was written");
    require(manifest.version.endsWith(manifest.versionNumber()) &&
                manifest.version.size() - manifest.versionNumber().size() <= 1,
            "a number is the version without one letter at most");
}

void isAnOrder(const QString& a, const QString& b, const QString& c) {
    require(compareNumerically(a, a) == 0, "a number equals itself");
    require((compareNumerically(a, b) < 0) == (compareNumerically(b, a) > 0),
            "of two numbers one is the newer, whichever comes first");
    if (compareNumerically(a, b) <= 0 && compareNumerically(b, c) <= 0) {
        require(compareNumerically(a, c) <= 0, "the newest is newer than the oldest");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Parts parts(data, size); // a manifest, and two numbers to compare its own with
    const auto manifest = UpdateManifest::decode(parts[0]);
    if (manifest) {
        readsBack(*manifest);
    }
    const std::array numbers{manifest ? manifest->versionNumber() : QString::fromUtf8(parts[0]),
                             QString::fromUtf8(parts[1]), QString::fromUtf8(parts[2])};
    isAnOrder(numbers[0], numbers[1], numbers[2]);
    isAnOrder(numbers[2], numbers[0], numbers[1]);
    return 0;
}
