#pragma once

#include <QList>
#include <QPointF>
#include <QUrl>

#include <functional>
#include <memory>

namespace quorvin {

class AppState;

// The panel's layout, in points.
inline constexpr double compactW = 360.0;
inline constexpr double compactWaveH = 48.0;
inline constexpr double compactStatusH = 24.0;
inline constexpr double compactTotalH = compactWaveH + compactStatusH;
inline constexpr double compactCornerR = 22.0;

/// The window of compact mode, as it stands on the screen: above all others, on every desktop, and
/// never with the keyboard focus. Gone from the screen when it is destroyed. Main thread only.
class CompactPanel {
public:
    CompactPanel() = default;
    CompactPanel(const CompactPanel&) = delete;
    CompactPanel& operator=(const CompactPanel&) = delete;
    virtual ~CompactPanel() = default;

    /// Shows it on top, without the focus.
    virtual void orderFront() = 0;
    /// The top left corner on the desktop.
    [[nodiscard]] virtual QPointF origin() const = 0;
    virtual void setOrigin(QPointF origin) = 0;

    /// Called each time it has moved, whoever moved it.
    std::function<void()> onMoved;
    /// Called with what was dropped on it, at least one address of a file, in the drag's order.
    std::function<void(const QList<QUrl>& files)> onDropped;
};

/// Makes a panel that shows the state, not yet on the screen.
using CompactPanelFactory = std::function<std::unique_ptr<CompactPanel>(AppState& appState)>;

} // namespace quorvin
