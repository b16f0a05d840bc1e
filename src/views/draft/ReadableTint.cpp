#include "views/draft/ReadableTint.h"

#include <QColorSpace>
#include <QColorTransform>

#include <algorithm>

namespace quorvin {

namespace {

/// In luminance; a little above 3 to 1 against white, and about as much against dark surfaces.
constexpr double brightest = 0.34;
constexpr double leastContrast = 3.2;
constexpr double flare = 0.05; ///< what a screen reflects, by WCAG 2

QColor linear(const QColor& color) {
    static const QColorTransform transform =
        QColorSpace(QColorSpace::SRgb).transformationToColorSpace(QColorSpace::SRgbLinear);
    return transform.map(color);
}

QColor encoded(const QColor& color) {
    static const QColorTransform transform =
        QColorSpace(QColorSpace::SRgbLinear).transformationToColorSpace(QColorSpace::SRgb);
    return transform.map(color);
}

/// 0 for black, 1 for white, by WCAG 2.
double luminance(const QColor& color) {
    const QColor light = linear(color);
    return 0.2126 * light.redF() + 0.7152 * light.greenF() + 0.0722 * light.blueF();
}

/// Each channel goes that part of its way to `end`; so does the luminance.
QColor mixed(const QColor& color, float end, double part) {
    const QColor light = linear(color);
    const auto mix = [end, part](float from) {
        return from + (end - from) * static_cast<float>(part);
    };
    return encoded(QColor::fromRgbF(mix(light.redF()), mix(light.greenF()), mix(light.blueF()),
                                    color.alphaF()));
}

} // namespace

QColor ReadableTint::of(const QColor& color, const QColor& surface) {
    const double own = luminance(color);
    if (own > brightest) {
        return mixed(color, 0, 1 - brightest / own);
    }
    const double dimmest =
        std::min(brightest, leastContrast * (luminance(surface) + flare) - flare);
    const bool isSurfaceDark = luminance(surface) < brightest;
    if (isSurfaceDark && own < dimmest) {
        return mixed(color, 1, (dimmest - own) / (1 - own));
    }
    return color;
}

double ReadableTint::contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + flare) / (darker + flare);
}

} // namespace quorvin
