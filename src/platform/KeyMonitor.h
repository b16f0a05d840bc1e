#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace quorvin {

/// Bits of `KeyDown::modifierFlags`.
namespace ModifierFlag {

inline constexpr std::uint32_t shift = 0x20000;
inline constexpr std::uint32_t control = 0x40000;
inline constexpr std::uint32_t option = 0x80000;
inline constexpr std::uint32_t command = 0x100000;

} // namespace ModifierFlag

/// Positions on the keyboard, whatever the layout writes there.
namespace KeyCode {

inline constexpr std::uint16_t space = 49;
inline constexpr std::uint16_t backtick = 50;
inline constexpr std::uint16_t escape = 53;
inline constexpr std::uint16_t rightArrow = 124;

} // namespace KeyCode

/// A key that went down; never one that repeats itself.
struct KeyDown {
    std::uint16_t keyCode = 0;       ///< one of `KeyCode`
    std::uint32_t modifierFlags = 0; ///< locks are not among them

    bool operator==(const KeyDown&) const = default;
};

/// Watches the keyboard for the keys of `KeyCode`. Main thread only.
class KeyMonitor {
public:
    /// Ends the watch when it goes.
    using Subscription = std::shared_ptr<void>;

    KeyMonitor() = default;
    KeyMonitor(const KeyMonitor&) = delete;
    KeyMonitor& operator=(const KeyMonitor&) = delete;
    virtual ~KeyMonitor() = default;

    /// Sees the keys that go to other programs, and takes none away from them. Sees nothing where
    /// the system has no such thing.
    [[nodiscard]] virtual Subscription
    addGlobalMonitor(std::function<void(const KeyDown&)> handler) = 0;
    /// Sees the keys that go to this program, before its windows do; a key for which `handler` says
    /// true goes no further.
    [[nodiscard]] virtual Subscription
    addLocalMonitor(std::function<bool(const KeyDown&)> handler) = 0;
};

} // namespace quorvin
