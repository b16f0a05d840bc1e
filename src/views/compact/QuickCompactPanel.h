#pragma once

#include "models/CompactPanel.h"

class QQmlEngine;

namespace quorvin {

/// Makes panels whose content is `CompactView`. The engine, which knows the module of the views,
/// has to outlive them: close the last one before it goes.
[[nodiscard]] CompactPanelFactory quickCompactPanels(QQmlEngine& engine);

} // namespace quorvin
