#pragma once

#include <QImage>

namespace quorvin {

/// A mask (Format_Alpha8) out of focus. `radius`, in pixels, is two standard deviations of the
/// Gaussian: about as far as it reaches. Around the image there is nothing.
[[nodiscard]] QImage gaussianBlur(const QImage& mask, double radius);

} // namespace quorvin
