#include "views/compact/StatusDotLook.h"

#include <QEasingCurve>
#include <QPointF>

#include <array>
#include <cmath>

namespace quorvin {

namespace {

struct Look {
    QColor color;
    double pulseDuration;
    double lowestOpacity;
};

const Look& lookOf(StatusDotLook::DotState state) {
    static const std::array<Look, 5> looks{{
        {QColor::fromRgbF(1.0F, 0.18F, 0.18F), 0.5, 0.2},
        {QColor::fromRgbF(1.0F, 0.6F, 0.1F), 0, 1},
        {QColor::fromRgbF(0.2F, 1.0F, 0.45F), 1.6, 0.65},
        {QColor::fromRgbF(0.25F, 0.55F, 1.0F), 0.7, 0.2},
        {QColor::fromRgbF(1.0F, 0.85F, 0.1F), 0.28, 0.2},
    }};
    return looks.at(static_cast<std::size_t>(state));
}

double easedInAndOut(double progress) {
    static const QEasingCurve curve = [] {
        QEasingCurve easing(QEasingCurve::BezierSpline);
        easing.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
        return easing;
    }();
    return curve.valueForProgress(progress);
}

} // namespace

StatusDotLook::DotState StatusDotLook::dotState(bool isRecording, bool isTranscribing, bool micOK,
                                                bool axOK, bool modelOK) {
    if (isRecording) {
        return DotState::recording;
    }
    if (isTranscribing) {
        return DotState::transcribing;
    }
    if (!micOK || !axOK) {
        return DotState::noPermission;
    }
    return modelOK ? DotState::ready : DotState::noModel;
}

QColor StatusDotLook::color(DotState state) {
    return lookOf(state).color;
}

double StatusDotLook::pulseDuration(DotState state) {
    return lookOf(state).pulseDuration;
}

double StatusDotLook::pulseOpacity(DotState state, double time) {
    const Look& look = lookOf(state);
    if (look.pulseDuration <= 0) {
        return 1;
    }
    const double way = std::fmod(time / look.pulseDuration, 2.0);
    return std::lerp(1.0, look.lowestOpacity, easedInAndOut(way < 1 ? way : 2 - way));
}

} // namespace quorvin
