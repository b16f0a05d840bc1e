#pragma once

#include "views/CompactWaveform.h"

#include <QImage>

namespace quorvin {

struct RasterizedWaveform {
    QImage image; ///< premultiplied, `devicePixelRatio` pixels to the point; null if nothing shows
    QRectF rect;  ///< where the image belongs on the canvas, in points; whole pixels
};

/// Paints a drawing by the area that each shape covers of each pixel. Made for what it paints,
/// hundreds of upright rectangles of a few pixels' width and one line that is nowhere steep: a tenth
/// of the time that the same takes as paths.
[[nodiscard]] RasterizedWaveform rasterized(const WaveformDrawing& drawing, QSizeF size,
                                            double devicePixelRatio);

} // namespace quorvin
