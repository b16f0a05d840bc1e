#include "views/compact/CompactLabels.h"

#include "support/Text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

constexpr qsizetype longestMicLabel = 8;
constexpr int secondsPerMinute = 60;

} // namespace

QString CompactLabels::micLabel(const QList<AudioInputDevice>& availableDevices,
                                const QString& selectedDevice) {
    const auto device = std::find_if(
        availableDevices.begin(), availableDevices.end(),
        [&](const AudioInputDevice& candidate) { return candidate.id == selectedDevice; });
    if (device == availableDevices.end()) {
        return u"Mic"_s;
    }
    return text::prefix(device->name.section(u' ', 0, 0), longestMicLabel);
}

QString CompactLabels::duration(double seconds) {
    const int whole = static_cast<int>(seconds);
    return u"%1:%2"_s.arg(whole / secondsPerMinute)
        .arg(whole % secondsPerMinute, 2, 10, QChar(u'0'));
}

int CompactLabels::wordCount(const QString& text) {
    return static_cast<int>(text.simplified().split(u' ', Qt::SkipEmptyParts).size());
}

QString CompactLabels::missing(bool micOK, bool axOK, bool modelOK) {
    if (!micOK) {
        return tr("Microphone access is missing");
    }
    if (!axOK) {
        return tr("Accessibility permission is missing");
    }
    return modelOK ? QString() : tr("The speech model isn’t loaded");
}

} // namespace quorvin
