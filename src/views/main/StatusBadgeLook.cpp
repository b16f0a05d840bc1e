#include "views/main/StatusBadgeLook.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

constexpr qint64 secondsPerMinute = 60;
constexpr qint64 millisecondsPerDot = 400;
constexpr qint64 mostDots = 3;

QString twoDigits(qint64 number) {
    return QString::number(number).rightJustified(2, u'0');
}

} // namespace

QString StatusBadgeLook::label(bool isRecording, bool isTranscribing) {
    if (isRecording) {
        return u"REC"_s;
    }
    return isTranscribing ? u"PROC"_s : u"READY"_s;
}

QString StatusBadgeLook::timerText(bool isRecording, bool isTranscribing, double duration,
                                   double elapsed) {
    if (isRecording) {
        const auto seconds = static_cast<qint64>(duration);
        return twoDigits(seconds / secondsPerMinute) + u':' + twoDigits(seconds % secondsPerMinute);
    }
    if (isTranscribing) {
        const auto step = static_cast<qint64>(elapsed) / millisecondsPerDot;
        return QString(step % mostDots + 1, u'.');
    }
    return {};
}

} // namespace quorvin
