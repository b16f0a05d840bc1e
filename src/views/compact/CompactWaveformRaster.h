#pragma once

#include "views/compact/CompactWaveform.h"
#include "views/components/PlacedImage.h"

namespace quorvin {

/// Paints a drawing by the area that each shape covers of each pixel. Made for what it paints,
/// hundreds of upright rectangles of a few pixels' width and one line that is nowhere steep: a
/// tenth of the time that the same takes as paths.
[[nodiscard]] PlacedImage rasterized(const WaveformDrawing& drawing, QSizeF size,
                                     double devicePixelRatio);

} // namespace quorvin
