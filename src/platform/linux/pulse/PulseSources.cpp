#include "platform/linux/pulse/PulseSources.h"

#include <QByteArrayView>
#include <QCryptographicHash>
#include <QtEndian>

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace quorvin {

namespace {

std::uint32_t digest(const std::string& name) {
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(QByteArrayView(name.data(), static_cast<qsizetype>(name.size())));
    return qFromBigEndian<std::uint32_t>(hash.result().constData());
}

} // namespace

void assignNumbers(std::vector<PulseSource>& sources) {
    std::unordered_set<std::uint32_t> taken{0}; // 0 means the system's default
    for (PulseSource& source : sources) {
        source.number = digest(source.name);
        while (!taken.insert(source.number).second) {
            ++source.number;
        }
    }
}

std::vector<PulseSource> microphones(const std::vector<PulseSource>& sources) {
    std::vector<PulseSource> result;
    std::ranges::copy_if(sources, std::back_inserter(result),
                         [](const PulseSource& source) { return !source.isMonitor; });
    return result.empty() ? sources : result;
}

const PulseSource* defaultMicrophone(const std::vector<PulseSource>& microphones,
                                     const std::string& defaultName) {
    const auto found = std::ranges::find(microphones, defaultName, &PulseSource::name);
    if (found != microphones.end()) {
        return &*found;
    }
    return microphones.empty() ? nullptr : &microphones.front();
}

} // namespace quorvin
