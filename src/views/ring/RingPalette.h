#pragma once

#include <QColor>

namespace quorvin {

/// What the program does, as the ring shows it.
enum class RingMode { idle, transcribing, recording };

/// The colour of every style: `lineT` + `angle` runs around the palette of the mode once from each
/// whole number to the next. Blue, violet and teal at rest, amber for transcribing, pink, purple
/// and magenta for recording, whatever the theme.
[[nodiscard]] QColor waveLineColor(RingMode mode, double lineT, double angle);

} // namespace quorvin
