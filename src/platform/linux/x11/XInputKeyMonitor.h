#pragma once

#include "platform/KeyMonitor.h"
#include "platform/linux/x11/XcbConnection.h"

#include <QObject>

#include <array>
#include <bitset>
#include <list>

class QKeyEvent;

namespace quorvin {

/// Watches the keyboard through XInput 2 raw events on the root window, which come whoever has the
/// focus or a grab and are taken from nobody, and through the program's own key events.
class XInputKeyMonitor final : public QObject, public KeyMonitor {
    Q_OBJECT
public:
    /// `connection` outlives it. Without XInput 2 the log says so, and the global monitors are
    /// silent.
    explicit XInputKeyMonitor(XcbConnection& connection);

    [[nodiscard]] Subscription
    addGlobalMonitor(std::function<void(const KeyDown&)> handler) override;
    [[nodiscard]] Subscription
    addLocalMonitor(std::function<bool(const KeyDown&)> handler) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using GlobalHandler = std::function<void(const KeyDown&)>;
    using LocalHandler = std::function<bool(const KeyDown&)>;

    /// A key press as the X server numbers it.
    struct Press {
        xcb_timestamp_t time;
        std::uint32_t keycode;
        bool operator==(const Press&) const = default;
    };

    [[nodiscard]] bool selectRawEvents();
    void readModifierMapping();
    void received(const xcb_generic_event_t& event);
    void keyMoved(std::uint32_t keycode, xcb_timestamp_t time, bool isDown);
    [[nodiscard]] bool ownsFocus();
    [[nodiscard]] bool isConsumed(const QKeyEvent& event);

    XcbConnection& m_connection;
    std::uint8_t m_inputOpcode = 0;
    std::array<std::uint32_t, 256> m_flagsOfKey{}; // by keycode; 0 for what is no modifier
    std::bitset<256> m_held;
    Press m_lastOwn{}; // the last press that came to this program's windows
    std::list<std::weak_ptr<GlobalHandler>> m_globalHandlers;
    std::list<std::weak_ptr<LocalHandler>> m_localHandlers;
};

} // namespace quorvin
