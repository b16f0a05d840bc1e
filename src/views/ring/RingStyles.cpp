#include "views/ring/RingStyles.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

using DrawStyle = void (*)(RingPicture&, const RingFrame&, bool);

struct NamedStyle {
    QLatin1StringView name;
    DrawStyle draw;
};

constexpr std::array namedStyles{
    NamedStyle{"pulse"_L1, drawPulseRing},   NamedStyle{"comet"_L1, drawCometRing},
    NamedStyle{"bars"_L1, drawBarsRing},     NamedStyle{"orbit"_L1, drawOrbitRing},
    NamedStyle{"nova"_L1, drawNovaRing},     NamedStyle{"dna"_L1, drawDNARing},
    NamedStyle{"plasma"_L1, drawPlasmaRing}, NamedStyle{"radar"_L1, drawRadarRing},
};

DrawStyle styleNamed(const QString& name) {
    const auto* const found =
        std::find_if(namedStyles.begin(), namedStyles.end(),
                     [&name](const NamedStyle& style) { return style.name == name; });
    return found != namedStyles.end() ? found->draw : drawWaveRing;
}

} // namespace

void drawShockRing(RingPicture& picture, const RingFrame& frame, bool isGlow) {
    if (!frame.showImpact) {
        return;
    }
    const double rest = 1 - frame.impactPhase;
    const QColor color =
        frame.impactIsRecording ? QColor(0xff, 0x33, 0x66) : QColor(0x22, 0xc5, 0x5e);
    picture.strokeCircle(frame.center(), frame.extent() * (1 - rest * rest) * 0.5,
                         {color, rest * (isGlow ? 0.5 : 0.9)}, rest * 6 + 1);
}

void drawRing(RingPicture& picture, const RingFrame& frame, const QString& animationStyle) {
    // Never the glow, on purpose: painting everything again under a blur would cost an idle program
    // many times what it uses now.
    constexpr bool isGlow = false;
    styleNamed(animationStyle)(picture, frame, isGlow);
    drawShockRing(picture, frame, isGlow);
}

} // namespace quorvin
