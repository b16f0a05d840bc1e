#pragma once

#include "views/ring/RingFrame.h"
#include "views/ring/RingPicture.h"

#include <QString>

namespace quorvin {

// The styles of the figure. Each adds its shapes to the picture. With `isGlow` they are those of a
// wider and fainter layer, meant to be blurred beneath the others.

constexpr int lineCount = 28;      ///< of the waves
constexpr int pointsPerLine = 256; ///< segments of a wave

/// Rippled circles, close together.
void drawWaveRing(RingPicture& picture, const RingFrame& frame, bool isGlow);
/// Circles that are born at the edge and fall towards it from the centre.
void drawPulseRing(RingPicture& picture, const RingFrame& frame, bool isGlow);
/// Three heads, each with a fading tail.
void drawCometRing(RingPicture& picture, const RingFrame& frame, bool isGlow);
/// Radial bars on a faint circle.
void drawBarsRing(RingPicture& picture, const RingFrame& frame, bool isGlow);
/// Dots on five orbits that turn against each other.
void drawOrbitRing(RingPicture& picture, const RingFrame& frame, bool isGlow);
/// Rays from the centre.
void drawNovaRing(RingPicture& picture, const RingFrame& frame, bool isGlow);
/// A double helix, laid around a circle.
void drawDNARing(RingPicture& picture, const RingFrame& frame, bool isGlow);
/// Five soft blobs.
void drawPlasmaRing(RingPicture& picture, const RingFrame& frame, bool isGlow);
/// A scope under a sweeping line.
void drawRadarRing(RingPicture& picture, const RingFrame& frame, bool isGlow);

/// The ring that runs outward when a recording starts or stops, if it is running.
void drawShockRing(RingPicture& picture, const RingFrame& frame, bool isGlow);

/// The whole figure in the style of that name ("pulse", "comet", "bars", "orbit", "nova", "dna",
/// "plasma", "radar"), and waves for any other.
void drawRing(RingPicture& picture, const RingFrame& frame, const QString& animationStyle);

} // namespace quorvin
